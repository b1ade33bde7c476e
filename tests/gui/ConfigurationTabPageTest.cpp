// The Configuration tab in the real window over a demo client: real files, real processes, real events.
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <algorithm>
#include <vector>

#include "Assistive.h"
#include "GuiFixture.h"
#include "support/DemoClient.h"
#include "tabs/ConfigurationTabPage.h"
#include "widgets/LockButton.h"

namespace corvane::test {
namespace {

class ConfigurationPage : public GuiTest {
 protected:
  void SetUp() override {}  // the demo lays the client out

  void openDemo() { open(demo.root); }
  void openUnlockedDemo() {
    openDemo();
    openLock();
  }
  [[nodiscard]] QString textOf(const char* label) { return widget<QLabel>(label).text(); }
  [[nodiscard]] QLineEdit& field(const char* name) { return widget<QLineEdit>(name); }
  [[nodiscard]] Dictionary settings() { return readPlist(demo.paths.clientSettings).asDictionary(); }
  /// Puts the text in the place of what the field shows, key by key.
  void overtype(QLineEdit& edited, const char* text) {
    edited.setFocus();
    edited.selectAll();
    type(edited, text);
  }
  [[nodiscard]] bool markerExists() { return std::filesystem::exists(demo.paths.errorLoggerPid); }
  [[nodiscard]] std::vector<std::string> runNow() const {
    return DemoClient::bash(demo.paths.runClient, {"--log-parent", "test", "--force"});
  }

  DemoClient demo{"2"};  // longer than a run must last to be noticed
};

constexpr const char* kControls[] = {"runClientButton", "updateClientNowButton", "runIntervalTextField",
                                     "clientGroupTextField", "uninstallButton"};

TEST_F(ConfigurationPage, ShowsWhatTheClientsFilesSay) {
  openDemo();
  EXPECT_TRUE(textOf("lastRunClientField").contains(QStringLiteral(" at ")));
  EXPECT_TRUE(textOf("lastRunUpdaterField").contains(QStringLiteral(" at ")));
  EXPECT_EQ(field("runIntervalTextField").text(), QStringLiteral("2"));
  EXPECT_EQ(field("clientGroupTextField").text(), QStringLiteral("Design Studio"));
  EXPECT_EQ(textOf("removeClientField"), QStringLiteral("Removes the client from this computer"));
}

TEST_F(ConfigurationPage, AllThatNeedsRightsIsDisabledUntilTheLockOpens) {
  openDemo();
  for (const char* name : kControls) EXPECT_FALSE(widget(name).isEnabled()) << name;
  openLock();
  for (const char* name : kControls) EXPECT_TRUE(widget(name).isEnabled()) << name;
}

TEST_F(ConfigurationPage, EveryControlHasAnAccessibleNameAndEveryLabelSpeaksForItself) {
  openDemo();
  for (const char* name : kControls) EXPECT_FALSE(spokenName(widget(name)).isEmpty()) << name;
  for (const auto* label : widget("ConfigurationTabPage").findChildren<QLabel*>()) {
    EXPECT_TRUE(label->accessibleName().isEmpty()) << label->objectName().toStdString();
    EXPECT_FALSE(label->text().isEmpty()) << label->objectName().toStdString();
  }
}

TEST_F(ConfigurationPage, TheTabKeyReachesEveryControlInOrder) {
  openUnlockedDemo();
  widget(kControls[0]).setFocus();
  for (const char* name : kControls) {
    EXPECT_EQ(window().focusWidget(), &widget(name)) << name;
    press(window(), Qt::Key_Tab);
  }
}

TEST_F(ConfigurationPage, NothingIsCutOffAndNothingOverlaps) {
  openDemo();
  std::vector<QWidget*> shown;
  for (auto* child : widget("ConfigurationTabPage").findChildren<QWidget*>()) {
    if (!child->isVisible() || !child->findChildren<QWidget*>().isEmpty()) continue;
    EXPECT_TRUE(child->parentWidget()->rect().contains(child->geometry()))
        << child->objectName().toStdString();
    if (qobject_cast<QLineEdit*>(child) == nullptr) {
      EXPECT_GE(child->width(), child->minimumSizeHint().width()) << child->objectName().toStdString();
      EXPECT_GE(child->height(), child->minimumSizeHint().height()) << child->objectName().toStdString();
    }
    for (const QWidget* other : shown) {
      EXPECT_FALSE(child->geometry().intersects(other->geometry()))
          << child->objectName().toStdString() << " and " << other->objectName().toStdString();
    }
    shown.push_back(child);
  }
  EXPECT_GE(shown.size(), 13U);
}

TEST_F(ConfigurationPage, WithoutTheUtilitiesFolderTheUpdaterIsNotShown) {
  std::filesystem::remove_all(demo.paths.utilities);
  openDemo();
  for (const char* name : {"lastRunUpdaterLabel", "lastRunUpdaterField", "updateClientNowButton"}) {
    EXPECT_FALSE(widget(name).isVisible()) << name;
  }
  EXPECT_TRUE(widget("runClientButton").isVisible());
}

TEST_F(ConfigurationPage, RunIntervalsOutsideOneToSixAreRefusedWhileTheyAreTyped) {
  openUnlockedDemo();
  QLineEdit& interval = field("runIntervalTextField");
  for (const char* refused : {"0", "7", "9", "x", "-", "."}) {
    overtype(interval, refused);
    EXPECT_EQ(interval.text(), QStringLiteral("2")) << refused;
  }
  overtype(interval, "6");
  EXPECT_EQ(interval.text(), QStringLiteral("6"));
  type(interval, "0");
  EXPECT_EQ(interval.text(), QStringLiteral("6"));
}

TEST_F(ConfigurationPage, AnEditedRunIntervalReachesTheFileAndNothingElseChanges) {
  Dictionary expected = settings();
  openUnlockedDemo();
  overtype(field("runIntervalTextField"), "5");
  EXPECT_EQ(settings(), expected) << "not while it is being typed";
  press(window(), Qt::Key_Tab);
  expected.set("Run_Interval", PropertyList::integer(5));
  EXPECT_EQ(settings(), expected);
}

TEST_F(ConfigurationPage, AClearedRunIntervalShowsAndStoresTheDefault) {
  openUnlockedDemo();
  QLineEdit& interval = field("runIntervalTextField");
  interval.setFocus();
  interval.selectAll();
  press(window(), Qt::Key_Backspace);
  EXPECT_EQ(interval.text(), QString());
  press(window(), Qt::Key_Return);
  EXPECT_EQ(interval.text(), QStringLiteral("1"));
  EXPECT_EQ(settings().value("Run_Interval"), PropertyList::integer(1));
}

TEST_F(ConfigurationPage, AGroupOfTenThousandCharactersSurvives) {
  openUnlockedDemo();
  QLineEdit& group = field("clientGroupTextField");
  const QString text(10000, QChar(u'ü'));
  group.setFocus();
  group.selectAll();
  group.insert(text);
  press(window(), Qt::Key_Tab);
  EXPECT_EQ(settings().value("ClientGroup"), PropertyList::string(text.toStdString()));
  EXPECT_EQ(group.text(), text);
}

TEST_F(ConfigurationPage, RunningTheClientDisablesTheButtonUntilTheRunEndsAndShowsTheNewDate) {
  openUnlockedDemo();
  auto& button = widget<QPushButton>("runClientButton");
  const QString before = textOf("lastRunClientField");
  EXPECT_EQ(button.text(), QStringLiteral("Run Client Now"));
  const int width = button.width();
  click(button);
  EXPECT_FALSE(button.isEnabled());
  ASSERT_TRUE(eventually([&] { return markerExists(); }));
  EXPECT_TRUE(eventually([&] { return button.text() == QStringLiteral("Running…"); }));
  EXPECT_EQ(button.width(), width) << "the button jumps";
  EXPECT_TRUE(eventually([&] { return button.isEnabled() && !markerExists(); }));
  EXPECT_EQ(button.text(), QStringLiteral("Run Client Now"));
  EXPECT_TRUE(eventually([&] { return textOf("lastRunClientField") != before; }));
  EXPECT_NE(demo.log().find("RunClient for prefpane-client: ended"), std::string::npos);
}

TEST_F(ConfigurationPage, ARunThatSomebodyElseHasStartedDisablesTheButtonToo) {
  openUnlockedDemo();
  const auto& button = widget<QPushButton>("runClientButton");
  Started run(runNow());
  EXPECT_TRUE(eventually([&] { return !button.isEnabled(); }));
  EXPECT_TRUE(eventually([&] { return button.isEnabled(); }));
  EXPECT_EQ(run.exitCode(), 0);
}

TEST_F(ConfigurationPage, CheckingForUpdatesDisablesTheButtonUntilTheNewDateShows) {
  openUnlockedDemo();
  auto& button = widget<QPushButton>("updateClientNowButton");
  const QString before = textOf("lastRunUpdaterField");
  click(button);
  EXPECT_FALSE(button.isEnabled());
  EXPECT_TRUE(eventually([&] { return textOf("lastRunUpdaterField") != before; }));
  EXPECT_TRUE(button.isEnabled());
}

TEST_F(ConfigurationPage, ReturnOnTheUninstallSheetCancels) {
  openUnlockedDemo();
  click(widget("uninstallButton"));
  ASSERT_NE(sheet(), nullptr);
  EXPECT_EQ(find<QLabel>(*sheet(), "message").text(), QStringLiteral("Please confirm removal."));
  EXPECT_TRUE(find<QCheckBox>(*sheet(), "accessory").isChecked());
  press(window(), Qt::Key_Return);
  EXPECT_EQ(sheet(), nullptr);
  EXPECT_EQ(demo.log(), "") << "no script was started";
  EXPECT_TRUE(std::filesystem::exists(demo.paths.installFolder));
}

TEST_F(ConfigurationPage, UninstallingRemovesTheClientAndLocksThePaneForGood) {
  openUnlockedDemo();
  click(widget("uninstallButton"));
  ASSERT_NE(sheet(), nullptr);
  click(find<QCheckBox>(*sheet(), "accessory"));
  answerSheet("Uninstall");
  ASSERT_TRUE(eventually([&] { return sheet() != nullptr; }));
  EXPECT_EQ(find<QLabel>(*sheet(), "message").text(), QStringLiteral("Monitoring Client Removed"));
  EXPECT_FALSE(std::filesystem::exists(demo.paths.installFolder));
  EXPECT_NE(demo.log().find("RunClient for prefpane-remove: removed without a report"), std::string::npos);
  for (const char* name : kControls) EXPECT_FALSE(widget(name).isEnabled()) << name;
  answerSheet("OK");
  click(widget("authView"));
  EXPECT_FALSE(pane->assembly().pane().unlocked());
  EXPECT_FALSE(widget<qt::LockButton>("authView").isOpen());
}

}  // namespace
}  // namespace corvane::test
