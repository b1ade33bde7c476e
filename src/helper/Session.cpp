#include "helper/Session.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <vector>

#include <sys/socket.h>

namespace corvane::helper {

std::string_view release() { return CORVANE_VERSION; }

std::string_view hello() { return "qlhelper " CORVANE_VERSION " ready, packets 2"; }

bool sendPacket(int socket, std::string_view packet, int firstDescriptor, int secondDescriptor) {
  iovec part{const_cast<char*>(packet.data()), packet.size()};
  msghdr message{};
  message.msg_iov = &part;
  message.msg_iovlen = 1;
  alignas(cmsghdr) char control[CMSG_SPACE(2 * sizeof(int))] = {};
  if (firstDescriptor >= 0) {
    const int both[] = {firstDescriptor, secondDescriptor};
    message.msg_control = control;
    message.msg_controllen = sizeof control;
    cmsghdr* header = CMSG_FIRSTHDR(&message);
    header->cmsg_level = SOL_SOCKET;
    header->cmsg_type = SCM_RIGHTS;
    header->cmsg_len = CMSG_LEN(sizeof both);
    std::memcpy(CMSG_DATA(header), both, sizeof both);
  }
  for (;;) {
    const ssize_t sent = ::sendmsg(socket, &message, MSG_NOSIGNAL);
    if (sent >= 0 || errno != EINTR) return sent == static_cast<ssize_t>(packet.size());
  }
}

Packet receivePacket(int socket) {
  Packet packet;
  std::vector<char> buffer(kLargestPacket);
  iovec part{buffer.data(), buffer.size()};
  msghdr message{};
  message.msg_iov = &part;
  message.msg_iovlen = 1;
  alignas(cmsghdr) char control[CMSG_SPACE(2 * sizeof(int))] = {};
  message.msg_control = control;
  message.msg_controllen = sizeof control;
  ssize_t count = 0;
  do {
    count = ::recvmsg(socket, &message, MSG_CMSG_CLOEXEC);
  } while (count < 0 && errno == EINTR);
  for (cmsghdr* header = CMSG_FIRSTHDR(&message); header != nullptr; header = CMSG_NXTHDR(&message, header)) {
    if (header->cmsg_level != SOL_SOCKET || header->cmsg_type != SCM_RIGHTS) continue;
    int numbers[2] = {-1, -1};
    std::memcpy(numbers, CMSG_DATA(header), std::min(header->cmsg_len - CMSG_LEN(0), sizeof numbers));
    for (int i = 0; i < 2; ++i) packet.descriptors[i] = FileDescriptor(numbers[i]);
  }
  if (count <= 0) return packet;
  packet.state = (message.msg_flags & MSG_TRUNC) != 0 ? Packet::State::TooLarge : Packet::State::Whole;
  packet.bytes.assign(buffer.data(), static_cast<std::size_t>(count));
  return packet;
}

int serveSession(int socket, CommandRunner& runner) {
  if (!sendPacket(socket, hello())) return 0;
  for (;;) {
    const auto packet = receivePacket(socket);
    if (packet.state == Packet::State::Closed) return 0;
    const auto request = packet.state == Packet::State::Whole ? decodeRequest(packet.bytes) : std::nullopt;
    if (!request) return 1;
    const auto answer = runner.carryOut(*request);
    if (!sendPacket(socket, encodeReply(answer.reply), answer.run.output.get(), answer.run.leash.get()))
      return 0;
  }
}

}  // namespace corvane::helper
