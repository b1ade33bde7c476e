#include "platform/linux/LinuxRights.h"

#include <cerrno>

#include <unistd.h>

namespace corvane {

DirectRights::DirectRights(helper::Place place) : runner_(std::move(place), ::geteuid()) {}

helper::Answer DirectRights::carryOut(const helper::Request& request) { return runner_.carryOut(request); }

RunOutput::RunOutput(helper::SupervisedRun run, Wait wait) : run_(std::move(run)), wait_(std::move(wait)) {}

RunOutput::~RunOutput() {
  // The supervisor may be gone already; a pipe that nobody reads must not end the pane.
  if (gaveSomething_) helper::releaseGently(run_.leash);
}

OutputPipe::ReadOutcome RunOutput::read(char* buffer, std::size_t capacity) {
  for (;;) {
    if (wait_ && !wait_(run_.output.get())) return {.endOfFile = true};
    const ssize_t count = ::read(run_.output.get(), buffer, capacity);
    if (count > 0) {
      gaveSomething_ = true;
      return {.bytes = static_cast<std::size_t>(count)};
    }
    if (count == 0) return {.endOfFile = true};
    if (errno != EINTR && errno != EAGAIN) return {.error = true};
  }
}

}  // namespace corvane
