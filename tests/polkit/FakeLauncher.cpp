// Stands for polkit's launcher and for the helper behind it. What it does is in its name: the tests start it
// through links of different names.
#include <cstdio>
#include <string_view>

#include <sys/socket.h>
#include <unistd.h>

#include "helper/Session.h"

int main(int, char** vector) {
  using namespace corvane::helper;
  const std::string_view path = vector[0];
  const auto name = path.substr(path.rfind('/') + 1);
  if (name == "dismissed") return 126;
  if (name == "refused") {
    std::fputs(
        "Error executing command as another user: Not authorized\n\nThis incident has been reported.\n",
        stderr);
    return 127;
  }
  if (name == "no-agent") {
    std::fputs("Error executing command as another user: No authentication agent found.\n", stderr);
    return 127;
  }
  if (name == "mute") return 0;
  if (name == "wrong-hello") {
    (void)sendPacket(0, "welcome");
    (void)receivePacket(0);
    return 0;
  }
  if (name == "another-version") {
    (void)sendPacket(0, "qlhelper 0.0.1 ready, packets 1");
    while (receivePacket(0).state != Packet::State::Closed) {
    }
    return 0;
  }
  if (name == "hangs-up") {
    ::shutdown(0, SHUT_RDWR);
    ::close(0);
    ::pause();
  }
  (void)sendPacket(0, hello());
  if (name == "speaks-unasked") (void)sendPacket(0, encodeReply({}));
  auto packet = receivePacket(0);
  if (name == "dies") return 0;
  if (name == "garbage") (void)sendPacket(0, "no reply at all");
  if (name == "without-output") (void)sendPacket(0, encodeReply({}));
  // "silent" and the others stay until the pane lets go.
  while (receivePacket(0).state != Packet::State::Closed) {
  }
  return 0;
}
