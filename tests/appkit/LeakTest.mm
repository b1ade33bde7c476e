// What a pane leaves behind when it goes: nothing, however often it is made again.
#include <map>

#import <Foundation/NSDebug.h>
#include <dirent.h>
#include <sanitizer/allocator_interface.h>

#import "PaneFixture.h"

namespace corvane::test {
namespace {

class AppKitLeaks : public AppKitPaneTest {
 protected:
  void openAndClose() {
    NSAutoreleasePool* pool = [NSAutoreleasePool new];
    open();
    openTheLock();
    closePane();
    [pool drain];
    pool = [NSAutoreleasePool new];
    settle();
    [pool drain];
  }
};

/// How many objects of each class there are.
std::map<std::string, int> objects() {
  std::map<std::string, int> counts;
  for (Class* all = GSDebugAllocationClassList(); *all != nil; ++all)
    counts[class_getName(*all)] = GSDebugAllocationCount(*all);
  return counts;
}

int openDescriptors() {
  int count = 0;
  DIR* folder = ::opendir("/proc/self/fd");
  while (::readdir(folder) != nullptr) ++count;
  ::closedir(folder);
  return count;
}

TEST_F(AppKitLeaks, AHundredPanesLeaveNothingBehind) {
  constexpr int kPanes = 100;
  GSDebugAllocationActive(YES);
  for (int i = 0; i < 5; ++i) openAndClose();  // what the toolkit makes once
  const std::map<std::string, int> objectsBefore = objects();
  const int descriptorsBefore = openDescriptors();
  const std::size_t bytesBefore = __sanitizer_get_current_allocated_bytes();
  const NSUInteger windowsBefore = [[NSApp windows] count];
  for (int i = 0; i < kPanes; ++i) openAndClose();
  EXPECT_EQ(openDescriptors(), descriptorsBefore);
  EXPECT_EQ([[NSApp windows] count], windowsBefore);
  for (const auto& [name, count] : objects()) {
    const auto before = objectsBefore.find(name);
    const int grown = count - (before != objectsBefore.end() ? before->second : 0);
    EXPECT_LT(grown, kPanes / 2) << "of class " << name;
    EXPECT_FALSE(name.rfind("Corvane", 0) == 0 && grown > 0) << grown << " of class " << name;
  }
  const std::size_t bytes = __sanitizer_get_current_allocated_bytes();
  const double perPane = (static_cast<double>(bytes) - static_cast<double>(bytesBefore)) / kPanes;
  EXPECT_LT(perPane, 4096) << "bytes are left of each pane";
  RecordProperty("bytes_per_pane", std::to_string(perPane));
  GSDebugAllocationActive(NO);
}

}  // namespace
}  // namespace corvane::test
