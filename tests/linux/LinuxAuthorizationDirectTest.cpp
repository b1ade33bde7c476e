// Commands without asking for rights: the tree belongs to the user. The real command runner in this process.
#include <cerrno>
#include <filesystem>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sched.h>
#include <sys/inotify.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/wait.h>

#include "platform/Housekeeping.h"
#include "platform/linux/LinuxAuthorization.h"
#include "platform/linux/PollRunLoop.h"
#include "posix/FileDescriptor.h"
#include "support/Isolated.h"
#include "support/OtherUser.h"
#include "support/Patience.h"
#include "support/TemporaryFolder.h"
#include "support/TestPlatform.h"

namespace corvane {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

constexpr const char* kHelper = "/nonexistent/qlhelper";
constexpr const char* kRight = "system.privilege.admin";
constexpr uid_t kStranger = 65534;

struct Direct : testing::Test {
  Direct() {
    tree.makeFolder("private/tmp");
    tree.makeFolder("Library/Corvane/Plugins");
    tree.makeFolder("Library/Corvane/PluginSupport");
    tree.makeFolder("Library/Corvane/Utilities/UpdaterSupport");
    services.requestRights(kRight, [this](AuthorizationAnswer answer) {
      granted = answer.outcome == AuthorizationOutcome::Granted;
      authorization = std::move(answer.rights);
    });
  }
  LaunchStatus run(const std::string& tool, const std::vector<std::string>& arguments) {
    return services.executeWithPrivileges(authorization.get(), tool, arguments).status;
  }
  std::string script(const std::string& relative, const std::string& text) {
    auto path = tree.writeFile(relative, text);
    ::chmod(path.c_str(), 0755);
    return path;
  }
  LaunchStatus validate(const std::string& plugin, std::unique_ptr<OutputPipe>& output) {
    return services.executeWithPrivileges(authorization.get(), kHelper, {plugin, "-v", "--test-mode"}, output)
        .status;
  }
  /// it.
  bool exists(const std::string& relative) { return ::access((tree / relative).c_str(), F_OK) == 0; }

  test::TemporaryFolder tree;
  test::RecordingLog log;
  PollRunLoop loop;
  LinuxAuthorization services{loop, log, {.root = tree.path(), .helper = kHelper}};
  bool granted = false;
  std::unique_ptr<Authorization> authorization;
};

TEST_F(Direct, OwnTreeIsDirectAndRightsAreGrantedAtOnce) {
  EXPECT_TRUE(services.isDirect());
  EXPECT_TRUE(granted);
  EXPECT_NE(authorization, nullptr);
}

TEST_F(Direct, ClosedLockStartsNothing) {
  const auto staging = tree.writeFile("private/tmp/a.plist", "x");
  const LaunchOutcome outcome = services.executeWithPrivileges(nullptr, "/bin/rm", {staging});
  EXPECT_EQ(outcome.status, launch_status::kInvalidAuthorization);
  EXPECT_EQ(outcome.reason, "the lock is closed");
  EXPECT_TRUE(exists("private/tmp/a.plist"));
}

TEST_F(Direct, CopyHasEndedAndKeepsModeAndInode) {
  const auto staging = tree.writeFile("private/tmp/a.plist", "new");
  const auto target = tree.writeFile("Library/Corvane/a.plist", "older");
  ::chmod(target.c_str(), 0640);
  struct stat before {};
  ::stat(target.c_str(), &before);
  EXPECT_EQ(run("/bin/cp", {staging, target}), launch_status::kStarted);
  struct stat after {};
  ::stat(target.c_str(), &after);
  EXPECT_EQ(tree.readFile("Library/Corvane/a.plist"), "new");
  EXPECT_EQ(after.st_ino, before.st_ino);
  EXPECT_EQ(after.st_mode & 07777, 0640U);
  EXPECT_EQ(run("/bin/rm", {staging}), launch_status::kStarted);
  EXPECT_FALSE(exists("private/tmp/a.plist"));
  EXPECT_THAT(log.lines, IsEmpty());
}

TEST_F(Direct, RefusedCommandIsDeniedWithOneLine) {
  EXPECT_EQ(run("/usr/bin/id", {}), launch_status::kDenied);
  EXPECT_THAT(log.lines, ElementsAre("Root command refused: /usr/bin/id: not a program that is run as root"));
}

TEST_F(Direct, MissingSourceOfAReadIsToldApartAndSilent) {
  tree.writeFile("private/tmp/read-a.plist", "stale");
  EXPECT_EQ(run("/bin/cp", {tree / "Library/a.plist", tree / "private/tmp/read-a.plist"}),
            launch_status::kNothingToRead);
  EXPECT_FALSE(exists("private/tmp/read-a.plist"));
  EXPECT_THAT(log.lines, IsEmpty());
}

TEST_F(Direct, ToolThatFailsIsStartedWithOneLine) {
  EXPECT_EQ(run("/bin/rm", {tree / "private/tmp/none"}), launch_status::kStarted);
  EXPECT_THAT(log.lines, ElementsAre("Root command failed: /bin/rm: " + (tree / "private/tmp/none") +
                                     ": No such file or directory"));
}

TEST_F(Direct, HousekeepingResetsTheModes) {
  const auto settings = tree.writeFile("Library/Corvane/ClientSettings.plist");
  const auto plugin = tree.writeFile("Library/Corvane/PluginSupport/a.plist");
  const auto updater = tree.writeFile("Library/Corvane/Utilities/UpdaterSupport/u.plist");
  for (const auto& file : {settings, plugin, updater}) ::chmod(file.c_str(), 0600);
  EXPECT_EQ(run("/bin/sh", {"-c", housekeeping::text("/bin/chmod 644", tree.path())}),
            launch_status::kStarted);
  for (const auto& file : {settings, plugin, updater}) {
    struct stat attributes {};
    ::stat(file.c_str(), &attributes);
    EXPECT_EQ(attributes.st_mode & 07777, 0644U) << file;
  }
  EXPECT_THAT(log.lines, IsEmpty());
}

TEST_F(Direct, SyntaxCheckReadsTheListedFilesAndRunsNoProgram) {
  const auto text = housekeeping::text("/usr/bin/plutil", tree.path());
  EXPECT_EQ(run("/bin/sh", {"-c", text}), launch_status::kStarted);
  EXPECT_THAT(log.lines, IsEmpty()) << "nothing there is nothing wrong";
  tree.writeFile("Library/Corvane/ClientSettings.plist", "<plist><dict/></plist>");
  tree.writeFile("Library/Corvane/PluginSupport/a.plist", "<plist><array/></plist>");
  tree.writeFile("Library/Corvane/PluginSupport/.hidden.plist", "no list");
  tree.writeFile("Library/Corvane/PluginSupport/notes.txt", "no list");
  EXPECT_EQ(run("/bin/sh", {"-c", text}), launch_status::kStarted);
  EXPECT_THAT(log.lines, IsEmpty());
  const auto bad = tree.writeFile("Library/Corvane/PluginSupport/b.plist", "no list");
  EXPECT_EQ(run("/bin/sh", {"-c", text}), launch_status::kStarted);
  EXPECT_THAT(log.lines, ElementsAre("Syntax check: " + bad + ": not a property list"));
  log.lines.clear();
  const auto worse = tree.writeFile("Library/Corvane/ClientSettings.plist", "no list either");
  EXPECT_EQ(run("/bin/sh", {"-c", text}), launch_status::kStarted);
  EXPECT_THAT(log.lines, ElementsAre("Syntax check: " + worse + ": not a property list (and 1 more)"));
}

TEST_F(Direct, NoShellRunsWhateverTheTextIs) {
  const auto text = housekeeping::text("/bin/chmod 644", tree.path());
  for (const auto& arguments :
       std::vector<std::vector<std::string>>{{"-c", "touch '" + (tree / "ran") + "'"},
                                             {"-c", text + "; touch '" + (tree / "ran") + "'"},
                                             {"-c", text + " "},
                                             {"-c", housekeeping::text("/bin/chmod 666", tree.path())},
                                             {"-c", housekeeping::text("/bin/chmod 644", "")},
                                             {text},
                                             {"-c", text, "x"}}) {
    EXPECT_EQ(run("/bin/sh", arguments), launch_status::kDenied);
  }
  EXPECT_FALSE(exists("ran"));
  EXPECT_THAT(log.lines, ::testing::Each("Root command refused: /bin/sh: not a program that is run as root"));
}

TEST_F(Direct, ClosedLockChecksNothing) {
  for (const auto* command : {"/bin/chmod 644", "/usr/bin/plutil"}) {
    EXPECT_EQ(
        services.executeWithPrivileges(nullptr, "/bin/sh", {"-c", housekeeping::text(command, tree.path())})
            .status,
        launch_status::kInvalidAuthorization);
  }
}

TEST_F(Direct, ScriptIsNotWaitedForOutlivesTheRightsAndLeavesNoChild) {
  ASSERT_EQ(::mkfifo((tree / "go").c_str(), 0600), 0);
  const auto path =
      script("Library/Corvane/RunClient", "read line < '" + (tree / "go") +
                                              "'\necho \"$*|$PWD|$(umask)|$PATH\" > '" + (tree / "part") +
                                              "'\nmv '" + (tree / "part") + "' '" + (tree / "done") + "'\n");
  const FileDescriptor changes(::inotify_init1(IN_CLOEXEC));
  ::inotify_add_watch(changes.get(), tree.path().c_str(), IN_MOVED_TO);
  ASSERT_EQ(run(kHelper, {"/bin/bash", path, "--log-parent", "prefpane-client", "--force"}),
            launch_status::kStarted);
  EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1);
  authorization.reset();
  const FileDescriptor go(::open((tree / "go").c_str(), O_WRONLY | O_CLOEXEC));
  ASSERT_EQ(::write(go.get(), "x\n", 2), 2);
  pollfd waited{changes.get(), POLLIN, 0};
  ASSERT_EQ(::poll(&waited, 1, test::kHangMilliseconds), 1);
  EXPECT_EQ(tree.readFile("done"),
            "--log-parent prefpane-client --force|/|0022|/usr/bin:/bin:/usr/sbin:/sbin\n");
}

TEST_F(Direct, ScriptThatIsMissingIsAFailureWithOneLine) {
  EXPECT_EQ(run(kHelper, {"/bin/bash", tree / "Library/Corvane/RunClient", "--log-parent", "prefpane-client",
                          "--force"}),
            launch_status::kToolExecuteFailure);
  EXPECT_THAT(log.lines, ElementsAre(HasSubstr("RunClient: No such file or directory")));
}

TEST_F(Direct, ValidationGivesTheOutputAndItsEnd) {
  const auto plugin = script("Library/Corvane/Plugins/check_x", "#!/bin/sh\necho \"0,$*\"\n");
  std::unique_ptr<OutputPipe> output;
  ASSERT_EQ(validate(plugin, output), launch_status::kStarted);
  char buffer[100];
  const auto first = output->read(buffer, sizeof buffer);
  EXPECT_EQ(std::string(buffer, first.bytes), "0,-v --test-mode\n");
  const auto second = output->read(buffer, sizeof buffer);
  EXPECT_EQ(second.bytes, 0U);
  EXPECT_TRUE(second.endOfFile);
  EXPECT_FALSE(second.error);
}

TEST_F(Direct, ValidationOfAProgramThatIsNoneIsAFailure) {
  const auto plugin = script("Library/Corvane/Plugins/check_x", "#!/nonexistent/shell\n");
  std::unique_ptr<OutputPipe> output;
  EXPECT_EQ(validate(plugin, output), launch_status::kToolExecuteFailure);
  EXPECT_EQ(output, nullptr);
  EXPECT_THAT(log.lines, ElementsAre(HasSubstr("No such file or directory")));
}

/// A plug-in that holds the write end of a FIFO open, as does a child of it in a session of its own: the
/// reader of the FIFO sees its end when both are gone.
struct HangingRun : Direct {
  HangingRun() {
    ::mkfifo((tree / "alive").c_str(), 0600);
    alive = FileDescriptor(::open((tree / "alive").c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    plugin = script("Library/Corvane/Plugins/check_x",
                    "#!/bin/bash\nexec 9> '" + (tree / "alive") +
                        "'\nsetsid bash -c '(trap \"\" TERM HUP INT; echo x >&9; sleep 1000) & "
                        "disown; sleep 1000' &\nsleep 1000\n");
  }
  bool hasStarted() {
    pollfd waited{alive.get(), POLLIN, 0};
    char buffer[2];
    return ::poll(&waited, 1, test::kHangMilliseconds) == 1 && ::read(alive.get(), buffer, 2) == 2;
  }
  bool hasEnded() {
    pollfd waited{alive.get(), POLLIN, 0};
    char buffer[1];
    return ::poll(&waited, 1, test::kHangMilliseconds) == 1 && ::read(alive.get(), buffer, 1) == 0;
  }
  FileDescriptor alive;
  std::string plugin;
};

TEST_F(HangingRun, CancellingIsTheEndOfTheOutputAndDestroyingEndsAllItStarted) {
  bool asked = false;
  LinuxAuthorization cancelling{
      loop, log, {.root = tree.path(), .helper = kHelper, .waitForOutput = [&](int descriptor) {
                    asked = descriptor >= 0;
                    return false;
                  }}};
  std::unique_ptr<OutputPipe> output;
  ASSERT_EQ(
      cancelling.executeWithPrivileges(authorization.get(), kHelper, {plugin, "--test-mode"}, output).status,
      launch_status::kStarted);
  ASSERT_TRUE(hasStarted());
  char buffer[10];
  const auto outcome = output->read(buffer, sizeof buffer);
  EXPECT_TRUE(asked);
  EXPECT_EQ(outcome.bytes, 0U);
  EXPECT_TRUE(outcome.endOfFile);
  output.reset();
  EXPECT_TRUE(hasEnded());
}

TEST_F(HangingRun, ClosingTheLockEndsTheRun) {
  std::unique_ptr<OutputPipe> output;
  ASSERT_EQ(validate(plugin, output), launch_status::kStarted);
  ASSERT_TRUE(hasStarted());
  authorization.reset();
  EXPECT_TRUE(hasEnded());
}

TEST_F(Direct, AToolThatFailsSaysWhyWithTheStatusOfOneThatWasStarted) {
  tree.writeFile("private/tmp/a.plist", "staged");
  const auto outcome = services.executeWithPrivileges(
      authorization.get(), "/bin/cp",
      {tree / "private/tmp/a.plist", tree / "Library/Corvane/missing/a.plist"});
  EXPECT_EQ(outcome.status, launch_status::kStarted);
  EXPECT_EQ(outcome.reason, (tree / "Library/Corvane/missing") + ": No such file or directory");
}

TEST_F(Direct, ScriptThatCannotBeStartedSaysWhy) {
  const auto script = tree / "Library/Corvane/RunClient";
  const auto outcome = services.executeWithPrivileges(
      authorization.get(), kHelper, {"/bin/bash", script, "--log-parent", "prefpane-client", "--force"});
  EXPECT_EQ(outcome.status, launch_status::kToolExecuteFailure);
  EXPECT_EQ(outcome.reason, script + ": No such file or directory");
}

TEST_F(Direct, WithoutAStagingFolderTheLockStaysClosedAndSaysWhichFolderIsMissing) {
  for (const bool isFile : {false, true}) {
    std::filesystem::remove(tree / "private/tmp");
    if (isFile) tree.writeFile("private/tmp", "no folder");
    AuthorizationAnswer given;
    services.requestRights(kRight, [&](AuthorizationAnswer answer) { given = std::move(answer); });
    EXPECT_EQ(given.outcome, AuthorizationOutcome::Denied);
    EXPECT_EQ(given.rights, nullptr);
    EXPECT_THAT(given.reason, testing::StartsWith((tree / "private/tmp") + ": ")) << isFile;
    EXPECT_EQ(log.lines.back(), "Could not get administrator rights: " + given.reason);
  }
}

TEST_F(Direct, StagingFolderThatMayNotBeWrittenKeepsTheLockClosed) {
  if (!test::OtherUser::isPossible()) GTEST_SKIP() << "NOT TESTED: this needs root to act as two users";
  ::chmod(tree.path().c_str(), 0755);
  ASSERT_EQ(::chown((tree / "Library/Corvane").c_str(), kStranger, kStranger), 0);
  ASSERT_EQ(::chmod((tree / "private/tmp").c_str(), 0755), 0);
  AuthorizationAnswer given;
  {
    const test::OtherUser stranger(kStranger);
    services.requestRights(kRight, [&](AuthorizationAnswer answer) { given = std::move(answer); });
  }
  EXPECT_EQ(given.outcome, AuthorizationOutcome::Denied);
  EXPECT_EQ(given.reason, (tree / "private/tmp") + ": Permission denied");
}

/// The folder of the tree that lies on a file system that is read only, and the one that the refusal names.
struct ReadOnly {
  std::string name;
  std::string mounted;
  std::string named;
};
class ReadOnlyPart : public testing::TestWithParam<ReadOnly> {};

TEST_P(ReadOnlyPart, KeepsTheLockClosedAndIsNamed) {
  // Where an ordinary user may mount, "/" is nobody's whom they can trust.
  if (::geteuid() != 0) GTEST_SKIP() << "NOT TESTED: this needs root";
  const auto outcome = test::runIsolated(CLONE_NEWNS, [] {
    const test::TemporaryFolder tree;
    const auto volume = tree / GetParam().mounted;
    tree.makeFolder(GetParam().mounted);
    ASSERT_EQ(::mount("none", volume.c_str(), "tmpfs", 0, "mode=0755"), 0);
    tree.makeFolder("private/tmp");
    tree.makeFolder("Library/Corvane");
    ASSERT_EQ(::mount("none", volume.c_str(), nullptr, MS_REMOUNT | MS_RDONLY, "mode=0755"), 0);
    test::RecordingLog log;
    PollRunLoop loop;
    LinuxAuthorization services{loop, log, {.root = tree.path(), .helper = kHelper}};
    AuthorizationAnswer given;
    services.requestRights(kRight, [&](AuthorizationAnswer answer) { given = std::move(answer); });
    EXPECT_EQ(given.outcome, AuthorizationOutcome::Denied);
    EXPECT_EQ(given.reason, (tree / GetParam().named) + ": Read-only file system");
    ASSERT_EQ(::umount(volume.c_str()), 0);
  });
  if (outcome == test::IsolatedOutcome::Impossible) GTEST_SKIP() << "NOT TESTED: no mounts here";
  EXPECT_EQ(outcome, test::IsolatedOutcome::Passed);
}
INSTANTIATE_TEST_SUITE_P(Parts, ReadOnlyPart,
                         testing::Values(ReadOnly{"TheWholeTree", "", "private/tmp"},
                                         ReadOnly{"TheClientAlone", "Library", "Library/Corvane"}),
                         [](const auto& part) { return part.param.name; });

TEST_F(Direct, AnotherRightThanTheAdministratorsIsNotGiven) {
  AuthorizationAnswer given{AuthorizationOutcome::Granted, nullptr, {}};
  services.requestRights("system.preferences",
                         [&](AuthorizationAnswer answer) { given = std::move(answer); });
  EXPECT_EQ(given.outcome, AuthorizationOutcome::Unavailable);
  EXPECT_EQ(given.rights, nullptr);
  EXPECT_EQ(given.reason, "only administrator rights can be asked for");
}

}  // namespace
}  // namespace corvane
