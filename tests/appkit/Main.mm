// Each test runs in a pool of its own, and the whole program not longer than a limit: a modal loop that
// nobody answers would never end.
#include <csignal>

#include <gtest/gtest.h>
#include <unistd.h>

#import "AppKit.h"

namespace {

class PoolOfTheTest final : public ::testing::EmptyTestEventListener {
  void OnTestStart(const ::testing::TestInfo& /*test*/) override { pool_ = [NSAutoreleasePool new]; }
  void OnTestEnd(const ::testing::TestInfo& /*test*/) override { [pool_ drain]; }
  NSAutoreleasePool* pool_ = nil;
};

}  // namespace

int main(int argc, char** argv) {
  ::testing::InitGoogleTest(&argc, argv);
  std::signal(SIGALRM, [](int) {
    constexpr char kText[] = "The tests took too long.\n";
    [[maybe_unused]] const auto written = ::write(2, kText, sizeof kText - 1);
    ::_exit(1);
  });
  ::alarm(840);
  NSAutoreleasePool* pool = [NSAutoreleasePool new];
  [NSApplication sharedApplication];
  [NSApp finishLaunching];
  [NSApp activateIgnoringOtherApps:YES];
  ::testing::UnitTest::GetInstance()->listeners().Append(new PoolOfTheTest);
  const int result = RUN_ALL_TESTS();
  [pool drain];
  return result;
}
