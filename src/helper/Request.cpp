#include "helper/Request.h"

#include <cstring>

namespace corvane::helper {
namespace {

constexpr std::string_view kRequestMark = "QLq1";
constexpr std::string_view kReplyMark = "QLr1";
constexpr std::size_t kLongestMessage = 2000;

void putNumber(std::string& packet, std::uint32_t number) {
  char bytes[sizeof number];
  std::memcpy(bytes, &number, sizeof number);  // both ends run on one machine
  packet.append(bytes, sizeof bytes);
}

void putText(std::string& packet, std::string_view text) {
  putNumber(packet, static_cast<std::uint32_t>(text.size()));
  packet.append(text);
}

/// Takes a packet apart from its front; each taking answers nothing once the packet has too little left.
class Reader {
 public:
  explicit Reader(std::string_view packet) : rest_(packet) {}

  bool takeMark(std::string_view mark) {
    if (!rest_.starts_with(mark)) return false;
    rest_.remove_prefix(mark.size());
    return true;
  }
  std::optional<std::uint32_t> takeNumber() {
    std::uint32_t number = 0;
    if (rest_.size() < sizeof number) return std::nullopt;
    std::memcpy(&number, rest_.data(), sizeof number);
    rest_.remove_prefix(sizeof number);
    return number;
  }
  std::optional<std::string> takeText() {
    const auto size = takeNumber();
    if (!size || *size > rest_.size()) return std::nullopt;
    std::string text(rest_.substr(0, *size));
    rest_.remove_prefix(*size);
    return text;
  }
  [[nodiscard]] bool atEnd() const { return rest_.empty(); }

 private:
  std::string_view rest_;
};

}  // namespace

std::optional<std::string> encodeRequest(const Request& request) {
  if (request.arguments.size() >= kMostTexts) return std::nullopt;
  std::string packet(kRequestMark);
  putNumber(packet, request.wantsOutput ? 1 : 0);
  putNumber(packet, static_cast<std::uint32_t>(request.arguments.size() + 1));
  putText(packet, request.program);
  for (const auto& argument : request.arguments) {
    if (argument.size() > kLargestPacket) return std::nullopt;
    putText(packet, argument);
  }
  if (packet.size() > kLargestPacket) return std::nullopt;
  return packet;
}

std::optional<Request> decodeRequest(std::string_view packet) {
  if (packet.size() > kLargestPacket) return std::nullopt;
  Reader reader(packet);
  if (!reader.takeMark(kRequestMark)) return std::nullopt;
  const auto wantsOutput = reader.takeNumber();
  const auto count = reader.takeNumber();
  if (!wantsOutput || *wantsOutput > 1 || !count || *count == 0 || *count > kMostTexts) return std::nullopt;
  auto program = reader.takeText();
  if (!program) return std::nullopt;
  Request request{.program = std::move(*program), .arguments = {}, .wantsOutput = *wantsOutput == 1};
  for (std::uint32_t i = 1; i < *count; ++i) {
    auto argument = reader.takeText();
    if (!argument) return std::nullopt;
    request.arguments.push_back(std::move(*argument));
  }
  if (!reader.atEnd()) return std::nullopt;
  return request;
}

std::string encodeReply(const Reply& reply) {
  std::string packet(kReplyMark);
  putNumber(packet, static_cast<std::uint32_t>(reply.outcome));
  putNumber(packet, static_cast<std::uint32_t>(reply.exitStatus));
  putText(packet, std::string_view(reply.message).substr(0, kLongestMessage));
  return packet;
}

std::optional<Reply> decodeReply(std::string_view packet) {
  Reader reader(packet);
  if (!reader.takeMark(kReplyMark)) return std::nullopt;
  const auto outcome = reader.takeNumber();
  const auto exitStatus = reader.takeNumber();
  auto message = reader.takeText();
  if (!outcome || *outcome > static_cast<std::uint32_t>(Outcome::Missing) || !exitStatus || !message ||
      message->size() > kLongestMessage || !reader.atEnd()) {
    return std::nullopt;
  }
  return Reply{.outcome = static_cast<Outcome>(*outcome),
               .exitStatus = static_cast<std::int32_t>(*exitStatus),
               .message = std::move(*message)};
}

}  // namespace corvane::helper
