// Acts as an ordinary user for a while, in tests of what the system refuses. Possible only when the tests run
// as root.
#pragma once

#include <unistd.h>

namespace corvane::test {

class OtherUser {
 public:
  [[nodiscard]] static bool isPossible() { return ::geteuid() == 0; }
  explicit OtherUser(uid_t user = 65534) { acting_ = ::seteuid(user) == 0; }
  OtherUser(const OtherUser&) = delete;
  OtherUser& operator=(const OtherUser&) = delete;
  ~OtherUser() {
    if (acting_) static_cast<void>(::seteuid(0) == 0);
  }

 private:
  bool acting_ = false;
};

}  // namespace corvane::test
