// What can go wrong while the pane writes a settings file of root's, through the real polkit: nothing is
// lost, nothing else is touched, and the log says why.
#include <csignal>
#include <filesystem>
#include <fstream>
#include <ostream>
#include <string>
#include <vector>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "WriteFaultsFixture.h"
#include "posix/Pipe.h"
#include "support/Patience.h"

namespace corvane {
namespace {

namespace fs = std::filesystem;
using namespace test;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using Texts = std::vector<std::string>;

TEST_F(WriteFaults, FullDiskOfTheTargetKeepsTheOldFileAndTheNextWriteSucceeds) {
  CORVANE_START();
  mountOver("/Library/Corvane/PluginSupport", "size=64k,mode=755");
  volume->file(kTarget, text(kOld), 0644, MacVolume::kAdministrators);
  machine.asUser([&] {
    WholePane pane(volume->root(), machine.helper());
    ASSERT_TRUE(pane.openLock());
    EXPECT_THAT(write(pane, *volume / kTarget, settings("too much", 200000)),
                ElementsAre(AllOf(HasSubstr("Root command failed: /bin/cp: "),
                                  HasSubstr("No space left on device"))));
    expectOldTarget();
    EXPECT_THAT(write(pane, *volume / kTarget, kNew), IsEmpty());
  });
  EXPECT_EQ(volume->contents(kTarget), text(kNew));
  EXPECT_EQ(volume->rights(kTarget), "0:80 644");
  EXPECT_THAT(staged(), IsEmpty());
}

TEST_F(WriteFaults, ReadOnlyFileSystemOfTheTargetKeepsTheOldFile) {
  CORVANE_START();
  mountOver("/Library/Corvane/PluginSupport", "mode=755");
  volume->file(kTarget, text(kOld), 0644, MacVolume::kAdministrators);
  remountReadOnly("/Library/Corvane/PluginSupport", "mode=755");
  machine.asUser([&] {
    WholePane pane(volume->root(), machine.helper());
    ASSERT_TRUE(pane.openLock());
    EXPECT_THAT(
        write(pane, *volume / kTarget, kNew),
        ElementsAre(AllOf(HasSubstr("Root command failed: /bin/cp: "), HasSubstr("Read-only file system"))));
  });
  expectOldTarget();
  EXPECT_THAT(staged(), IsEmpty());
}

TEST_F(WriteFaults, FullStagingFolderKeepsTheOldFileAndLeavesNoPiece) {
  CORVANE_START();
  mountOver("/private/tmp", "size=64k,mode=1777");
  machine.asUser([&] {
    WholePane pane(volume->root(), machine.helper());
    ASSERT_TRUE(pane.openLock());
    EXPECT_THAT(write(pane, *volume / kTarget, settings("too much", 200000)),
                ElementsAre("Failed to write tmp file"));
    EXPECT_THAT(staged(), IsEmpty());
    expectOldTarget();
    EXPECT_THAT(write(pane, *volume / kTarget, kNew), IsEmpty());
  });
  EXPECT_EQ(volume->contents(kTarget), text(kNew));
}

TEST_F(WriteFaults, ReadOnlyStagingFolderKeepsTheOldFileAlsoWithAStaleStagingFileInIt) {
  CORVANE_START();
  mountOver("/private/tmp", "mode=1777");
  volume->file(kStaging, text(settings("stale")));
  ASSERT_EQ(::chown((*volume / kStaging).c_str(), PolkitMachine::kUser, PolkitMachine::kUser), 0);
  const Interruption remount([this] { remountReadOnly("/private/tmp", "mode=1777"); });
  machine.asUser([&] {
    WholePane pane(volume->root(), machine.helper());
    ASSERT_TRUE(pane.openLock());
    remount.letHappen();
    EXPECT_THAT(
        write(pane, *volume / kTarget, kNew),
        ElementsAre(AllOf(HasSubstr("Root command failed: /bin/rm: "), HasSubstr("Read-only file system")),
                    "Failed to write tmp file"));
  });
  expectOldTarget();
  EXPECT_EQ(volume->contents(kStaging), text(settings("stale")));
}

TEST_F(WriteFaults, MissingStagingFolderKeepsTheOldFile) {
  CORVANE_START();
  const Interruption removal([this] { EXPECT_EQ(::rmdir((*volume / "/private/tmp").c_str()), 0); });
  machine.asUser([&] {
    WholePane pane(volume->root(), machine.helper());
    ASSERT_TRUE(pane.openLock());
    removal.letHappen();
    EXPECT_THAT(write(pane, *volume / kTarget, kNew), ElementsAre("Failed to write tmp file"));
  });
  expectOldTarget();
}

/// A helper that is killed at a step of the copy: the pane finds the lock closed, and after it was opened
/// again the next write brings the whole new file, whatever the last one has left.
class KilledHelper : public WriteFaults, public testing::WithParamInterface<const char*> {
 protected:
  /// Whether the helper died in the write.
  bool writeWithHelperThatDiesAt(int step) {
    std::ofstream(machine.base() / "opt/stumble") << step << " die";
    bool died = false;
    const auto deaths = makePipe();
    machine.asUser([&] {
      WholePane pane(volume->root(), machine.helper());
      ASSERT_TRUE(pane.openLock());
      const Texts log = write(pane, *volume / GetParam(), kNew);
      const bool dead = !log.empty();
      ASSERT_EQ(::write(deaths.writeEnd.get(), &dead, sizeof dead), static_cast<ssize_t>(sizeof dead));
      if (!dead) return;
      EXPECT_THAT(log, Contains("Root command not started: /bin/cp: the root helper has ended"));
      EXPECT_THAT(log, Contains(HasSubstr("Error writing plist file: ")));
      auto& lock = pane.assembly.view().authView;
      EXPECT_TRUE(pane.runLoop.runUntil([&] { return lock.state() == AuthorizationView::State::Closed; },
                                        test::kHangSeconds));
      EXPECT_FALSE(pane.assembly.pane().unlocked());
    });
    EXPECT_EQ(::read(deaths.readEnd.get(), &died, sizeof died), static_cast<ssize_t>(sizeof died));
    return died;
  }
  void writeWithSoundHelper() {
    fs::remove(machine.base() / "opt/stumble");
    machine.asUser([&] {
      WholePane pane(volume->root(), machine.helper());
      ASSERT_TRUE(pane.openLock());
      EXPECT_THAT(write(pane, *volume / GetParam(), settings("last")), IsEmpty());
    });
    EXPECT_EQ(volume->contents(GetParam()), text(settings("last")));
    EXPECT_THAT(staged(), IsEmpty());
  }
};

TEST_P(KilledHelper, LosesNothingAtAnyStepOfAWrite) {
  CORVANE_START();
  machine.replaceHelper(STUMBLING_HELPER_PATH);
  volume->folder("/private/var/root/Library");
  const std::string target = GetParam();
  int step = 0;
  for (bool died = true; died; ++step) {
    ASSERT_LT(step, 10);
    volume->file(target, text(kOld), 0644, MacVolume::kAdministrators);
    died = writeWithHelperThatDiesAt(step);
    const auto found = readPropertyList(volume->contents(target));
    EXPECT_TRUE(found == kOld || found == kNew) << "after step " << step;
    EXPECT_EQ(volume->rights(target), "0:80 644") << "after step " << step;
    if (died) {
      EXPECT_EQ(volume->contents(kStaging), text(kNew)) << "the staging file keeps what was not written";
    }
    writeWithSoundHelper();
  }
  EXPECT_GE(step, 8) << "the copy must have been interrupted at each of its steps";
}

TEST_P(KilledHelper, LosesNothingAtAnyStepOfTheFirstWriteOfAFile) {
  CORVANE_START();
  machine.replaceHelper(STUMBLING_HELPER_PATH);
  const std::string target = GetParam();
  int step = 0;
  for (bool died = true; died; ++step) {
    ASSERT_LT(step, 10);
    fs::remove(*volume / target);
    died = writeWithHelperThatDiesAt(step);
    if (died) {
      EXPECT_EQ(volume->rights(target), "missing") << "there is a whole file or none; step " << step;
      EXPECT_EQ(volume->contents(kStaging), text(kNew)) << "the staging file keeps what was not written";
    } else {
      EXPECT_EQ(volume->contents(target), text(kNew));
      EXPECT_EQ(volume->rights(target), "0:0 644");
    }
    writeWithSoundHelper();
  }
  EXPECT_GE(step, 3) << "the copy must have been interrupted at each of its steps";
}
INSTANTIATE_TEST_SUITE_P(Targets, KilledHelper, testing::Values(kTarget, kRootHomeTarget),
                         [](const testing::TestParamInfo<const char*>& value) {
                           return std::string(value.param) == kTarget ? "OfThePlugins" : "InRootsHome";
                         });

TEST_F(WriteFaults, HelperThatIsGoneBeforeAWriteLeavesOnlyTheStagingFile) {
  CORVANE_START();
  const auto ready = makePipe();
  const auto go = makePipe();
  const pid_t user = PolkitMachine::startAsUser([&] {
    WholePane pane(volume->root(), machine.helper());
    ASSERT_TRUE(pane.openLock());
    const pid_t helper = test::onlyChild();
    ASSERT_EQ(::write(ready.writeEnd.get(), &helper, sizeof helper), static_cast<ssize_t>(sizeof helper));
    ASSERT_TRUE(test::readableSoon(go.readEnd.get()));
    EXPECT_THAT(write(pane, *volume / kTarget, kNew),
                Contains("Root command not started: /bin/cp: the root helper has ended"));
  });
  pid_t helper = 0;
  ASSERT_TRUE(test::readableSoon(ready.readEnd.get()));
  ASSERT_EQ(::read(ready.readEnd.get(), &helper, sizeof helper), static_cast<ssize_t>(sizeof helper));
  const auto helperEnds = test::watchProcess(helper);
  ::kill(helper, SIGKILL);
  ASSERT_TRUE(test::readableSoon(helperEnds.get()));
  ASSERT_EQ(::write(go.writeEnd.get(), "x", 1), 1);
  int status = 0;
  ::waitpid(user, &status, 0);
  EXPECT_EQ(status, 0);
  expectOldTarget();
  EXPECT_EQ(volume->contents(kStaging), text(kNew));
}

struct Swap {
  const char* act;
  const char* why;
};
void PrintTo(const Swap& swap, std::ostream* stream) { *stream << swap.act; }
/// Something of root's takes the target's place in the middle of a copy.
class SwappedTarget : public WriteFaults, public testing::WithParamInterface<Swap> {};

TEST_P(SwappedTarget, IsLeftAloneAtEveryStepAndNothingBehindItIsTouched) {
  CORVANE_START();
  machine.replaceHelper(STUMBLING_HELPER_PATH);
  for (int step = 0; step < 4; ++step) {
    volume->file(kTarget, text(kOld));
    std::ofstream(machine.base() / "opt/stumble")
        << step << " " << GetParam().act << " " << (*volume / kTarget);
    machine.asUser([&] {
      WholePane pane(volume->root(), machine.helper());
      ASSERT_TRUE(pane.openLock());
      EXPECT_THAT(write(pane, *volume / kTarget, kNew),
                  ElementsAre(AllOf(HasSubstr("Root command refused: /bin/cp: "), HasSubstr(GetParam().why)),
                              HasSubstr("Error writing plist file: ")))
          << "at step " << step;
    });
    EXPECT_EQ(volume->contents(kSecret), "secret");
    EXPECT_EQ(volume->rights(kSecret), "0:0 600");
    EXPECT_EQ(fs::is_directory(*volume / kTarget), std::string(GetParam().act) == "folder");
    EXPECT_THAT(staged(), IsEmpty());
    fs::remove(*volume / kTarget);
  }
}
INSTANTIATE_TEST_SUITE_P(Things, SwappedTarget,
                         testing::Values(Swap{"folder", "what stands there is not a regular file"},
                                         Swap{"link", "a symbolic link stands in the way"},
                                         Swap{"hardlink", "the file has further hard links"}),
                         [](const testing::TestParamInfo<Swap>& value) { return value.param.act; });

}  // namespace
}  // namespace corvane
