#include <filesystem>
#include <optional>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

#include "pane/QLCFileWatcher.h"
#include "platform/linux/LinuxFileEventQueues.h"
#include "platform/linux/PollRunLoop.h"
#include "posix/FileDescriptor.h"
#include "support/Isolated.h"
#include "support/OtherUser.h"
#include "support/TemporaryFolder.h"

namespace corvane {
namespace {

namespace fs = std::filesystem;
using test::IsolatedOutcome;
using test::TemporaryFolder;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class Log : public SystemLog {
 public:
  void write(std::string_view line) override { lines.emplace_back(line); }
  std::vector<std::string> lines;
};

/// One watcher over the real kernel, and what it has told.
class Watch : public QLCFileWatcherDelegate {
 public:
  explicit Watch(const std::string& path, bool watchForWriteOnly = false)
      : watcher_(QLCFileWatcher::createWithPathWatchForWriteOnly(queues_, log, path, watchForWriteOnly)) {
    if (watcher_) watcher_->setDelegate(this);
  }
  Watch(const Watch&) = delete;
  Watch& operator=(const Watch&) = delete;
  ~Watch() override {
    if (watcher_) watcher_->endWatching();
  }
  void fileWatcherFileHasDisappeared(QLCFileWatcher& /*watcher*/, const std::string& /*path*/) override {
    ++told_;
  }
  void fileWatcherFileHasBeenWritten(QLCFileWatcher& /*watcher*/, const std::string& /*path*/) override {
    ++told_;
  }

  [[nodiscard]] bool isArmed() const { return watcher_ != nullptr; }
  void end() { watcher_->endWatching(); }
  /// How often the delegate was told, up to this moment.
  int told() {
    loop.runReady();
    return told_;
  }

  PollRunLoop loop;
  Log log;

 private:
  LinuxFileEventQueues queues_{loop};
  int told_ = 0;
  std::shared_ptr<QLCFileWatcher> watcher_;
};

FileDescriptor hold(const std::string& path) {
  return FileDescriptor(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
}

/// One thing that may happen to a watched file or folder, and whether it has disappeared by it.
struct Act {
  const char* name;
  bool disappears;
  std::function<void(const std::string& path)> act;
};

void PrintTo(const Act& act, std::ostream* stream) { *stream << act.name; }

class WatchedFile : public ::testing::TestWithParam<Act> {};

TEST_P(WatchedFile, HasDisappearedOnlyWhenItWasDeletedRenamedOrReplaced) {
  const TemporaryFolder folder;
  const std::string path = folder / "file";
  for (const bool held : {false, true}) {
    SCOPED_TRACE(held ? "held open by somebody" : "not held open");
    folder.writeFile("file", "text");
    fs::remove(path + ".other");
    fs::create_hard_link(path, path + ".other");
    Watch watch(path);
    ASSERT_TRUE(watch.isArmed());
    const FileDescriptor holder = held ? hold(path) : FileDescriptor();
    GetParam().act(path);
    EXPECT_EQ(watch.told(), GetParam().disappears ? 1 : 0);
    EXPECT_EQ(watch.told(), GetParam().disappears ? 1 : 0) << "told again without a new event";
    EXPECT_THAT(watch.log.lines, IsEmpty());
    EXPECT_EQ(watch.loop.pendingTimers(), 0U);
  }
}

INSTANTIATE_TEST_SUITE_P(
    Acts, WatchedFile,
    ::testing::Values(
        Act{"Unlink", true, [](const auto& path) { fs::remove(path); }},
        Act{"UnlinkOfItsOtherName", true, [](const auto& path) { fs::remove(path + ".other"); }},
        Act{"RenamedOver", true,
            [](const auto& path) {
              std::ofstream(path + ".new") << "new";
              fs::rename(path + ".new", path);
            }},
        Act{"RenamedAway", true, [](const auto& path) { fs::rename(path, path + ".away"); }},
        Act{"RenamedAwayAndBack", true,
            [](const auto& path) {
              fs::rename(path, path + ".away");
              fs::rename(path + ".away", path);
            }},
        Act{"UnlinkedAndMadeAgain", true,
            [](const auto& path) {
              fs::remove(path);
              std::ofstream(path) << "again";
            }},
        Act{"Write", false, [](const auto& path) { std::ofstream(path, std::ios::app) << "more"; }},
        Act{"Truncate", false, [](const auto& path) { fs::resize_file(path, 0); }},
        Act{"Chmod", false, [](const auto& path) { fs::permissions(path, fs::perms::owner_all); }},
        Act{"Touch", false,
            [](const auto& path) { fs::last_write_time(path, fs::file_time_type::clock::now()); }},
        Act{"OneMoreName", false,
            [](const auto& path) {
              fs::remove(path + ".third");
              fs::create_hard_link(path, path + ".third");
            }},
        Act{"AnotherFileInTheFolder", false,
            [](const auto& path) {
              std::ofstream(path + ".neighbour") << "text";
              fs::remove(path + ".neighbour");
            }}),
    [](const auto& param) { return std::string(param.param.name); });

class WatchedFolder : public ::testing::TestWithParam<Act> {};

TEST_P(WatchedFolder, HasDisappearedOnlyWhenItWasDeletedOrRenamed) {
  const TemporaryFolder folder;
  for (const bool held : {false, true}) {
    SCOPED_TRACE(held ? "held open by somebody" : "not held open");
    const std::string path = folder.makeFolder("watched");
    folder.makeFolder("watched/below");
    Watch watch(path);
    ASSERT_TRUE(watch.isArmed());
    const FileDescriptor holder = held ? hold(path) : FileDescriptor();
    GetParam().act(path);
    EXPECT_EQ(watch.told(), GetParam().disappears ? 1 : 0);
    EXPECT_EQ(watch.told(), GetParam().disappears ? 1 : 0) << "told again without a new event";
    EXPECT_EQ(watch.loop.pendingTimers(), 0U);
  }
}

INSTANTIATE_TEST_SUITE_P(
    Acts, WatchedFolder,
    ::testing::Values(
        Act{"Removed", true, [](const auto& path) { fs::remove_all(path); }},
        Act{"RemovedAndMadeAgain", true,
            [](const auto& path) {
              fs::remove_all(path);
              fs::create_directory(path);
            }},
        Act{"RenamedAway", true,
            [](const auto& path) {
              fs::remove_all(path + ".away");
              fs::rename(path, path + ".away");
            }},
        Act{"RenamedOverByAnEmptyFolder", true,
            [](const auto& path) {
              fs::create_directory(path + ".new");
              fs::remove(path + "/below");
              fs::rename(path + ".new", path);
            }},
        Act{"FileMadeInside", false, [](const auto& path) { std::ofstream(path + "/file") << "x"; }},
        Act{"SubfolderRemoved", false, [](const auto& path) { fs::remove(path + "/below"); }},
        Act{"Chmod", false, [](const auto& path) { fs::permissions(path, fs::perms::owner_all); }},
        Act{"NeighbourRemoved", false,
            [](const auto& path) {
              fs::create_directory(path + ".neighbour");
              fs::remove(path + ".neighbour");
            }}),
    [](const auto& param) { return std::string(param.param.name); });

TEST(LinuxFileEventQueues, UnmountingIsADisappearanceAndNoWrite) {
  const TemporaryFolder folder;
  const std::string mountPoint = folder.makeFolder("volume");
  const auto outcome = test::runIsolated(CLONE_NEWNS | (::geteuid() == 0 ? 0 : CLONE_NEWUSER), [&] {
    ASSERT_EQ(::mount("none", mountPoint.c_str(), "tmpfs", 0, nullptr), 0);
    folder.writeFile("volume/file", "text");
    Watch file(mountPoint + "/file");
    Watch volume(mountPoint);
    Watch writes(mountPoint + "/file", true);
    ASSERT_TRUE(file.isArmed() && volume.isArmed() && writes.isArmed());
    ASSERT_EQ(::umount(mountPoint.c_str()), 0) << "a watch must not keep a volume busy";
    EXPECT_EQ(file.told(), 1);
    EXPECT_EQ(volume.told(), 1);
    EXPECT_EQ(writes.told(), 0) << "nothing was written";
  });
  if (outcome == IsolatedOutcome::Impossible) GTEST_SKIP() << "NOT TESTED: mounting is not possible here";
  EXPECT_EQ(outcome, IsolatedOutcome::Passed);
}

TEST(LinuxFileEventQueues, DeletionOrRenamingBetweenOpeningAndRegisteringIsReported) {
  const TemporaryFolder folder;
  struct Case {
    std::string path;
    bool renamed;
  };
  for (const auto& [path, renamed] :
       {Case{folder.writeFile("file"), false}, Case{folder.makeFolder("folder"), false},
        Case{folder.writeFile("other file"), true}, Case{folder.makeFolder("other folder"), true}}) {
    SCOPED_TRACE(path);
    PollRunLoop loop;
    LinuxFileEventQueues queues(loop);
    auto opened = queues.openForEvents(path);
    auto created = queues.createQueue();
    ASSERT_TRUE(opened.path && created.queue);
    if (renamed) {
      fs::rename(path, path + " away");
    } else {
      fs::remove(path);
    }
    ASSERT_EQ(created.queue->registerEvent(*opened.path, FileEventKind::Disappearance), std::nullopt);
    int calls = 0;
    ASSERT_TRUE(created.queue->wrap([&] { ++calls; }));
    created.queue->enableCallBack();
    ASSERT_TRUE(created.queue->addToRunLoop());
    EXPECT_EQ(calls, 0) << "called outside the run loop";
    loop.runReady();
    EXPECT_EQ(calls, 1);
  }
}

TEST(LinuxFileEventQueues, LosingANameThatCameLaterIsADisappearanceToo) {
  const TemporaryFolder folder;
  const std::string path = folder.writeFile("file");
  Watch watch(path);
  fs::create_hard_link(path, path + ".later");
  ASSERT_EQ(watch.told(), 0);
  fs::remove(path + ".later");
  EXPECT_EQ(watch.told(), 1);
}

TEST(LinuxFileEventQueues, FileThatIsClosedToTheUserHasNotDisappeared) {
  if (!test::OtherUser::isPossible())
    GTEST_SKIP() << "NOT TESTED: this needs root to close a folder to this user";
  const TemporaryFolder folder;
  const std::string path = folder.writeFile("closed/file");
  for (const std::string& open : {folder.path(), folder / "closed"})
    ASSERT_EQ(::chmod(open.c_str(), 0755), 0);
  ASSERT_EQ(::chmod(path.c_str(), 0644), 0);
  std::optional<Watch> watch;
  {
    const test::OtherUser nobody;
    watch.emplace(path);
    ASSERT_TRUE(watch->isArmed());
  }
  ASSERT_EQ(::chmod((folder / "closed").c_str(), 0700), 0);
  ASSERT_EQ(::chmod(path.c_str(), 0640), 0);
  const test::OtherUser nobody;
  EXPECT_EQ(watch->told(), 0);
}

TEST(LinuxFileEventQueues, EventsWaitUntilTheCallbackIsEnabledAndComeOncePerEnabling) {
  const TemporaryFolder folder;
  const std::string path = folder.writeFile("file");
  PollRunLoop loop;
  LinuxFileEventQueues queues(loop);
  auto opened = queues.openForEvents(path);
  auto queue = queues.createQueue().queue;
  ASSERT_TRUE(opened.path && queue);
  EXPECT_FALSE(queue->addToRunLoop()) << "there is nothing to call back yet";
  ASSERT_EQ(queue->registerEvent(*opened.path, FileEventKind::Disappearance), std::nullopt);
  int calls = 0;
  ASSERT_TRUE(queue->wrap([&] { ++calls; }));
  ASSERT_TRUE(queue->addToRunLoop());
  fs::remove(path);
  loop.runReady();
  EXPECT_EQ(calls, 0);
  queue->enableCallBack();
  loop.runReady();
  EXPECT_EQ(calls, 1);
  queue->enableCallBack();
  loop.runReady();
  EXPECT_EQ(calls, 2);
  queue->enableCallBack();
  queue.reset();
  loop.runReady();
  EXPECT_EQ(calls, 2);
}

TEST(LinuxFileEventQueues, DanglingLinkIsNothingAndALinkLeadsToItsTarget) {
  const TemporaryFolder folder;
  fs::create_symlink("target", folder / "link");
  Watch dangling(folder / "link");
  EXPECT_FALSE(dangling.isArmed());
  EXPECT_THAT(dangling.log.lines, IsEmpty());
  folder.writeFile("target");
  Watch watch(folder / "link");
  ASSERT_TRUE(watch.isArmed());
  fs::remove(folder / "target");
  EXPECT_EQ(watch.told(), 1);
}

TEST(LinuxFileEventQueues, FolderReachedThroughALinkIsMissedThoughHeldOpen) {
  const TemporaryFolder folder;
  folder.makeFolder("real/target");
  fs::create_directory_symlink("real/target", folder / "link");
  Watch watch(folder / "link");
  ASSERT_TRUE(watch.isArmed());
  const FileDescriptor holder = hold(folder / "link");
  fs::remove(folder / "real/target");
  EXPECT_EQ(watch.told(), 1);
}

TEST(LinuxFileEventQueues, EndedWatchIsNotTold) {
  const TemporaryFolder folder;
  Watch watch(folder.writeFile("file"));
  ASSERT_TRUE(watch.isArmed());
  fs::remove(folder / "file");
  watch.end();
  EXPECT_EQ(watch.told(), 0);
}

TEST(LinuxFileEventQueues, WritesAndTruncationsAreReportedInTheWriteModeAndDeletionIsNot) {
  const TemporaryFolder folder;
  const std::string path = folder.writeFile("file", "text");
  Watch watch(path, true);
  ASSERT_TRUE(watch.isArmed());
  std::ofstream(path, std::ios::app) << "more" << std::flush;
  EXPECT_EQ(watch.told(), 1);
  fs::resize_file(path, 0);
  EXPECT_EQ(watch.told(), 2);
  fs::permissions(path, fs::perms::owner_all);
  EXPECT_EQ(watch.told(), 2);
  fs::remove(path);
  EXPECT_EQ(watch.told(), 2);
  folder.writeFile("file", "again");
  EXPECT_EQ(watch.told(), 2) << "the file that was watched is gone";
}

TEST(LinuxFileEventQueues, WrittenFolderIsOneWhoseEntriesChanged) {
  const TemporaryFolder folder;
  const std::string path = folder.makeFolder("watched");
  Watch watch(path, true);
  ASSERT_TRUE(watch.isArmed());
  folder.writeFile("watched/file", "text");
  EXPECT_EQ(watch.told(), 1);
  std::ofstream(path + "/file", std::ios::app) << "more" << std::flush;
  EXPECT_EQ(watch.told(), 1);
  fs::remove(path + "/file");
  EXPECT_EQ(watch.told(), 2);
}

TEST(LinuxFileEventQueues, PathThatCannotBeOpenedIsLoggedInTheSystemsWords) {
  const TemporaryFolder folder;
  folder.writeFile("file");
  Watch watch(folder / "file/below");
  EXPECT_FALSE(watch.isArmed());
  EXPECT_THAT(watch.log.lines,
              ElementsAre("QLCFileWatcher: Could not open the file 'below' to monitor its existence: "
                          "Not a directory"));
  Watch nul(folder / ("file" + std::string("\0x", 2)));
  EXPECT_FALSE(nul.isArmed());
  EXPECT_EQ(nul.log.lines.size(), 1U);
}

TEST(LinuxFileEventQueues, FileThatMayNotBeReadCannotBeRegistered) {
  if (!test::OtherUser::isPossible())
    GTEST_SKIP() << "NOT TESTED: this needs root to make a file that this user can't read";
  const TemporaryFolder folder;
  ASSERT_EQ(::chmod(folder.path().c_str(), 0755), 0);
  const std::string path = folder.writeFile("file");
  ASSERT_EQ(::chmod(path.c_str(), 0600), 0);
  const test::OtherUser nobody;
  Watch watch(path);
  EXPECT_FALSE(watch.isArmed());
  EXPECT_THAT(
      watch.log.lines,
      ElementsAre("QLCFileWatcher: Could not register file-watching event (to monitor the existence of the "
                  "file 'file') with queue: Permission denied"));
}

TEST(LinuxFileEventQueues, ExhaustedLimitsAreLoggedInTheSystemsWords) {
  const TemporaryFolder folder;
  const std::string path = folder.writeFile("file");
  const auto outcome = test::runIsolated(CLONE_NEWUSER, [&] {
    if (!test::setUserLimit("max_inotify_watches", 0)) GTEST_SKIP();
    Watch withoutWatches(path);
    EXPECT_THAT(
        withoutWatches.log.lines,
        ElementsAre("QLCFileWatcher: Could not register file-watching event (to monitor the existence of the "
                    "file 'file') with queue: No space left on device"));
    if (!test::setUserLimit("max_inotify_instances", 0)) GTEST_SKIP();
    Watch withoutInstances(path);
    EXPECT_THAT(
        withoutInstances.log.lines,
        ElementsAre("QLCFileWatcher: Could not create a kqueue to monitor the existence of the file 'file': "
                    "Too many open files"));
  });
  if (outcome == IsolatedOutcome::Impossible) GTEST_SKIP() << "NOT TESTED: no user name spaces here";
  EXPECT_EQ(outcome, IsolatedOutcome::Passed);
}

}  // namespace
}  // namespace corvane
