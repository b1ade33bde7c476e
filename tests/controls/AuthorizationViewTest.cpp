#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "controls/AuthorizationView.h"

namespace corvane {
namespace {

using State = AuthorizationView::State;

/// Answers when the test says so; knows the rights that it gave while they live.
class Authority final : public AuthorizationServices {
 public:
  bool isDirect() const override { return direct; }
  void requestRights(std::string_view right, Done done) override {
    requestedRights.emplace_back(right);
    waiting = std::move(done);
    if (direct) answer(AuthorizationOutcome::Granted);
  }
  LaunchOutcome executeWithPrivileges(Authorization*, const std::string&,
                                      const std::vector<std::string>&) override {
    return {launch_status::kDenied, {}};
  }
  LaunchOutcome executeWithPrivileges(Authorization*, const std::string&, const std::vector<std::string>&,
                                      std::unique_ptr<OutputPipe>&) override {
    return {launch_status::kDenied, {}};
  }

  std::string installationFault() override { return fault; }
  void answer(AuthorizationOutcome outcome, std::string reason = {}) {
    const Done done = std::exchange(waiting, nullptr);
    done({outcome, outcome == AuthorizationOutcome::Granted ? std::make_unique<Rights>(*this) : nullptr,
          std::move(reason)});
  }

  struct Rights : Authorization {
    explicit Rights(Authority& from) : authority(from) { authority.granted = this; }
    Rights(const Rights&) = delete;
    Rights& operator=(const Rights&) = delete;
    ~Rights() override { authority.granted = nullptr; }
    Authority& authority;
  };

  bool direct = false;
  std::string fault;
  std::vector<std::string> requestedRights;
  Done waiting;
  Rights* granted = nullptr;
};

class Delegate final : public AuthorizationViewDelegate {
 public:
  void authorizationViewDidAuthorize(AuthorizationView& view) override {
    calls.emplace_back(view.authorization() != nullptr ? "open with rights" : "open without rights");
    if (closesAtOnce) view.close();
  }
  void authorizationViewDidDeauthorize(AuthorizationView& view) override {
    calls.emplace_back(view.authorization() != nullptr ? "closed with rights" : "closed without rights");
  }
  bool closesAtOnce = false;
  std::vector<std::string> calls;
};

class AuthorizationViewTest : public testing::Test {
 protected:
  AuthorizationViewTest() {
    view->setAuthorizationRights("system.privilege.admin");
    view->setDelegate(&delegate);
  }
  Authority services;
  Delegate delegate;
  std::unique_ptr<AuthorizationView> view = std::make_unique<AuthorizationView>(services);
};

TEST_F(AuthorizationViewTest, AClickOnAClosedLockAsksForTheRightAndAGrantOpensIt) {
  view->click();
  EXPECT_EQ(view->state(), State::Asking);
  EXPECT_EQ(services.requestedRights, (std::vector<std::string>{"system.privilege.admin"}));
  services.answer(AuthorizationOutcome::Granted);
  EXPECT_EQ(view->state(), State::Open);
  EXPECT_EQ(view->authorization(), services.granted);
  EXPECT_EQ(delegate.calls, (std::vector<std::string>{"open with rights"}));
}

TEST_F(AuthorizationViewTest, AClickOnAnOpenLockGivesTheRightsBackAndTellsTheDelegate) {
  view->click();
  services.answer(AuthorizationOutcome::Granted);
  view->click();
  EXPECT_EQ(view->state(), State::Closed);
  EXPECT_EQ(view->authorization(), nullptr);
  EXPECT_EQ(services.granted, nullptr);
  EXPECT_EQ(delegate.calls, (std::vector<std::string>{"open with rights", "closed without rights"}));
}

TEST_F(AuthorizationViewTest, WhileTheQuestionIsOpenAClickDoesNothing) {
  view->click();
  view->click();
  EXPECT_EQ(services.requestedRights.size(), 1U);
  EXPECT_EQ(view->state(), State::Asking);
}

TEST_F(AuthorizationViewTest, AnyOtherAnswerLeavesTheLockClosedWithoutACallToTheDelegate) {
  for (const AuthorizationOutcome outcome :
       {AuthorizationOutcome::Denied, AuthorizationOutcome::Cancelled, AuthorizationOutcome::Unavailable}) {
    view->click();
    services.answer(outcome);
    EXPECT_EQ(view->state(), State::Closed);
    EXPECT_EQ(view->authorization(), nullptr);
  }
  EXPECT_TRUE(delegate.calls.empty());
  EXPECT_EQ(services.requestedRights.size(), 3U);  // it can be asked again
}

TEST_F(AuthorizationViewTest, AGrantThatBringsNoRightsLeavesTheLockClosed) {
  view->click();
  services.waiting({AuthorizationOutcome::Granted, nullptr, {}});
  EXPECT_EQ(view->state(), State::Closed);
  EXPECT_TRUE(delegate.calls.empty());
}

TEST_F(AuthorizationViewTest, RightsThatEndByThemselvesCloseTheLockAndTellTheDelegate) {
  view->click();
  services.answer(AuthorizationOutcome::Granted);
  services.granted->tellLost();
  EXPECT_EQ(view->state(), State::Closed);
  EXPECT_EQ(view->authorization(), nullptr);
  EXPECT_EQ(delegate.calls, (std::vector<std::string>{"open with rights", "closed without rights"}));

  view->click();
  services.answer(AuthorizationOutcome::Granted);
  EXPECT_EQ(view->state(), State::Open);
  EXPECT_EQ(view->authorization(), services.granted);
}

TEST_F(AuthorizationViewTest, RightsThatEndByThemselvesAreGivenBackInThatCall) {
  view->click();
  services.answer(AuthorizationOutcome::Granted);
  services.granted->tellLost();
  EXPECT_EQ(services.granted, nullptr);
}

TEST_F(AuthorizationViewTest, ClosingTellsNoDelegate) {
  view->click();
  services.answer(AuthorizationOutcome::Granted);
  view->close();
  EXPECT_EQ(view->state(), State::Closed);
  EXPECT_EQ(services.granted, nullptr);
  EXPECT_EQ(delegate.calls, (std::vector<std::string>{"open with rights"}));
}

TEST_F(AuthorizationViewTest, ClosingLeavesAnOpenQuestionOpenAndItsAnswerCounts) {
  view->click();
  view->close();
  EXPECT_EQ(view->state(), State::Asking);
  view->click();
  EXPECT_EQ(services.requestedRights.size(), 1U) << "the question is still the first one";
  services.answer(AuthorizationOutcome::Granted);
  EXPECT_EQ(view->state(), State::Open);
  EXPECT_EQ(delegate.calls, (std::vector<std::string>{"open with rights"}));
}

TEST_F(AuthorizationViewTest, AnAnswerThatComesAfterTheViewHasGoneGivesItsRightsBack) {
  view->click();
  view.reset();
  services.answer(AuthorizationOutcome::Granted);
  EXPECT_EQ(services.granted, nullptr);
  EXPECT_TRUE(delegate.calls.empty());
}

TEST_F(AuthorizationViewTest, ADelegateMayCloseTheLockAsSoonAsItOpens) {
  delegate.closesAtOnce = true;
  view->click();
  services.answer(AuthorizationOutcome::Granted);
  EXPECT_EQ(view->state(), State::Closed);
  EXPECT_EQ(services.granted, nullptr);
}

TEST_F(AuthorizationViewTest, ADisabledLockTakesNoClick) {
  view->setEnabled(false);
  view->click();
  EXPECT_TRUE(services.requestedRights.empty());
  EXPECT_EQ(view->state(), State::Closed);
}

TEST_F(AuthorizationViewTest, ItsLabelTellsWhatAClickDoes) {
  std::vector<std::string> labels;
  view->onChange = [&] { labels.push_back(view->label()); };
  view->updateStatus();
  view->click();
  services.answer(AuthorizationOutcome::Granted);
  view->click();
  EXPECT_EQ(labels, (std::vector<std::string>{"Click the lock to make changes.", "Waiting for permission…",
                                              "Click the lock to prevent further changes.",
                                              "Click the lock to make changes."}));
}

TEST_F(AuthorizationViewTest, AClosedLockSaysWhatTheInstallationLacksAndStillAsks) {
  services.fault = "the helper tool is missing: /opt/qlhelper";
  view->updateStatus();
  const std::string faulty =
      "Click the lock to make changes. The installation is not whole: the helper tool is missing: "
      "/opt/qlhelper.";
  EXPECT_EQ(view->label(), faulty);
  view->click();
  services.answer(AuthorizationOutcome::Unavailable, "no helper");
  EXPECT_EQ(view->label(), "The lock could not be opened: no helper. Click it to try again.");
  view->click();
  services.answer(AuthorizationOutcome::Granted);
  EXPECT_EQ(view->label(), "Click the lock to prevent further changes.");
  view->click();
  EXPECT_EQ(view->label(), faulty);
}

TEST_F(AuthorizationViewTest, AssistiveTechnologyHearsTheStateThatIsOnlySeen) {
  view->setAccessibleName("Lock");
  std::vector<std::string> names{view->accessibleName()};
  view->onChange = [&] { names.push_back(view->accessibleName()); };
  view->click();
  services.answer(AuthorizationOutcome::Granted);
  view->click();
  EXPECT_EQ(names, (std::vector<std::string>{"Lock, closed", "Lock, waiting", "Lock, open", "Lock, closed"}));
}

TEST_F(AuthorizationViewTest, ARefusedLockSaysWhyUntilItIsAskedAgain) {
  for (const AuthorizationOutcome outcome :
       {AuthorizationOutcome::Denied, AuthorizationOutcome::Unavailable}) {
    view->click();
    services.answer(outcome, "/private/tmp: Read-only file system");
    EXPECT_EQ(view->label(),
              "The lock could not be opened: /private/tmp: Read-only file system. Click it to try again.");
    view->click();
    EXPECT_EQ(view->label(), "Waiting for permission…");
    services.answer(AuthorizationOutcome::Cancelled);
    EXPECT_EQ(view->label(), "Click the lock to make changes.") << "who cancels knows why it stays closed";
  }
  view->click();
  services.answer(AuthorizationOutcome::Denied, "no");
  view->click();
  services.answer(AuthorizationOutcome::Granted);
  view->click();
  EXPECT_EQ(view->label(), "Click the lock to make changes.");
}

TEST_F(AuthorizationViewTest, ARefusalWithoutAReasonLeavesItToTheLog) {
  view->click();
  services.answer(AuthorizationOutcome::Denied);
  EXPECT_EQ(view->label(), "The lock could not be opened: the system log says why. Click it to try again.");
}

TEST_F(AuthorizationViewTest, AnOpenLockOverFilesOfTheUserSaysThatNoRightsAreAskedFor) {
  services.direct = true;
  EXPECT_EQ(view->label(), "Click the lock to make changes.");
  view->click();
  EXPECT_EQ(view->state(), State::Open);
  EXPECT_EQ(
      view->label(),
      "These files belong to you and are changed directly, without asking for rights. Click the lock to "
      "prevent further changes.");
}

}  // namespace
}  // namespace corvane
