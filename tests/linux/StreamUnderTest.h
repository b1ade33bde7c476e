// A directory stream over the real kernel whose time is the test's: events are real and wait in their queues
// as soon as the call that caused them has returned, the latency passes when the test says so.
#pragma once

#include <functional>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "platform/SystemLog.h"
#include "platform/linux/LinuxDirectoryEvents.h"
#include "support/TemporaryFolder.h"
#include "support/VirtualRunLoop.h"

namespace corvane::test {

class StreamUnderTest {
 public:
  using Names = std::set<std::string>;

  /// Starts a stream over these paths below a temporary folder.
  void start(const std::vector<std::string>& roots, bool mustStart = true);
  /// Takes up the events that wait. Time stands still.
  void takeUpEvents() { static_cast<void>(numberOfWakeUps()); }
  /// The same; answers with how often the run loop would have woken the stream.
  [[nodiscard]] int numberOfWakeUps();
  /// The directories of the batches that are delivered by the end of the latency, relative to the temporary
  /// folder.
  Names changes();

  TemporaryFolder folder{TemporaryFolder::inMemory()};
  VirtualRunLoop loop;
  std::vector<std::vector<std::string>> batches;
  std::function<void()> onDelivery = [] {};
  std::vector<std::string> logLines;
  std::unique_ptr<DirectoryEventStream> stream;

 private:
  class Log : public SystemLog {
   public:
    explicit Log(std::vector<std::string>& lines) : lines_(lines) {}
    void write(std::string_view line) override { lines_.emplace_back(line); }

   private:
    std::vector<std::string>& lines_;
  };

  Names takeDelivered();

  Log log_{logLines};
  LinuxDirectoryEvents events_{loop, log_};
};

}  // namespace corvane::test
