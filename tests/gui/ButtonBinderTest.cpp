#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>

#include "Events.h"
#include "binders/ButtonBinder.h"
#include "binders/LabelBinder.h"
#include "binders/PopUpButtonBinder.h"

namespace corvane::test {
namespace {

class Binders : public ::testing::Test {
 protected:
  void show() {
    window.resize(300, 120);
    showActive(window);
  }
  QWidget window;
};

TEST_F(Binders, APushButtonShowsTheTitleAsItIsAndForwardsTheClick) {
  Button button(ButtonKind::Push, "Save & Run");
  button.setAccessibleName("Save");
  int clicks = 0;
  button.action = [&](Button&) { ++clicks; };
  auto* widget = new QPushButton(&window);
  new qt::ButtonBinder(button, *widget);
  show();
  EXPECT_EQ(widget->text(), QStringLiteral("Save && Run"));  // no shortcut
  EXPECT_EQ(widget->accessibleName(), QStringLiteral("Save"));
  click(*widget);
  EXPECT_EQ(clicks, 1);
  button.setEnabled(false);
  click(*widget);
  EXPECT_EQ(clicks, 1);
  EXPECT_FALSE(widget->isEnabled());
  delete widget;
  EXPECT_FALSE(button.onChange);  // the control may live on
}

TEST_F(Binders, ACheckBoxShowsTheStateThatTheCoreHas) {
  Button box(ButtonKind::CheckBox, "Warn");
  auto* widget = new QCheckBox(&window);
  new qt::ButtonBinder(box, *widget);
  show();
  box.setState(ButtonState::Mixed);
  EXPECT_EQ(widget->checkState(), Qt::PartiallyChecked);
  QTest::mouseClick(widget, Qt::LeftButton, {}, QPoint(9, widget->height() / 2));
  EXPECT_EQ(box.state(), ButtonState::On);
  EXPECT_EQ(widget->checkState(), Qt::Checked);
  widget->setFocus();
  press(window, Qt::Key_Space);
  EXPECT_EQ(box.state(), ButtonState::Off);
  EXPECT_EQ(widget->checkState(), Qt::Unchecked);
  delete widget;
}

TEST_F(Binders, ACheckBoxWhoseChangeIsTakenBackShowsTheOldState) {
  Button box(ButtonKind::CheckBox, "Warn");
  box.onUserEdit = [&] { box.setState(ButtonState::Off); };
  auto* widget = new QCheckBox(&window);
  new qt::ButtonBinder(box, *widget);
  show();
  QTest::mouseClick(widget, Qt::LeftButton, {}, QPoint(9, widget->height() / 2));
  EXPECT_EQ(widget->checkState(), Qt::Unchecked);
  delete widget;
}

TEST_F(Binders, AHiddenControlIsNotShownAndNotReachable) {
  Button button(ButtonKind::Push, "Run");
  auto* widget = new QPushButton(&window);
  new qt::ButtonBinder(button, *widget);
  show();
  button.setHidden(true);
  EXPECT_TRUE(eventually([&] { return !widget->isVisible(); }));
  button.setHidden(false);
  EXPECT_TRUE(widget->isVisible());
  delete widget;
}

TEST_F(Binders, AControlWithTheKeyboardKeepsItWhenItIsHiddenAndShownInOneGo) {
  Button button(ButtonKind::Push, "Run");
  auto* widget = new QPushButton(&window);
  new qt::ButtonBinder(button, *widget);
  show();
  widget->setFocus();
  button.setHidden(true);
  button.setHidden(false);
  QCoreApplication::processEvents();
  EXPECT_TRUE(widget->isVisible());
  EXPECT_TRUE(widget->hasFocus());
  delete widget;
}

// The Space that was meant for the one must not press the other.
TEST_F(Binders, AControlThatIsTakenOutOfUseGetsTheKeyboardBackAndNoOtherControlHasItMeanwhile) {
  Button run(ButtonKind::Push, "Run");
  Button update(ButtonKind::Push, "Update");
  int updates = 0;
  update.action = [&](Button&) { ++updates; };
  auto* runWidget = new QPushButton(&window);
  auto* updateWidget = new QPushButton(&window);
  updateWidget->move(100, 0);
  new qt::ButtonBinder(run, *runWidget);
  new qt::ButtonBinder(update, *updateWidget);
  show();
  using Switch = void (*)(Button&, bool);
  const Switch enable = [](Button& button, bool inUse) { button.setEnabled(inUse); };
  const Switch hide = [](Button& button, bool inUse) { button.setHidden(!inUse); };
  for (const Switch put : {enable, hide}) {
    runWidget->setFocus();
    put(run, false);
    ASSERT_TRUE(eventually([&] { return !runWidget->isEnabled() || !runWidget->isVisible(); }));
    EXPECT_FALSE(updateWidget->hasFocus());
    press(window, Qt::Key_Space);
    put(run, true);
    EXPECT_TRUE(runWidget->hasFocus());
  }
  EXPECT_EQ(updates, 0);
  delete runWidget;
  delete updateWidget;
}

TEST_F(Binders, AControlThatComesIntoUseDoesNotTakeTheKeyboardFromWhereTheUserHasGone) {
  Button run(ButtonKind::Push, "Run");
  Button update(ButtonKind::Push, "Update");
  auto* runWidget = new QPushButton(&window);
  auto* updateWidget = new QPushButton(&window);
  new qt::ButtonBinder(run, *runWidget);
  new qt::ButtonBinder(update, *updateWidget);
  show();
  runWidget->setFocus();
  run.setEnabled(false);
  updateWidget->setFocus();
  run.setEnabled(true);
  EXPECT_TRUE(updateWidget->hasFocus());
  update.setEnabled(false);
  run.setEnabled(false);
  run.setEnabled(true);
  EXPECT_FALSE(runWidget->hasFocus()) << "the keyboard was taken from the other one";
  delete runWidget;
  delete updateWidget;
}

TEST_F(Binders, ALabelShowsMarkupAsPlainTextAndHasNoAccessibleName) {
  TextField label(TextField::Role::Label, "<b>bold</b> & more");
  auto* widget = new QLabel(&window);
  new qt::LabelBinder(label, *widget);
  show();
  EXPECT_EQ(widget->text(), QStringLiteral("<b>bold</b> & more"));
  EXPECT_EQ(widget->textFormat(), Qt::PlainText);
  EXPECT_TRUE(widget->accessibleName().isEmpty());
  delete widget;
}

TEST_F(Binders, APopUpMenuOffersTheItemsAndReportsTheChoice) {
  PopUpButton menu({"AM", "PM"});
  auto* widget = new QComboBox(&window);
  new qt::PopUpButtonBinder(menu, *widget);
  show();
  EXPECT_EQ(widget->count(), 2);
  EXPECT_EQ(widget->currentIndex(), 0);
  widget->setFocus();
  press(window, Qt::Key_Down);
  EXPECT_EQ(menu.indexOfSelectedItem(), 1);
  menu.selectItemAtIndex(0);
  EXPECT_EQ(widget->currentText(), QStringLiteral("AM"));
  menu.selectItemAtIndex(-1);
  EXPECT_EQ(widget->currentIndex(), -1);
  delete widget;
}

TEST_F(Binders, AControlThatIsPlacedHorizontallyKeepsTheHeightAndThePlaceOfItsWidget) {
  Button button(ButtonKind::Push, "Run");
  button.setFrame({20, 10, 100, 30});
  auto* widget = new QPushButton(&window);
  widget->setGeometry(0, 7, 50, 24);
  auto* binder = new qt::ButtonBinder(button, *widget);
  show();
  binder->placeHorizontally();
  EXPECT_EQ(widget->geometry(), QRect(20, 7, 100, 24));
  window.resize(90, 200);
  EXPECT_EQ(widget->geometry(), QRect(20, 7, 70, 24)) << "no wider than the window";
  delete widget;
}

}  // namespace
}  // namespace corvane::test
