#import "gnustep/GNUstepRunLoop.h"

#include <cstdint>

#import "binders/Target.h"

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

class Timer final : public RunLoop::Source {
 public:
  Timer(double interval, bool repeats, std::function<void()> fire) : target_([CorvaneTarget new]) {
    target_->act_ = std::move(fire);
    timer_ = [[NSTimer timerWithTimeInterval:interval
                                      target:target_
                                    selector:repeats ? @selector(act:) : @selector(actOnce:)
                                    userInfo:nil
                                     repeats:repeats] retain];
    for (NSString* mode in commonModes()) [[NSRunLoop currentRunLoop] addTimer:timer_ forMode:mode];
  }
  ~Timer() override {
    target_->act_ = nullptr;
    [timer_ invalidate];
    [timer_ release];
    [target_ autorelease];  // it may be the one that is calling
  }

 private:
  CorvaneTarget* target_;
  NSTimer* timer_;
};

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

}  // namespace

std::unique_ptr<RunLoop::Source> GNUstepRunLoop::scheduleTimer(double interval, bool repeats,
                                                               std::function<void()> fire) {
  return std::make_unique<Timer>(interval, repeats, std::move(fire));
}

std::unique_ptr<RunLoop::Source> GNUstepRunLoop::watchDescriptor(int descriptor,
                                                                 std::function<void()> readable) {
  return std::make_unique<Descriptor>(descriptor, std::move(readable));
}

}  // namespace corvane::appkit
