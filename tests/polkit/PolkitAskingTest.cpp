// Asking for rights and using them, against launchers and helpers that behave in every way but the right one.
#include <filesystem>
#include <optional>
#include <ostream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/syscall.h>

#include "PolkitMachine.h"
#include "platform/linux/LinuxRights.h"
#include "platform/linux/PolkitAsking.h"
#include "platform/linux/PollRunLoop.h"
#include "support/Isolated.h"
#include "support/Patience.h"
#include "support/TemporaryFolder.h"
#include "support/TestPlatform.h"

namespace corvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr double kShortAnswer = 0.05;

class Asking : public testing::Test {
 protected:
  /// Asks through the fake launcher of the name and runs the loop until there is an answer.
  AuthorizationOutcome ask(const std::string& name, double answerDeadline = test::kHangSeconds) {
    std::filesystem::create_symlink(FAKE_LAUNCHER_PATH, folder / name);
    return askThrough(folder / name, QLHELPER_PATH, answerDeadline);
  }
  AuthorizationOutcome askThrough(const std::string& launcher, const std::string& helper,
                                  double answerDeadline = test::kHangSeconds) {
    outcome.reset();
    asking = std::make_unique<PolkitAsking>(
        loop, log,
        PolkitAsking::Options{
            .root = "", .helper = helper, .pkexec = launcher, .answerDeadline = answerDeadline},
        [this](AuthorizationAnswer answer) {
          outcome = answer.outcome;
          reason = std::move(answer.reason);
          authorization = std::move(answer.rights);
        });
    asking->start();
    EXPECT_TRUE(asking->isOpen()) << "the answer comes from the run loop";
    EXPECT_TRUE(loop.runUntil([this] { return outcome.has_value(); }, test::kHangSeconds));
    EXPECT_EQ(authorization != nullptr, outcome == AuthorizationOutcome::Granted);
    EXPECT_FALSE(asking->isOpen());
    return outcome.value_or(AuthorizationOutcome::Unavailable);
  }
  helper::Answer request(bool wantsOutput = false) {
    return static_cast<LinuxRights*>(authorization.get())
        ->carryOut({.program = "/bin/rm", .arguments = {"/private/tmp/a"}, .wantsOutput = wantsOutput});
  }
  bool becomesLost() {
    return loop.runUntil([this] { return timesLost > 0; }, test::kHangSeconds);
  }
  void watchForLoss() {
    authorization->lost = [this] { ++timesLost; };
  }
  /// Whatever happened, no process is left once the rights are given back.
  void TearDown() override {
    asking.reset();
    authorization.reset();
    EXPECT_TRUE(leavesNoChild());
  }
  bool leavesNoChild() { return loop.runUntil(test::hasNoChild, test::kHangSeconds); }

  test::TemporaryFolder folder;
  test::RecordingLog log;
  PollRunLoop loop;
  std::unique_ptr<PolkitAsking> asking;
  std::optional<AuthorizationOutcome> outcome;
  std::string reason;
  std::unique_ptr<Authorization> authorization;
  int timesLost = 0;
};

TEST_F(Asking, NoLauncherIsStartedWhereItCouldNotBeWatched) {
  const auto result = test::runIsolated(0, [this] {
    if (!test::forgetSystemCall(SYS_pidfd_open)) GTEST_SKIP() << "no filter for system calls";
    EXPECT_EQ(ask("dies"), AuthorizationOutcome::Unavailable);
    EXPECT_EQ(reason, "this system can't watch a process: Function not implemented");
    EXPECT_TRUE(test::hasNoChild()) << "a launcher was left behind";
  });
  if (result == test::IsolatedOutcome::Impossible) GTEST_SKIP() << "no filter for system calls";
  EXPECT_EQ(result, test::IsolatedOutcome::Passed);
}

TEST_F(Asking, DismissedDialogIsCancelledWithoutALine) {
  EXPECT_EQ(ask("dismissed"), AuthorizationOutcome::Cancelled);
  EXPECT_THAT(log.lines, IsEmpty());
}

struct Failing {
  std::string launcher;
  AuthorizationOutcome outcome;
  std::string line;
};
void PrintTo(const Failing& failing, std::ostream* stream) { *stream << failing.launcher; }
class FailingLauncher : public Asking, public testing::WithParamInterface<Failing> {};
TEST_P(FailingLauncher, IsReportedByItsOutcomeAndOneLine) {
  EXPECT_EQ(ask(GetParam().launcher, 0.1), GetParam().outcome);
  EXPECT_THAT(log.lines, ElementsAre("Could not get administrator rights: " + GetParam().line));
}
INSTANTIATE_TEST_SUITE_P(
    Launchers, FailingLauncher,
    testing::Values(
        Failing{"refused", AuthorizationOutcome::Denied,
                "Error executing command as another user: Not authorized"},
        Failing{"no-agent", AuthorizationOutcome::Unavailable,
                "Error executing command as another user: No authentication agent found."},
        Failing{"mute", AuthorizationOutcome::Unavailable, "the root helper ended with exit status 0"},
        Failing{"wrong-hello", AuthorizationOutcome::Unavailable, "the root helper ended with exit status 0"},
        Failing{"hangs-up", AuthorizationOutcome::Unavailable, "the root helper does not answer"}));

TEST_F(Asking, MissingLauncherOrHelperIsUnavailableWithOneLine) {
  EXPECT_EQ(askThrough("/nonexistent/pkexec", QLHELPER_PATH), AuthorizationOutcome::Unavailable);
  EXPECT_EQ(askThrough("/bin/true", "/nonexistent/qlhelper"), AuthorizationOutcome::Unavailable);
  EXPECT_THAT(
      log.lines,
      ElementsAre("Could not get administrator rights: /nonexistent/pkexec: No such file or directory",
                  "Could not get administrator rights: the helper tool is missing: /nonexistent/qlhelper"));
}

TEST_F(Asking, HelperOfAnotherVersionIsToldAtOnceAndEnds) {
  EXPECT_EQ(ask("another-version"), AuthorizationOutcome::Unavailable);
  EXPECT_EQ(reason, "the helper tool is of another version: " QLHELPER_PATH);
  EXPECT_TRUE(leavesNoChild());
}

TEST_F(Asking, WithdrawnQuestionEndsTheLauncherAndAnswersNobody) {
  std::filesystem::create_symlink(FAKE_LAUNCHER_PATH, folder / "hangs-up");
  asking = std::make_unique<PolkitAsking>(
      loop, log, PolkitAsking::Options{.root = "", .helper = QLHELPER_PATH, .pkexec = folder / "hangs-up"},
      [](AuthorizationAnswer) { FAIL() << "nobody asks any more"; });
  asking->start();
  asking.reset();
  EXPECT_TRUE(leavesNoChild());
  loop.runReady();
}

TEST_F(Asking, GivingTheRightsBackEndsTheHelper) {
  ASSERT_EQ(ask("silent"), AuthorizationOutcome::Granted);
  EXPECT_THAT(log.lines, IsEmpty());
  EXPECT_FALSE(test::hasNoChild());
  authorization.reset();
  EXPECT_TRUE(leavesNoChild());
}

struct Misbehaving {
  std::string launcher;
  bool wantsOutput;
  std::string why;
};
void PrintTo(const Misbehaving& helper, std::ostream* stream) { *stream << helper.launcher; }
class MisbehavingHelper : public Asking, public testing::WithParamInterface<Misbehaving> {};
TEST_P(MisbehavingHelper, FailsTheRequestAndIsLostOnce) {
  // The others say something, however busy the machine is.
  const bool isSilent = GetParam().launcher == "silent";
  ASSERT_EQ(isSilent ? ask(GetParam().launcher, kShortAnswer) : ask(GetParam().launcher),
            AuthorizationOutcome::Granted);
  watchForLoss();
  const auto answer = request(GetParam().wantsOutput);
  EXPECT_EQ(answer.reply.outcome, helper::Outcome::Failed);
  EXPECT_EQ(answer.reply.message, GetParam().why);
  EXPECT_EQ(timesLost, 0) << "the loss is told from the run loop";
  EXPECT_TRUE(becomesLost());
  const auto again = request();
  EXPECT_EQ(again.reply.outcome, helper::Outcome::Failed);
  EXPECT_EQ(again.reply.message, "the root helper has ended");
  loop.runReady();
  EXPECT_EQ(timesLost, 1);
}
INSTANTIATE_TEST_SUITE_P(
    Helpers, MisbehavingHelper,
    testing::Values(Misbehaving{"silent", false, "the root helper does not answer"},
                    Misbehaving{"dies", false, "the root helper has ended"},
                    Misbehaving{"garbage", false, "the root helper's answer is not to be understood"},
                    Misbehaving{"without-output", true, "the root helper's answer is not to be understood"}));

TEST_F(Asking, HelperThatSpeaksUnaskedIsLostWithOneLine) {
  ASSERT_EQ(ask("speaks-unasked"), AuthorizationOutcome::Granted);
  watchForLoss();
  EXPECT_TRUE(becomesLost());
  EXPECT_THAT(log.lines, ElementsAre("Administrator rights have ended: the root helper is gone"));
  EXPECT_EQ(request().reply.outcome, helper::Outcome::Failed);
}

TEST_F(Asking, RightsMayBeGivenBackFromInsideTheLoss) {
  ASSERT_EQ(ask("speaks-unasked"), AuthorizationOutcome::Granted);
  authorization->lost = [this] {
    authorization.reset();
    ++timesLost;
  };
  EXPECT_TRUE(becomesLost());
  EXPECT_EQ(authorization, nullptr);
}

TEST_F(Asking, CommandLineThatIsTooLongIsDeniedAndTheHelperStays) {
  ASSERT_EQ(ask("silent"), AuthorizationOutcome::Granted);
  watchForLoss();
  const auto answer = static_cast<LinuxRights*>(authorization.get())
                          ->carryOut({.program = "/bin/rm", .arguments = {std::string(100000, 'x')}});
  EXPECT_EQ(answer.reply.outcome, helper::Outcome::Denied);
  loop.runReady();
  EXPECT_EQ(timesLost, 0);
}

}  // namespace
}  // namespace corvane
