#include "platform/linux/LinuxDirectoryEvents.h"

#include <algorithm>
#include <cerrno>
#include <utility>

#include <sys/inotify.h>

#include "platform/linux/DirectoryBatch.h"
#include "platform/linux/DirectorySnapshot.h"
#include "platform/linux/InotifyFolderWatches.h"
#include "platform/linux/WatchedAncestors.h"
#include "platform/linux/WatchedTree.h"
#include "posix/SystemError.h"
#include "values/Text.h"

namespace corvane {
namespace {

constexpr std::string_view kNoWatches =
    "Could not watch the client's directories (%@); looking at them every 2 seconds instead";
constexpr double kSecondsBetweenLooks = 2;

// IN_EXCL_UNLINK: a file that is still written after its removal is no change of the folder.
constexpr std::uint32_t kTreeMask =
    IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO | IN_MODIFY | IN_ATTRIB | IN_EXCL_UNLINK;
// Attributes, since a folder may become readable.
constexpr std::uint32_t kAncestorMask = IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO | IN_ATTRIB;

/// Everything that is made anew when events were lost.
struct Watches {
  Watches(const std::vector<std::string>& roots, const WatchedTree::Report& report)
      : ancestors(ancestorWatches, roots), tree(treeWatches, roots, report) {}

  InotifyFolderWatches ancestorWatches{kAncestorMask};
  InotifyFolderWatches treeWatches{kTreeMask};
  WatchedAncestors ancestors;
  WatchedTree tree;
  std::unique_ptr<RunLoop::Source> ancestorSource;
  std::unique_ptr<RunLoop::Source> treeSource;
};

class Stream : public DirectoryEventStream {
 public:
  Stream(RunLoop& runLoop, SystemLog& log, std::vector<std::string> roots, double latency,
         DirectoryEvents::Callback callback)
      : runLoop_(runLoop),
        log_(log),
        roots_(std::move(roots)),
        batch_(runLoop, latency, std::move(callback)) {}

  void scheduleWithRunLoop() override;
  void unscheduleFromRunLoop() override;
  bool start() override;
  void stop() override;

 private:
  void build();
  void fallBack(int error);
  void listen();
  void look();
  void readAncestors();
  void readTree();
  void afterReading(bool eventsWereLost);
  void report(const std::string& directory);

  RunLoop& runLoop_;
  SystemLog& log_;
  std::vector<std::string> roots_;
  DirectoryBatch batch_;
  bool scheduled_ = false;
  bool started_ = false;
  std::unique_ptr<Watches> watches_;  // while there are enough of them
  DirectorySnapshot lastLook_;        // otherwise
  std::unique_ptr<RunLoop::Source> lookTimer_;
};

void Stream::scheduleWithRunLoop() {
  scheduled_ = true;
  listen();
}

void Stream::unscheduleFromRunLoop() {
  scheduled_ = false;
  lookTimer_.reset();
  if (!watches_) return;
  watches_->ancestorSource.reset();
  watches_->treeSource.reset();
}

bool Stream::start() {
  if (started_) return false;
  started_ = true;
  build();
  return true;
}

void Stream::stop() {
  started_ = false;
  lookTimer_.reset();
  watches_.reset();
  batch_.clear();
}

void Stream::build() {
  watches_.reset();  // first of all: the watches of both would have to fit into the limit at once
  watches_ = std::make_unique<Watches>(roots_, [this](const std::string& directory) { report(directory); });
  if (!watches_->ancestorWatches.isOpen()) return fallBack(watches_->ancestorWatches.error());
  if (!watches_->treeWatches.isOpen()) return fallBack(watches_->treeWatches.error());
  watches_->ancestors.follow();
  watches_->tree.build();
  if (watches_->ancestors.isExhausted() || watches_->tree.isExhausted()) return fallBack(ENOSPC);
  listen();
}

/// Gives all watches back, since other programs of the user need some too.
void Stream::fallBack(int error) {
  log_.write(formatText(kNoWatches, {systemErrorText(error)}));
  watches_.reset();
  lastLook_ = DirectorySnapshot(roots_);
  listen();
}

void Stream::listen() {
  if (!scheduled_ || !started_) return;
  if (watches_) {
    watches_->ancestorSource =
        runLoop_.watchDescriptor(watches_->ancestorWatches.descriptor(), [this] { readAncestors(); });
    watches_->treeSource =
        runLoop_.watchDescriptor(watches_->treeWatches.descriptor(), [this] { readTree(); });
  } else {
    lookTimer_ = runLoop_.scheduleTimer(kSecondsBetweenLooks, true, [this] { look(); });
  }
}

void Stream::look() {
  DirectorySnapshot now(roots_);
  for (const auto& directory : now.changesSince(lastLook_)) report(directory);
  lastLook_ = std::move(now);
}

void Stream::readAncestors() {
  bool eventsWereLost = false;
  bool waysChanged = false;
  readInotifyEvents(watches_->ancestorWatches.descriptor(), [&](const InotifyEvent& event) {
    eventsWereLost = eventsWereLost || (event.mask & IN_Q_OVERFLOW) != 0;
    waysChanged = waysChanged || watches_->ancestors.concerns(event);
  });
  if (waysChanged) {
    watches_->ancestors.follow();
    watches_->tree.reconcileRoots();
  }
  afterReading(eventsWereLost);
}

void Stream::readTree() {
  bool eventsWereLost = false;
  readInotifyEvents(watches_->treeWatches.descriptor(), [&](const InotifyEvent& event) {
    eventsWereLost = eventsWereLost || (event.mask & IN_Q_OVERFLOW) != 0;
    if (!eventsWereLost) watches_->tree.handle(event);
  });
  afterReading(eventsWereLost);
}

void Stream::afterReading(bool eventsWereLost) {
  if (eventsWereLost) {
    for (const auto& root : roots_) report(root);
    build();
  } else if (watches_->ancestors.isExhausted() || watches_->tree.isExhausted()) {
    // What is below the folder without a watch is unknown from here on.
    for (const auto& root : roots_) report(root);
    fallBack(ENOSPC);
  }
}

void Stream::report(const std::string& directory) {
  if (!batch_.add(directory)) batch_.replaceBy(roots_);
}

}  // namespace

std::unique_ptr<DirectoryEventStream> LinuxDirectoryEvents::createStream(std::vector<std::string> directories,
                                                                         double latency, Callback callback) {
  std::vector<std::string> roots;
  for (auto& directory : directories) {
    if (directory.empty() || directory.front() != '/') continue;
    while (directory.size() > 1 && directory.back() == '/') directory.pop_back();
    if (std::find(roots.begin(), roots.end(), directory) == roots.end())
      roots.push_back(std::move(directory));
  }
  return std::make_unique<Stream>(runLoop_, log_, std::move(roots), latency, std::move(callback));
}

}  // namespace corvane
