// Event queues that report what happens to one path. The steps are separate since each can fail in its own
// way and the single-file watcher reports each failure in its own words.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace corvane {

enum class FileEventKind {
  Disappearance,  // deleted, renamed or revoked
  Write,          // written or truncated
};

/// A path opened for event notification only. Destroying it closes it.
class WatchedPath {
 public:
  virtual ~WatchedPath() = default;
};

/// One event queue. Destroying it, also from inside its callback, closes it; nothing is called back
/// afterwards. Nothing takes events off it: once one has happened, each further call that is asked for comes.
class FileEventQueue {
 public:
  virtual ~FileEventQueue() = default;
  /// Registers the event; the system's error text when that fails.
  [[nodiscard]] virtual std::optional<std::string> registerEvent(WatchedPath& path, FileEventKind kind) = 0;
  /// Wraps the queue's descriptor for the run loop; the callback is called each time an event waits, once
  /// `enable` was called. False when the wrapper can't be made.
  [[nodiscard]] virtual bool wrap(std::function<void()> gotActivity) = 0;
  /// Asks for one callback; after it, none comes until the next call.
  virtual void enableCallBack() = 0;
  /// Adds the wrapper to the current run loop in the common modes. False when that is not possible.
  [[nodiscard]] virtual bool addToRunLoop() = 0;
};

class FileEventQueues {
 public:
  struct OpenedPath {
    std::unique_ptr<WatchedPath> path;  // nothing on failure
    bool noSuchFile = false;            // the failure was that nothing is there
    std::string error;                  // the system's text for the failure
  };
  struct CreatedQueue {
    std::unique_ptr<FileEventQueue> queue;  // nothing on failure
    std::string error;
  };

  virtual ~FileEventQueues() = default;
  [[nodiscard]] virtual OpenedPath openForEvents(const std::string& path) = 0;
  [[nodiscard]] virtual CreatedQueue createQueue() = 0;
};

}  // namespace corvane
