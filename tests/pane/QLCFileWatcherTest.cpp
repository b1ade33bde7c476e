#include <algorithm>
#include <cstdio>
#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "pane/QLCFileWatcher.h"
#include "support/ScriptedFileEventQueues.h"

namespace corvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Queues = test::ScriptedFileEventQueues;

const std::string kPath = "/Library/Corvane/ClientData/LocalInfo/corvane_error_logger.pid";

class Log : public SystemLog {
 public:
  void write(std::string_view line) override { lines.emplace_back(line); }
  std::vector<std::string> lines;
};

class Delegate : public QLCFileWatcherDelegate {
 public:
  void fileWatcherFileHasDisappeared(QLCFileWatcher& watcher, const std::string& path) override {
    tell(watcher, "disappeared " + path);
  }
  void fileWatcherFileHasBeenWritten(QLCFileWatcher& watcher, const std::string& path) override {
    tell(watcher, "written " + path);
  }
  std::vector<QLCFileWatcher*> watchers;
  std::vector<std::string> calls;
  std::function<void()> onCall;

 private:
  void tell(QLCFileWatcher& watcher, std::string call) {
    watchers.push_back(&watcher);
    calls.push_back(std::move(call));
    if (onCall) onCall();
  }
};

class QLCFileWatcherTest : public ::testing::Test {
 protected:
  ~QLCFileWatcherTest() override {
    // Whatever a test left armed; no outside reference is needed to keep it, but one is to end it.
    for (const auto& watcher : made_) {
      if (const auto armed = watcher.lock()) armed->endWatching();
    }
  }

  std::shared_ptr<QLCFileWatcher> make(bool watchForWriteOnly = false) {
    auto watcher = QLCFileWatcher::createWithPathWatchForWriteOnly(queues_, log_, kPath, watchForWriteOnly);
    if (watcher) watcher->setDelegate(&delegate_);
    made_.push_back(watcher);
    return watcher;
  }

  Queues queues_;
  Log log_;
  Delegate delegate_;
  std::vector<std::weak_ptr<QLCFileWatcher>> made_;
};

TEST_F(QLCFileWatcherTest, ArmingTakesItsStepsInOrder) {
  const auto watcher = make();
  ASSERT_TRUE(watcher);
  EXPECT_EQ(watcher->path(), kPath);
  EXPECT_EQ(watcher->delegate(), &delegate_);
  EXPECT_THAT(queues_.steps, ElementsAre("open " + kPath, "create queue", "register disappearance", "wrap",
                                         "enable", "add"));
  EXPECT_EQ(queues_.openQueues(), 1U);
  EXPECT_EQ(queues_.openPaths(), 1U);
  EXPECT_THAT(log_.lines, IsEmpty());
}

TEST_F(QLCFileWatcherTest, WriteModeRegistersWritesAlone) {
  const auto watcher = make(true);
  ASSERT_TRUE(watcher);
  EXPECT_TRUE(watcher->watchForWriteOnly());
  EXPECT_THAT(queues_.armedPaths(FileEventKind::Write), ElementsAre(kPath));
  EXPECT_THAT(queues_.armedPaths(FileEventKind::Disappearance), IsEmpty());
}

TEST_F(QLCFileWatcherTest, PathThatDoesNotExistYieldsNoWatcherAndNoLogLine) {
  queues_.exists = [](const std::string&) { return false; };
  EXPECT_FALSE(make());
  EXPECT_THAT(log_.lines, IsEmpty());
  EXPECT_EQ(queues_.openQueues(), 0U);
}

struct Failure {
  Queues::Step step;
  std::string line;
};
void PrintTo(const Failure& failure, std::ostream* stream) { *stream << failure.line; }

class QLCFileWatcherFailure : public QLCFileWatcherTest, public ::testing::WithParamInterface<Failure> {};

TEST_P(QLCFileWatcherFailure, YieldsNoWatcherButOneLogLineAndLeavesNothingOpen) {
  queues_.fail(GetParam().step, "Permission denied");
  for (const bool watchForWriteOnly : {false, true}) {
    log_.lines.clear();
    EXPECT_FALSE(make(watchForWriteOnly));
    EXPECT_THAT(log_.lines, ElementsAre(GetParam().line));
    EXPECT_EQ(queues_.openQueues(), 0U);
    EXPECT_EQ(queues_.openPaths(), 0U);
  }
}

INSTANTIATE_TEST_SUITE_P(
    Steps, QLCFileWatcherFailure,
    ::testing::Values(
        Failure{Queues::Step::Open,
                "QLCFileWatcher: Could not open the file 'corvane_error_logger.pid' to monitor its "
                "existence: Permission denied"},
        Failure{Queues::Step::CreateQueue,
                "QLCFileWatcher: Could not create a kqueue to monitor the existence of the file "
                "'corvane_error_logger.pid': Permission denied"},
        Failure{Queues::Step::Register,
                "QLCFileWatcher: Could not register file-watching event (to monitor the existence of "
                "the file 'corvane_error_logger.pid') with queue: Permission denied"},
        Failure{Queues::Step::Wrap,
                "QLCFileWatcher: Could not wrap kqueue (for monitoring the existence of the file "
                "'corvane_error_logger.pid') in a CFFileDescriptor."},
        Failure{Queues::Step::AddToRunLoop,
                "Could not wrap kqueue (for watching the control file) in a CFRunloopSource."}));

TEST_F(QLCFileWatcherTest, NameWithPercentSignsIsLoggedAsItIs) {
  queues_.fail(Queues::Step::Open, "Too many %s");
  EXPECT_FALSE(QLCFileWatcher::createWithPathWatchForWriteOnly(queues_, log_, "/x/100%@%d", false));
  EXPECT_THAT(log_.lines, ElementsAre("QLCFileWatcher: Could not open the file '100%@%d' to monitor its "
                                      "existence: Too many %s"));
}

/// Tells on standard error, where a test of a program's end can read it.
class PrintingLog : public SystemLog {
 public:
  void write(std::string_view line) override {
    std::fprintf(stderr, "%.*s\n", static_cast<int>(line.size()), line.data());
  }
};

TEST(QLCFileWatcherDeathTest, MissingPathIsAProgrammingError) {
  Queues queues;
  PrintingLog log;
  EXPECT_DEATH(
      static_cast<void>(QLCFileWatcher::createWithPathWatchForWriteOnly(queues, log, std::nullopt, false)),
      "Invalid parameter not satisfying: path != nil");
}

TEST_F(QLCFileWatcherTest, DisappearanceIsReportedOnceWhateverComesLater) {
  const auto watcher = make();
  EXPECT_EQ(queues_.fire(kPath), 1U);
  EXPECT_THAT(delegate_.calls, ElementsAre("disappeared " + kPath));
  EXPECT_THAT(delegate_.watchers, ElementsAre(watcher.get()));
  EXPECT_EQ(queues_.fire(kPath), 0U);  // made again and deleted again
  EXPECT_EQ(delegate_.calls.size(), 1U);
}

TEST_F(QLCFileWatcherTest, FiredWatcherHoldsItsQueueUntilItIsEnded) {
  const auto watcher = make();
  queues_.fire(kPath);
  EXPECT_EQ(queues_.openQueues(), 1U);
  EXPECT_EQ(queues_.openPaths(), 1U);
  watcher->endWatching();
  EXPECT_EQ(queues_.openQueues(), 0U);
  EXPECT_EQ(queues_.openPaths(), 0U);
}

TEST_F(QLCFileWatcherTest, WritingIsNoDisappearanceAndDisappearingIsNoWrite) {
  const auto forDisappearance = make(false);
  EXPECT_EQ(queues_.fire(kPath, FileEventKind::Write), 0U);
  forDisappearance->endWatching();
  const auto forWrites = make(true);
  EXPECT_EQ(queues_.fire(kPath, FileEventKind::Disappearance), 0U);
  EXPECT_THAT(delegate_.calls, IsEmpty());
}

TEST_F(QLCFileWatcherTest, EachWriteIsReportedAndArmsAFreshQueue) {
  const auto watcher = make(true);
  queues_.steps.clear();
  for (int write = 0; write < 3; ++write) EXPECT_EQ(queues_.fire(kPath, FileEventKind::Write), 1U);
  EXPECT_EQ(delegate_.calls, std::vector<std::string>(3, "written " + kPath));
  EXPECT_EQ(std::count(queues_.steps.begin(), queues_.steps.end(), "create queue"), 3);
  EXPECT_EQ(queues_.openQueues(), 1U);
  EXPECT_EQ(queues_.openPaths(), 1U);
}

TEST_F(QLCFileWatcherTest, WatcherThatCannotBeArmedAgainAfterAWriteStaysSilent) {
  const auto watcher = make(true);
  queues_.exists = [](const std::string&) { return false; };
  queues_.fire(kPath, FileEventKind::Write);
  EXPECT_EQ(delegate_.calls.size(), 1U);
  queues_.exists = [](const std::string&) { return true; };
  EXPECT_EQ(queues_.fire(kPath, FileEventKind::Write), 0U);
  EXPECT_EQ(queues_.openQueues(), 0U);
  EXPECT_THAT(log_.lines, IsEmpty());
}

TEST_F(QLCFileWatcherTest, EndingTwiceIsHarmlessAndTheDelegateIsNotCalled) {
  auto watcher = make();
  watcher->endWatching();
  watcher->endWatching();
  watcher.reset();
  EXPECT_EQ(queues_.fire(kPath), 0U);
  EXPECT_THAT(delegate_.calls, IsEmpty());
  EXPECT_TRUE(made_.back().expired());
}

TEST_F(QLCFileWatcherTest, DroppingTheLastOutsideReferenceDoesNotStopTheWatch) {
  make().reset();
  EXPECT_FALSE(made_.back().expired());
  EXPECT_EQ(queues_.fire(kPath), 1U);
  EXPECT_EQ(delegate_.calls.size(), 1U);
}

TEST_F(QLCFileWatcherTest, WatcherDroppedAfterItFiredStaysAllocatedAndSilentWithItsQueueOpen) {
  auto watcher = make();
  delegate_.onCall = [&] { watcher.reset(); };
  queues_.fire(kPath);
  EXPECT_FALSE(made_.back().expired());
  EXPECT_EQ(queues_.openQueues(), 1U);
  EXPECT_EQ(queues_.fire(kPath), 0U);
  EXPECT_EQ(delegate_.calls.size(), 1U);
}

TEST_F(QLCFileWatcherTest, EndingAWatcherWithoutOutsideReferenceFreesIt) {
  auto watcher = make();
  QLCFileWatcher& alone = *watcher;
  watcher.reset();
  alone.endWatching();
  EXPECT_TRUE(made_.back().expired());
  EXPECT_EQ(queues_.openQueues(), 0U);
}

TEST_F(QLCFileWatcherTest, DelegateMayEndAndDropTheWatcherWhileItIsTold) {
  auto watcher = make();
  delegate_.onCall = [&] {
    watcher->endWatching();
    watcher.reset();
  };
  queues_.fire(kPath);
  EXPECT_TRUE(made_.back().expired());
  EXPECT_EQ(queues_.openQueues(), 0U);
}

TEST_F(QLCFileWatcherTest, DelegateThatEndsTheWatchWhileItIsToldOfAWriteHearsNothingMore) {
  auto watcher = make(true);
  delegate_.onCall = [&] {
    watcher->endWatching();
    watcher.reset();
  };
  EXPECT_EQ(queues_.fire(kPath, FileEventKind::Write), 1U);
  EXPECT_TRUE(made_.back().expired());
  EXPECT_EQ(queues_.openQueues(), 0U);
}

TEST_F(QLCFileWatcherTest, DelegateMayMakeANewWatcherWhileItIsTold) {
  auto watcher = make();
  delegate_.onCall = [&] {
    delegate_.onCall = nullptr;
    watcher = make();
  };
  EXPECT_EQ(queues_.fire(kPath), 1U);
  EXPECT_EQ(queues_.fire(kPath), 1U);
  EXPECT_EQ(delegate_.calls.size(), 2U);
}

TEST_F(QLCFileWatcherTest, CallOfAQueueThatIsNoLongerTheWatchersIsIgnored) {
  const auto watcher = make();
  const auto late = queues_.callbackFor(kPath);
  watcher->endWatching();
  late();
  EXPECT_THAT(delegate_.calls, IsEmpty());
}

TEST_F(QLCFileWatcherTest, WithoutADelegateNobodyIsToldAndWritesAreStillFollowed) {
  const auto forDisappearance = make(false);
  forDisappearance->setDelegate(nullptr);
  EXPECT_EQ(queues_.fire(kPath), 1U);
  forDisappearance->endWatching();
  const auto forWrites = make(true);
  forWrites->setDelegate(nullptr);
  EXPECT_EQ(queues_.fire(kPath, FileEventKind::Write), 1U);
  EXPECT_EQ(queues_.fire(kPath, FileEventKind::Write), 1U);
  EXPECT_THAT(delegate_.calls, IsEmpty());
}

TEST_F(QLCFileWatcherTest, EndedWatcherCanBeStartedAgain) {
  const auto watcher = make();
  queues_.fire(kPath);
  watcher->endWatching();
  EXPECT_TRUE(watcher->startWatching());
  EXPECT_EQ(queues_.fire(kPath), 1U);
  EXPECT_EQ(delegate_.calls.size(), 2U);
}

}  // namespace
}  // namespace corvane
