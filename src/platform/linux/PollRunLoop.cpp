#include "platform/linux/PollRunLoop.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <limits>
#include <utility>

#include <poll.h>

namespace corvane {
namespace {

/// Seconds on the monotonic clock.
double now() {
  return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

}  // namespace

struct PollRunLoop::Entry {
  std::function<void()> call;
  int descriptor = -1;  // none: a timer
  double due = std::numeric_limits<double>::infinity();
  double interval = 0;
  bool repeats = false;
  bool ended = false;
};

class PollRunLoop::EntrySource : public Source {
 public:
  explicit EntrySource(std::shared_ptr<Entry> entry) : entry_(std::move(entry)) {}
  EntrySource(const EntrySource&) = delete;
  EntrySource& operator=(const EntrySource&) = delete;
  ~EntrySource() override { entry_->ended = true; }

 private:
  std::shared_ptr<Entry> entry_;
};

PollRunLoop::PollRunLoop() = default;
PollRunLoop::~PollRunLoop() = default;

std::unique_ptr<RunLoop::Source> PollRunLoop::add(Entry entry) {
  entries_.push_back(std::make_shared<Entry>(std::move(entry)));
  return std::make_unique<EntrySource>(entries_.back());
}

std::unique_ptr<RunLoop::Source> PollRunLoop::scheduleTimer(double interval, bool repeats,
                                                            std::function<void()> fire) {
  return add({std::move(fire), -1, now() + interval, interval, repeats, false});
}

std::unique_ptr<RunLoop::Source> PollRunLoop::watchDescriptor(int descriptor,
                                                              std::function<void()> readable) {
  Entry entry;
  entry.call = std::move(readable);
  entry.descriptor = descriptor;
  return add(std::move(entry));
}

std::size_t PollRunLoop::pendingTimers() const {
  return static_cast<std::size_t>(std::count_if(entries_.begin(), entries_.end(), [](const auto& entry) {
    return !entry->ended && entry->descriptor < 0;
  }));
}

bool PollRunLoop::runUntil(const std::function<bool()>& condition, double seconds) {
  const double deadline = now() + seconds;
  while (!condition()) {
    if (now() >= deadline) return false;
    waitAndCall(deadline);
  }
  return true;
}

void PollRunLoop::dropEnded() {
  entries_.erase(
      std::remove_if(entries_.begin(), entries_.end(), [](const auto& entry) { return entry->ended; }),
      entries_.end());
}

void PollRunLoop::runReady() {
  while (waitAndCall(0)) {
  }
}

bool PollRunLoop::waitAndCall(double until) {
  dropEnded();
  const auto round = entries_;  // a call may add and end sources
  std::vector<pollfd> descriptors;
  for (const auto& entry : round) {
    descriptors.push_back({entry->descriptor, POLLIN, 0});  // poll passes over the -1 of a timer
    until = std::min(until, entry->due);
  }
  const double milliseconds = std::clamp(std::ceil((until - now()) * 1000), 0.0, 1e9);
  if (::poll(descriptors.data(), descriptors.size(), static_cast<int>(milliseconds)) < 0)
    return false;  // a signal
  bool called = false;
  for (std::size_t i = 0; i < round.size(); ++i) {
    Entry& entry = *round[i];
    if (entry.ended) continue;
    if (entry.descriptor >= 0) {
      if (descriptors[i].revents == 0) continue;
      called = true;
      entry.call();
    } else if (entry.due <= now()) {
      entry.ended = !entry.repeats;
      entry.due += entry.interval;
      called = true;
      entry.call();
    }
  }
  return called;
}

}  // namespace corvane
