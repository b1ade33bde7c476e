#include "pane/QLCFileWatcher.h"

#include <cstdlib>
#include <string_view>
#include <utility>

#include "values/Text.h"

namespace corvane {
namespace {

constexpr std::string_view kClassName = "QLCFileWatcher";

constexpr std::string_view kMissingParameter = "Invalid parameter not satisfying: %@";
// Each of these is filled with the class name, the last component of the path and, where it has a place for
// it, the error.
constexpr std::string_view kCouldNotOpen = "%@: Could not open the file '%@' to monitor its existence: %s";
constexpr std::string_view kCouldNotCreate =
    "%@: Could not create a kqueue to monitor the existence of the file '%@': %s";
constexpr std::string_view kCouldNotRegister =
    "%@: Could not register file-watching event (to monitor the existence of the file '%@') with queue: %s";
constexpr std::string_view kCouldNotWrap =
    "%@: Could not wrap kqueue (for monitoring the existence of the file '%@') in a CFFileDescriptor.";
constexpr std::string_view kCouldNotAdd =
    "Could not wrap kqueue (for watching the control file) in a CFRunloopSource.";

}  // namespace

std::shared_ptr<QLCFileWatcher> QLCFileWatcher::createWithPathWatchForWriteOnly(
    FileEventQueues& queues, SystemLog& log, const std::optional<std::string>& path, bool watchForWriteOnly) {
  if (!path) {
    log.write(formatText(kMissingParameter, {"path != nil"}));
    std::abort();
  }
  auto watcher = std::make_shared<QLCFileWatcher>(OnlyCreated(), queues, log, *path, watchForWriteOnly);
  if (!watcher->startWatching()) return nullptr;
  return watcher;
}

QLCFileWatcher::QLCFileWatcher(OnlyCreated /*only*/, FileEventQueues& queues, SystemLog& log,
                               std::string path, bool watchForWriteOnly)
    : queues_(queues), log_(log), path_(std::move(path)), watchForWriteOnly_(watchForWriteOnly) {}

QLCFileWatcher::~QLCFileWatcher() { endWatching(); }

bool QLCFileWatcher::startWatching() {
  auto opened = queues_.openForEvents(path_);
  if (!opened.path) {
    // Nothing there: the callers take it to mean that there is nothing to watch yet.
    if (!opened.noSuchFile) logFailure(kCouldNotOpen, opened.error);
    return false;
  }
  auto created = queues_.createQueue();
  if (!created.queue) {
    logFailure(kCouldNotCreate, created.error);
    return false;
  }
  queue_ = std::move(created.queue);
  if (!armQueue(*opened.path)) {
    queue_.reset();
    return false;
  }
  watchedPath_ = std::move(opened.path);
  return true;
}

bool QLCFileWatcher::armQueue(WatchedPath& watchedPath) {
  const auto kind = watchForWriteOnly_ ? FileEventKind::Write : FileEventKind::Disappearance;
  if (const auto error = queue_->registerEvent(watchedPath, kind)) {
    logFailure(kCouldNotRegister, *error);
    return false;
  }
  // The queue's callback owns a reference to the watcher, intended: a watch lasts until it is ended, not
  // until it is forgotten.
  const auto gotActivity = [self = shared_from_this(), queue = queue_.get()] {
    self->gotActivityOnFileDescriptorCallbackTypes(queue);
  };
  if (!queue_->wrap(gotActivity)) {
    logFailure(kCouldNotWrap);
    return false;
  }
  queue_->enableCallBack();
  if (!queue_->addToRunLoop()) {
    log_.write(kCouldNotAdd);
    return false;
  }
  return true;
}

void QLCFileWatcher::endWatching() {
  // Taken out first: with the queue goes the reference that may be the last one to this watcher.
  // The queue is declared last so that it is closed first.
  const auto watchedPath = std::move(watchedPath_);
  const auto queue = std::move(queue_);
}

void QLCFileWatcher::gotActivityOnFileDescriptorCallbackTypes(const FileEventQueue* queue) {
  if (queue != queue_.get()) return;
  const auto self = shared_from_this();  // the delegate normally ends the watch or lets go of the watcher
  if (watchForWriteOnly_) {
    checkWriteOnFile();
  } else {
    notifyDelegateThatFileHasDisappeared();
  }
}

void QLCFileWatcher::notifyDelegateThatFileHasDisappeared() {
  // The callback is not enabled again, intended: disappearance is reported at most once, whatever comes to
  // the path later.
  if (delegate_ != nullptr) delegate_->fileWatcherFileHasDisappeared(*this, path_);
}

void QLCFileWatcher::checkWriteOnFile() {
  if (delegate_ != nullptr) delegate_->fileWatcherFileHasBeenWritten(*this, path_);
  if (!queue_) return;  // the delegate has ended the watch
  // A fresh queue on the path as it is now, so that a file put in the place of the old one is watched too.
  // When that fails the watcher stays silent from now on.
  endWatching();
  static_cast<void>(startWatching());
}

void QLCFileWatcher::logFailure(std::string_view format, const std::string& error) {
  log_.write(formatText(format, {kClassName, lastPathComponent(path_), error}));
}

}  // namespace corvane
