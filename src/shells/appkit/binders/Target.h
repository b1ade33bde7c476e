// Functions as the targets of AppKit's actions, and calls from the run loop.
#pragma once

#include <functional>

#import "AppKit.h"

@interface CorvaneTarget : NSObject {
 @public
  std::function<void()> act_;
}
- (void)act:(id)sender;
@end

namespace corvane::appkit {

/// Calls back from the run loop, soon; also inside the loop of a modal panel.
void callSoon(std::function<void()> act);

/// The action of a control, for as long as this lives.
class Target {
 public:
  Target(NSControl* control, std::function<void()> act);
  Target(const Target&) = delete;
  Target& operator=(const Target&) = delete;
  ~Target();

 private:
  NSControl* control_;
  CorvaneTarget* target_;
};

}  // namespace corvane::appkit
