#import "OpenedUrls.h"

#import "Text.h"

#pragma clang diagnostic ignored "-Wobjc-protocol-method-implementation"  // on purpose
@implementation NSWorkspace (CorvaneOpenedUrls)

- (BOOL)openURL:(NSURL*)url {
  corvane::test::openedUrls().push_back(corvane::appkit::fromNSString([url absoluteString]));
  return YES;
}

@end

namespace corvane::test {

std::vector<std::string>& openedUrls() {
  static std::vector<std::string> urls;
  return urls;
}

}  // namespace corvane::test
