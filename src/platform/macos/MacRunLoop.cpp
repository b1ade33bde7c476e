#include "platform/macos/MacRunLoop.h"

#include "platform/macos/OwnedObject.h"

namespace corvane {
namespace {

class Timer final : public RunLoop::Source {
 public:
  Timer(double interval, bool repeats, std::function<void()> fire)
      : fire_(std::make_shared<std::function<void()>>(std::move(fire))) {
    CFRunLoopTimerContext context = {0, this, nullptr, nullptr, nullptr};
    timer_ = OwnedObject(CFRunLoopTimerCreate(kCFAllocatorDefault, CFAbsoluteTimeGetCurrent() + interval,
                                              repeats ? interval : 0, 0, 0, &Timer::fired, &context));
    CFRunLoopAddTimer(CFRunLoopGetMain(), timer_.get(), kCFRunLoopCommonModes);
  }
  Timer(const Timer&) = delete;
  Timer& operator=(const Timer&) = delete;
  ~Timer() override { CFRunLoopTimerInvalidate(timer_.get()); }

 private:
  static void fired(CFRunLoopTimerRef /*timer*/, void* info) {
    const auto fire = static_cast<Timer*>(info)->fire_;  // the call may end the timer
    (*fire)();
  }

  std::shared_ptr<std::function<void()>> fire_;
  OwnedObject<CFRunLoopTimerRef> timer_;
};

}  // namespace

std::unique_ptr<RunLoop::Source> MacRunLoop::scheduleTimer(double interval, bool repeats,
                                                           std::function<void()> fire) {
  return std::make_unique<Timer>(interval, repeats, std::move(fire));
}

}  // namespace corvane
