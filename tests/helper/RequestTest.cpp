// The packets between pane and helper: what is one, and everything that is almost one.
#include <gtest/gtest.h>

#include "helper/Request.h"

namespace corvane::helper {
namespace {

const Request kRequest{
    .program = "/bin/cp", .arguments = {"/private/tmp/a", "", "x\ny"}, .wantsOutput = true};

TEST(Request, ComesBackAsItWas) {
  const auto packet = encodeRequest(kRequest);
  ASSERT_TRUE(packet);
  const auto decoded = decodeRequest(*packet);
  ASSERT_TRUE(decoded);
  EXPECT_EQ(decoded->program, kRequest.program);
  EXPECT_EQ(decoded->arguments, kRequest.arguments);
  EXPECT_TRUE(decoded->wantsOutput);
}

TEST(Request, EveryHalfPacketIsNothing) {
  const auto packet = *encodeRequest(kRequest);
  for (std::size_t size = 0; size < packet.size(); ++size) {
    EXPECT_FALSE(decodeRequest(std::string_view(packet).substr(0, size))) << size;
  }
}

TEST(Request, PacketWithSomethingBehindItIsNothing) {
  EXPECT_FALSE(decodeRequest(*encodeRequest(kRequest) + "x"));
}

TEST(Request, AnyBrokenNumberIsNothingOrAnotherRequestButNeverReadsBeyondThePacket) {
  const auto packet = *encodeRequest(kRequest);
  for (std::size_t at = 0; at < packet.size(); ++at) {
    auto broken = packet;
    broken[at] = '\xff';
    const auto decoded = decodeRequest(broken);
    std::size_t bytes = 0;
    if (decoded) bytes = decoded->program.size();
    for (const auto& argument : decoded ? decoded->arguments : std::vector<std::string>{})
      bytes += argument.size();
    EXPECT_LE(bytes, packet.size()) << at;
  }
}

TEST(Request, TooManyOrTooLargeTextsAreNotEncoded) {
  Request request{.program = "/p", .arguments = {}};
  request.arguments.assign(kMostTexts - 1, "x");
  EXPECT_TRUE(encodeRequest(request));
  EXPECT_TRUE(decodeRequest(*encodeRequest(request)));
  request.arguments.emplace_back("x");
  EXPECT_FALSE(encodeRequest(request));
  EXPECT_FALSE(encodeRequest({.program = std::string(kLargestPacket, 'x'), .arguments = {}}));
  EXPECT_FALSE(encodeRequest({.program = "/p", .arguments = {std::string(std::size_t{1} << 20, 'x')}}));
}

void putNumber(std::string& packet, std::uint32_t number) {
  packet.append(reinterpret_cast<const char*>(&number), sizeof number);
}

/// A packet of empty texts, as an encoder without limits would make it.
std::string packetOf(std::uint32_t wantsOutput, std::uint32_t texts) {
  std::string packet = "QLq1";
  putNumber(packet, wantsOutput);
  putNumber(packet, texts);
  for (std::uint32_t i = 0; i < texts; ++i) putNumber(packet, 0);
  return packet;
}

TEST(Request, PacketThatNoEncoderMakesIsNothing) {
  EXPECT_TRUE(decodeRequest(packetOf(1, 1)));
  EXPECT_FALSE(decodeRequest(packetOf(2, 1)));
  EXPECT_FALSE(decodeRequest(packetOf(0, 0)));
  EXPECT_TRUE(decodeRequest(packetOf(0, kMostTexts)));
  EXPECT_FALSE(decodeRequest(packetOf(0, kMostTexts + 1)));
}

TEST(Reply, ComesBackAsItWas) {
  const std::string message("no\0pe", 5);
  const auto decoded =
      decodeReply(encodeReply({.outcome = Outcome::Denied, .exitStatus = -7, .message = message}));
  ASSERT_TRUE(decoded);
  EXPECT_EQ(decoded->outcome, Outcome::Denied);
  EXPECT_EQ(decoded->exitStatus, -7);
  EXPECT_EQ(decoded->message, message);
}

TEST(Reply, LongMessageIsCut) {
  const auto decoded = decodeReply(encodeReply({.message = std::string(100000, 'm')}));
  ASSERT_TRUE(decoded);
  EXPECT_EQ(decoded->message, std::string(2000, 'm'));
}

TEST(Reply, HalfOrUnknownPacketIsNothing) {
  const auto packet = encodeReply({.outcome = Outcome::Failed, .exitStatus = 1, .message = "m"});
  for (std::size_t size = 0; size < packet.size(); ++size) {
    EXPECT_FALSE(decodeReply(std::string_view(packet).substr(0, size))) << size;
  }
  EXPECT_FALSE(decodeReply(packet + "x"));
  EXPECT_FALSE(decodeReply(*encodeRequest(kRequest)));
  auto unknown = packet;
  unknown[4] = 4;
  EXPECT_FALSE(decodeReply(unknown));
}

}  // namespace
}  // namespace corvane::helper
