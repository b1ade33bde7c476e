// Streams of directory changes: which directories at or below some roots had a change, in batches.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace corvane {

class DirectoryEventStream {
 public:
  virtual ~DirectoryEventStream() = default;
  /// Ties the stream to the main run loop, in the common modes; unties it.
  virtual void scheduleWithRunLoop() = 0;
  virtual void unscheduleFromRunLoop() = 0;
  /// False when the stream could not be started. A stream that can't follow the directories as they change
  /// says so in the log itself, and looks at them in some other way.
  virtual bool start() = 0;
  virtual void stop() = 0;
};

class DirectoryEvents {
 public:
  /// The absolute paths of directories in which something changed, each once.
  using Callback = std::function<void(const std::vector<std::string>& directories)>;

  virtual ~DirectoryEvents() = default;
  /// A stream over the directories (which need not exist) and everything below them, from now on. A batch is
  /// delivered `latency` seconds after its first event, whatever else happens meanwhile.
  [[nodiscard]] virtual std::unique_ptr<DirectoryEventStream> createStream(
      std::vector<std::string> directories, double latency, Callback callback) = 0;
};

}  // namespace corvane
