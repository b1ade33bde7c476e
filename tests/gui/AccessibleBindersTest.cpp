// Acts of assistive technology on single controls: they change the state of a widget without a click or a
// key, and the control must have it all the same.
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QTabBar>

#include "Assistive.h"
#include "GuiFixture.h"
#include "WindowFixture.h"
#include "binders/ButtonBinder.h"
#include "binders/LabelBinder.h"
#include "binders/PopUpButtonBinder.h"
#include "binders/SheetBinder.h"
#include "binders/TableViewBinder.h"
#include "binders/TextFieldBinder.h"
#include "formatters/MyNumberFormatter.h"
#include "widgets/EntryField.h"
#include "widgets/LabelButton.h"
#include "widgets/QuietTableView.h"
#include "widgets/TabPane.h"

namespace corvane::test {
namespace {

class AccessibleBinders : public ::testing::Test {
 protected:
  void show() {
    window.resize(300, 200);
    showActive(window);
  }
  QWidget window;
};

TEST_F(AccessibleBinders, ACheckBoxThatIsSwitchedHasTheStateThatItShows) {
  Button box(ButtonKind::CheckBox, "Warn");
  std::vector<ButtonState> stored;
  box.onUserEdit = [&] { stored.push_back(box.state()); };
  auto* widget = new QCheckBox(&window);
  new qt::ButtonBinder(box, *widget);
  show();
  QAccessibleInterface& thing =
      thingCalled(accessible(window), QAccessible::CheckBox, QStringLiteral("Warn"));
  toggleThing(thing);
  EXPECT_TRUE(thing.state().checked);
  QTest::mouseClick(widget, Qt::LeftButton, {}, QPoint(9, widget->height() / 2));
  EXPECT_FALSE(thing.state().checked);
  box.setState(ButtonState::Mixed);
  EXPECT_TRUE(thing.state().checkStateMixed);
  toggleThing(thing);
  EXPECT_EQ(stored, (std::vector<ButtonState>{ButtonState::On, ButtonState::Off, ButtonState::On}));
  EXPECT_TRUE(thing.state().checked);
  EXPECT_EQ(widget->checkState(), Qt::Checked);
  delete widget;
}

TEST_F(AccessibleBinders, ACheckBoxWhoseChangeIsTakenBackShowsTheOldState) {
  Button box(ButtonKind::CheckBox, "Warn");
  box.onUserEdit = [&] { box.setState(ButtonState::Off); };
  auto* widget = new QCheckBox(&window);
  new qt::ButtonBinder(box, *widget);
  show();
  toggleThing(accessible(*widget));
  EXPECT_EQ(widget->checkState(), Qt::Unchecked);
  delete widget;
}

TEST_F(AccessibleBinders, AButtonThatIsPressedActsOnce) {
  Button button(ButtonKind::Push, "Run");
  int acts = 0;
  button.action = [&](Button&) { ++acts; };
  auto* widget = new QPushButton(&window);
  new qt::ButtonBinder(button, *widget);
  show();
  pressThing(thingCalled(accessible(window), QAccessible::Button, QStringLiteral("Run")));
  EXPECT_EQ(acts, 1);
  delete widget;
}

TEST_F(AccessibleBinders, AHiddenControlTakesNoAct) {
  Button box(ButtonKind::CheckBox, "Warn");
  auto* widget = new QCheckBox(&window);
  new qt::ButtonBinder(box, *widget);
  show();
  window.hide();
  accessible(*widget).actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
  EXPECT_EQ(box.state(), ButtonState::Off);
  EXPECT_EQ(widget->checkState(), Qt::Unchecked);
  delete widget;
}

TEST_F(AccessibleBinders, AnItemThatIsMarkedInAClosedMenuIsChosen) {
  PopUpButton menu({"AM", "PM"});
  std::vector<int> stored;
  menu.onUserEdit = [&] { stored.push_back(menu.indexOfSelectedItem()); };
  auto* widget = new QComboBox(&window);
  new qt::PopUpButtonBinder(menu, *widget);
  show();
  QAccessibleInterface& list = accessible(*widget->view());
  toggleThing(*list.child(1));
  EXPECT_EQ(widget->currentText(), QStringLiteral("PM"));
  menu.selectItemAtIndex(0);
  EXPECT_TRUE(list.child(0)->state().selected);
  EXPECT_FALSE(list.child(1)->state().selected);
  toggleThing(*list.child(1));
  widget->setCurrentIndex(0);
  EXPECT_EQ(stored, (std::vector<int>{1, 1, 0}));
  menu.setEnabled(false);
  toggleThing(*list.child(1));
  EXPECT_EQ(widget->currentText(), QStringLiteral("AM"));
  EXPECT_FALSE(list.child(1)->state().selected);
  EXPECT_EQ(menu.indexOfSelectedItem(), 0);
  delete widget;
}

TEST_F(AccessibleBinders, AnItemThatTheMousePassesInAnOpenMenuIsNotChosen) {
  PopUpButton menu({"AM", "PM"});
  auto* widget = new QComboBox(&window);
  new qt::PopUpButtonBinder(menu, *widget);
  show();
  widget->showPopup();
  ASSERT_TRUE(eventually([&] { return widget->view()->isVisible(); }));
  widget->view()->setCurrentIndex(widget->model()->index(1, 0));
  widget->hidePopup();
  EXPECT_EQ(menu.indexOfSelectedItem(), 0);
  EXPECT_EQ(widget->currentIndex(), 0);
  delete widget;
}

class AccessibleField : public AccessibleBinders {
 protected:
  void SetUp() override {
    field.setFormatter(std::make_shared<MyNumberFormatter>(1, 60, 5));
    field.setIntValue(20);
    field.onUserEdit = [this] { stored.push_back(field.intValue()); };
    new qt::TextFieldBinder(field, *widget);
    other->move(0, 100);
    show();
    other->setFocus();
  }
  void setText(const char* text) {
    QAccessibleEditableTextInterface* editable = accessible(*widget).editableTextInterface();
    ASSERT_NE(editable, nullptr);
    editable->replaceText(0, static_cast<int>(widget->text().size()), QString::fromUtf8(text));
  }

  TextField field{TextField::Role::Entry};
  std::vector<int> stored;
  qt::EntryField* widget = new qt::EntryField(&window);
  QPushButton* other = new QPushButton(&window);
};

TEST_F(AccessibleField, ATextThatIsSetIsStoredAtOnceAndARefusedOneNeitherStoredNorShown) {
  setText("45");
  EXPECT_EQ(stored, (std::vector<int>{45}));
  EXPECT_EQ(widget->text(), QStringLiteral("45"));
  for (const char* refused : {"61", "soon", "4 5"}) {
    setText(refused);
    EXPECT_EQ(widget->text(), QStringLiteral("45")) << refused;
  }
  accessible(*widget).editableTextInterface()->deleteText(1, 2);
  EXPECT_EQ(stored, (std::vector<int>{45, 4}));
  EXPECT_EQ(field.stringValue(), "4");
}

TEST_F(AccessibleField, ATextThatIsSetWhereTheKeyboardIsIsStoredAsATypedOneIs) {
  widget->setFocus();
  setText("45");
  EXPECT_TRUE(stored.empty());
  press(window, Qt::Key_Return);
  EXPECT_EQ(stored, (std::vector<int>{45}));
}

TEST_F(AccessibleField, AHiddenOrDisabledFieldTakesNoText) {
  field.setEnabled(false);
  setText("45");
  EXPECT_EQ(widget->text(), QStringLiteral("20"));
  field.setEnabled(true);
  window.hide();
  setText("45");
  EXPECT_EQ(widget->text(), QStringLiteral("20"));
  EXPECT_TRUE(stored.empty());
}

TEST_F(AccessibleBinders, NothingIsToldOfWhatHasNotChanged) {
  Button box(ButtonKind::CheckBox, "Warn");
  box.setAccessibleName("Warn at night");
  TextField label(TextField::Role::Label, "Absence:");
  auto* widget = new QCheckBox(&window);
  auto* text = new QLabel(&window);
  new qt::ButtonBinder(box, *widget);
  new qt::LabelBinder(label, *text);
  show();
  const Listener listener;
  box.onChange();
  label.onChange();
  EXPECT_TRUE(listener.heard.empty());
  box.setState(ButtonState::On);
  EXPECT_EQ(listener.namesOf(QAccessible::NameChanged), QStringList());
  EXPECT_FALSE(listener.namesOf(QAccessible::StateChanged).isEmpty());
  delete widget;
  delete text;
}

TEST_F(AccessibleBinders, AToolTipIsReadAsItStandsAndToldWhenItChanges) {
  Button path(ButtonKind::Label, "/Volumes/a");
  path.setToolTip("/Volumes/a");
  auto* widget = new qt::LabelButton(&window);
  new qt::ButtonBinder(path, *widget);
  show();
  const Listener listener;
  path.setToolTip("/Volumes/<b>b</b>");
  EXPECT_EQ(accessible(*widget).text(QAccessible::Description), QStringLiteral("/Volumes/<b>b</b>"));
  EXPECT_EQ(listener.toldNames(QAccessible::DescriptionChanged).size(), 1);
  path.setToolTip("");
  EXPECT_EQ(accessible(*widget).text(QAccessible::Description), QString());
  EXPECT_EQ(listener.toldNames(QAccessible::DescriptionChanged).size(), 2);
  delete widget;
}

class Volumes final : public TableViewDataSource {
 public:
  int numberOfRowsInTableView(const TableView& /*table*/) override { return 3; }
  ObjectValue tableViewObjectValueForTableColumnRow(const TableView& /*table*/, const TableColumn& /*column*/,
                                                    int row) override {
    return PropertyList::string("Volume " + std::to_string(row));
  }
  std::string tableViewToolTipForCell(const TableView& /*table*/, const TableColumn& /*column*/,
                                      int /*row*/) override {
    return {};
  }
  void tableViewSelectionDidChange(TableView& table) override { selections.push_back(table.selectedRow()); }
  std::vector<int> selections;
};

class AccessibleTable : public AccessibleBinders {
 protected:
  void SetUp() override {
    table.setDataSource(&rows);
    table.reloadData();
    new qt::TableViewBinder(table, *widget);
    other = new QPushButton(&window);
    other->move(0, 150);
    show();
    table.selectRow(0);
    rows.selections.clear();
  }
  [[nodiscard]] std::vector<int> shownRows() const {
    std::vector<int> shown;
    for (const QModelIndex& index : widget->selectionModel()->selectedRows()) shown.push_back(index.row());
    return shown;
  }

  Volumes rows;
  TableView table{{{"Name", "Volume", 150}}};
  qt::QuietTableView* widget = new qt::QuietTableView(&window);
  QPushButton* other = nullptr;
};

TEST_F(AccessibleTable, ARowThatIsSelectedIsTheOneThatTheCoreHas) {
  QAccessibleTableInterface& thing = *accessible(*widget).tableInterface();
  ASSERT_TRUE(thing.selectRow(2));
  EXPECT_EQ(shownRows(), (std::vector<int>{2}));
  toggleThing(*thing.cellAt(1, 0));
  EXPECT_EQ(shownRows(), (std::vector<int>{1}));
  EXPECT_EQ(rows.selections, (std::vector<int>{2, 1}));
}

TEST_F(AccessibleTable, OneRowIsAlwaysSelected) {
  QAccessibleTableInterface& thing = *accessible(*widget).tableInterface();
  static_cast<void>(thing.unselectRow(0));
  EXPECT_EQ(shownRows(), (std::vector<int>{0}));
  EXPECT_TRUE(rows.selections.empty());
  table.setEnabled(false);
  static_cast<void>(thing.selectRow(2));
  EXPECT_EQ(shownRows(), (std::vector<int>{0}));
  EXPECT_EQ(table.selectedRow(), 0);
}

TEST_F(AccessibleTable, TellsOfItsRowsAndItsFocusOnlyWhileItHasThem) {
  Listener listener;
  other->setFocus();
  listener.forget();
  table.selectRow(1);
  EXPECT_EQ(listener.namesOf(QAccessible::Focus), QStringList());
  EXPECT_FALSE(listener.heard.empty());
  widget->hide();
  listener.forget();
  table.deselectAll();
  table.selectRow(0);
  EXPECT_TRUE(listener.heard.empty());
  widget->show();
  widget->setFocus();
  listener.forget();
  press(window, Qt::Key_Down);
  EXPECT_EQ(listener.namesOf(QAccessible::Focus).size(), 1);
}

class AccessibleWindow : public WindowTest {
 protected:
  [[nodiscard]] QAccessibleInterface& thing() { return accessible(window); }
};

TEST_F(AccessibleWindow, IsAWindowThatIsCalledWhatItsTitleSays) {
  EXPECT_EQ(thing().role(), QAccessible::Window);
  EXPECT_EQ(nameOf(thing()), QStringLiteral("Monitoring Client"));
}

TEST_F(AccessibleWindow, ATabThatIsPressedIsTheOneThatTheCoreHasAndARefusedOneIsNotShown) {
  struct Guard final : TabViewDelegate {
    bool tabViewShouldSelectTabViewItem(TabView&, const TabViewItem& item) override {
      return item.label != "Plugins";
    }
  } guard;
  view.tabView.setDelegate(&guard);
  pressThing(thingCalled(thing(), QAccessible::PageTab, QStringLiteral("Options")));
  EXPECT_EQ(view.tabView.indexOfSelectedItem(), 1);
  EXPECT_EQ(window.tabs().shownTab(), 1);
  pressThing(thingCalled(thing(), QAccessible::PageTab, QStringLiteral("Plugins")));
  EXPECT_EQ(view.tabView.indexOfSelectedItem(), 1);
  EXPECT_EQ(window.tabs().bar().currentIndex(), 1);
  view.tabView.setDelegate(nullptr);
}

TEST_F(AccessibleWindow, AnAlertIsADialogThatSaysWhatItIsAboutAndNothingBehindItTakesAnAct) {
  QAccessibleInterface& plugins = thingCalled(thing(), QAccessible::PageTab, QStringLiteral("Plugins"));
  QAccessibleInterface& lock = accessible(find(window, "authView"));
  int answer = 0;
  AlertDescription alert;
  alert.messageText = "Proceed with caution";
  alert.informativeText = "Really.\n";
  alert.buttons = {{"Cancel", {}, true}, {"Continue", {}}};
  dialogs.beginSheet(alert, {}, [&](const AlertResult& result) { answer = result.returnCode; });
  QAccessibleInterface& dialog =
      thingCalled(thing(), QAccessible::Dialog, QStringLiteral("Proceed with caution"));
  EXPECT_EQ(dialog.text(QAccessible::Description), QStringLiteral("Really."));
  EXPECT_TRUE(dialog.state().modal);
  pressThing(plugins);
  pressThing(lock);
  EXPECT_EQ(view.tabView.indexOfSelectedItem(), 0);
  EXPECT_EQ(window.tabs().bar().currentIndex(), 0);
  EXPECT_EQ(view.authView.state(), AuthorizationView::State::Closed);
  pressThing(thingCalled(dialog, QAccessible::Button, QStringLiteral("Continue")));
  EXPECT_EQ(answer, kAlertFirstButtonReturn + 1);
  pressThing(plugins);
  EXPECT_EQ(view.tabView.indexOfSelectedItem(), 2);
}

TEST_F(AccessibleWindow, AWindowOfTheCoreIsADialogUnderItsTitleAndItsControlsTakeActs) {
  Window advanced("Time Machine Options");
  Button box(ButtonKind::CheckBox, "Also warn");
  auto* contents = new QWidget;
  auto* widget = new QCheckBox(contents);
  new qt::SheetBinder(advanced, *contents, window.sheets());
  new qt::ButtonBinder(box, *widget);
  accessible(*widget).actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
  EXPECT_EQ(box.state(), ButtonState::Off) << "the sheet is not open";
  ASSERT_TRUE(view.mainWindow.beginSheet(advanced));
  QAccessibleInterface& dialog =
      thingCalled(thing(), QAccessible::Dialog, QStringLiteral("Time Machine Options"));
  toggleThing(thingCalled(dialog, QAccessible::CheckBox, QStringLiteral("Also warn")));
  EXPECT_EQ(box.state(), ButtonState::On);
  view.mainWindow.endSheet(advanced);
  delete contents;
}

TEST_F(AccessibleWindow, ATextIsATextUnlessItIsALink) {
  view.greetingButton.setTitle("Hello");
  QAccessibleInterface& greeting = accessible(find(window, "greetingButton"));
  QAccessibleInterface& url = accessible(find(window, "urlButton"));
  EXPECT_EQ(greeting.role(), QAccessible::StaticText);
  EXPECT_EQ(actionsOf(greeting), QStringList());
  int clicks = 0;
  view.urlButton.action = [&](Button&) { ++clicks; };
  view.urlButton.setTitle("help.example.com");
  EXPECT_EQ(url.role(), QAccessible::StaticText);
  TextAttributes line;
  line.underlined = true;
  view.urlButton.setAttributedTitle({"www.example.com", line});
  EXPECT_EQ(url.role(), QAccessible::Link);
  pressThing(url);
  EXPECT_EQ(clicks, 1);
  view.urlButton.setEnabled(false);
  EXPECT_FALSE(actionsOf(url).contains(QAccessibleActionInterface::pressAction()));
}

}  // namespace
}  // namespace corvane::test
