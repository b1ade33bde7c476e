#include <QAbstractButton>
#include <QApplication>
#include <QLabel>
#include <QScreen>
#include <QSettings>
#include <QTabBar>
#include <filesystem>

#include "WindowFixture.h"
#include "WindowSize.h"
#include "widgets/LabelButton.h"
#include "widgets/LockButton.h"
#include "widgets/TabPane.h"

namespace corvane::test {
namespace {

using PaneWindow = WindowTest;
using qt::LabelButton;
using qt::LockButton;

class RefusingDelegate final : public TabViewDelegate {
 public:
  bool tabViewShouldSelectTabViewItem(TabView& tabView, const TabViewItem& item) override {
    asked.push_back(tabView.indexOfTabViewItem(item));
    return allows;
  }
  bool allows = false;
  std::vector<int> asked;
};

TEST_F(PaneWindow, IsAsWideAsAPreferencePaneAndCarriesTheTitleOfTheCore) {
  EXPECT_EQ(window.width(), 668);
  EXPECT_EQ(window.windowTitle(), QStringLiteral("Monitoring Client"));
  view.mainWindow.setTitle("Another");
  EXPECT_EQ(window.windowTitle(), QStringLiteral("Another"));
}

class RememberedSize : public PaneWindow {
 protected:
  void TearDown() override { std::filesystem::remove(kept.fileName().toStdString()); }
  [[nodiscard]] static QSize sizeOfTheNext() {
    qt::PaneWindow next;
    qt::rememberSize(next);
    return next.size();
  }
  void keep(const QVariant& width, const QVariant& height) {
    kept.setValue(QStringLiteral("width"), width);
    kept.setValue(QStringLiteral("height"), height);
    kept.sync();
  }

  QSettings kept{QSettings::IniFormat, QSettings::UserScope, QStringLiteral("corvane-pane"),
                 QStringLiteral("window")};
};

TEST_F(RememberedSize, IsTheOneThatTheUserHasLeft) {
  const QSize usual = sizeOfTheNext();
  qt::rememberSize(window);
  const QSize wanted = usual + QSize(30, 20);
  window.resize(wanted);
  EXPECT_EQ(sizeOfTheNext(), usual) << "kept before the window was closed";
  window.close();
  EXPECT_EQ(sizeOfTheNext(), wanted);
  QFont larger = QApplication::font();
  larger.setPixelSize(14);
  const QFont before = QApplication::font();
  QApplication::setFont(larger);
  EXPECT_EQ(sizeOfTheNext(), wanted * 14 / 13.0) << "it is one in points";
  QApplication::setFont(before);
}

TEST_F(RememberedSize, IsNotKeptFromAWindowThatFillsTheScreen) {
  const QSize usual = sizeOfTheNext();
  qt::rememberSize(window);
  window.showMaximized();
  ASSERT_TRUE(eventually([this] { return window.isMaximized(); }));
  window.close();
  EXPECT_EQ(sizeOfTheNext(), usual);
}

TEST_F(RememberedSize, CountsOnlyWhereItMakesSense) {
  const QSize usual = sizeOfTheNext();
  const auto sizeWith = [this](const QVariant& width, const QVariant& height) {
    keep(width, height);
    return sizeOfTheNext();
  };
  for (const QVariant& senseless : {QVariant(0), QVariant(-700), QVariant(QStringLiteral("wide")), QVariant(),
                                    QVariant(10'001), QVariant(QStringLiteral("99999999999"))}) {
    EXPECT_EQ(sizeWith(senseless, usual.height() + 20), usual);
    EXPECT_EQ(sizeWith(usual.width() + 20, senseless), usual);
  }
  EXPECT_EQ(sizeWith(9000, 9000), window.screen()->availableSize());
  EXPECT_EQ(sizeWith(10, 10), usual) << "nothing may be cut off";
}

TEST_F(PaneWindow, PlacesTheHeaderWhereTheCoreSaysAndShowsItsTexts) {
  auto& greeting = find<LabelButton>(window, "greetingButton");
  auto& url = find<LabelButton>(window, "urlButton");
  view.greetingButton.setTitle("Hello & welcome <b>you</b>");
  view.greetingButton.setFrame({120, 480, 210, 20});
  view.urlButton.setTitle("help.example.com");
  view.urlButton.setFrame({332, 480, 130, 20});
  EXPECT_EQ(greeting.text(), QStringLiteral("Hello & welcome <b>you</b>"));
  EXPECT_EQ(greeting.x(), 120);
  EXPECT_EQ(greeting.width(), 210);
  EXPECT_EQ(url.x(), 332);
  EXPECT_EQ(url.width(), 130);
  EXPECT_EQ(greeting.y(), url.y());
  EXPECT_EQ(url.toolTip(), QStringLiteral("Contact support"));
}

TEST_F(PaneWindow, AGreetingThatIsTooLongStaysInsideTheWindow) {
  view.greetingButton.setFrame({-200, 480, 1100, 20});
  const QRect place = find(window, "greetingButton").geometry();
  EXPECT_EQ(place.left(), 0);
  EXPECT_EQ(place.width(), 668);
}

TEST_F(PaneWindow, TheMouseShowsAHandOverALinkAndNothingElse) {
  auto& url = find<LabelButton>(window, "urlButton");
  auto& greeting = find<LabelButton>(window, "greetingButton");
  view.urlButton.action = [](Button&) {};
  view.greetingButton.action = [](Button&) {};
  AttributedText link("help.example.com");
  TextAttributes underlined;
  underlined.underlined = true;
  link.runs.push_back({0, link.text.size(), underlined});
  view.urlButton.setAttributedTitle(link);
  view.greetingButton.setTitle("Hello");
  EXPECT_EQ(url.cursor().shape(), Qt::PointingHandCursor);
  EXPECT_EQ(greeting.cursor().shape(), Qt::ArrowCursor);
  view.urlButton.action = nullptr;
  view.urlButton.setTitle("none");
  EXPECT_EQ(url.cursor().shape(), Qt::ArrowCursor);
}

TEST_F(PaneWindow, HidesAndShowsTheHeaderWithTheCore) {
  auto& url = find(window, "urlButton");
  view.urlButton.setHidden(true);
  EXPECT_FALSE(url.isVisible());
  view.urlButton.setHidden(false);
  EXPECT_TRUE(url.isVisible());
}

TEST_F(PaneWindow, ForwardsAClickOnTheSupportLinkByMouseAndByKeyboard) {
  int clicks = 0;
  view.urlButton.action = [&](Button&) { ++clicks; };
  view.urlButton.setTitle("help.example.com");
  auto& url = find(window, "urlButton");
  click(url);
  EXPECT_EQ(clicks, 1);
  url.setFocus();
  press(window, Qt::Key_Return);
  press(window, Qt::Key_Space);
  EXPECT_EQ(clicks, 3);
}

TEST_F(PaneWindow, ShowsTheProductsIconInTheHeaderAndAsTheIconOfEveryWindow) {
  const QList<QSize> sizes = {{16, 16}, {32, 32}, {64, 64}, {128, 128}, {256, 256}};
  EXPECT_EQ(QApplication::windowIcon().availableSizes(), sizes);
  EXPECT_EQ(find<QAbstractButton>(window, "quorlenIconButton").icon().availableSizes(), sizes);
}

TEST_F(PaneWindow, ForwardsAClickOnTheIconByMouseAndByKeyboard) {
  int clicks = 0;
  view.quorlenIconButton.action = [&](Button&) { ++clicks; };
  auto& icon = find(window, "quorlenIconButton");
  click(icon);
  EXPECT_EQ(clicks, 1);
  icon.setFocus();
  press(window, Qt::Key_Return);
  press(window, Qt::Key_Enter);
  press(window, Qt::Key_Space);
  EXPECT_EQ(clicks, 4);
}

TEST_F(PaneWindow, AHeldReturnKeyClicksOnce) {
  int clicks = 0;
  view.urlButton.action = [&](Button&) { ++clicks; };
  auto& url = find(window, "urlButton");
  url.setFocus();
  press(window, Qt::Key_Return);
  for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
    QKeyEvent repeat(QEvent::KeyPress, key, {}, QStringLiteral("\r"), true);
    QApplication::sendEvent(&url, &repeat);
    EXPECT_TRUE(repeat.isAccepted()) << "nobody else is to act on it";
  }
  EXPECT_EQ(clicks, 1);
}

TEST_F(PaneWindow, TheLockOpensAndClosesAndSaysSoBesideIt) {
  auto& lock = find<LockButton>(window, "authView");
  auto& label = find<QLabel>(window, "authLabel");
  EXPECT_FALSE(lock.isOpen());
  EXPECT_EQ(label.text().toStdString(), view.authView.label());
  click(lock);
  EXPECT_EQ(view.authView.state(), AuthorizationView::State::Open);
  EXPECT_TRUE(lock.isOpen());
  EXPECT_EQ(label.text().toStdString(), view.authView.label());
  lock.setFocus();
  press(window, Qt::Key_Space);
  EXPECT_EQ(view.authView.state(), AuthorizationView::State::Closed);
  EXPECT_FALSE(lock.isOpen());
  press(window, Qt::Key_Return);
  EXPECT_TRUE(lock.isOpen());
}

TEST_F(PaneWindow, TheLockStaysClosedWhileTheQuestionIsOpen) {
  authorization.answersAtOnce = false;
  auto& lock = find<LockButton>(window, "authView");
  click(lock);
  EXPECT_FALSE(lock.isOpen());
  EXPECT_EQ(find<QLabel>(window, "authLabel").text().toStdString(), view.authView.label());
  authorization.answer(AuthorizationOutcome::Granted);
  EXPECT_TRUE(lock.isOpen());
}

TEST_F(PaneWindow, ShowsTheTabsOfTheCoreInTheirOrder) {
  auto& bar = find<QTabBar>(window, "tabBar");
  ASSERT_EQ(bar.count(), 3);
  EXPECT_EQ(bar.tabText(0), QStringLiteral("Configuration"));
  EXPECT_EQ(bar.tabText(1), QStringLiteral("Options"));
  EXPECT_EQ(bar.tabText(2), QStringLiteral("Plugins"));
}

TEST_F(PaneWindow, ATabThatIsAllowedIsShown) {
  auto& bar = find<QTabBar>(window, "tabBar");
  QTest::mouseClick(&bar, Qt::LeftButton, {}, bar.tabRect(1).center());
  EXPECT_EQ(view.tabView.indexOfSelectedItem(), 1);
  EXPECT_EQ(bar.currentIndex(), 1);
  EXPECT_EQ(window.tabs().shownTab(), 1);
}

TEST_F(PaneWindow, ATabThatIsRefusedLeavesTheBarAndThePageWhereTheyWere) {
  RefusingDelegate guard;
  view.tabView.setDelegate(&guard);
  auto& bar = find<QTabBar>(window, "tabBar");
  QTest::mouseClick(&bar, Qt::LeftButton, {}, bar.tabRect(2).center());
  EXPECT_EQ(guard.asked, (std::vector<int>{2}));
  EXPECT_EQ(bar.currentIndex(), 0);
  EXPECT_EQ(window.tabs().shownTab(), 0);
  bar.setFocus();
  press(window, Qt::Key_Right);
  EXPECT_EQ(guard.asked, (std::vector<int>{2, 1}));
  EXPECT_EQ(bar.currentIndex(), 0);
  view.tabView.setDelegate(nullptr);
}

TEST_F(PaneWindow, FollowsATabThatTheCoreSelects) {
  view.tabView.selectTabViewItemAtIndex(2);
  EXPECT_EQ(find<QTabBar>(window, "tabBar").currentIndex(), 2);
  EXPECT_EQ(window.tabs().shownTab(), 2);
}

TEST_F(PaneWindow, APagePutInTakesTheRoomOfTheTab) {
  auto* page = new QWidget;
  window.setTabPage(0, page);
  EXPECT_EQ(window.tabs().page(0), page);
  EXPECT_TRUE(eventually([&] { return page->isVisible() && page->width() > 600; }));
}

}  // namespace
}  // namespace corvane::test
