// A terminal of the test's own, as the person who looks at it and types has it.
#pragma once

#include <string>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <pty.h>
#include <termios.h>
#include <unistd.h>

#include "posix/FileDescriptor.h"

namespace corvane::test {

class Terminal {
 public:
  Terminal() {
    int primary = -1;
    int secondary = -1;
    EXPECT_EQ(::openpty(&primary, &secondary, nullptr, nullptr, nullptr), 0);
    person_.reset(primary);
    program_.reset(secondary);
    for (const int end : {primary, secondary}) (void)::fcntl(end, F_SETFD, FD_CLOEXEC);
  }
  /// The end for programs.
  [[nodiscard]] int program() const { return program_.get(); }
  void type(const std::string& keys) const {
    EXPECT_EQ(::write(person_.get(), keys.data(), keys.size()), static_cast<ssize_t>(keys.size()));
  }
  /// Whether what is typed is shown.
  [[nodiscard]] bool echoes() const {
    termios settings{};
    EXPECT_EQ(::tcgetattr(person_.get(), &settings), 0);
    return (settings.c_lflag & ECHO) != 0;
  }
  /// Everything that stands there since it was last looked at.
  [[nodiscard]] std::string shown() const {
    std::string all;
    pollfd waited{person_.get(), POLLIN, 0};
    char buffer[4096];
    while (::poll(&waited, 1, 0) > 0 && (waited.revents & POLLIN) != 0) {
      const ssize_t count = ::read(person_.get(), buffer, sizeof buffer);
      if (count <= 0) break;
      all.append(buffer, static_cast<std::size_t>(count));
    }
    return all;
  }
  /// The window with it is closed.
  void close() { person_.reset(); }

 private:
  FileDescriptor person_;
  FileDescriptor program_;
};

}  // namespace corvane::test
