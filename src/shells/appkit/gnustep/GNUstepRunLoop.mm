#import "gnustep/GNUstepRunLoop.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <ctime>

#include <sys/timerfd.h>
#include <unistd.h>

#import "AppKit.h"
#include "posix/FileDescriptor.h"

/// Waits for a descriptor of somebody else's.
@interface GNUstepDescriptor : NSObject <RunLoopEvents> {
 @public
  std::function<void()> readable_;
}
@end

@implementation GNUstepDescriptor

- (void)receivedEvent:(void*)data type:(RunLoopEventType)type extra:(void*)extra forMode:(NSString*)mode {
  const std::function<void()> readable = readable_;  // the call may end what holds this one
  if (readable) readable();
}

@end

namespace corvane::appkit {
namespace {

class Descriptor final : public RunLoop::Source {
 public:
  Descriptor(int descriptor, std::function<void()> readable)
      : descriptor_(reinterpret_cast<void*>(static_cast<std::intptr_t>(descriptor))),
        watcher_([GNUstepDescriptor new]) {
    watcher_->readable_ = std::move(readable);
    for (NSString* mode in commonModes()) {
      [[NSRunLoop currentRunLoop] addEvent:descriptor_ type:ET_RDESC watcher:watcher_ forMode:mode];
    }
  }
  ~Descriptor() override {
    watcher_->readable_ = nullptr;
    for (NSString* mode in commonModes()) {
      [[NSRunLoop currentRunLoop] removeEvent:descriptor_ type:ET_RDESC forMode:mode all:NO];
    }
    [watcher_ autorelease];  // it may be the one that is calling
  }

 private:
  void* descriptor_;  // as the run loop takes it
  GNUstepDescriptor* watcher_;
};

// A clock of the kernel's: a timer of the toolkit that has fired in one mode would stay in the others for
// good.
class Timer final : public RunLoop::Source {
 public:
  Timer(double interval, bool repeats, const std::function<void()>& fire)
      : clock_(::timerfd_create(CLOCK_MONOTONIC, TFD_NONBLOCK | TFD_CLOEXEC)),
        watch_(clock_.get(), [clock = clock_.get(), fire] {
          std::uint64_t times = 0;
          if (::read(clock, &times, sizeof times) > 0) fire();  // which may end the timer
        }) {
    const double seconds = std::floor(interval);
    const timespec time = {
        static_cast<std::time_t>(seconds),
        std::max(1L, static_cast<long>((interval - seconds) * 1e9))};  // none would stop it
    const itimerspec times = {repeats ? time : timespec{}, time};
    ::timerfd_settime(clock_.get(), 0, &times, nullptr);
  }

 private:
  FileDescriptor clock_;
  Descriptor watch_;
};

}  // namespace

std::unique_ptr<RunLoop::Source> GNUstepRunLoop::scheduleTimer(double interval, bool repeats,
                                                               std::function<void()> fire) {
  return std::make_unique<Timer>(interval, repeats, fire);
}

std::unique_ptr<RunLoop::Source> GNUstepRunLoop::watchDescriptor(int descriptor,
                                                                 std::function<void()> readable) {
  return std::make_unique<Descriptor>(descriptor, std::move(readable));
}

}  // namespace corvane::appkit
