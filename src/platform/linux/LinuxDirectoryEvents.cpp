#include "platform/linux/LinuxDirectoryEvents.h"

#include <algorithm>
#include <utility>

#include "platform/linux/DirectoryBatch.h"
#include "platform/linux/WatchedFolders.h"
#include "posix/SystemError.h"
#include "values/Text.h"

namespace corvane {
namespace {

constexpr std::string_view kNoWatches =
    "Could not watch the client's directories (%@); changes that others make are not seen";

class Stream : public DirectoryEventStream {
 public:
  Stream(LinuxRunLoop& runLoop, SystemLog& log, std::vector<std::string> roots, double latency,
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
  void listen();
  void logProblem();

  LinuxRunLoop& runLoop_;
  SystemLog& log_;
  std::vector<std::string> roots_;
  DirectoryBatch batch_;
  bool scheduled_ = false;
  bool problemIsLogged_ = false;
  std::unique_ptr<WatchedFolders> watched_;  // while started
  std::unique_ptr<RunLoop::Source> eventSource_;
  std::unique_ptr<RunLoop::Source> mountSource_;
};

void Stream::scheduleWithRunLoop() {
  scheduled_ = true;
  listen();
}

void Stream::unscheduleFromRunLoop() {
  scheduled_ = false;
  eventSource_.reset();
  mountSource_.reset();
}

bool Stream::start() {
  if (watched_) return false;
  problemIsLogged_ = false;
  watched_ = std::make_unique<WatchedFolders>(roots_, [this](const auto& folder) { batch_.add(folder); });
  logProblem();
  listen();
  return watched_->events() >= 0;
}

void Stream::stop() {
  eventSource_.reset();
  mountSource_.reset();
  watched_.reset();
  batch_.clear();
}

void Stream::listen() {
  if (!scheduled_ || !watched_) return;
  if (watched_->events() >= 0) {
    eventSource_ = runLoop_.watchDescriptor(watched_->events(), [this] {
      watched_->readEvents();
      logProblem();
    });
  }
  if (watched_->mounts() >= 0) {
    mountSource_ = runLoop_.watchDescriptor(watched_->mounts(), [this] {
      watched_->readMounts();
      logProblem();
    });
  }
}

void Stream::logProblem() {
  if (watched_->problem() == 0 || std::exchange(problemIsLogged_, true)) return;
  log_.write(formatText(kNoWatches, {systemErrorText(watched_->problem())}));
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
