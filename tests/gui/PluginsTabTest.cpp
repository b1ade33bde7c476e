#include <QAbstractItemView>
#include <QClipboard>
#include <QHeaderView>
#include <QScrollBar>
#include <QTabBar>

#include "PluginsTabFixture.h"

namespace corvane::test {
namespace {

/// Counts what the toolkit has to say about editors.
class Complaints {
 public:
  Complaints() {
    count_ = 0;
    before_ = qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString& text) {
      if (text.contains(QStringLiteral("editor"))) ++count_;
    });
  }
  Complaints(const Complaints&) = delete;
  Complaints& operator=(const Complaints&) = delete;
  ~Complaints() { qInstallMessageHandler(before_); }
  [[nodiscard]] static int aboutEditors() { return count_; }

 private:
  static inline int count_ = 0;
  QtMessageHandler before_ = nullptr;
};

TEST_F(PluginsTab, OpeningAPluginLaysItsRowsOutOnce) {
  openTab();
  int layouts = 0;
  QObject::connect(tree().verticalScrollBar(), &QScrollBar::rangeChanged, [&] { ++layouts; });
  clickTriangle();
  QApplication::processEvents();
  EXPECT_GT(tree().verticalScrollBar()->maximum(), 0);
  EXPECT_EQ(layouts, 1);
}

TEST_F(PluginsTab, ShowsThePluginWithItsTickAndOpensAllItsOptionsWithOneClick) {
  openTab();
  EXPECT_EQ(tree().model()->rowCount(), 1);
  EXPECT_EQ(shown(plugin()), QStringLiteral("All Types"));
  EXPECT_TRUE(isTicked(plugin().siblingAtColumn(0)));
  clickTriangle();
  EXPECT_EQ(tree().model()->rowCount(plugin().siblingAtColumn(0)), 14);
  EXPECT_EQ(shown(value(QStringLiteral("Set"), 1)), QStringLiteral("sshd"));
  clickTriangle();
  EXPECT_FALSE(tree().isExpanded(plugin().siblingAtColumn(0)));
}

TEST_F(PluginsTab, TheTreeFillsTheTabAndItsSecondColumnTheRestOfTheTree) {
  openTab();
  for (const int height : {518, 800}) {
    window().resize(window().width(), height);
    QApplication::processEvents();
    const QHeaderView* header = tree().header();
    EXPECT_LE(header->sectionSize(0), 60);
    EXPECT_EQ(header->sectionSize(0) + header->sectionSize(1), tree().viewport()->width());
    EXPECT_GT(tree().width(), tree().parentWidget()->width() - 60);
    EXPECT_GT(tree().height(), tree().parentWidget()->height() - 80);
  }
}

TEST_F(PluginsTab, TheEnabledTickIsStoredByMouseAndByKeyboard) {
  openTab();
  clickCell(plugin().siblingAtColumn(0), tree().visualRect(plugin().siblingAtColumn(0)).width() / 2);
  EXPECT_EQ(stored("Plugin_Enabled"), flag(false));
  EXPECT_FALSE(isTicked(plugin().siblingAtColumn(0)));
  EXPECT_EQ(stored("UnknownToThePane"), text("kept"));
  goTo(plugin());
  press(window(), Qt::Key_Space);
  EXPECT_EQ(stored("Plugin_Enabled"), flag(true));
  EXPECT_TRUE(isTicked(plugin().siblingAtColumn(0)));
}

TEST_F(PluginsTab, APositiveTickIsStoredByMouseAndByKeyboard) {
  openTab();
  clickCell(option(QStringLiteral("Tick")));
  EXPECT_EQ(stored("Tick"), flag(true));
  EXPECT_TRUE(isTicked(option(QStringLiteral("Tick"))));
  goTo(option(QStringLiteral("Tick")));
  press(window(), Qt::Key_Space);
  EXPECT_EQ(stored("Tick"), flag(false));
}

TEST_F(PluginsTab, ANegativeTickStaysAsItIsStored) {
  openTab();
  clickCell(option(QStringLiteral("Reverse")));
  EXPECT_EQ(stored("Reverse"), flag(true));
  EXPECT_TRUE(isTicked(option(QStringLiteral("Reverse"))));
}

TEST_F(PluginsTab, ATickOfASetIsStoredWithTheWholeSet) {
  openTab();
  clickCell(value(QStringLiteral("Set"), 1));
  EXPECT_EQ(stored("Set"), Dictionary::make({{"cupsd", flag(true)}, {"sshd", flag(true)}}));
  EXPECT_TRUE(isTicked(value(QStringLiteral("Set"), 1)));
}

class PluginsTabPresses : public PluginsTab {
 protected:
  /// Holds the mouse button down over the check box of "Tick".
  void pressTick() {
    openTab();
    tick = option(QStringLiteral("Tick"));
    tree().scrollTo(tick);
    const QRect place = tree().visualRect(tick);
    box = QPoint(place.left() + kLeft, place.center().y());
    QTest::mousePress(tree().viewport(), Qt::LeftButton, {}, box);
    EXPECT_TRUE(tree().isPressed(tick));
  }
  QModelIndex tick;
  QPoint box;
};

TEST_F(PluginsTabPresses, APressDuringWhichTheKeyboardGoesElsewhereDoesNothing) {
  pressTick();
  widget("authView").setFocus();
  EXPECT_FALSE(tree().isPressed(tick));
  QTest::mouseRelease(tree().viewport(), Qt::LeftButton, {}, box);
  EXPECT_FALSE(tree().isPressed(tick));
  EXPECT_EQ(stored("Tick"), flag(false));
}

TEST_F(PluginsTabPresses, APressThatIsReleasedElsewhereDoesNothing) {
  pressTick();
  QWidget& rows = *tree().viewport();
  const QPoint elsewhere(box.x() + 300, box.y());
  QMouseEvent drag(QEvent::MouseMove, elsewhere, rows.mapToGlobal(elsewhere), Qt::NoButton, Qt::LeftButton,
                   {});
  QApplication::sendEvent(&rows, &drag);
  QTest::mouseRelease(&rows, Qt::LeftButton, {}, elsewhere);
  EXPECT_FALSE(tree().isPressed(tick));
  EXPECT_EQ(stored("Tick"), flag(false));
}

TEST_F(PluginsTab, ANumberIsTypedWithinItsRangeAndStored) {
  openTab();
  clickCell(value(QStringLiteral("Number")));
  auto* box = editor<QComboBox>();
  ASSERT_NE(box, nullptr);
  EXPECT_EQ(box->count(), 3);
  EXPECT_EQ(box->currentText(), QStringLiteral("5"));
  type(*box->lineEdit(), "x");
  EXPECT_EQ(box->currentText(), QStringLiteral("5"));
  type(*box->lineEdit(), "10");
  type(*box->lineEdit(), "0");
  EXPECT_EQ(box->currentText(), QStringLiteral("10"));
  press(window(), Qt::Key_Return);
  EXPECT_TRUE(becomes("Number", number(10)));
  EXPECT_TRUE(eventually(
      [this] { return !isEditing() && shown(value(QStringLiteral("Number"))) == QStringLiteral("10"); }));
}

TEST_F(PluginsTab, ANumberIsChosenFromItsList) {
  openTab();
  const QModelIndex row = value(QStringLiteral("Number"));
  tree().scrollTo(row);
  clickCell(row, 110 - 12);  // the arrow of the box
  auto* box = editor<QComboBox>();
  ASSERT_NE(box, nullptr);
  ASSERT_TRUE(eventually([&] { return box->view()->isVisible(); }));
  QTest::keyClick(box->view(), Qt::Key_Home);
  QTest::keyClick(box->view(), Qt::Key_Return);
  EXPECT_TRUE(becomes("Number", number(0)));
  EXPECT_TRUE(eventually([this] { return !isEditing(); }));
}

TEST_F(PluginsTab, AMenuOpensAndStoresTheIndexOfTheChoice) {
  openTab();
  clickCell(value(QStringLiteral("Menu")));
  auto* menu = editor<QComboBox>();
  ASSERT_NE(menu, nullptr);
  ASSERT_TRUE(eventually([&] { return menu->view()->isVisible(); }));
  const QRect third = menu->view()->visualRect(menu->model()->index(2, 0));
  moveMouse(*menu->view()->viewport(), third.center());
  QTest::keyClick(menu->view(), Qt::Key_End);
  QTest::keyClick(menu->view(), Qt::Key_Return);
  EXPECT_TRUE(becomes("Menu", number(2)));
  EXPECT_TRUE(eventually(
      [this] { return !isEditing() && shown(value(QStringLiteral("Menu"))) == QStringLiteral("Third"); }));
}

TEST_F(PluginsTab, AMenuThatIsClosedWithoutAChoiceChangesNothing) {
  openTab();
  goTo(value(QStringLiteral("Menu")));
  press(window(), Qt::Key_Space);
  auto* menu = editor<QComboBox>();
  ASSERT_NE(menu, nullptr);
  ASSERT_TRUE(eventually([&] { return menu->view()->isVisible(); }));
  QTest::keyClick(menu->view(), Qt::Key_Down);
  QTest::keyClick(menu->view(), Qt::Key_Escape);
  EXPECT_TRUE(eventually([this] { return !isEditing(); }));
  EXPECT_EQ(stored("Menu"), number(0));
}

TEST_F(PluginsTab, ATextIsLimitedAsItIsTypedAndStoredWithReturn) {
  openTab();
  clickCell(value(QStringLiteral("Text")));
  auto* field = editor<QLineEdit>();
  ASSERT_NE(field, nullptr);
  EXPECT_EQ(field->selectedText(), QStringLiteral("abc"));
  type(*field, "abcdefgh");
  EXPECT_EQ(field->text(), QStringLiteral("abcde"));
  EXPECT_EQ(stored("Text"), text("abc"));
  press(window(), Qt::Key_Return);
  EXPECT_TRUE(becomes("Text", text("abcde")));
  EXPECT_TRUE(eventually(
      [this] { return !isEditing() && shown(value(QStringLiteral("Text"))) == QStringLiteral("abcde"); }));
  EXPECT_EQ(stored("UnknownToThePane"), text("kept"));
}

TEST_F(PluginsTab, EscapeDropsWhatWasTypedAndTheRowHasTheKeyboardAgain) {
  openTab();
  goTo(value(QStringLiteral("Text")));
  press(window(), Qt::Key_F2);
  ASSERT_NE(editor<QLineEdit>(), nullptr);
  type(*editor<QLineEdit>(), "x");
  press(window(), Qt::Key_Escape);
  EXPECT_TRUE(eventually([this] { return !isEditing(); }));
  EXPECT_EQ(stored("Text"), text("abc"));
  EXPECT_TRUE(tree().hasFocus());
  EXPECT_EQ(tree().currentIndex(), value(QStringLiteral("Text")));
}

TEST_F(PluginsTab, TabStoresTheTextAndGoesOnToTheNextFieldAndBack) {
  openTab();
  clickCell(value(QStringLiteral("Text")));
  type(*editor<QLineEdit>(), "new");
  press(window(), Qt::Key_Tab);
  EXPECT_EQ(stored("Text"), text("new"));
  ASSERT_NE(editor<QLineEdit>(), nullptr);
  EXPECT_EQ(editor<QLineEdit>()->accessibleName(), QStringLiteral("User"));
  type(*editor<QLineEdit>(), "root");
  press(window(), Qt::Key_Tab);
  EXPECT_EQ(stored("User"), text("root"));
  EXPECT_EQ(editor<QLineEdit>()->accessibleName(), QStringLiteral("Password"));
  press(window(), Qt::Key_Backtab, Qt::ShiftModifier);
  EXPECT_EQ(editor<QLineEdit>()->accessibleName(), QStringLiteral("User"));
}

TEST_F(PluginsTab, TabLeavesTheTreeAfterItsLastField) {
  openTab();
  clickCell(value(QStringLiteral("Password")));
  type(*editor<QLineEdit>(), "topsecret");
  press(window(), Qt::Key_Tab);
  EXPECT_EQ(stored("Password"), text("topsecret"));
  EXPECT_FALSE(isEditing());
  ASSERT_NE(window().focusWidget(), nullptr);
  EXPECT_NE(window().focusWidget(), &tree());
}

TEST_F(PluginsTab, LeavingAFieldForAnotherControlStoresTheText) {
  openTab();
  clickCell(value(QStringLiteral("User")));
  type(*editor<QLineEdit>(), "operator");
  clickTab(0);
  EXPECT_TRUE(becomes("User", text("operator")));
}

TEST_F(PluginsTab, APasswordIsNeverShown) {
  openTab();
  EXPECT_EQ(shown(value(QStringLiteral("Password"))), QString(6, QChar(0x2022)));
  EXPECT_FALSE(value(QStringLiteral("Password"))
                   .data(Qt::AccessibleTextRole)
                   .toString()
                   .contains(QStringLiteral("secret")));
  clickCell(value(QStringLiteral("Password")));
  auto* field = editor<QLineEdit>();
  ASSERT_NE(field, nullptr);
  EXPECT_EQ(field->displayText().size(), 6);
  EXPECT_FALSE(field->displayText().contains(QStringLiteral("secret")));
  type(*field, "new");
  press(window(), Qt::Key_Return);
  EXPECT_TRUE(becomes("Password", text("new")));
}

TEST_F(PluginsTab, ALinkOpensItsAddress) {
  openTab();
  clickCell(value(QStringLiteral("Title")));
  EXPECT_EQ(openedUrls.list, (std::vector<std::string>{"https://www.example.com/more"}));
}

TEST_F(PluginsTab, TheMouseShowsAHandOverALinkAndABarOverWhatIsTypedIn) {
  openTab();
  const auto showsOver = [this](const QModelIndex& cell, Qt::CursorShape shape) {
    tree().scrollTo(cell);
    const QRect place = tree().visualRect(cell);
    moveMouse(*tree().viewport(), QPoint(place.left() + kLeft, place.center().y()));
    return eventually([&] { return tree().viewport()->cursor().shape() == shape; });
  };
  EXPECT_TRUE(showsOver(value(QStringLiteral("Title")), Qt::PointingHandCursor));
  EXPECT_TRUE(showsOver(option(QStringLiteral("Tick")), Qt::ArrowCursor));
  EXPECT_TRUE(showsOver(value(QStringLiteral("Title")), Qt::PointingHandCursor));
  for (const char* typed : {"Text", "Password", "Number"}) {
    EXPECT_TRUE(showsOver(value(QString::fromLatin1(typed)), Qt::IBeamCursor)) << typed;
    EXPECT_TRUE(showsOver(option(QString::fromLatin1(typed)), Qt::ArrowCursor)) << typed;
  }
  EXPECT_TRUE(showsOver(value(QStringLiteral("Menu")), Qt::ArrowCursor));
  EXPECT_TRUE(showsOver(value(QStringLiteral("Title")), Qt::PointingHandCursor));
  click(widget("authView"));
  EXPECT_TRUE(showsOver(value(QStringLiteral("Text")), Qt::ArrowCursor)) << "a locked field takes no text";
  EXPECT_TRUE(showsOver(option(QStringLiteral("Title")), Qt::ArrowCursor));
  EXPECT_TRUE(showsOver(value(QStringLiteral("Title")), Qt::ArrowCursor)) << "a locked link opens nothing";
}

TEST_F(PluginsTab, ALongPathIsShortenedInItsMiddleAndSaidAndCopiedWhole) {
  const auto path = [](char middle, char end) {
    return "/Users/" + std::string(100, 'm') + middle + std::string(100, 'm') + "/the end " + end;
  };
  settings.set("File", text(path('1', '1')));
  settings.set("Files", Array::make({text("Add a new entry"), text(path('1', '1'))}));
  openTab();
  const auto isWhole = [&](const QModelIndex& cell) {
    EXPECT_EQ(cell.data(Qt::ToolTipRole).toString().toStdString(), path('1', '1'));
    goTo(cell);
    press(window(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text().toStdString(), path('1', '1'));
  };
  isWhole(value(QStringLiteral("File")));
  isWhole(value(QStringLiteral("Files"), 1));
  EXPECT_FALSE(value(QStringLiteral("Files")).data(Qt::ToolTipRole).isValid())
      << "the row that adds is no path";
  EXPECT_FALSE(value(QStringLiteral("Password")).data(Qt::ToolTipRole).isValid());
  const auto pictureOf = [&](const QModelIndex& cell) {
    tree().scrollTo(cell);
    return tree().viewport()->grab(tree().visualRect(cell)).toImage();
  };
  for (const char* option : {"File", "Files"}) {
    SCOPED_TRACE(option);
    const int row = std::string(option) == "Files" ? 1 : 0;
    std::vector<QImage> pictures;
    for (const auto& [middle, end] : {std::pair('1', '1'), std::pair('2', '1'), std::pair('1', '2')}) {
      settings.set("File", text(path(middle, end)));
      settings.set("Files", Array::make({text("Add a new entry"), text(path(middle, end))}));
      writePlist(settingsFile(), settings);
      ASSERT_TRUE(eventually([&, wanted = QString::fromStdString(path(middle, end))] {
        return value(QString::fromLatin1(option), row).data().toString() == wanted;
      }));
      pictures.push_back(pictureOf(value(QString::fromLatin1(option), row)));
    }
    EXPECT_EQ(pictures[0], pictures[1]) << "the middle is shown";
    EXPECT_NE(pictures[0], pictures[2]) << "the end is not shown";
  }
}

TEST_F(PluginsTab, AnEmptyListSaysThatItIsEmpty) {
  open();
  clickTab(2);
  answerSheet("Continue");
  ASSERT_TRUE(eventually([this] { return tree().isVisible(); }));
  const auto picture = [this] { return tree().viewport()->grab().toImage(); };
  EXPECT_EQ(tree().accessibleDescription(), QStringLiteral("No plugins are installed."));
  const QImage empty = picture();
  tree().setPlaceholder(QString());
  EXPECT_NE(picture(), empty);
  tree().setPlaceholder(QStringLiteral("No plugins are installed."));
  EXPECT_EQ(picture(), empty);
  writePlist(paths.plugins + "/check_all.plist",
             Dictionary::make({{"PluginName", text("All Types")}, {"PluginOptions", options}}));
  writePlist(settingsFile(), settings);
  EXPECT_TRUE(eventually([this] { return tree().model()->rowCount() == 1; }));
  EXPECT_EQ(tree().accessibleDescription(), QString());
  std::filesystem::remove(paths.plugins + "/check_all.plist");
  EXPECT_TRUE(eventually([this] { return tree().model()->rowCount() == 0; }));
  EXPECT_EQ(tree().accessibleDescription(), QStringLiteral("No plugins are installed."));
  EXPECT_TRUE(eventually([&] { return picture() == empty; }));
}

TEST_F(PluginsTab, LettersGoToTheNextRowThatBeginsWithThem) {
  openTab();
  expand();
  tree().setFocus();
  const auto words = [this] { return shown(tree().currentIndex().siblingAtColumn(1)); };
  press(window(), Qt::Key_Home);
  for (const Qt::Key key : {Qt::Key_F, Qt::Key_O}) press(window(), key);
  EXPECT_EQ(words(), QStringLiteral("Folder"));
  press(window(), Qt::Key_Home);
  press(window(), Qt::Key_F);
  press(window(), Qt::Key_Shift);  // on the way to a capital letter
  press(window(), Qt::Key_O, Qt::ShiftModifier);
  EXPECT_EQ(words(), QStringLiteral("Folder"));
  press(window(), Qt::Key_Home);  // begins anew
  press(window(), Qt::Key_T);
  EXPECT_EQ(words(), QStringLiteral("Title"));
  press(window(), Qt::Key_T);
  EXPECT_EQ(words(), QStringLiteral("Tick"));
  press(window(), Qt::Key_Down);
  press(window(), Qt::Key_Z);
  EXPECT_EQ(words(), QStringLiteral("Reverse")) << "nothing begins so";
  press(window(), Qt::Key_End);
  press(window(), Qt::Key_A);
  EXPECT_EQ(words(), QStringLiteral("All Types")) << "from the last row on to the first one";
}

TEST_F(PluginsTab, LockedRowsAreReadAndOpenedButNotChanged) {
  openTab(false);
  EXPECT_TRUE(tree().isEnabled());
  clickCell(plugin().siblingAtColumn(0), tree().visualRect(plugin().siblingAtColumn(0)).width() / 2);
  clickTriangle();
  EXPECT_EQ(shown(value(QStringLiteral("Text"))), QStringLiteral("abc"));
  for (const char* title : {"Text", "User", "Password", "Number", "Menu"}) {
    clickCell(value(QString::fromLatin1(title)));
    goTo(value(QString::fromLatin1(title)));
    press(window(), Qt::Key_Return);
    EXPECT_FALSE(isEditing()) << title;
  }
  for (const char* title : {"Tick", "Reverse"}) clickCell(option(QString::fromLatin1(title)));
  clickCell(value(QStringLiteral("Set"), 1));
  clickCell(value(QStringLiteral("Title")));
  clickCell(value(QStringLiteral("File")));
  clickCell(value(QStringLiteral("Files"), 1), -12);
  clickCell(value(QStringLiteral("Test")));
  EXPECT_EQ(sheet(), nullptr);
  EXPECT_TRUE(openedUrls.list.empty());
  EXPECT_EQ(readPlist(settingsFile()), settings);
}

TEST_F(PluginsTab, ALockThatClosesByItselfDropsWhatIsBeingTyped) {
  openTab();
  clickCell(value(QStringLiteral("Text")));
  type(*editor<QLineEdit>(), "x");
  pane->assembly().pane().setUnlocked(false);
  EXPECT_FALSE(isEditing());
  EXPECT_EQ(stored("Text"), text("abc"));
  EXPECT_EQ(shown(value(QStringLiteral("Text"))), QStringLiteral("abc"));
}

TEST_F(PluginsTab, AClickOnTheLockLeavesTheFieldThatIsTypedInAndThenClosesTheLock) {
  openTab();
  clickCell(value(QStringLiteral("Text")));
  type(*editor<QLineEdit>(), "x");
  click(widget("authView"));
  ASSERT_FALSE(pane->assembly().pane().unlocked());
  EXPECT_FALSE(isEditing());
  EXPECT_EQ(stored("Text"), text("x"));
}

TEST_F(PluginsTab, ARefreshWaitsForWhatIsBeingTyped) {
  openTab();
  clickCell(value(QStringLiteral("Text")));
  type(*editor<QLineEdit>(), "xy");
  const OutlineItem before = outline().itemAtRow(0);
  pane->assembly().plugins().refresh();
  EXPECT_EQ(outline().itemAtRow(0), before);
  ASSERT_NE(editor<QLineEdit>(), nullptr);
  EXPECT_EQ(editor<QLineEdit>()->text(), QStringLiteral("xy"));
  EXPECT_EQ(stored("Text"), text("abc"));
  press(window(), Qt::Key_Return);
  EXPECT_TRUE(becomes("Text", text("xy")));
  EXPECT_TRUE(eventually([&] { return outline().itemAtRow(0) != before; }));
}

TEST_F(PluginsTab, ARefreshWaitsForAnOpenMenu) {
  openTab();
  clickCell(value(QStringLiteral("Menu")));
  auto* menu = editor<QComboBox>();
  ASSERT_NE(menu, nullptr);
  ASSERT_TRUE(eventually([&] { return menu->view()->isVisible(); }));
  pane->assembly().plugins().refresh();
  QTest::keyClick(menu->view(), Qt::Key_Down);
  QTest::keyClick(menu->view(), Qt::Key_Return);
  EXPECT_TRUE(becomes("Menu", number(1)));
}

TEST_F(PluginsTab, AClickThatEndsTypingMeetsTheRowThatItWasMeantFor) {
  openTab();
  const Complaints complaints;
  clickCell(value(QStringLiteral("Set"), 0));  // at the same height in every run
  clickCell(value(QStringLiteral("Number")));
  type(*editor<QComboBox>()->lineEdit(), "10");
  pane->assembly().plugins().refresh();
  clickCell(value(QStringLiteral("Set"), 1));
  EXPECT_TRUE(becomes("Number", number(10)));
  EXPECT_EQ(stored("Set"), Dictionary::make({{"cupsd", flag(false)}, {"sshd", flag(true)}}));
  EXPECT_EQ(complaints.aboutEditors(), 0);
}

TEST_F(PluginsTab, ARefreshKeepsThePlaceInALongList) {
  for (int i = 0; i < 60; ++i) {
    const std::string name = "check_" + std::to_string(100 + i);
    writePlist(paths.plugins + "/" + name + ".plist",
               Dictionary::make({{"PluginName", text("Plugin " + std::to_string(100 + i))},
                                 {"PluginOptions", Array::make({options.at(0)})}}));
    writePlist(paths.pluginSupport + "/" + name + "_settings.plist",
               Dictionary::make({{"PrefPaneVisibility", flag(true)}}));
  }
  openTab();
  tree().verticalScrollBar()->setValue(300);
  goTo(tree().model()->index(20, 1));
  tree().verticalScrollBar()->setValue(300);
  pane->assembly().plugins().refresh();
  EXPECT_EQ(tree().verticalScrollBar()->value(), 300);
  EXPECT_EQ(tree().currentIndex().row(), 20);
}

TEST_F(PluginsTab, TheKeyboardAloneReachesTheTreeOpensItAndLeavesIt) {
  openTab();
  for (int i = 0; i < 40 && !tree().hasFocus(); ++i) press(window(), Qt::Key_Tab);
  ASSERT_TRUE(tree().hasFocus());
  press(window(), Qt::Key_Home);
  press(window(), Qt::Key_Right);
  EXPECT_TRUE(tree().isExpanded(plugin().siblingAtColumn(0)));
  press(window(), Qt::Key_Down);
  press(window(), Qt::Key_Down);
  press(window(), Qt::Key_Down);
  EXPECT_EQ(shown(tree().currentIndex().siblingAtColumn(1)), QStringLiteral("Tick"));
  press(window(), Qt::Key_Space);
  EXPECT_EQ(stored("Tick"), flag(true));
  press(window(), Qt::Key_Left);
  EXPECT_EQ(shown(tree().currentIndex().siblingAtColumn(1)), QStringLiteral("All Types"));
  press(window(), Qt::Key_Left);
  EXPECT_FALSE(tree().isExpanded(plugin().siblingAtColumn(0)));
  press(window(), Qt::Key_Tab);
  EXPECT_FALSE(tree().hasFocus());
}

TEST_F(PluginsTab, TheArrowKeysLeaveNoTraceOfTheMarkOnTheRowsTheyCameFrom) {
  openTab();
  expand();
  goTo(plugin().siblingAtColumn(0));
  press(window(), Qt::Key_Home);
  QApplication::processEvents();
  // From the corner of the window, which is a pixel's also where a point is one and a half. The offscreen
  // platform counts the window's size in points as pixels, so that less of it is seen.
  const auto onScreen = [this] {
    return window().screen()->grabWindow(window().winId()).toImage().convertToFormat(QImage::Format_RGB32);
  };
  const QRect seen(QPoint(), onScreen().size());
  const QPoint row =
      tree().viewport()->mapTo(&window(), tree().visualRect(value(QStringLiteral("Title"))).bottomRight());
  ASSERT_LT(row.y() * window().devicePixelRatio(), seen.height());
  const auto drawnAnew = [this, seen] {
    return window().grab().toImage().convertToFormat(QImage::Format_RGB32).copy(seen);
  };
  ASSERT_EQ(onScreen(), drawnAnew());
  for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Down, Qt::Key_Up}) {
    press(window(), key);
    QApplication::processEvents();
    EXPECT_EQ(onScreen(), drawnAnew());
  }
}

}  // namespace
}  // namespace corvane::test
