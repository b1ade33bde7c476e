// Watches one path and tells its delegate once when it disappears (is deleted, renamed or revoked), or each
// time it is written. The pane uses it to notice an uninstall and the loss of the settings file, the
// Configuration tab to learn that a client run has ended. Runs on the run loop of the thread that made it.
//
// An armed watcher is kept alive by its own queue: dropping the last outside reference does not stop it, only
// `endWatching` does. Since the delegate is not owned, whoever is the delegate ends the watch, or takes
// itself back with `setDelegate(nullptr)`, before it goes.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "platform/FileEventQueues.h"
#include "platform/SystemLog.h"

namespace corvane {

class QLCFileWatcher;

/// A delegate implements the call of the mode that it uses.
class QLCFileWatcherDelegate {
 public:
  virtual ~QLCFileWatcherDelegate() = default;
  virtual void fileWatcherFileHasDisappeared(QLCFileWatcher& /*watcher*/, const std::string& /*path*/) {}
  virtual void fileWatcherFileHasBeenWritten(QLCFileWatcher& /*watcher*/, const std::string& /*path*/) {}
};

class QLCFileWatcher : public std::enable_shared_from_this<QLCFileWatcher> {
  struct OnlyCreated {};

 public:
  /// A watching object, or nothing when the watch can't be armed: silently when nothing is at the path,
  /// otherwise with one line in the log. To give no path at all is a programming error that ends the program.
  [[nodiscard]] static std::shared_ptr<QLCFileWatcher> createWithPathWatchForWriteOnly(
      FileEventQueues& queues, SystemLog& log, const std::optional<std::string>& path,
      bool watchForWriteOnly);

  QLCFileWatcher(OnlyCreated, FileEventQueues& queues, SystemLog& log, std::string path,
                 bool watchForWriteOnly);
  QLCFileWatcher(const QLCFileWatcher&) = delete;
  QLCFileWatcher& operator=(const QLCFileWatcher&) = delete;
  ~QLCFileWatcher();

  /// Arms the watch on the path as it is now; false when that fails.
  [[nodiscard]] bool startWatching();
  /// Stops the watch; the delegate hears nothing more. Harmless when it is stopped. May be what keeps the
  /// watcher alive: without another reference it is gone afterwards.
  void endWatching();

  [[nodiscard]] const std::string& path() const { return path_; }
  [[nodiscard]] bool watchForWriteOnly() const { return watchForWriteOnly_; }
  [[nodiscard]] QLCFileWatcherDelegate* delegate() const { return delegate_; }
  void setDelegate(QLCFileWatcherDelegate* delegate) { delegate_ = delegate; }

 private:
  /// Puts the queue on the run loop; what went wrong has been logged when it answers false.
  [[nodiscard]] bool armQueue(WatchedPath& watchedPath);
  void gotActivityOnFileDescriptorCallbackTypes(const FileEventQueue* queue);
  void notifyDelegateThatFileHasDisappeared();
  void checkWriteOnFile();
  void logFailure(std::string_view format, const std::string& error = {});

  FileEventQueues& queues_;
  SystemLog& log_;
  const std::string path_;
  const bool watchForWriteOnly_;
  QLCFileWatcherDelegate* delegate_ = nullptr;
  std::unique_ptr<WatchedPath> watchedPath_;
  std::unique_ptr<FileEventQueue> queue_;
};

}  // namespace corvane
