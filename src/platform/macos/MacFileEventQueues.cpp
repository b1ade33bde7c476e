#include "platform/macos/MacFileEventQueues.h"

#include <cerrno>

#include <fcntl.h>
#include <sys/event.h>

#include "platform/macos/OwnedObject.h"
#include "posix/FileDescriptor.h"
#include "posix/SystemError.h"

namespace corvane {
namespace {

struct OpenPath final : WatchedPath {
  explicit OpenPath(FileDescriptor opened) : descriptor(std::move(opened)) {}
  FileDescriptor descriptor;
};

class KernelQueue final : public FileEventQueue {
 public:
  explicit KernelQueue(FileDescriptor queue) : queue_(std::move(queue)) {}
  KernelQueue(const KernelQueue&) = delete;
  KernelQueue& operator=(const KernelQueue&) = delete;
  ~KernelQueue() override {
    if (wrapper_) CFFileDescriptorInvalidate(wrapper_.get());  // ends its source as well
  }

  std::optional<std::string> registerEvent(WatchedPath& path, FileEventKind kind) override {
    const auto descriptor = static_cast<std::uintptr_t>(static_cast<OpenPath&>(path).descriptor.get());
    const std::uint32_t events =
        kind == FileEventKind::Write ? NOTE_WRITE : NOTE_DELETE | NOTE_RENAME | NOTE_REVOKE;
    const struct kevent change = {descriptor, EVFILT_VNODE, EV_ADD, events, 0, nullptr};
    if (::kevent(queue_.get(), &change, 1, nullptr, 0, nullptr) == -1) return systemErrorText(errno);
    return std::nullopt;
  }

  bool wrap(std::function<void()> gotActivity) override {
    gotActivity_ = std::make_shared<std::function<void()>>(std::move(gotActivity));
    const CFFileDescriptorContext context = {0, this, nullptr, nullptr, nullptr};
    wrapper_ = OwnedObject(
        CFFileDescriptorCreate(kCFAllocatorDefault, queue_.get(), 1, &KernelQueue::activity, &context));
    if (!wrapper_) return false;
    static_cast<void>(queue_.release());  // closed with the wrapper from now on
    return true;
  }

  void enableCallBack() override {
    CFFileDescriptorEnableCallBacks(wrapper_.get(), kCFFileDescriptorReadCallBack);
  }

  bool addToRunLoop() override {
    const OwnedObject source(CFFileDescriptorCreateRunLoopSource(kCFAllocatorDefault, wrapper_.get(), 0));
    if (!source) return false;
    CFRunLoopAddSource(CFRunLoopGetCurrent(), source.get(), kCFRunLoopCommonModes);
    return true;
  }

 private:
  static void activity(CFFileDescriptorRef /*wrapper*/, CFOptionFlags /*types*/, void* info) {
    const auto gotActivity = static_cast<KernelQueue*>(info)->gotActivity_;  // the call may end the queue
    (*gotActivity)();
  }

  FileDescriptor queue_;
  std::shared_ptr<std::function<void()>> gotActivity_;
  OwnedObject<CFFileDescriptorRef> wrapper_;
};

}  // namespace

FileEventQueues::OpenedPath MacFileEventQueues::openForEvents(const std::string& path) {
  FileDescriptor opened(::open(path.c_str(), O_EVTONLY | O_CLOEXEC));
  if (!opened) return {nullptr, errno == ENOENT, systemErrorText(errno)};
  return {std::make_unique<OpenPath>(std::move(opened)), false, {}};
}

FileEventQueues::CreatedQueue MacFileEventQueues::createQueue() {
  FileDescriptor queue(::kqueue());
  if (!queue) return {nullptr, systemErrorText(errno)};
  return {std::make_unique<KernelQueue>(std::move(queue)), {}};
}

}  // namespace corvane
