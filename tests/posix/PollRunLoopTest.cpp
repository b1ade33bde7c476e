#include <array>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include "platform/linux/PollRunLoop.h"
#include "posix/FileDescriptor.h"
#include "support/Patience.h"
#include "support/VirtualRunLoop.h"

namespace corvane {
namespace {

using ::testing::ElementsAre;

struct Pipe {
  Pipe() {
    std::array<int, 2> ends{};
    EXPECT_EQ(::pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK), 0);
    readEnd.reset(ends[0]);
    writeEnd.reset(ends[1]);
  }
  void put() const { EXPECT_EQ(::write(writeEnd.get(), "x", 1), 1); }
  void take() const {
    char byte = 0;
    EXPECT_EQ(::read(readEnd.get(), &byte, 1), 1);
  }
  FileDescriptor readEnd;
  FileDescriptor writeEnd;
};

TEST(PollRunLoop, TimersFireInTheOrderOfTheirTimes) {
  PollRunLoop loop;
  std::vector<int> fired;
  const auto late = loop.scheduleTimer(0.05, false, [&] { fired.push_back(2); });
  const auto early = loop.scheduleTimer(0.01, false, [&] { fired.push_back(1); });
  EXPECT_EQ(loop.pendingTimers(), 2U);
  EXPECT_TRUE(loop.runUntil([&] { return fired.size() == 2; }, test::kHangSeconds));
  EXPECT_THAT(fired, ElementsAre(1, 2));
  EXPECT_EQ(loop.pendingTimers(), 0U);
}

TEST(PollRunLoop, RepeatingTimerFiresUntilItIsDestroyedFromInside) {
  PollRunLoop loop;
  int fired = 0;
  std::unique_ptr<RunLoop::Source> timer;
  timer = loop.scheduleTimer(0.001, true, [&] {
    if (++fired == 3) timer.reset();
  });
  EXPECT_TRUE(loop.runUntil([&] { return fired == 3; }, test::kHangSeconds));
  EXPECT_FALSE(loop.runUntil([&] { return fired > 3; }, 0.02));
}

TEST(PollRunLoop, DestroyedTimerDoesNotFire) {
  PollRunLoop loop;
  bool fired = false;
  loop.scheduleTimer(0, false, [&] { fired = true; }).reset();
  EXPECT_FALSE(loop.runUntil([&] { return fired; }, 0.01));
}

TEST(PollRunLoop, ReadableDescriptorIsReportedUntilItIsRead) {
  PollRunLoop loop;
  const Pipe pipe;
  int calls = 0;
  const auto source = loop.watchDescriptor(pipe.readEnd.get(), [&] {
    if (++calls == 2) pipe.take();
  });
  pipe.put();
  EXPECT_TRUE(loop.runUntil([&] { return calls == 2; }, test::kHangSeconds));
  EXPECT_FALSE(loop.runUntil([&] { return calls > 2; }, 0.01));
}

TEST(PollRunLoop, ClosedOtherEndIsReported) {
  PollRunLoop loop;
  Pipe pipe;
  bool called = false;
  const auto source = loop.watchDescriptor(pipe.readEnd.get(), [&] { called = true; });
  pipe.writeEnd.reset();
  EXPECT_TRUE(loop.runUntil([&] { return called; }, test::kHangSeconds));
}

TEST(PollRunLoop, SourceEndedByAnotherCallOfTheSameRoundIsNotCalled) {
  PollRunLoop loop;
  const Pipe pipe;
  pipe.put();
  bool second = false;
  std::unique_ptr<RunLoop::Source> other;
  const auto first = loop.watchDescriptor(pipe.readEnd.get(), [&] {
    other.reset();
    pipe.take();
  });
  other = loop.watchDescriptor(pipe.readEnd.get(), [&] { second = true; });
  EXPECT_FALSE(loop.runUntil([&] { return second; }, 0.01));
}

TEST(PollRunLoop, SourceMayOutliveTheLoop) {
  std::unique_ptr<RunLoop::Source> timer;
  bool fired = false;
  {
    PollRunLoop loop;
    timer = loop.scheduleTimer(0, false, [&] { fired = true; });
  }
  timer.reset();
  EXPECT_FALSE(fired);
}

TEST(VirtualRunLoop, TimersFireInOrderAsTimeAdvances) {
  test::VirtualRunLoop loop;
  std::vector<std::string> fired;
  const auto once = loop.scheduleTimer(2.5, false, [&] { fired.emplace_back("once"); });
  auto again = loop.scheduleTimer(1, true, [&] { fired.emplace_back("again"); });
  loop.advance(0.5);
  EXPECT_THAT(fired, ElementsAre());
  loop.advance(2.5);
  EXPECT_THAT(fired, ElementsAre("again", "again", "once", "again"));
  EXPECT_EQ(loop.pendingTimers(), 1U);
  again.reset();
  EXPECT_EQ(loop.pendingTimers(), 0U);
  EXPECT_DOUBLE_EQ(loop.now(), 3);
}

TEST(VirtualRunLoop, DescriptorIsReadableWhenTheTestSaysSo) {
  test::VirtualRunLoop loop;
  int calls = 0;
  auto source = loop.watchDescriptor(7, [&] { ++calls; });
  loop.makeReadable(8);
  EXPECT_EQ(calls, 0);
  loop.makeReadable(7);
  EXPECT_EQ(calls, 1);
  source.reset();
  loop.makeReadable(7);
  EXPECT_EQ(calls, 1);
  EXPECT_EQ(loop.watchedDescriptors(), 0U);
}

}  // namespace
}  // namespace corvane
