// An open file descriptor that closes itself. Everything the helper opens is owned by one of these.
#pragma once

#include <utility>

#include <unistd.h>

namespace corvane::helper {

class Descriptor {
 public:
  Descriptor() = default;
  explicit Descriptor(int number) noexcept : number_(number) {}
  Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    if (this != &other) {
      reset();
      number_ = std::exchange(other.number_, -1);
    }
    return *this;
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() { reset(); }

  void reset() noexcept {
    if (number_ >= 0) ::close(number_);
    number_ = -1;
  }
  [[nodiscard]] int get() const noexcept { return number_; }
  [[nodiscard]] int release() noexcept { return std::exchange(number_, -1); }
  explicit operator bool() const noexcept { return number_ >= 0; }

 private:
  int number_ = -1;
};

}  // namespace corvane::helper
