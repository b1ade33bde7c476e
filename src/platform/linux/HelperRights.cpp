#include "platform/linux/HelperRights.h"

#include <algorithm>
#include <cerrno>
#include <chrono>

#include <poll.h>

#include "helper/Session.h"

namespace corvane {
namespace {

constexpr std::string_view kGone = "the root helper has ended";
constexpr std::string_view kGarbled = "the root helper's answer is not to be understood";

/// Whether the descriptor can be read within the time.
bool readableWithin(int descriptor, double seconds) {
  using Clock = std::chrono::steady_clock;
  const auto end = Clock::now() + std::chrono::duration<double>(seconds);
  for (;;) {
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now()).count();
    pollfd waited{descriptor, POLLIN, 0};
    const int ready = ::poll(&waited, 1, static_cast<int>(std::clamp<long long>(left, 0, 1000000)));
    if (ready >= 0 || errno != EINTR) return ready > 0;
  }
}

}  // namespace

HelperRights::HelperRights(LinuxRunLoop& runLoop, SystemLog& log, FileDescriptor socket, ChildProcess child,
                           double deadline)
    : runLoop_(runLoop),
      log_(log),
      socket_(std::move(socket)),
      child_(std::move(child)),
      deadline_(deadline) {
  source_ = runLoop_.watchDescriptor(socket_.get(), [this] { spokeUnasked(); });
}

HelperRights::~HelperRights() {
  source_.reset();
  socket_.reset();
  ChildProcess::leave(runLoop_, std::move(child_));
}

helper::Answer HelperRights::carryOut(const helper::Request& request) {
  if (!socket_) return giveUp(kGone);
  const auto packet = helper::encodeRequest(request);
  if (!packet) {
    return {.reply = {.outcome = helper::Outcome::Denied, .message = "the command line is too long"},
            .run = {}};
  }
  // Between requests there is nothing to say: what is readable now is not the answer to this one.
  if (readableWithin(socket_.get(), 0) || !helper::sendPacket(socket_.get(), *packet)) return giveUp(kGone);
  if (!readableWithin(socket_.get(), deadline_)) return giveUp(kHelperIsSilent);
  auto answer = helper::receivePacket(socket_.get());
  if (answer.state == helper::Packet::State::Closed) return giveUp(kGone);
  auto reply =
      answer.state == helper::Packet::State::Whole ? helper::decodeReply(answer.bytes) : std::nullopt;
  const bool started = reply && reply->outcome == helper::Outcome::Started;
  if (!reply || (started && request.wantsOutput && !answer.descriptors[1])) return giveUp(kGarbled);
  return {.reply = std::move(*reply),
          .run = {.output = std::move(answer.descriptors[0]), .leash = std::move(answer.descriptors[1])}};
}

void HelperRights::spokeUnasked() {
  log_.write("Administrator rights have ended: the root helper is gone");
  socket_.reset();
  end();
}

helper::Answer HelperRights::giveUp(std::string_view why) {
  if (socket_) {
    socket_.reset();
    source_ = runLoop_.scheduleTimer(0, false, [this] { end(); });
  }
  return {.reply = {.outcome = helper::Outcome::Failed, .message = std::string(why)}, .run = {}};
}

/// Whoever is told may destroy this object.
void HelperRights::end() {
  const auto source = std::move(source_);
  Authorization::tellLost();
}

}  // namespace corvane
