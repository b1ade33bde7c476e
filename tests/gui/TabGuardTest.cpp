// The guard of the tabs in the real window: what a person reads and presses when a switch is refused.
#include <QLabel>
#include <QPushButton>
#include <QTabBar>

#include "GuiFixture.h"

namespace corvane::test {
namespace {

class TabGuard : public GuiTest {
 protected:
  [[nodiscard]] int shownTab() { return widget<QTabBar>("tabBar").currentIndex(); }
  [[nodiscard]] QString message() { return find<QLabel>(*sheet(), "message").text(); }
  [[nodiscard]] QString informative() { return find<QLabel>(*sheet(), "informative").text(); }
  [[nodiscard]] QStringList buttons() {
    QStringList titles;
    for (const QPushButton* button : sheet()->findChildren<QPushButton*>()) titles << button->text();
    titles.sort();
    return titles;
  }
  [[nodiscard]] QPushButton& button(const char* title) {
    return find<QPushButton>(*sheet(), (std::string("button ") + title).c_str());
  }
};

TEST_F(TabGuard, TheCautionAlertSaysWhatIsAtStakeAndOffersTheSafeChoiceFirst) {
  open();
  clickTab(2);
  ASSERT_NE(sheet(), nullptr);
  EXPECT_EQ(message(), QStringLiteral("Proceed with caution"));
  EXPECT_EQ(informative(),
            QStringLiteral("Altering these settings may result in unreported errors or false alarms."));
  EXPECT_EQ(buttons(), (QStringList{QStringLiteral("Cancel"), QStringLiteral("Continue")}));
  EXPECT_TRUE(button("Cancel").isDefault());
  EXPECT_TRUE(button("Cancel").hasFocus());
}

TEST_F(TabGuard, ReturnEnterEscapeAndSpaceCancelTheCautionAlert) {
  open();
  for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Escape, Qt::Key_Space}) {
    clickTab(2);
    ASSERT_NE(sheet(), nullptr) << key;
    press(window(), key);
    EXPECT_EQ(sheet(), nullptr) << key;
    EXPECT_EQ(shownTab(), 0) << key;
  }
}

TEST_F(TabGuard, ReturnCancelsEvenWithTheKeyboardOnContinue) {
  open();
  clickTab(2);
  ASSERT_NE(sheet(), nullptr);
  press(window(), Qt::Key_Tab);
  ASSERT_TRUE(button("Continue").hasFocus());
  press(window(), Qt::Key_Return);
  EXPECT_EQ(sheet(), nullptr);
  EXPECT_EQ(shownTab(), 0);
}

TEST_F(TabGuard, TheKeyboardAloneReachesThePluginsTab) {
  open();
  auto& bar = widget<QTabBar>("tabBar");
  bar.setFocus(Qt::TabFocusReason);
  press(window(), Qt::Key_Right);
  EXPECT_EQ(shownTab(), 1);
  press(window(), Qt::Key_Right);
  ASSERT_NE(sheet(), nullptr);
  EXPECT_EQ(shownTab(), 1) << "not before the answer";
  press(window(), Qt::Key_Tab);
  press(window(), Qt::Key_Space);
  EXPECT_EQ(sheet(), nullptr);
  EXPECT_EQ(shownTab(), 2);
  EXPECT_TRUE(bar.hasFocus()) << "the keyboard is where it was before the alert";
}

TEST_F(TabGuard, ControlTabAndPageKeysGoToTheNextTabFromAnywhereButNotBehindAnAlert) {
  open();
  while (window().focusWidget() != &widget("authView")) press(window(), Qt::Key_Backtab, Qt::ShiftModifier);
  press(window(), Qt::Key_Tab, Qt::ControlModifier);
  EXPECT_EQ(shownTab(), 1);
  press(window(), Qt::Key_PageUp, Qt::ControlModifier);
  EXPECT_EQ(shownTab(), 0);
  press(window(), Qt::Key_PageDown, Qt::ControlModifier);
  press(window(), Qt::Key_Tab, Qt::ControlModifier);
  ASSERT_NE(sheet(), nullptr);
  press(window(), Qt::Key_Tab, Qt::ControlModifier);
  EXPECT_EQ(shownTab(), 1);
  answerSheet("Continue");
  EXPECT_EQ(shownTab(), 2);
  press(window(), Qt::Key_Tab, Qt::ControlModifier);
  EXPECT_EQ(shownTab(), 0);
  press(window(), Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_EQ(shownTab(), 2);
}

TEST_F(TabGuard, WhileTheSettingsAreUnreadableEverySwitchIsRefusedAndTheAlertComesAgain) {
  open();
  std::filesystem::remove(paths.clientSettings);
  ASSERT_TRUE(eventually([this] { return pane->assembly().pane().clientSettingsReadError(); }));
  clickTab(1);
  for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Escape, Qt::Key_Space}) {
    ASSERT_NE(sheet(), nullptr) << key;
    EXPECT_EQ(message(), QStringLiteral("Error Reading Settings"));
    EXPECT_EQ(informative(),
              QStringLiteral("The client settings could not be read. Please click the lock to authorize "
                             "and attempt to fix the settings."));
    EXPECT_EQ(buttons(), QStringList{QStringLiteral("OK")});
    EXPECT_EQ(shownTab(), 0);
    press(window(), key);  // its end asks for the Plugins tab, which is refused for the same reason
  }
  ASSERT_NE(sheet(), nullptr);
  EXPECT_EQ(message(), QStringLiteral("Error Reading Settings"));
  EXPECT_EQ(shownTab(), 0);
}

TEST_F(TabGuard, AfterTheRemovalEveryTabIsRefusedByMouseAndByKeyboard) {
  open();
  std::filesystem::remove_all(paths.installFolder);
  ASSERT_TRUE(eventually([this] { return sheet() != nullptr; }));
  press(window(), Qt::Key_Return);
  ASSERT_EQ(sheet(), nullptr);
  const auto expectRefused = [this](Qt::Key answer) {
    ASSERT_NE(sheet(), nullptr);
    EXPECT_EQ(message(), QStringLiteral("Monitoring Client Removed"));
    EXPECT_EQ(informative(),
              QStringLiteral("The Monitoring Client has been removed. Please choose another pane or quit "
                             "System Preferences."));
    EXPECT_EQ(buttons(), QStringList{QStringLiteral("OK")});
    press(window(), answer);
    EXPECT_EQ(sheet(), nullptr) << "the end of that alert changes nothing";
    EXPECT_EQ(shownTab(), 0);
  };
  clickTab(1);
  expectRefused(Qt::Key_Return);
  clickTab(2);
  expectRefused(Qt::Key_Escape);
  widget("tabBar").setFocus(Qt::TabFocusReason);
  press(window(), Qt::Key_Right);
  expectRefused(Qt::Key_Space);
}

}  // namespace
}  // namespace corvane::test
