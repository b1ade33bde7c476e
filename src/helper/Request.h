// What the pane asks of root and what it is answered, with the packets that carry both over the helper's
// socket. The decoders are given bytes that nobody has looked at yet: whatever is not exactly one well-formed
// packet is nothing.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane::helper {

/// The largest packet in either direction, in bytes; the socket keeps packets apart, so there are no partial
/// ones.
inline constexpr std::size_t kLargestPacket = 65536;
/// The most texts that a request may carry, the program's path among them.
inline constexpr std::size_t kMostTexts = 256;

struct Request {
  std::string program;  // absolute path
  std::vector<std::string> arguments;
  bool wantsOutput = false;
};

enum class Outcome : std::uint8_t {
  Started,  // started; a tool that is awaited has ended
  Denied,   // none of the commands that the helper carries out, or something was planted in its way
  Failed,   // could not be started
  Missing,  // what was to be read is not there
};

struct Reply {
  Outcome outcome = Outcome::Started;
  std::int32_t exitStatus = 0;  // of a tool that is awaited
  std::string message;          // one line for the log; empty when there is nothing to say
};

/// Nothing when the request is too large for a packet.
[[nodiscard]] std::optional<std::string> encodeRequest(const Request& request);
[[nodiscard]] std::optional<Request> decodeRequest(std::string_view packet);
/// A message that is too long is cut.
[[nodiscard]] std::string encodeReply(const Reply& reply);
[[nodiscard]] std::optional<Reply> decodeReply(std::string_view packet);

}  // namespace corvane::helper
