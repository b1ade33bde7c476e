#include <QAbstractItemView>
#include <QComboBox>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QTableView>
#include <QTreeView>
#include <algorithm>
#include <filesystem>
#include <map>

#include <unistd.h>

#include "Assistive.h"
#include "GuiFixture.h"
#include "Pictures.h"
#include "tabs/ConfigurationTabPage.h"
#include "widgets/LabelButton.h"
#include "widgets/LockButton.h"

namespace corvane::test {
namespace {

using WholePane = GuiTest;
using qt::LabelButton;

TEST_F(WholePane, ShowsVersionAndSupportLinkOfTheClient) {
  open();
  EXPECT_EQ(widget<LabelButton>("clientVersionButton").text(), QStringLiteral("Version 4.2.1"));
  EXPECT_EQ(widget<LabelButton>("urlButton").text(), QStringLiteral("help.example.com"));
  EXPECT_TRUE(widget("greetingButton").isVisible());
}

/// Notes what the window holds at its first picture.
class FirstPicture final : public QObject {
 public:
  explicit FirstPicture(qt::PaneWindow& window) : window_(window) { window.installEventFilter(this); }
  bool eventFilter(QObject* /*watched*/, QEvent* event) override {
    if (event->type() != QEvent::Paint || taken) return false;
    taken = true;
    tabs = find<QTabBar>(window_, "tabBar").count();
    version = find<LabelButton>(window_, "clientVersionButton").text();
    hasPage = window_.findChild<qt::ConfigurationTabPage*>() != nullptr;
    return false;
  }

  bool taken = false;
  int tabs = 0;
  QString version;
  bool hasPage = false;

 private:
  qt::PaneWindow& window_;
};

TEST_F(WholePane, ShowsItsFrameBeforeTheClientIsRead) {
  pane = std::make_unique<qt::LinuxPane>(root.path());
  const FirstPicture first(window());
  window().longestWaitForPaint = std::chrono::milliseconds(kHangMilliseconds);
  pane->open();
  EXPECT_TRUE(first.taken);
  EXPECT_EQ(first.tabs, 3);
  EXPECT_EQ(first.version, QString());
  EXPECT_FALSE(first.hasPage);
  EXPECT_EQ(widget<LabelButton>("clientVersionButton").text(), QStringLiteral("Version 4.2.1"));
  EXPECT_TRUE(window().findChild<qt::ConfigurationTabPage*>()->isVisible());
}

/// Notes what the window holds when it first shows something of the client.
class FilledPicture final : public QObject {
 public:
  explicit FilledPicture(qt::PaneWindow& window) : window_(window) { window.installEventFilter(this); }
  bool eventFilter(QObject* /*watched*/, QEvent* event) override {
    if (event->type() != QEvent::Paint || !version.isEmpty()) return false;
    version = find<LabelButton>(window_, "clientVersionButton").text();
    const auto* page = window_.findChild<qt::ConfigurationTabPage*>();
    isLaidOut = page != nullptr && find<QWidget>(*page, "runClientButton").width() > 50;
    pagesBehind = static_cast<int>(window_.findChildren<QAbstractItemView*>().size());
    return false;
  }

  QString version;
  bool isLaidOut = false;
  int pagesBehind = 0;

 private:
  qt::PaneWindow& window_;
};

TEST_F(WholePane, ShowsTheClientBeforeThePagesBehindAreMade) {
  pane = std::make_unique<qt::LinuxPane>(root.path());
  const FilledPicture filled(window());
  pane->open();
  EXPECT_EQ(filled.version, QStringLiteral("Version 4.2.1"));
  EXPECT_TRUE(filled.isLaidOut);
  EXPECT_EQ(filled.pagesBehind, 0);
  EXPECT_FALSE(widget<QTableView>("volumesTable").isVisible());
  EXPECT_FALSE(widget<QTreeView>("pluginsTable").isVisible());
}

TEST_F(WholePane, ReadsTheClientAlsoWhenTheWindowIsNotSeen) {
  pane = std::make_unique<qt::LinuxPane>(root.path());
  window().setUpdatesEnabled(false);
  const FirstPicture first(window());
  pane->open();
  EXPECT_FALSE(first.taken);
  EXPECT_EQ(widget<LabelButton>("clientVersionButton").text(), QStringLiteral("Version 4.2.1"));
}

TEST_F(WholePane, GreetingAndLinkStandSideBySideInTheMiddle) {
  open();
  const QRect greeting = widget("greetingButton").geometry();
  const QRect url = widget("urlButton").geometry();
  EXPECT_EQ(url.left(), greeting.left() + greeting.width() + 2);
  const int centre = (greeting.left() + url.left() + url.width()) / 2;
  const int middle = window().width() / 2;
  EXPECT_NEAR(centre, middle, 1);
}

TEST_F(WholePane, TheSupportLinkOpensTheAddress) {
  open();
  click(widget("urlButton"));
  EXPECT_EQ(openedUrls.list, (std::vector<std::string>{"http://help.example.com"}));
}

TEST_F(WholePane, TheSupportLinkOpensNothingButWebAndMailAddresses) {
  Dictionary settings = Dictionary::make();
  settings.set("Support_Address", PropertyList::string("file:///etc/passwd#http://"));
  writePlist(paths.clientSettings, settings);
  open();
  click(widget("urlButton"));
  EXPECT_TRUE(openedUrls.list.empty());
}

TEST_F(WholePane, TheClientIconOpensTheComputersPageWithAModifierKeyOnly) {
  Dictionary settings = Dictionary::make();
  settings.set("Server_Address", PropertyList::string("reports.example.com"));
  settings.set("ClientID", PropertyList::string("4711"));
  writePlist(paths.clientSettings, settings);
  open();
  click(widget("quorlenIconButton"));
  EXPECT_TRUE(openedUrls.list.empty());
  click(widget("quorlenIconButton"), Qt::ControlModifier);
  click(widget("quorlenIconButton"), Qt::AltModifier);
  const std::string page = "https://www.example.com/computers/4711";
  EXPECT_EQ(openedUrls.list, (std::vector<std::string>{page, page}));
}

TEST_F(WholePane, TheLockOpensWithoutAQuestionWhereTheFilesAreTheUsersOwn) {
  open();
  EXPECT_FALSE(pane->assembly().pane().unlocked());
  openLock();
  EXPECT_TRUE(widget<qt::LockButton>("authView").isOpen());
  click(widget("authView"));
  EXPECT_FALSE(pane->assembly().pane().unlocked());
}

TEST_F(WholePane, ReturnOnTheCautionAlertKeepsTheTab) {
  open();
  clickTab(2);
  ASSERT_NE(sheet(), nullptr);
  EXPECT_EQ(find<QLabel>(*sheet(), "message").text(), QStringLiteral("Proceed with caution"));
  EXPECT_EQ(widget<QTabBar>("tabBar").currentIndex(), 0);
  press(window(), Qt::Key_Return);
  EXPECT_EQ(sheet(), nullptr);
  EXPECT_EQ(widget<QTabBar>("tabBar").currentIndex(), 0);
}

TEST_F(WholePane, ContinueOnTheCautionAlertOpensThePluginsTabForGood) {
  open();
  clickTab(2);
  answerSheet("Continue");
  EXPECT_EQ(widget<QTabBar>("tabBar").currentIndex(), 2);
  clickTab(0);
  clickTab(2);
  EXPECT_EQ(sheet(), nullptr);
  EXPECT_EQ(widget<QTabBar>("tabBar").currentIndex(), 2);
}

TEST_F(WholePane, RemovingTheClientWhileThePaneIsOpenLocksItForGood) {
  open();
  openLock();
  std::filesystem::remove_all(paths.installFolder);
  ASSERT_TRUE(eventually([this] { return sheet() != nullptr; }));
  EXPECT_EQ(find<QLabel>(*sheet(), "message").text(), QStringLiteral("Monitoring Client Removed"));
  EXPECT_FALSE(pane->assembly().pane().unlocked());
  answerSheet("OK");
  clickTab(1);
  ASSERT_NE(sheet(), nullptr);
  EXPECT_EQ(find<QLabel>(*sheet(), "message").text(), QStringLiteral("Monitoring Client Removed"));
  EXPECT_EQ(widget<QTabBar>("tabBar").currentIndex(), 0);
}

TEST_F(WholePane, TheHeaderFollowsASettingsFileThatChangesBehindIt) {
  open();
  Dictionary settings = Dictionary::make();
  settings.set("Client_Version", PropertyList::string("5.0"));
  writePlist(paths.clientSettings, settings);
  EXPECT_TRUE(eventually(
      [this] { return widget<LabelButton>("clientVersionButton").text() == QStringLiteral("Version 5.0"); }));
}

/// A control that a person reaches with the keyboard; parts of other controls do not count.
bool isControl(const QWidget& widget) {
  if (widget.focusPolicy() == Qt::NoFocus || qobject_cast<QComboBox*>(widget.parentWidget()) != nullptr)
    return false;
  return qobject_cast<const QAbstractButton*>(&widget) != nullptr ||
         qobject_cast<const QLineEdit*>(&widget) != nullptr ||
         qobject_cast<const QComboBox*>(&widget) != nullptr ||
         qobject_cast<const QTabBar*>(&widget) != nullptr ||
         qobject_cast<const QTableView*>(&widget) != nullptr ||
         qobject_cast<const QTreeView*>(&widget) != nullptr;
}

TEST_F(WholePane, EveryControlHasAnAccessibleNameOfItsOwn) {
  open();
  std::map<QString, QString> names;  // to the object that has it
  for (QWidget* control : window().findChildren<QWidget*>()) {
    if (!isControl(*control)) continue;
    const QString name = spokenName(*control);
    EXPECT_FALSE(name.isEmpty()) << control->objectName().toStdString() << " has no name";
    EXPECT_EQ(names.count(name), 0U) << control->objectName().toStdString() << " and "
                                     << names[name].toStdString() << " are both called "
                                     << name.toStdString();
    names[name] = control->objectName();
  }
  EXPECT_GE(names.size(), 3U);
}

TEST_F(WholePane, PicturesShowATabWithItsAlertThenLockedThenUnlocked) {
  open();
  const std::string folder = root / "pictures";
  std::filesystem::create_directory(folder);
  ASSERT_TRUE(qt::takePictures(*pane, QString::fromStdString(folder), 2));
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    EXPECT_EQ(QImage(QString::fromStdString(entry.path())).width(), window().width());
    names.push_back(entry.path().filename());
  }
  std::sort(names.begin(), names.end());
  EXPECT_EQ(names, (std::vector<std::string>{"Plugins-alert.png", "Plugins-unlocked.png", "Plugins.png"}));
  EXPECT_TRUE(pane->assembly().pane().unlocked());
  EXPECT_FALSE(qt::takePictures(*pane, QStringLiteral("/no/such/folder"), 0));
}

TEST_F(WholePane, PicturesOfAPaneWithoutAClientNeedNobodyToAnswerItsAlerts) {
  const TemporaryFolder pictures;
  const QString folder = QString::fromStdString(pictures.path());
  std::filesystem::remove_all(paths.installFolder);
  pane = std::make_unique<qt::LinuxPane>(root.path());
  ASSERT_TRUE(qt::openForPictures(*pane, folder));
  ASSERT_TRUE(qt::takePictures(*pane, folder, -1));
  for (const char* name : {"Start-alert.png", "Configuration.png", "Options.png", "Plugins.png"})
    EXPECT_FALSE(QImage(QString::fromStdString(pictures / name)).isNull()) << name;
}

TEST_F(WholePane, AnAlertAtTheStartThatCantBePicturedIsAnsweredAndTold) {
  std::filesystem::remove_all(paths.installFolder);
  pane = std::make_unique<qt::LinuxPane>(root.path());
  EXPECT_FALSE(qt::openForPictures(*pane, QStringLiteral("/no/such/folder")));
  EXPECT_TRUE(window().isVisible());
}

TEST_F(WholePane, TheLockStaysClosedForRootWhereOthersCanChangeTheTree) {
  if (::geteuid() != 0) GTEST_SKIP() << "NOT TESTED: this needs root, to act as several users";
  constexpr uid_t kStranger = 4712;
  ASSERT_EQ(::chown(root.path().c_str(), kStranger, 0), 0);
  open();
  click(widget("authView"));
  EXPECT_FALSE(pane->assembly().pane().unlocked());
  EXPECT_EQ(
      widget<QLabel>("authLabel").text().toStdString(),
      "The lock could not be opened: " + root.path() +
          ": others than root can change the folder; run the pane as the owner of the tree, or keep the "
          "tree where only root can change it. Click it to try again.");
  const TemporaryFolder pictures;
  ::testing::internal::CaptureStderr();
  const bool isTaken = qt::takePictures(*pane, QString::fromStdString(pictures.path()), 0);
  EXPECT_NE(::testing::internal::GetCapturedStderr().find("the lock stays closed"), std::string::npos);
  ASSERT_TRUE(isTaken);
  EXPECT_TRUE(std::filesystem::exists(pictures / "Configuration.png"));
  EXPECT_FALSE(std::filesystem::exists(pictures / "Configuration-unlocked.png"));
}

TEST_F(WholePane, NoControlIsMarkedBeforeTheKeyboardIsUsed) {
  open();
  EXPECT_TRUE(window().hasFocus());
  press(window(), Qt::Key_Tab);
  EXPECT_TRUE(widget("urlButton").hasFocus());
}

TEST_F(WholePane, TheTabKeyGoesFromTheTopOfTheWindowToItsBottomOnEveryTab) {
  open();
  openLock();
  for (const char* page : {"ConfigurationTabPage", "OptionsTabPage", "PluginsTabPage"}) {
    SCOPED_TRACE(page);
    while (!widget(page).isVisible()) {
      press(window(), Qt::Key_Tab, Qt::ControlModifier);
      if (sheet() != nullptr) answerSheet("Continue");
    }
    window().setFocus();
    std::vector<const QWidget*> stops;
    for (press(window(), Qt::Key_Tab); stops.empty() || window().focusWidget() != stops.front();
         press(window(), Qt::Key_Tab)) {
      ASSERT_LT(stops.size(), 40U) << "the Tab key does not come back";
      stops.push_back(window().focusWidget());
    }
    ASSERT_GE(stops.size(), 5U);
    EXPECT_EQ(stops[0], &widget("urlButton"));
    EXPECT_EQ(stops[1], &widget("tabBar"));
    for (std::size_t i = 2; i + 2 < stops.size(); ++i)
      EXPECT_TRUE(widget(page).isAncestorOf(stops[i])) << stops[i]->objectName().toStdString();
    EXPECT_EQ(stops[stops.size() - 2], &widget("authView"));
    EXPECT_EQ(stops[stops.size() - 1], &widget("quorlenIconButton"));
  }
}

}  // namespace
}  // namespace corvane::test
