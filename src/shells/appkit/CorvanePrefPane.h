// The principal class of the bundle: plays the host's life cycle to the pane.
#pragma once

#include <memory>

#import "AppKit.h"
#import "AppKitPane.h"

@interface CorvanePrefPane : NSPreferencePane {
  std::unique_ptr<corvane::appkit::AppKitPane> pane_;
}
- (corvane::appkit::AppKitPane*)pane;
@end
