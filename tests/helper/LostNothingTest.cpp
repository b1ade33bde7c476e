// A copy that fails in the middle, or whose process is killed there, loses no setting.
#include <csignal>
#include <fstream>
#include <iostream>
#include <ostream>

#include <sched.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/wait.h>

#include "TreeFixture.h"

namespace corvane::helper::test {
namespace {

constexpr const char* kSupport = "/Library/Corvane/PluginSupport";
const std::string kTarget = "Library/Corvane/PluginSupport/a.plist";
constexpr int kTested = 0;
constexpr int kFailed = 1;
constexpr int kNotPossible = 77;

/// Runs the test in a child, since it changes what belongs to a process: limits, mounts, its life.
int inChild(const std::function<int()>& body) {
  std::cout.flush();
  const pid_t child = ::fork();
  if (child == 0) ::_exit(body());
  int status = 0;
  EXPECT_EQ(::waitpid(child, &status, 0), child);
  return WIFEXITED(status) ? WEXITSTATUS(status) : 1000 + WTERMSIG(status);
}

std::string withoutBlanksAtTheEnd(std::string text) {
  text.erase(text.find_last_not_of(' ') + 1);
  return text;
}

class LosesNothing : public TreeFixture {};

struct Killing {
  const char* name;
  std::string old;  // empty: no target yet
  std::string fresh;
};
void PrintTo(const Killing& killing, std::ostream* stream) { *stream << killing.name; }
class KilledCopy : public TreeFixture, public testing::WithParamInterface<Killing> {};

TEST_P(KilledCopy, LeavesTheOldOrTheNewContentsAfterEveryStep) {
  const auto& [name, old, fresh] = GetParam();
  int steps = 0;
  for (bool killed = true; killed; ++steps) {
    ASSERT_LT(steps, 10);
    ::unlink((folder / kTarget).c_str());
    if (!old.empty()) folder.writeFile(kTarget, old);
    stage("a.plist", fresh);
    const int ending = inChild([&] {
      observers.beforeStep = [left = steps](std::string_view) mutable {
        if (left-- == 0) ::raise(SIGKILL);
      };
      return tree().writeTarget("a.plist", kSupport).exitStatus;
    });
    killed = ending == 1000 + SIGKILL;
    ASSERT_TRUE(killed || ending == 0) << ending;
    const auto found = withoutBlanksAtTheEnd(folder.readFile(kTarget));
    EXPECT_TRUE(found == fresh || found == old) << "after step " << steps << ": " << found.substr(0, 40);
    EXPECT_EQ(folder.readFile("private/tmp/a.plist"), fresh) << "the staging file keeps what was not written";
  }
  EXPECT_EQ(folder.readFile(kTarget), fresh) << "the last round was not interrupted";
  EXPECT_GE(steps, 4) << "the copy must have been interrupted at each of its steps";
}
INSTANTIATE_TEST_SUITE_P(Contents, KilledCopy,
                         testing::Values(Killing{"Growing", "old", std::string(9000, 'n')},
                                         Killing{"Shrinking", std::string(9000, 'o'), "new"},
                                         Killing{"OfANewFile", "", "new"}),
                         [](const testing::TestParamInfo<Killing>& value) { return value.param.name; });

/// Mounts a small file system of the kind over the folder, visible to this process only.
bool mountOver(const std::string& path, const char* kind, const char* options) {
  return ::unshare(CLONE_NEWNS) == 0 && ::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
         ::mount(kind, path.c_str(), kind, 0, options) == 0;
}

TEST_F(LosesNothing, FullDiskLeavesTheOldContentsAndTheStagingFile) {
  stage("a.plist", std::string(500000, 'n'));
  const int ending = inChild([&] {
    if (!mountOver(folder / "Library", "tmpfs", "size=128k,mode=755")) return kNotPossible;
    folder.writeFile(kTarget, std::string(5000, 'o'));
    const auto existing = tree().writeTarget("a.plist", kSupport);
    const bool keptOld = folder.readFile(kTarget) == std::string(5000, 'o');
    ::unlink((folder / kTarget).c_str());
    const auto fresh = tree().writeTarget("a.plist", kSupport);
    const bool leftNothing = std::filesystem::is_empty(folder / "Library/Corvane/PluginSupport");
    for (const auto& reply : {existing, fresh}) {
      if (reply.exitStatus != 1 || reply.message.find("No space left on device") == std::string::npos)
        return kFailed;
    }
    return keptOld && leftNothing ? kTested : kFailed;
  });
  if (ending == kNotPossible) GTEST_SKIP() << "NOT TESTED: no file system can be mounted here";
  EXPECT_EQ(ending, kTested);
  EXPECT_EQ(folder.readFile("private/tmp/a.plist"), std::string(500000, 'n'));
}

int limitFileSize(rlim_t bytes) {
  (void)std::signal(SIGXFSZ, SIG_IGN);
  const rlimit limit{bytes, RLIM_INFINITY};
  return ::setrlimit(RLIMIT_FSIZE, &limit);
}

TEST_F(LosesNothing, FileSystemThatCannotReserveKeepsTheOldContentsWhenItIsFull) {
  stage("a.plist", std::string(500000, 'n'));
  const int ending = inChild([&] {
    // A file system without reservation, and a limit in the place of its size.
    if (!mountOver(folder / "Library", "ramfs", "mode=755")) return kNotPossible;
    folder.writeFile(kTarget, std::string(5000, 'o'));
    if (limitFileSize(100000) != 0) return kNotPossible;
    const auto reply = tree().writeTarget("a.plist", kSupport);
    if (reply.exitStatus != 1 || folder.readFile(kTarget) != std::string(5000, 'o')) return kFailed;
    (void)limitFileSize(RLIM_INFINITY);
    if (tree().writeTarget("a.plist", kSupport).exitStatus != 0) return kFailed;
    return folder.readFile(kTarget) == std::string(500000, 'n') ? kTested : kFailed;
  });
  if (ending == kNotPossible) GTEST_SKIP() << "NOT TESTED: no file system can be mounted here";
  EXPECT_EQ(ending, kTested);
}

TEST_F(LosesNothing, WriteThatFailsInTheMiddlePutsTheOldContentsBack) {
  folder.writeFile(kTarget, std::string(5000, 'o'));
  stage("a.plist", std::string(500000, 'n'));
  EXPECT_EQ(inChild([&] {
              observers.beforeStep = [](std::string_view step) {
                if (step == "write") (void)limitFileSize(100000);
              };
              const auto reply = tree().writeTarget("a.plist", kSupport);
              return reply.exitStatus == 1 ? kTested : kFailed;
            }),
            kTested);
  EXPECT_EQ(folder.readFile(kTarget), std::string(5000, 'o'));
  EXPECT_EQ(folder.readFile("private/tmp/a.plist"), std::string(500000, 'n'));
}

TEST_F(LosesNothing, FileThatTheClientReplacesMeanwhileIsWrittenToo) {
  folder.writeFile(kTarget, "old");
  stage("a.plist", "new");
  bool replaced = false;
  observers.beforeStep = [&](std::string_view step) {
    if (step != "write" || replaced) return;
    replaced = true;
    folder.writeFile("Library/Corvane/PluginSupport/b", "of the client");
    std::filesystem::rename(folder / "Library/Corvane/PluginSupport/b", folder / kTarget);
  };
  const auto reply = tree().writeTarget("a.plist", kSupport);
  expectDone(reply);
  EXPECT_TRUE(replaced);
  EXPECT_EQ(folder.readFile(kTarget), "new");
}

TEST_F(LosesNothing, FileThatTheClientMakesMeanwhileIsWrittenToo) {
  stage("a.plist", "new");
  ino_t made = 0;
  observers.beforeStep = [&](std::string_view step) {
    if (step != "name") return;
    folder.writeFile(kTarget, "of the client");
    made = attributesOf(kTarget).st_ino;
  };
  const auto reply = tree().writeTarget("a.plist", kSupport);
  expectDone(reply);
  EXPECT_EQ(folder.readFile(kTarget), "new");
  EXPECT_EQ(attributesOf(kTarget).st_ino, made);
}

TEST_F(LosesNothing, FileThatIsPlantedDuringAReadIsNotWrittenThrough) {
  folder.writeFile(kTarget, "settings");
  observers.beforeStep = [&](std::string_view step) {
    if (step == "name") folder.writeFile("private/tmp/read-a.plist", "planted");
  };
  const auto reply = tree().readSource(kSupport, "a.plist");
  expectDenied(reply, "something was planted there");
  EXPECT_EQ(folder.readFile("private/tmp/read-a.plist"), "planted");
}

TEST_F(LosesNothing, FileAboveTheLimitIsNotCopied) {
  folder.writeFile(kTarget, "old");
  stage("a.plist", "x");
  std::filesystem::resize_file(folder / "private/tmp/a.plist", kLargestFile + 1);
  const auto reply = tree().writeTarget("a.plist", kSupport);
  EXPECT_EQ(reply.exitStatus, 1);
  EXPECT_EQ(folder.readFile(kTarget), "old");
}

}  // namespace
}  // namespace corvane::helper::test
