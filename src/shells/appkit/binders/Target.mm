#import "binders/Target.h"

#include <utility>

@implementation CorvaneTarget

- (void)act:(id)sender {
  const std::function<void()> act = act_;  // the call may end what holds this target
  if (act) act();
}

@end

namespace corvane::appkit {

void callSoon(std::function<void()> act) {
  CorvaneTarget* target = [CorvaneTarget new];
  target->act_ = std::move(act);
  [[NSRunLoop currentRunLoop] performSelector:@selector(act:)
                                       target:target
                                     argument:nil
                                        order:0
                                        modes:commonModes()];
  [target release];  // the run loop has it until then
}

Target::Target(NSControl* control, std::function<void()> act)
    : control_([control retain]), target_([CorvaneTarget new]) {
  target_->act_ = std::move(act);
  [control_ setTarget:target_];
  [control_ setAction:@selector(act:)];
}

Target::~Target() {
  [control_ setTarget:nil];
  target_->act_ = nullptr;
  [target_ release];
  [control_ release];
}

}  // namespace corvane::appkit
