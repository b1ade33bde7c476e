#include "platform/linux/LinuxFileEventQueues.h"

#include <array>
#include <cerrno>
#include <climits>
#include <utility>

#include <fcntl.h>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/linux/InotifyEvents.h"
#include "posix/FileDescriptor.h"
#include "posix/SystemError.h"

namespace corvane {
namespace {

/// Which file this is, and under how many names it is known.
struct FileIdentity {
  dev_t device = 0;
  ino_t inode = 0;
  nlink_t links = 0;
  bool folder = false;
};

FileIdentity identityFrom(const struct stat& status) {
  return {status.st_dev, status.st_ino, status.st_nlink, S_ISDIR(status.st_mode)};
}

struct OpenedFile : WatchedPath {
  OpenedFile(std::string thePath, FileDescriptor theFile, FileIdentity theIdentity)
      : path(std::move(thePath)), file(std::move(theFile)), identity(theIdentity) {}
  std::string path;
  FileDescriptor file;
  FileIdentity identity;
};

class InotifyQueue : public FileEventQueue {
 public:
  InotifyQueue(LinuxRunLoop& runLoop, FileDescriptor queue) : runLoop_(runLoop), queue_(std::move(queue)) {}

  std::optional<std::string> registerEvent(WatchedPath& path, FileEventKind kind) override;
  bool wrap(std::function<void()> gotActivity) override;
  void enableCallBack() override;
  bool addToRunLoop() override;

 private:
  [[nodiscard]] bool isGone();
  [[nodiscard]] bool tellsOfEvent(const InotifyEvent& event);
  [[nodiscard]] std::optional<std::string> watchParent(const std::string& descriptorPath);
  void listen();
  void readEvents();
  void callBack();

  LinuxRunLoop& runLoop_;
  FileDescriptor queue_;
  FileEventKind kind_ = FileEventKind::Disappearance;
  std::string path_;
  FileIdentity identity_;
  int watch_ = -1;
  int parentWatch_ = -1;  // folders only
  std::string nameInParent_;
  std::function<void()> gotActivity_;
  bool enabled_ = false;
  bool onRunLoop_ = false;
  bool eventWaits_ = false;  // since nothing takes it off the queue, from the first event on
  std::unique_ptr<RunLoop::Source> source_;
};

std::optional<std::string> InotifyQueue::registerEvent(WatchedPath& path, FileEventKind kind) {
  auto& opened = static_cast<OpenedFile&>(path);
  kind_ = kind;
  path_ = opened.path;
  identity_ = opened.identity;
  std::uint32_t mask = IN_ATTRIB | IN_DELETE_SELF | IN_MOVE_SELF;
  if (kind == FileEventKind::Write) {
    // A folder is written when its entries change.
    mask = identity_.folder ? IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO | IN_ONLYDIR : IN_MODIFY;
  }
  // By its descriptor, so that the file that was opened is watched even if another one stands at the path
  // now.
  const std::string descriptorPath = "/proc/self/fd/" + std::to_string(opened.file.get());
  watch_ = ::inotify_add_watch(queue_.get(), descriptorPath.c_str(), mask);
  if (watch_ < 0) return systemErrorText(errno);
  if (kind == FileEventKind::Disappearance && identity_.folder) {
    if (auto error = watchParent(descriptorPath)) return error;
  }
  // Held open, the file would live on after its deletion, and its file system could not be unmounted.
  opened.file.reset();
  if (kind == FileEventKind::Write) return std::nullopt;
  // What happened between the opening and the watch has left no event.
  eventWaits_ = isGone();
  return std::nullopt;
}

/// The removal of a folder that some process holds open, as its working folder for example, shows only in its
/// parent.
std::optional<std::string> InotifyQueue::watchParent(const std::string& descriptorPath) {
  std::array<char, PATH_MAX> target{};
  const ssize_t length = ::readlink(descriptorPath.c_str(), target.data(), target.size());
  if (length <= 0) return systemErrorText(errno);
  const std::string_view real(target.data(), static_cast<std::size_t>(length));
  const std::size_t slash = real.rfind('/');
  if (slash == std::string_view::npos || real.size() == 1) return std::nullopt;  // the root has no parent
  nameInParent_ = real.substr(slash + 1);
  const std::string parent(real.substr(0, slash == 0 ? 1 : slash));
  parentWatch_ = ::inotify_add_watch(queue_.get(), parent.c_str(), IN_DELETE | IN_MOVED_FROM | IN_ONLYDIR);
  if (parentWatch_ >= 0 || errno == EACCES || errno == ENOENT)
    return std::nullopt;  // or only the folder itself
  return systemErrorText(errno);
}

bool InotifyQueue::wrap(std::function<void()> gotActivity) {
  gotActivity_ = std::move(gotActivity);
  return static_cast<bool>(gotActivity_);
}

void InotifyQueue::enableCallBack() {
  enabled_ = true;
  listen();
}

bool InotifyQueue::addToRunLoop() {
  if (!gotActivity_) return false;
  onRunLoop_ = true;
  listen();
  return true;
}

void InotifyQueue::listen() {
  if (!enabled_ || !onRunLoop_) return;
  if (eventWaits_) {
    source_ = runLoop_.scheduleTimer(0, false, [this] { callBack(); });
  } else {
    source_ = runLoop_.watchDescriptor(queue_.get(), [this] { readEvents(); });
  }
}

void InotifyQueue::readEvents() {
  readInotifyEvents(queue_.get(),
                    [this](const InotifyEvent& event) { eventWaits_ = eventWaits_ || tellsOfEvent(event); });
  if (eventWaits_) callBack();
}

/// The last thing that is done with this queue in a round: the callback may destroy it.
void InotifyQueue::callBack() {
  enabled_ = false;
  source_.reset();
  const auto gotActivity = gotActivity_;
  gotActivity();
}

bool InotifyQueue::tellsOfEvent(const InotifyEvent& event) {
  if (kind_ == FileEventKind::Write) {
    // The end of a watch is told without being asked for.
    return event.watch == watch_ && (event.mask & (IN_IGNORED | IN_UNMOUNT)) == 0;
  }
  if (event.watch == watch_ && (event.mask & (IN_DELETE_SELF | IN_MOVE_SELF | IN_UNMOUNT)) != 0) return true;
  const bool aboutSomethingElse =
      parentWatch_ >= 0 && event.watch == parentWatch_ && event.name != nameInParent_;
  return !aboutSomethingElse && isGone();
}

bool InotifyQueue::isGone() {
  struct stat status {};
  if (::stat(path_.c_str(), &status) != 0)
    return errno == ENOENT || errno == ENOTDIR;  // closed to us is not gone
  const FileIdentity now = identityFrom(status);
  if (now.device != identity_.device || now.inode != identity_.inode) return true;
  // The links of a folder are its subfolders and tell nothing. A file with fewer names than before lost one
  // of them; the names that it gained meanwhile count.
  const bool lostAName = !now.folder && now.links < identity_.links;
  identity_.links = now.links;
  return lostAName;
}

}  // namespace

FileEventQueues::OpenedPath LinuxFileEventQueues::openForEvents(const std::string& path) {
  if (path.find('\0') != std::string::npos) return {nullptr, false, systemErrorText(EINVAL)};
  FileDescriptor file(::open(path.c_str(), O_PATH | O_CLOEXEC));
  struct stat status {};
  if (!file || ::fstat(file.get(), &status) != 0) return {nullptr, errno == ENOENT, systemErrorText(errno)};
  return {std::make_unique<OpenedFile>(path, std::move(file), identityFrom(status)), false, {}};
}

FileEventQueues::CreatedQueue LinuxFileEventQueues::createQueue() {
  FileDescriptor queue(::inotify_init1(IN_CLOEXEC | IN_NONBLOCK));
  if (!queue) return {nullptr, systemErrorText(errno)};
  return {std::make_unique<InotifyQueue>(runLoop_, std::move(queue)), {}};
}

}  // namespace corvane
