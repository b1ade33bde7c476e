// A file in memory that is written page by page, tells its owner after each page what it holds, and fails
// where it is told to: what a kill, a full disk or a bad one leaves at any moment.
#pragma once

#include <algorithm>
#include <cerrno>
#include <functional>
#include <limits>
#include <string>
#include <string_view>

#include "posix/InPlaceWrite.h"

namespace corvane::test {

class FaultyFile final : public WritableFile {
 public:
  static constexpr std::size_t kPage = 4096;
  static constexpr std::size_t kNever = std::numeric_limits<std::size_t>::max();

  explicit FaultyFile(std::string bytes) : contents(std::move(bytes)) {}

  ssize_t write(std::string_view bytes, std::size_t offset) override {
    std::size_t written = 0;
    while (written < bytes.size()) {
      const std::size_t at = offset + written;
      const std::size_t count = std::min(bytes.size() - written, kPage - at % kPage);
      if (fails() || at + count > room) {
        if (written > 0) return static_cast<ssize_t>(written);
        errno = at + count > room ? ENOSPC : EIO;
        return -1;
      }
      if (contents.size() < at + count) contents.resize(at + count, '\0');
      contents.replace(at, count, bytes.substr(written, count));
      written += count;
      changed();
      if (shortWrites) break;
    }
    return static_cast<ssize_t>(written);
  }
  int reserve(std::size_t size) override {
    if (!canReserve) return EOPNOTSUPP;
    return size > room ? ENOSPC : fails() ? EIO : 0;
  }
  int resize(std::size_t size) override {
    if (fails()) return EIO;
    contents.resize(size, '\0');
    changed();
    return 0;
  }
  int flush() override { return fails() ? EIO : 0; }

  std::string contents;
  bool canReserve = false;
  bool shortWrites = false;      // each write ends after its first page
  std::size_t room = kNever;     // the size that the disk has room for
  std::size_t failing = kNever;  // the act that fails once: a page, a change of size, a flush
  std::size_t acts = 0;          // so far
  std::function<void()> onChange;

 private:
  bool fails() { return acts++ == failing; }
  void changed() const {
    if (onChange) onChange();
  }
};

}  // namespace corvane::test
