// What could not be saved or started, and why the lock stays closed, as the window shows it beside the lock.
#include <QAccessible>
#include <QHelpEvent>
#include <QToolTip>
#include <filesystem>

#include "Assistive.h"
#include "GuiFixture.h"
#include "WindowFixture.h"
#include "widgets/FittedLabel.h"
#include "widgets/StatusLabel.h"

namespace corvane::test {
namespace {

using qt::FittedLabel;
using qt::StatusLabel;

class Status : public WindowTest {
 protected:
  void say(const std::string& text, const std::string& all) {
    view.statusField.setStringValue(text);
    view.statusField.setToolTip(all);
    view.statusField.setHidden(text.empty());
  }
  /// Paints, so that what does not fit is known.
  void look() {
    QApplication::processEvents();
    (void)window.grab();
  }

  StatusLabel& status = find<StatusLabel>(window, "statusField");
  FittedLabel& lockLabel = find<FittedLabel>(window, "authLabel");
};

TEST_F(Status, StandsBesideTheLockAboveItsLabelAndLeavesTheWindowAsItIs) {
  const QSize size = window.size();
  look();
  EXPECT_FALSE(status.isVisible());
  const int alone = lockLabel.height();
  say("a.plist was not saved: No space left on device", "/a.plist was not saved: No space left on device");
  look();
  EXPECT_TRUE(status.isVisible());
  EXPECT_EQ(status.text(), QStringLiteral("a.plist was not saved: No space left on device"));
  EXPECT_EQ(status.toolTip(), QStringLiteral("/a.plist was not saved: No space left on device"));
  EXPECT_FALSE(status.isCut());
  EXPECT_EQ(status.x(), lockLabel.x());
  EXPECT_LE(status.geometry().bottom(), lockLabel.geometry().top());
  EXPECT_GE(status.height(), status.fontMetrics().height());
  EXPECT_GE(lockLabel.height(), lockLabel.fontMetrics().height());
  EXPECT_EQ(window.size(), size);
  say("", "");
  look();
  EXPECT_FALSE(status.isVisible());
  EXPECT_EQ(lockLabel.height(), alone) << "the lock's label has the room to itself again";
}

TEST_F(Status, ALongTextIsShortenedAndLeavesTheWindowAsItIs) {
  const QSize size = window.size();
  say(std::string(300, 'x'), std::string(600, 'x'));
  look();
  EXPECT_TRUE(status.isCut());
  EXPECT_EQ(window.size(), size);
  EXPECT_LE(window.minimumSizeHint().width(), size.width()) << "nothing wants more room than there is";
}

TEST_F(Status, ALabelThatDoesNotFitIsToldWholeByItsToolTip) {
  const QString text(400, QLatin1Char('x'));
  lockLabel.setText(text);
  look();
  EXPECT_TRUE(lockLabel.isCut());
  QHelpEvent help(QEvent::ToolTip, QPoint(2, 2), lockLabel.mapToGlobal(QPoint(2, 2)));
  QApplication::sendEvent(&lockLabel, &help);
  EXPECT_EQ(QToolTip::text(), text);
  QToolTip::hideText();
  lockLabel.setText(QStringLiteral("short"));
  look();
  EXPECT_FALSE(lockLabel.isCut());
}

TEST_F(Status, TheLongestLabelOfAnOpenLockFitsInTwoLines) {
  view.authView.click();
  ASSERT_EQ(view.authView.state(), AuthorizationView::State::Open);
  look();
  EXPECT_FALSE(lockLabel.isCut());
}

TEST_F(Status, IsANotificationToAssistiveTechnologyWithItsTextAsItsName) {
  say("one", "");
  auto* accessible = QAccessible::queryAccessibleInterface(&status);
  ASSERT_NE(accessible, nullptr);
  EXPECT_EQ(accessible->role(), QAccessible::Notification);
  EXPECT_EQ(accessible->text(QAccessible::Name), QStringLiteral("one"));
}

TEST_F(Status, EachNewTextIsSpokenOnce) {
  const QStringList spoken{QStringLiteral("statusField")};
  Listener listener;
  say("one", "");
  EXPECT_EQ(listener.namesOf(QAccessible::Alert), spoken);
  EXPECT_EQ(listener.namesOf(QAccessible::ObjectShow), spoken);
  listener.forget();
  say("two", "");
  EXPECT_EQ(listener.namesOf(QAccessible::Alert), spoken);
  listener.forget();
  say("two", "more");
  EXPECT_EQ(listener.namesOf(QAccessible::Alert), QStringList());
}

class StatusOfThePane : public GuiTest {
 protected:
  [[nodiscard]] std::string status() { return widget<StatusLabel>("statusField").text().toStdString(); }
  void typeGroup(const char* text) {
    auto& field = widget("clientGroupTextField");
    click(field);
    QTest::keyClick(&field, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(&field, QString::fromLatin1(text));
    press(window(), Qt::Key_Return);
  }
  const std::string staging = paths.onDisk("/private/tmp");
};

TEST_F(StatusOfThePane, AnEditThatCannotBeSavedSaysSoUntilItIs) {
  open();
  openLock();
  EXPECT_FALSE(widget("statusField").isVisible());
  std::filesystem::remove(staging);
  typeGroup("lab");
  EXPECT_EQ(status(), "ClientSettings.plist was not saved: No such file or directory (" + staging + ")");
  EXPECT_TRUE(widget("statusField").isVisible());
  EXPECT_EQ(sheet(), nullptr);
  std::filesystem::create_directory(staging);
  typeGroup("office");
  EXPECT_FALSE(widget("statusField").isVisible());
  const Dictionary stored = readPlist(paths.clientSettings).asDictionary();
  ASSERT_NE(stored.string("ClientGroup"), nullptr);
  EXPECT_EQ(*stored.string("ClientGroup"), "office");
}

TEST_F(StatusOfThePane, ARunThatCannotBeStartedSaysSoUntilOneIsStarted) {
  open();
  openLock();
  click(widget("runClientButton"));
  EXPECT_EQ(status(), "RunClient was not started: No such file or directory");
  EXPECT_TRUE(widget("statusField").isVisible());
}

TEST_F(StatusOfThePane, WithoutAStagingFolderTheLockStaysClosedAndNamesIt) {
  std::filesystem::remove(staging);
  open();
  click(widget("authView"));
  EXPECT_FALSE(pane->assembly().pane().unlocked());
  EXPECT_EQ(
      widget<FittedLabel>("authLabel").text().toStdString(),
      "The lock could not be opened: " + staging + ": No such file or directory. Click it to try again.");
}

}  // namespace
}  // namespace corvane::test
