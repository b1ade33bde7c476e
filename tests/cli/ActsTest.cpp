// Running, updating, removing and watching; and how calls end that are not let to their end.
#include <string>

#include <gmock/gmock.h>
#include <sys/inotify.h>

#include "Ctl.h"
#include "posix/Pipe.h"

namespace corvane::test {
namespace {

using ::testing::HasSubstr;

class CtlActs : public CtlTest {
 protected:
  [[nodiscard]] PropertyList lastRun() const {
    return DemoClient::plist(demo.paths.clientSettings).asDictionary().value("Date_Client_Run");
  }
  void makeRunsLast(const char* seconds) const {
    std::ofstream(demo.root + "/demo-settings") << "run-seconds=" << seconds << "\n";
  }
  /// Waits until the client's log says so.
  [[nodiscard]] bool isLogged(const std::string& line) const {
    return waitUntil([&] { return demo.log().find(line) != std::string::npos; });
  }
};

TEST_F(CtlActs, ARunIsStartedAndNotWaitedFor) {
  const PropertyList before = lastRun();
  EXPECT_EQ(good({"run"}), "");
  EXPECT_TRUE(isLogged("RunClient for prefpane-client: ended"));
  EXPECT_TRUE(waitUntil([&] { return lastRun() != before; }));
}

TEST_F(CtlActs, ARunThatIsOverAtOnceIsWaitedForAsWell) {
  const PropertyList before = lastRun();
  const std::string printed = good({"run", "--wait"});
  EXPECT_NE(lastRun(), before);
  EXPECT_THAT(demo.log(), HasSubstr("RunClient for prefpane-client: started"));
  EXPECT_EQ(printed, json({"status"}).at("lastRun").get<std::string>() + "\n");
}

TEST_F(CtlActs, ARunThatTakesItsTimeIsFollowedUntilItsMarkerHasGone) {
  makeRunsLast("0.4");
  const PropertyList before = lastRun();
  good({"run", "--wait"});
  EXPECT_NE(lastRun(), before);
  EXPECT_FALSE(std::filesystem::exists(demo.paths.errorLoggerPid));
}

TEST_F(CtlActs, ARunThatIsInProgressIsNotStartedAgain) {
  std::ofstream(demo.paths.errorLoggerPid) << "1\n";
  refused({"run"}, 65, "a run is in progress already");
  EXPECT_EQ(demo.log(), "");
}

TEST_F(CtlActs, ARunThatTakesTooLongIsNotWaitedForAnyLonger) {
  makeRunsLast("3");
  refused({"run", "--wait", "--timeout", "0.2"}, 75, "the run was not over in time");
}

TEST_F(CtlActs, AnUpdateIsWaitedFor) {
  const std::string printed = good({"update", "--wait"});
  EXPECT_EQ(printed, json({"status"}).at("lastUpdateCheck").get<std::string>() + "\n");
  EXPECT_THAT(demo.log(), HasSubstr("RunUpdater for prefpane-updater"));
}

TEST_F(CtlActs, WithoutAnUpdaterThereIsNoUpdate) {
  std::filesystem::remove_all(demo.paths.utilities);
  refused({"update"}, 65, "the client has no updater");
}

TEST_F(CtlActs, AScriptThatCannotBeStartedIsTold) {
  std::filesystem::remove(demo.paths.runClient);
  const Ended ended = run({"run", "--wait"});
  EXPECT_EQ(ended.status, 73);
  EXPECT_THAT(ended.errors, HasSubstr("/Library/Corvane/RunClient was not started: "));
}

TEST_F(CtlActs, TheClientIsRemovedOnlyWhenThatIsConfirmed) {
  refused({"uninstall"}, 64, "the client is removed only with --yes");
  EXPECT_TRUE(std::filesystem::exists(demo.paths.installFolder));
  good({"uninstall", "--yes", "--wait"});
  EXPECT_FALSE(std::filesystem::exists(demo.paths.installFolder));
  EXPECT_THAT(demo.log(), HasSubstr("RunClient for prefpane-remove: removed, reported"));
}

TEST_F(CtlActs, ARemovalCanBeQuiet) {
  good({"uninstall", "--yes", "--quiet", "--wait"});
  EXPECT_TRUE(isLogged("RunClient for prefpane-remove: removed without a report"));
}

TEST_F(CtlActs, WaitingEndsQuietlyWithTheSignal) {
  makeRunsLast("5");
  for (const auto& [number, status] : {std::pair{SIGINT, 130}, {SIGTERM, 143}, {SIGHUP, 129}}) {
    std::filesystem::remove(demo.paths.errorLoggerPid);
    RunningCtl waiting(at({"run", "--wait"}));
    ASSERT_TRUE(waitUntil([&] { return std::filesystem::exists(demo.paths.errorLoggerPid); }));
    waiting.signal(number);
    const Ended ended = waiting.end();
    EXPECT_EQ(ended.status, status);
    EXPECT_EQ(ended.errors, "");
    EXPECT_TRUE(nothingIsStaged());
  }
}

TEST_F(CtlActs, ATerminalThatIsClosedEndsItQuietly) {
  makeRunsLast("5");
  Terminal terminal;
  RunningCtl waiting(at({"run", "--wait"}), {.terminal = &terminal});
  ASSERT_TRUE(waitUntil([&] { return std::filesystem::exists(demo.paths.errorLoggerPid); }));
  terminal.close();
  EXPECT_EQ(waiting.end().status, 129);
}

/// Calls that change four files and are interrupted as soon as the first of them is being written.
TEST_F(CtlActs, AnInterruptInTheMiddleOfWritingLeavesWholeFilesAndNothingBeside) {
  const Words before = {"2", "90", "7", "off"};
  const Words after = {"3", "80", "8", "on"};
  const Words names = {"run-interval", "startup-disk.percent", "time-machine.days", "automount"};
  const FileDescriptor watch(::inotify_init1(IN_CLOEXEC | IN_NONBLOCK));
  ASSERT_GE(::inotify_add_watch(watch.get(), (demo.root + "/private/tmp").c_str(), IN_CREATE | IN_MOVED_TO),
            0);
  const auto hasBegun = [&] {
    pollfd waited{watch.get(), POLLIN, 0};
    char events[4096];
    return ::poll(&waited, 1, kHangMilliseconds) > 0 && ::read(watch.get(), events, sizeof events) > 0;
  };
  bool isChanged = false;
  for (const int number : {SIGINT, SIGHUP, SIGTERM, SIGPIPE}) {
    const Words& values = isChanged ? before : after;
    Words words = {"set"};
    for (std::size_t i = 0; i < names.size(); ++i) words.insert(words.end(), {names[i], values[i]});
    RunningCtl writing(at(words));
    ASSERT_TRUE(hasBegun());
    writing.signal(number);
    const Ended ended = writing.end();
    EXPECT_EQ(ended.errors, "");
    // Nothing is written to a pipe here, so that this one means nothing.
    if (number == SIGPIPE)
      EXPECT_EQ(ended.status, 0);
    else
      EXPECT_THAT(ended.status, testing::AnyOf(0, 128 + number));
    EXPECT_TRUE(nothingIsStaged()) << number;
    for (std::size_t i = 0; i < names.size(); ++i)
      EXPECT_THAT(good({"get", names[i]}), testing::AnyOf(before[i] + "\n", after[i] + "\n")) << names[i];
    good(words);
    isChanged = !isChanged;
    char events[4096];
    while (::read(watch.get(), events, sizeof events) > 0) {
    }
  }
}

TEST_F(CtlActs, ATestThatNeverAnswersEndsWithTheInterrupt) {
  const Json shown = json({"plugins", "show", "check_test_mode"}).at("plugins").at(0).at("options");
  const std::string never = shown.at(0).at("choices").at(7);
  good({"plugins", "set", "check_test_mode", "Outcome", never});
  RunningCtl testing(at({"plugins", "test", "check_test_mode"}));
  ASSERT_TRUE(isLogged("check_test_mode hangs"));
  testing.signal(SIGINT);
  EXPECT_EQ(testing.end().status, 130);
}

TEST_F(CtlActs, AReaderThatHasGoneEndsItQuietly) {
  Pipe pipe = makePipe();
  pipe.readEnd.reset();
  RunningCtl writing(at({"--json", "plugins", "show"}), {.output = pipe.writeEnd.get()});
  const Ended ended = writing.end();
  EXPECT_EQ(ended.status, 141);
  EXPECT_EQ(ended.errors, "");
}

TEST_F(CtlActs, AFullDiskBehindStandardOutputIsTold) {
  const FileDescriptor full(::open("/dev/full", O_WRONLY | O_CLOEXEC));
  RunningCtl writing(at({"status"}), {.output = full.get()});
  const Ended ended = writing.end();
  EXPECT_EQ(ended.status, 74);
  EXPECT_EQ(ended.errors, "corvanectl: standard output cannot be written\n");
}

/// Reads whole lines from a pipe as they come.
class Lines {
 public:
  explicit Lines(int descriptor) : descriptor_(descriptor) {}
  [[nodiscard]] std::string next() {
    std::size_t end = 0;
    while ((end = pending_.find('\n')) == std::string::npos) {
      pollfd waited{descriptor_, POLLIN, 0};
      char buffer[4096];
      if (::poll(&waited, 1, 20000) <= 0) return "(nothing came)";
      const ssize_t count = ::read(descriptor_, buffer, sizeof buffer);
      if (count <= 0) return "(the end)";
      pending_.append(buffer, static_cast<std::size_t>(count));
    }
    const std::string line = pending_.substr(0, end);
    pending_.erase(0, end + 1);
    return line;
  }

 private:
  int descriptor_;
  std::string pending_;
};

/// A call that watches; changes are made again until one of them is told, since nobody says when it is ready.
class Watching {
 public:
  Watching(const Words& arguments, const std::function<void()>& change)
      : ctl_(std::make_unique<RunningCtl>(arguments, CtlOptions{.output = pipe_.writeEnd.get()})),
        lines_(pipe_.readEnd.get()) {
    pipe_.writeEnd.reset();
    pollfd waited{pipe_.readEnd.get(), POLLIN, 0};
    const bool isTold = waitUntil([&] {
      change();
      return ::poll(&waited, 1, 100) > 0;
    });
    EXPECT_TRUE(isTold);
  }
  [[nodiscard]] Json next() { return Json::parse(lines_.next(), nullptr, false); }
  [[nodiscard]] RunningCtl& ctl() { return *ctl_; }
  void stopReading() { pipe_.readEnd.reset(); }

 private:
  Pipe pipe_ = makePipe();
  std::unique_ptr<RunningCtl> ctl_;
  Lines lines_;
};

TEST_F(CtlActs, WatchingTellsOfEachReloadUntilItIsInterrupted) {
  std::filesystem::create_directories(demo.root + "/Volumes/New");
  int round = 0;
  Watching watching(at({"--json", "watch"}), [&] {
    std::filesystem::create_directory(demo.root + "/Volumes/New/" + std::to_string(++round));
    std::filesystem::create_directory(demo.root + "/Volumes/New" + std::to_string(round));
  });
  const Json first = watching.next();
  EXPECT_EQ(first.at("reloaded"), "volumes");
  EXPECT_EQ(first.at("root"), demo.root);
  EXPECT_EQ(first.at("time").get<std::string>().size(), std::string("2026-11-22T10:00:00Z").size());
  std::ofstream(demo.paths.plugins + "/new.plist") << "x";
  Json next = watching.next();
  while (next.is_object() && next.at("reloaded") == "volumes") next = watching.next();
  EXPECT_EQ(next.at("reloaded"), "plugins");
  watching.ctl().signal(SIGINT);
  const Ended ended = watching.ctl().end();
  EXPECT_EQ(ended.status, 0);
  EXPECT_EQ(ended.errors, "");
}

TEST_F(CtlActs, WatchingTellsThatTheClientHasGone) {
  int round = 0;
  Watching watching(at({"--json", "watch"}), [&] {
    std::filesystem::create_directory(demo.root + "/Volumes/New" + std::to_string(++round));
  });
  std::filesystem::remove_all(demo.paths.installFolder);
  Json next = watching.next();
  while (next.is_object() && next.at("reloaded") != "removed") next = watching.next();
  ASSERT_TRUE(next.is_object());
  EXPECT_EQ(next.at("root"), demo.root);
  watching.ctl().signal(SIGTERM);
  const Ended ended = watching.ctl().end();
  EXPECT_EQ(ended.status, 0);
  EXPECT_THAT(ended.errors, HasSubstr("has been removed."));
}

TEST_F(CtlActs, WatchingTellsOfSeveralTrees) {
  const DemoClient other("0", "other");
  int round = 0;
  Watching watching({"--root", demo.root, "--root", other.root, "--json", "watch"}, [&] {
    std::filesystem::create_directory(other.root + "/Volumes/New" + std::to_string(++round));
  });
  EXPECT_EQ(watching.next().at("root"), other.root);
  watching.stopReading();
  // The next line finds nobody, and ends it.
  const auto hasEnded = [&] {
    std::filesystem::create_directory(other.root + "/Volumes/New" + std::to_string(++round));
    return false;
  };
  static_cast<void>(hasEnded());
  EXPECT_EQ(watching.ctl().end().status, 0);
}

}  // namespace
}  // namespace corvane::test
