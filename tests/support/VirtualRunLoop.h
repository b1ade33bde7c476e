// A run loop on a virtual clock: time passes only when a test says so, and descriptors are ready when a test
// says so.
#pragma once

#include <algorithm>
#include <cstddef>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "platform/linux/LinuxRunLoop.h"

namespace corvane::test {

class VirtualRunLoop : public LinuxRunLoop {
 public:
  [[nodiscard]] std::unique_ptr<Source> scheduleTimer(double interval, bool repeats,
                                                      std::function<void()> fire) override {
    return add({std::move(fire), now_ + interval, interval, -1, repeats, false});
  }
  [[nodiscard]] std::unique_ptr<Source> watchDescriptor(int descriptor,
                                                        std::function<void()> readable) override {
    return add({std::move(readable), 0, 0, descriptor, false, false});
  }

  /// Lets this many seconds pass; timers that come due are fired in the order of their times.
  void advance(double seconds) {
    const double end = now_ + seconds;
    while (const auto next = nextTimer(end)) {
      now_ = std::max(now_, next->due);
      next->due += next->interval;
      next->ended = !next->repeats;
      next->call();
    }
    now_ = end;
  }
  /// Calls whoever watches the descriptor.
  void makeReadable(int descriptor) {
    const auto round = entries_;
    for (const auto& entry : round) {
      if (!entry->ended && entry->descriptor == descriptor) entry->call();
    }
  }

  [[nodiscard]] double now() const { return now_; }
  [[nodiscard]] std::size_t pendingTimers() const { return count(true); }
  [[nodiscard]] std::size_t watchedDescriptors() const { return count(false); }
  [[nodiscard]] std::vector<int> descriptors() const {
    std::vector<int> watched;
    for (const auto& entry : entries_) {
      if (!entry->ended && entry->descriptor >= 0) watched.push_back(entry->descriptor);
    }
    return watched;
  }

 private:
  struct Entry {
    std::function<void()> call;
    double due = 0;
    double interval = 0;
    int descriptor = -1;  // none: a timer
    bool repeats = false;
    bool ended = false;
  };
  class EntrySource : public Source {
   public:
    explicit EntrySource(std::shared_ptr<Entry> entry) : entry_(std::move(entry)) {}
    EntrySource(const EntrySource&) = delete;
    EntrySource& operator=(const EntrySource&) = delete;
    ~EntrySource() override { entry_->ended = true; }

   private:
    std::shared_ptr<Entry> entry_;
  };

  std::unique_ptr<Source> add(Entry entry) {
    entries_.push_back(std::make_shared<Entry>(std::move(entry)));
    return std::make_unique<EntrySource>(entries_.back());
  }
  /// The timer that fires first, up to this time; of two with the same time the older one.
  std::shared_ptr<Entry> nextTimer(double end) {
    std::erase_if(entries_, [](const auto& entry) { return entry->ended; });
    std::shared_ptr<Entry> next;
    for (const auto& entry : entries_) {
      if (entry->descriptor < 0 && entry->due <= end && (!next || entry->due < next->due)) next = entry;
    }
    return next;
  }
  [[nodiscard]] std::size_t count(bool timers) const {
    return static_cast<std::size_t>(std::count_if(
        entries_.begin(), entries_.end(),
        [timers](const auto& entry) { return !entry->ended && (entry->descriptor < 0) == timers; }));
  }

  double now_ = 0;
  std::vector<std::shared_ptr<Entry>> entries_;
};

}  // namespace corvane::test
