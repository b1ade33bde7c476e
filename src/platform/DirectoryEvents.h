// Streams of directory changes: in which of some folders something changed, in batches.
//
// A platform must report each of the folders, as the caller spelled it, after an entry of it came, went, was
// renamed, replaced, written or changed its attributes (mode, times); after a volume was mounted on or
// unmounted from an entry; and after the folder itself came or became another one, by whatever happened to
// it, its parents or the links on the way. It may report a folder that only went, a folder in which nothing
// changed, and folders below the ones asked for; callers compare with the paths that they mean and then look
// for themselves. Changes below the entries of a folder need not be reported.
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
  /// False when the stream could not be started. A stream that can't follow all the folders says so in the
  /// log itself.
  virtual bool start() = 0;
  virtual void stop() = 0;
};

class DirectoryEvents {
 public:
  /// The absolute paths of folders in which something changed, each once.
  using Callback = std::function<void(const std::vector<std::string>& directories)>;

  virtual ~DirectoryEvents() = default;
  /// A stream over the folders, which need not exist, from now on. A batch is delivered `latency` seconds
  /// after its first event, whatever else happens meanwhile.
  [[nodiscard]] virtual std::unique_ptr<DirectoryEventStream> createStream(
      std::vector<std::string> directories, double latency, Callback callback) = 0;
};

}  // namespace corvane
