// Commands without asking for rights: the tree belongs to the user. The real command runner in this process.
#include <cerrno>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <sys/wait.h>

#include "platform/Housekeeping.h"
#include "platform/linux/LinuxAuthorization.h"
#include "posix/FileDescriptor.h"
#include "support/PollRunLoop.h"
#include "support/TemporaryFolder.h"
#include "support/TestPlatform.h"

namespace corvane {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

constexpr const char* kHelper = "/nonexistent/qlhelper";
constexpr const char* kRight = "system.privilege.admin";
constexpr double kDeadline = 20;

struct Direct : testing::Test {
  Direct() {
    tree.makeFolder("private/tmp");
    tree.makeFolder("Library/Corvane/Plugins");
    tree.makeFolder("Library/Corvane/PluginSupport");
    tree.makeFolder("Library/Corvane/Utilities/UpdaterSupport");
    services.requestRights(kRight,
                           [this](AuthorizationOutcome outcome, std::unique_ptr<Authorization> rights) {
                             granted = outcome == AuthorizationOutcome::Granted;
                             authorization = std::move(rights);
                           });
  }
  LaunchStatus run(const std::string& tool, const std::vector<std::string>& arguments) {
    return services.executeWithPrivileges(authorization.get(), tool, arguments);
  }
  std::string script(const std::string& relative, const std::string& text) {
    auto path = tree.writeFile(relative, text);
    ::chmod(path.c_str(), 0755);
    return path;
  }
  LaunchStatus validate(const std::string& plugin, std::unique_ptr<OutputPipe>& output) {
    return services.executeWithPrivileges(authorization.get(), kHelper, {plugin, "-v", "--test-mode"},
                                          output);
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
  EXPECT_EQ(services.executeWithPrivileges(nullptr, "/bin/rm", {staging}),
            launch_status::kInvalidAuthorization);
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
        services.executeWithPrivileges(nullptr, "/bin/sh", {"-c", housekeeping::text(command, tree.path())}),
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
  EXPECT_EQ(run(kHelper, {"/bin/bash", path, "--log-parent", "prefpane-client", "--force"}),
            launch_status::kStarted);
  EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1);
  authorization.reset();
  const FileDescriptor go(::open((tree / "go").c_str(), O_WRONLY | O_CLOEXEC));
  ASSERT_EQ(::write(go.get(), "x\n", 2), 2);
  pollfd waited{changes.get(), POLLIN, 0};
  ASSERT_EQ(::poll(&waited, 1, static_cast<int>(kDeadline * 1000)), 1);
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
    return ::poll(&waited, 1, static_cast<int>(kDeadline * 1000)) == 1 && ::read(alive.get(), buffer, 2) == 2;
  }
  bool hasEnded() {
    pollfd waited{alive.get(), POLLIN, 0};
    char buffer[1];
    return ::poll(&waited, 1, static_cast<int>(kDeadline * 1000)) == 1 && ::read(alive.get(), buffer, 1) == 0;
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
  ASSERT_EQ(cancelling.executeWithPrivileges(authorization.get(), kHelper, {plugin, "--test-mode"}, output),
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

TEST_F(Direct, AnotherRightThanTheAdministratorsIsNotGiven) {
  AuthorizationOutcome outcome = AuthorizationOutcome::Granted;
  services.requestRights("system.preferences",
                         [&](AuthorizationOutcome given, std::unique_ptr<Authorization> rights) {
                           outcome = given;
                           EXPECT_EQ(rights, nullptr);
                         });
  EXPECT_EQ(outcome, AuthorizationOutcome::Unavailable);
}

}  // namespace
}  // namespace corvane
