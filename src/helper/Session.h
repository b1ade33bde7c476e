// The root helper's conversation with the pane: a hello, then one answer for each request, until the pane
// lets go.
#pragma once

#include <string>
#include <string_view>

#include "helper/CommandRunner.h"

namespace corvane::helper {

/// The release that this was built of, as the polkit action names it too.
[[nodiscard]] std::string_view release();
/// The first packet of a helper, which tells it from a failed start and from the helper of another pane; it
/// also prints it when it is asked for its version. Changes with the release and with the form of the
/// packets.
[[nodiscard]] std::string_view hello();

/// Serves the requests that arrive at the socket (kept-apart packets). Returns the process's exit status: 0
/// after the other end has closed, 1 after something that is no request.
[[nodiscard]] int serveSession(int socket, CommandRunner& runner);

/// One packet with the descriptors that accompany it. False when the other end is gone.
[[nodiscard]] bool sendPacket(int socket, std::string_view packet, int firstDescriptor = -1,
                              int secondDescriptor = -1);

struct Packet {  // NOLINT(bugprone-reserved-identifier): of the array's own copying loop
  enum class State { Whole, TooLarge, Closed } state = State::Closed;
  std::string bytes;
  FileDescriptor descriptors[2];
};
/// Waits for one packet.
[[nodiscard]] Packet receivePacket(int socket);

}  // namespace corvane::helper
