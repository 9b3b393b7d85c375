#pragma once

#include <unistd.h>
#include <utility>

namespace TandrilResult {

/// Owns an open file descriptor; -1 stands for none.
class Descriptor {
  public:
    explicit Descriptor(int number = -1) : number_(number) {}

    Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}

    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(number_, other.number_);
        return *this;
    }

    ~Descriptor() { Close(); }

    int Number() const { return number_; }

    void Close() {
        if (number_ >= 0) {
            close(std::exchange(number_, -1));
        }
    }

  private:
    int number_;
};

} // namespace TandrilResult
