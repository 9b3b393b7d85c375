#pragma once

#include <string>
#include <string_view>

namespace TandrilResult {

/// An output whose first megabyte is held back, so that a failure up to there leaves nothing but
/// error lines. From then on what is written goes out in blocks of that size.
class HeldOutput {
  public:
    static constexpr std::size_t kHeldSize = std::size_t{1} << 20;

    /// The descriptor stays the caller's.
    explicit HeldOutput(int descriptor) : descriptor_(descriptor) {}

    /// Throws OutputError when the system does not take what is written.
    void Write(std::string_view text);
    void Flush();

    /// Forgets what has not gone out yet.
    void Discard() { held_.clear(); }

    /// Whether something has gone out that cannot be taken back.
    bool HasBegun() const { return hasBegun_; }

  private:
    int descriptor_;
    std::string held_;
    bool hasBegun_ = false;
};

} // namespace TandrilResult
