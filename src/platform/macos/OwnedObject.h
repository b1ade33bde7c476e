// A CoreFoundation object with one owner here.
#pragma once

#include <utility>

#include <CoreFoundation/CoreFoundation.h>

namespace corvane {

template <typename Reference>
class OwnedObject {
 public:
  OwnedObject() noexcept = default;
  /// Takes over one count.
  explicit OwnedObject(Reference object) noexcept : object_(object) {}
  OwnedObject(OwnedObject&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  OwnedObject& operator=(OwnedObject&& other) noexcept {
    std::swap(object_, other.object_);
    return *this;
  }
  ~OwnedObject() {
    if (object_ != nullptr) CFRelease(object_);
  }
  [[nodiscard]] Reference get() const noexcept { return object_; }
  explicit operator bool() const noexcept { return object_ != nullptr; }

 private:
  Reference object_ = nullptr;
};

}  // namespace corvane
