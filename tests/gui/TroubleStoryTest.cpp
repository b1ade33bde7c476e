// A person before a client that is not as it should be: what the window says, and that it can be put away
// with the mouse as with the keyboard.
#include <QAbstractItemView>
#include <QDialog>
#include <QLabel>
#include <QPushButton>

#include "StoryFixture.h"
#include "trees/StartPage.h"
#include "trees/TreeWindows.h"
#include "widgets/LabelButton.h"
#include "widgets/LockButton.h"
#include "widgets/StatusLabel.h"
#include "widgets/TabPane.h"

namespace corvane::test {
namespace {

using TroubleStory = StoryTest;

TEST_P(TroubleStory, WithoutTheDiskJournalsDaemonTheVolumesAreOutOfUseAndTheReasonIsGiven) {
  openPane();
  person->press("authView");
  person->chooseTab(1);
  EXPECT_TRUE(widget<QAbstractItemView>("volumesTable").isEnabled());
  std::ofstream(demo.paths.diskJournalPid).close();  // as a daemon leaves it that has ended
  person->press("showAllVolumeTypesButton");
  picture("no daemon");
  EXPECT_EQ(
      widget<QLabel>("defaultTextField").text(),
      QStringLiteral("An error has been detected. Please contact support, mentioning \"ReasonCode 412\""));
  EXPECT_TRUE(widget("defaultTextField").isVisible());
  EXPECT_FALSE(pane->assembly().optionsView().volumesTable.enabled());
}

TEST_P(TroubleStory, SettingsThatCannotBeReadAreReportedWhenTheLockOpens) {
  std::ofstream(demo.paths.timeMachineSettings) << "no property list";
  openPane();
  person->press("authView");
  ASSERT_NE(sheet(), nullptr);
  picture("unreadable settings");
  EXPECT_EQ(message(), QStringLiteral("Error Reading Preferences"));
  person->press("button OK");
  EXPECT_EQ(sheet(), nullptr);
  EXPECT_TRUE(widget<qt::LockButton>("authView").isOpen());
  person->chooseTab(1);
  picture("options without time machine");
}

TEST_P(TroubleStory, WhileTheClientsSettingsAreGoneNoTabIsLeft) {
  openPane();
  std::filesystem::remove(demo.paths.clientSettings);
  ASSERT_TRUE(eventually([this] {
    if (sheet() == nullptr) person->chooseTab(1 - window().tabs().shownTab());
    return sheet() != nullptr;
  }));
  picture("settings are gone");
  ASSERT_NE(sheet(), nullptr);
  EXPECT_EQ(message(), QStringLiteral("Error Reading Settings"));
}

TEST_P(TroubleStory, WhereNoClientIsInstalledThatIsSaidBeforeTheWindowOpens) {
  std::filesystem::remove_all(demo.paths.installFolder);
  QString title;
  const auto expectWholeGreeting = [this] {
    const auto& greeting = widget<qt::LabelButton>("greetingButton");
    EXPECT_GE(greeting.width(), greeting.sizeHint().width()) << "the greeting is cut short";
    EXPECT_NEAR(greeting.geometry().center().x(), window().rect().center().x(), 5);
  };
  const bool seen = answerPanel<QDialog>([this] { openPane(); },
                                         [&](QDialog& panel) {
                                           title = panel.windowTitle();
                                           expectWholeGreeting();
                                           picture("no client");
                                           press(panel, Qt::Key_Return);
                                         });
  EXPECT_TRUE(seen);
  EXPECT_EQ(title, QStringLiteral("Monitoring Client Error"));
  picture("window without a client");
  expectWholeGreeting();
  person->press("authView");
  ASSERT_NE(sheet(), nullptr);
  EXPECT_EQ(message(), QStringLiteral("Monitoring Client Removed"));
  person->press("button OK");
  EXPECT_FALSE(widget<qt::LockButton>("authView").isOpen());
}

TEST_P(TroubleStory, WhatCannotBeSavedIsSaidBesideTheLockUntilItIs) {
  openPane();
  person->press("authView");
  const std::string staging = demo.paths.onDisk("/private/tmp");
  std::filesystem::remove_all(staging);
  const auto& status = widget<qt::StatusLabel>("statusField");
  const QString reason = QString::fromStdString("No such file or directory (" + staging + ")");
  person->fill("clientGroupTextField", "Library");
  person->confirm();
  picture("a setting is not saved");
  EXPECT_EQ(status.text(), QStringLiteral("ClientSettings.plist was not saved: ") + reason);
  person->chooseTab(1);
  person->press("automountCheckbox");
  picture("two settings are not saved");
  EXPECT_EQ(status.text(), QStringLiteral("autodiskmount.plist was not saved (and 1 more): ") + reason);
  std::filesystem::create_directory(staging);
  person->press("automountCheckbox");
  EXPECT_EQ(status.text(), QStringLiteral("ClientSettings.plist was not saved: ") + reason);
  person->chooseTab(0);
  person->fill("clientGroupTextField", "Laboratory");
  person->confirm();
  EXPECT_FALSE(status.isVisible());
  picture("all is saved");
}

TEST_P(TroubleStory, WhereNothingCouldBeSavedTheLockStaysClosedAndSaysWhy) {
  const std::string staging = demo.paths.onDisk("/private/tmp");
  std::filesystem::remove_all(staging);
  openPane();
  person->press("authView");
  picture("the lock stays closed");
  EXPECT_FALSE(widget<qt::LockButton>("authView").isOpen());
  EXPECT_EQ(widget<QLabel>("authLabel").text(),
            QString::fromStdString("The lock could not be opened: " + staging +
                                   ": No such file or directory. Click it to try again."));
}

TEST_P(TroubleStory, ARunOfTheClientThatSomebodyHasStartedIsSaidOnItsButton) {
  openPane();
  person->press("authView");
  const auto& button = widget<QPushButton>("runClientButton");
  std::ofstream(demo.paths.errorLoggerPid) << "1";
  EXPECT_TRUE(eventually([&] { return button.text() == QStringLiteral("Running…"); }));
  picture("the client runs");
  EXPECT_FALSE(button.isEnabled());
  std::filesystem::remove(demo.paths.errorLoggerPid);
  EXPECT_TRUE(eventually([&] { return button.text() == QStringLiteral("Run Client Now"); }));
  EXPECT_TRUE(button.isEnabled());
}

TEST_P(TroubleStory, WhereNoPluginIsInstalledTheListSaysSo) {
  std::filesystem::remove_all(demo.paths.plugins);
  std::filesystem::create_directory(demo.paths.plugins);
  openPane();
  person->chooseTab(2);
  person->press("button Continue");
  picture("no plugins");
  EXPECT_EQ(widget("pluginsTable").accessibleDescription(), QStringLiteral("No plugins are installed."));
}

TEST_P(TroubleStory, TheSecondPaneOfATreeSaysThatItIsNotAlone) {
  qt::LinuxPane first(demo.root);
  first.open();
  openPane();
  picture("second pane");
  EXPECT_TRUE(
      widget<qt::StatusLabel>("statusField").text().startsWith(QStringLiteral("Another pane is open on ")));
}

TEST_P(TroubleStory, WhereNoTreeIsOpenTheStartPageOffersThoseThereAreAndSaysWhatIsNone) {
  qt::RecentTrees recents{QString::fromStdString(root / "trees")};
  recents.add(QString::fromStdString(demo.root));
  recents.add(QStringLiteral("/srv/prepared trees of the laboratory/") + QString(60, QLatin1Char('m')));
  qt::TreeWindows windows{{recents, [] { return QStringList{QStringLiteral("/media/Macintosh HD")}; }}};
  windows.showStart();
  qt::StartPage& page = *windows.startPage();
  showActive(page);
  picture("start page", page);
  windows.open(QString::fromStdString(root.path()));
  picture("not a tree", page);
  EXPECT_TRUE(find<QLabel>(page, "refusal").isVisible());
  QString about;
  EXPECT_TRUE(answerPanel<QDialog>([&] { press(page, Qt::Key_F1); },
                                   [&](QDialog& panel) {
                                     about = find<QLabel>(panel, "message").text();
                                     picture("about", page);
                                     panel.accept();
                                   }));
  EXPECT_FALSE(about.isEmpty());
}

INSTANTIATE_TEST_SUITE_P(By, TroubleStory, ::testing::Values(Means::Mouse, Means::Keyboard),
                         [](const auto& story) { return ::testing::PrintToString(story.param); });

}  // namespace
}  // namespace corvane::test
