#include "platform/macos/MacDirectoryEvents.h"

#include <set>

#include <CoreServices/CoreServices.h>

#include "platform/macos/Strings.h"

namespace corvane {
namespace {

OwnedObject<CFMutableArrayRef> arrayOf(const std::vector<std::string>& texts) {
  OwnedObject array(CFArrayCreateMutable(kCFAllocatorDefault, 0, &kCFTypeArrayCallBacks));
  for (const std::string& text : texts) {
    if (const auto string = stringFrom(text)) CFArrayAppendValue(array.get(), string.get());
  }
  return array;
}

class Stream final : public DirectoryEventStream {
 public:
  Stream(const std::vector<std::string>& directories, double latency, DirectoryEvents::Callback callback)
      : callback_(std::make_shared<DirectoryEvents::Callback>(std::move(callback))) {
    FSEventStreamContext context = {0, this, nullptr, nullptr, nullptr};
    stream_ = FSEventStreamCreate(kCFAllocatorDefault, &Stream::changed, &context, arrayOf(directories).get(),
                                  kFSEventStreamEventIdSinceNow, latency, kFSEventStreamCreateFlagUseCFTypes);
  }
  Stream(const Stream&) = delete;
  Stream& operator=(const Stream&) = delete;
  ~Stream() override {
    if (stream_ != nullptr) FSEventStreamRelease(stream_);
  }

  void scheduleWithRunLoop() override {
    if (stream_ != nullptr)
      FSEventStreamScheduleWithRunLoop(stream_, CFRunLoopGetMain(), kCFRunLoopCommonModes);
  }
  void unscheduleFromRunLoop() override {
    if (stream_ != nullptr)
      FSEventStreamUnscheduleFromRunLoop(stream_, CFRunLoopGetMain(), kCFRunLoopCommonModes);
  }
  bool start() override { return stream_ != nullptr && FSEventStreamStart(stream_) != 0; }
  void stop() override {
    if (stream_ != nullptr) FSEventStreamStop(stream_);
  }

 private:
  static void changed(ConstFSEventStreamRef /*stream*/, void* info, std::size_t /*count*/, void* paths,
                      const FSEventStreamEventFlags* /*flags*/, const FSEventStreamEventId* /*identifiers*/) {
    const auto array = static_cast<CFArrayRef>(paths);
    std::set<std::string> directories;
    for (CFIndex index = 0; index < CFArrayGetCount(array); ++index)
      directories.insert(textFrom(static_cast<CFStringRef>(CFArrayGetValueAtIndex(array, index))));
    const auto callback = static_cast<Stream*>(info)->callback_;  // the call may end the stream
    (*callback)({directories.begin(), directories.end()});
  }

  std::shared_ptr<DirectoryEvents::Callback> callback_;
  FSEventStreamRef stream_ = nullptr;
};

}  // namespace

std::unique_ptr<DirectoryEventStream> MacDirectoryEvents::createStream(std::vector<std::string> directories,
                                                                       double latency, Callback callback) {
  return std::make_unique<Stream>(directories, latency, std::move(callback));
}

}  // namespace corvane
