// The lock against the real polkit: the pane's side runs as an unprivileged user, the tree belongs to root.
#include <csignal>
#include <filesystem>
#include <fstream>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>

#include "PolkitMachine.h"
#include "platform/Housekeeping.h"
#include "platform/linux/LinuxAuthorization.h"
#include "platform/linux/PollRunLoop.h"
#include "posix/Pipe.h"
#include "support/Patience.h"
#include "support/TestPlatform.h"

namespace corvane {
namespace {

using test::onlyChild;
using test::PolkitMachine;
using test::readableSoon;
using test::watchProcess;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

const std::string kTarget = "Library/Corvane/PluginSupport/a.plist";

/// The pane's side, in the user's process.
struct Pane {
  explicit Pane(const PolkitMachine& machine, const std::string& helperPath = {})
      : services(loop, log,
                 {.root = machine.root(), .helper = helperPath.empty() ? machine.helper() : helperPath}),
        helper(helperPath.empty() ? machine.helper() : helperPath) {}
  AuthorizationOutcome unlock() {
    std::optional<AuthorizationOutcome> outcome;
    services.requestRights("system.privilege.admin", [&](AuthorizationAnswer answer) {
      outcome = answer.outcome;
      authorization = std::move(answer.rights);
    });
    EXPECT_FALSE(outcome.has_value()) << "asking must not block";
    EXPECT_TRUE(loop.runUntil([&] { return outcome.has_value(); }, test::kHangSeconds));
    return outcome.value_or(AuthorizationOutcome::Unavailable);
  }
  LaunchStatus run(const std::string& tool, const std::vector<std::string>& arguments) {
    return services.executeWithPrivileges(authorization.get(), tool, arguments).status;
  }
  LaunchStatus runClient(const std::string& script) {
    return run(helper, {"/bin/bash", script, "--log-parent", "prefpane-client", "--force"});
  }
  test::RecordingLog log;
  PollRunLoop loop;
  LinuxAuthorization services;
  std::string helper;
  std::unique_ptr<Authorization> authorization;
};

class Polkit : public testing::Test {
 protected:
  void program(const std::string& relative, const std::string& text) const {
    std::ofstream(machine / relative) << text;
    ::chmod((machine / relative).c_str(), 0755);
  }
  /// A FIFO in the tree that anybody may open.
  std::string fifo(const std::string& name) const {
    const auto path = machine / ("fifos/" + name);
    EXPECT_EQ(::mkfifo(path.c_str(), 0666), 0);
    ::chmod(path.c_str(), 0666);
    return path;
  }
  static FileDescriptor reader(const std::string& path) {
    return FileDescriptor(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
  }
  /// Whether a line comes and then, when all writers are gone, the end.
  static bool sendsLine(const FileDescriptor& descriptor) {
    char buffer[100];
    return readableSoon(descriptor.get()) && ::read(descriptor.get(), buffer, sizeof buffer) > 0;
  }
  static bool hasEnded(const FileDescriptor& descriptor) {
    char buffer[1];
    return readableSoon(descriptor.get()) && ::read(descriptor.get(), buffer, 1) == 0;
  }
  static void expectRefusal(const PolkitMachine& machine, AuthorizationOutcome outcome,
                            const std::string& line) {
    machine.asUser([&] {
      Pane pane(machine);
      EXPECT_EQ(pane.unlock(), outcome);
      EXPECT_EQ(pane.authorization, nullptr);
      EXPECT_THAT(pane.log.lines, ElementsAre(HasSubstr(line)));
      EXPECT_EQ(pane.run("/bin/rm", {machine / "private/tmp/a"}), launch_status::kInvalidAuthorization);
    });
  }
  PolkitMachine machine;
};

TEST_F(Polkit, AllowedUserWritesASettingOfRoot) {
  CORVANE_START_MACHINE(PolkitMachine::Rule::Allow);
  machine.asUser([this] {
    Pane pane(machine);
    ::umask(0077);
    EXPECT_FALSE(pane.services.isDirect());
    ASSERT_EQ(pane.unlock(), AuthorizationOutcome::Granted);
    const auto staging = machine / "private/tmp/a.plist";
    std::ofstream(staging) << "new";
    EXPECT_EQ(pane.run("/bin/cp", {staging, machine / kTarget}), launch_status::kStarted);
    EXPECT_EQ(pane.run("/bin/rm", {staging}), launch_status::kStarted);
    EXPECT_FALSE(std::filesystem::exists(staging));
    EXPECT_EQ(pane.run("/bin/mkdir", {"-p", machine / "var/root/x/y"}), launch_status::kStarted);
    EXPECT_EQ(pane.run("/usr/bin/id", {}), launch_status::kDenied);
    EXPECT_THAT(pane.log.lines, ElementsAre(HasSubstr("Root command refused: /usr/bin/id")));
  });
  struct stat attributes {};
  ASSERT_EQ(::stat((machine / kTarget).c_str(), &attributes), 0);
  EXPECT_EQ(attributes.st_uid, 0U);
  EXPECT_EQ(attributes.st_mode & 07777, 0644U)
      << "the mask of the user's session must not reach root's files";
  ASSERT_EQ(::stat((machine / "var/root/x/y").c_str(), &attributes), 0);
  EXPECT_EQ(attributes.st_uid, 0U);
  EXPECT_EQ(attributes.st_mode & 07777, 0755U);
}

TEST_F(Polkit, RootsFileIsReadForTheUserAlone) {
  CORVANE_START_MACHINE(PolkitMachine::Rule::Allow);
  std::ofstream(machine / kTarget) << "secret";
  ::chmod((machine / kTarget).c_str(), 0600);
  machine.asUser([this] {
    Pane pane(machine);
    ASSERT_EQ(pane.unlock(), AuthorizationOutcome::Granted);
    EXPECT_EQ(pane.run("/bin/cp", {machine / kTarget, machine / "private/tmp/read-a.plist"}),
              launch_status::kStarted);
    std::string text;
    std::ifstream(machine / "private/tmp/read-a.plist") >> text;
    EXPECT_EQ(text, "secret");
  });
  struct stat attributes {};
  ASSERT_EQ(::stat((machine / "private/tmp/read-a.plist").c_str(), &attributes), 0);
  EXPECT_EQ(attributes.st_uid, PolkitMachine::kUser);
  EXPECT_EQ(attributes.st_mode & 07777, 0600U);
}

TEST_F(Polkit, RefusedUserIsDenied) {
  CORVANE_START_MACHINE(PolkitMachine::Rule::Refuse);
  expectRefusal(machine, AuthorizationOutcome::Denied, "Not authorized");
}

TEST_F(Polkit, WithoutAnAgentItIsUnavailable) {
  CORVANE_START_MACHINE(PolkitMachine::Rule::AskAdministrator);
  expectRefusal(machine, AuthorizationOutcome::Unavailable, "No authentication agent found");
}

TEST_F(Polkit, WithoutThePolicyItIsUnavailable) {
  CORVANE_START_MACHINE(PolkitMachine::Rule::Allow, false);
  expectRefusal(machine, AuthorizationOutcome::Unavailable, "No authentication agent found");
}

TEST_F(Polkit, WhatIsInstalledTogetherBelongsTogether) {
  CORVANE_START_MACHINE(PolkitMachine::Rule::Allow);
  machine.asUser([this] { EXPECT_EQ(Pane(machine).services.installationFault(), ""); });
}

TEST_F(Polkit, WithoutThePolicyThePaneSaysSoBeforeItAsks) {
  CORVANE_START_MACHINE(PolkitMachine::Rule::Allow, false);
  machine.asUser([this] {
    EXPECT_EQ(Pane(machine).services.installationFault(),
              "the polkit action is missing: " + std::string(kPolkitAction));
  });
}

TEST_F(Polkit, WithoutPolkitItIsUnavailable) {
  CORVANE_START_MACHINE(PolkitMachine::Rule::Allow);
  machine.killPolkit();
  expectRefusal(machine, AuthorizationOutcome::Unavailable, "Could not get administrator rights: ");
}

TEST_F(Polkit, HelperBehindALinkIsNotTheOneOfThePolicy) {
  CORVANE_START_MACHINE(PolkitMachine::Rule::Allow);
  const auto link = machine.base() / "opt/link";
  std::filesystem::create_symlink(machine.helper(), link);
  machine.asUser([&] {
    Pane pane(machine, link);
    EXPECT_EQ(pane.unlock(), AuthorizationOutcome::Unavailable);
    EXPECT_THAT(pane.log.lines, ElementsAre(HasSubstr("Could not get administrator rights: ")));
  });
}

TEST_F(Polkit, KilledPaneTakesTheHelperAndItsValidationAlong) {
  CORVANE_START_MACHINE(PolkitMachine::Rule::Allow);
  const auto alive = reader(fifo("alive"));
  const auto ready = makePipe();
  program("Library/Corvane/Plugins/check_x",
          "#!/bin/bash\nexec 9> '" + machine / "fifos/alive'\n" +
              "setsid sleep 1000 &\ntrap '' TERM\necho x >&9\nsleep 1000\n");
  const pid_t pane = PolkitMachine::startAsUser([&] {
    Pane it(machine);
    ASSERT_EQ(it.unlock(), AuthorizationOutcome::Granted);
    std::unique_ptr<OutputPipe> output;
    ASSERT_EQ(it.services
                  .executeWithPrivileges(it.authorization.get(), it.helper,
                                         {machine / "Library/Corvane/Plugins/check_x", "--test-mode"}, output)
                  .status,
              launch_status::kStarted);
    const pid_t helper = onlyChild();
    ASSERT_EQ(::write(ready.writeEnd.get(), &helper, sizeof helper), static_cast<ssize_t>(sizeof helper));
    ::pause();
  });
  pid_t helper = 0;
  ASSERT_TRUE(readableSoon(ready.readEnd.get()));
  ASSERT_EQ(::read(ready.readEnd.get(), &helper, sizeof helper), static_cast<ssize_t>(sizeof helper));
  const auto helperEnds = watchProcess(helper);
  ASSERT_TRUE(helperEnds);
  ASSERT_TRUE(sendsLine(alive));
  ::kill(pane, SIGKILL);
  ::waitpid(pane, nullptr, 0);
  EXPECT_TRUE(readableSoon(helperEnds.get())) << "the helper outlives the pane";
  EXPECT_TRUE(hasEnded(alive)) << "the validation outlives the pane";
}

TEST_F(Polkit, ClosedLockEndsTheHelperAndNotTheScript) {
  CORVANE_START_MACHINE(PolkitMachine::Rule::Allow);
  const auto go = fifo("go");
  const auto done = fifo("done");
  program("Library/Corvane/RunClient", "read line < '" + go + "'\necho \"$(id -u) $*\" > '" + done + "'\n");
  machine.asUser([&] {
    const auto lines = reader(done);
    Pane pane(machine);
    ASSERT_EQ(pane.unlock(), AuthorizationOutcome::Granted);
    EXPECT_EQ(pane.runClient(machine / "Library/Corvane/RunClient"), launch_status::kStarted);
    const auto helperEnds = watchProcess(onlyChild());
    ASSERT_TRUE(helperEnds);
    pane.authorization.reset();
    // The script still runs: it must hold nothing that keeps the helper alive.
    EXPECT_TRUE(readableSoon(helperEnds.get()));
    EXPECT_TRUE(pane.loop.runUntil(test::hasNoChild, test::kHangSeconds)) << "the helper was not reaped";
    const FileDescriptor writer(::open(go.c_str(), O_WRONLY | O_CLOEXEC));
    ASSERT_EQ(::write(writer.get(), "x\n", 2), 2);
    char buffer[100];
    ASSERT_TRUE(readableSoon(lines.get()));
    const auto count = ::read(lines.get(), buffer, sizeof buffer);
    EXPECT_EQ(std::string(buffer, static_cast<std::size_t>(std::max<ssize_t>(count, 0))),
              "0 --log-parent prefpane-client --force\n");
  });
}

TEST_F(Polkit, ValidationRunsAsRootAndEndsWhenThePaneLetsGo) {
  CORVANE_START_MACHINE(PolkitMachine::Rule::Allow);
  const auto alive = reader(fifo("alive"));
  program("Library/Corvane/Plugins/check_x",
          "#!/bin/bash\nexec 9> '" + machine / "fifos/alive'\n" +
              "echo x >&9\necho \"0,uid $(id -u) $*\"\nsetsid sleep 1000 &\nsleep 1000\n");
  machine.asUser([&] {
    Pane pane(machine);
    ASSERT_EQ(pane.unlock(), AuthorizationOutcome::Granted);
    std::unique_ptr<OutputPipe> output;
    ASSERT_EQ(
        pane.services
            .executeWithPrivileges(pane.authorization.get(), pane.helper,
                                   {machine / "Library/Corvane/Plugins/check_x", "-v", "--test-mode"}, output)
            .status,
        launch_status::kStarted);
    char buffer[1000];
    const auto outcome = output->read(buffer, sizeof buffer);
    EXPECT_EQ(std::string(buffer, outcome.bytes), "0,uid 0 -v --test-mode\n");
    output.reset();
    ASSERT_TRUE(sendsLine(alive));
    EXPECT_TRUE(hasEnded(alive));
  });
}

TEST_F(Polkit, KilledHelperIsLostAndFailsRequests) {
  CORVANE_START_MACHINE(PolkitMachine::Rule::Allow);
  const auto ready = makePipe();
  const pid_t user = PolkitMachine::startAsUser([&] {
    Pane pane(machine);
    ASSERT_EQ(pane.unlock(), AuthorizationOutcome::Granted);
    int lost = 0;
    pane.authorization->lost = [&] { ++lost; };
    const pid_t helper = onlyChild();
    EXPECT_NE(::kill(helper, SIGKILL), 0) << "the user may not end root's process";
    ASSERT_EQ(::write(ready.writeEnd.get(), &helper, sizeof helper), static_cast<ssize_t>(sizeof helper));
    EXPECT_TRUE(pane.loop.runUntil([&] { return lost > 0; }, test::kHangSeconds));
    EXPECT_EQ(lost, 1);
    EXPECT_EQ(pane.run("/bin/rm", {machine / "private/tmp/a"}), launch_status::kToolExecuteFailure);
    EXPECT_THAT(pane.log.lines, ElementsAre("Administrator rights have ended: the root helper is gone",
                                            "Root command not started: /bin/rm: the root helper has ended"));
    EXPECT_EQ(pane.unlock(), AuthorizationOutcome::Granted) << "the lock can be opened again";
  });
  pid_t helper = 0;
  ASSERT_TRUE(readableSoon(ready.readEnd.get()));
  ASSERT_EQ(::read(ready.readEnd.get(), &helper, sizeof helper), static_cast<ssize_t>(sizeof helper));
  ::kill(helper, SIGKILL);
  int status = 0;
  ::waitpid(user, &status, 0);
  EXPECT_EQ(status, 0);
}

TEST_F(Polkit, HostileUserAtTheStagingPathGainsNothing) {
  CORVANE_START_MACHINE(PolkitMachine::Rule::Allow);
  std::ofstream(machine / kTarget) << "old";
  const auto staging = machine / "private/tmp/a.plist";
  const auto readStaging = machine / "private/tmp/read-a.plist";
  std::ofstream(machine / "Library/secret") << "secret";
  ::chmod((machine / "Library/secret").c_str(), 0600);
  std::ofstream(staging) << "planted";
  ASSERT_EQ(::chown(staging.c_str(), PolkitMachine::kStranger, PolkitMachine::kStranger), 0);
  std::filesystem::create_symlink(machine / "Library/secret", readStaging);
  ASSERT_EQ(::lchown(readStaging.c_str(), PolkitMachine::kStranger, PolkitMachine::kStranger), 0);
  machine.asUser([&] {
    Pane pane(machine);
    ASSERT_EQ(pane.unlock(), AuthorizationOutcome::Granted);
    EXPECT_EQ(pane.run("/bin/rm", {staging}), launch_status::kDenied);
    EXPECT_EQ(pane.run("/bin/cp", {staging, machine / kTarget}), launch_status::kDenied);
    EXPECT_EQ(pane.run("/bin/cp", {machine / kTarget, readStaging}), launch_status::kDenied);
    EXPECT_THAT(pane.log.lines,
                ElementsAre(HasSubstr("belongs to another user"), HasSubstr("belongs to another user"),
                            HasSubstr("symbolic link")));
  });
  std::string text;
  std::ifstream(machine / kTarget) >> text;
  EXPECT_EQ(text, "old");
  std::ifstream(machine / "Library/secret") >> text;
  EXPECT_EQ(text, "secret");
}

TEST_F(Polkit, HousekeepingResetsTheModesOfRootsFiles) {
  CORVANE_START_MACHINE(PolkitMachine::Rule::Allow);
  for (const auto* file : {"Library/Corvane/ClientSettings.plist", "Library/Corvane/PluginSupport/a.plist",
                           "Library/Corvane/Utilities/UpdaterSupport/u.plist"}) {
    std::ofstream(machine / file) << "x";
    ::chmod((machine / file).c_str(), 0600);
  }
  machine.asUser([&] {
    Pane pane(machine);
    ASSERT_EQ(pane.unlock(), AuthorizationOutcome::Granted);
    const auto text = housekeeping::text("/bin/chmod 644", machine.root());
    EXPECT_EQ(pane.run("/bin/sh", {"-c", text}), launch_status::kStarted);
    EXPECT_THAT(pane.log.lines, IsEmpty());
    EXPECT_TRUE(std::ifstream(machine / "Library/Corvane/PluginSupport/a.plist").good());
  });
}

TEST_F(Polkit, TreeOfTheUserIsDirect) {
  CORVANE_START_MACHINE(PolkitMachine::Rule::Refuse);
  ASSERT_EQ(::chown((machine / "Library/Corvane").c_str(), PolkitMachine::kUser, PolkitMachine::kUser), 0);
  machine.asUser([&] {
    Pane pane(machine);
    EXPECT_TRUE(pane.services.isDirect());
    LinuxAuthorization withoutClient(pane.loop, pane.log,
                                     {.root = machine / "private/tmp", .helper = machine.helper()});
    EXPECT_FALSE(withoutClient.isDirect()) << "the prefix belongs to root";
  });
}

}  // namespace
}  // namespace corvane
