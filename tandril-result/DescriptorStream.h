#pragma once

#include <array>
#include <istream>
#include <streambuf>

namespace TandrilResult {

/// Reads an open descriptor in blocks.
class DescriptorBuffer : public std::streambuf {
  public:
    explicit DescriptorBuffer(int descriptor) : descriptor_(descriptor) {}

    /// Whether anything has been read.
    bool HasRead() const { return hasRead_; }

  protected:
    /// Throws InputError when the system cannot read.
    int_type underflow() override;

  private:
    int descriptor_;
    bool hasRead_ = false;
    std::array<char, 65536> block_;
};

/// A stream over an open descriptor, which stays the caller's. What goes wrong in reading is
/// thrown as InputError.
class DescriptorStream : public std::istream {
  public:
    explicit DescriptorStream(int descriptor) : std::istream(nullptr), buffer_(descriptor) {
        rdbuf(&buffer_);
        exceptions(std::ios::badbit);
    }

    /// Whether there was nothing to read, at the end of the reading.
    bool IsEmpty() const { return !buffer_.HasRead(); }

  private:
    DescriptorBuffer buffer_;
};

} // namespace TandrilResult
