#include "Person.h"

#include <QApplication>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QTabBar>
#include <QWheelEvent>

namespace corvane::test {

QWidget& Person::visible(const char* name) const {
  for (QWidget* widget : window_.findChildren<QWidget*>(QString::fromUtf8(name))) {
    if (widget->isVisible()) return *widget;
  }
  throw std::runtime_error(std::string("nothing to be seen is called ") + name);
}

QString Person::firstLine(const QModelIndex& row) {
  return row.data().toString().section(QLatin1Char('\n'), 0, 0).trimmed();
}

QModelIndex Person::pluginRow(const char* name) const {
  const QAbstractItemModel& model = *tree().model();
  for (int row = 0; row < model.rowCount(); ++row) {
    const QModelIndex index = model.index(row, 1);
    if (firstLine(index) == QString::fromUtf8(name)) return index;
  }
  throw std::runtime_error(std::string("no plug-in is called ") + name);
}

QModelIndex Person::cellOf(const TreeRow& row) const {
  const QModelIndex top = pluginRow(row.plugin);
  if (row.option == nullptr) return top;
  const QAbstractItemModel& model = *tree().model();
  for (int i = 0; i < model.rowCount(top.siblingAtColumn(0)); ++i) {
    const QModelIndex option = model.index(i, 1, top.siblingAtColumn(0));
    if (firstLine(option) != QString::fromUtf8(row.option)) continue;
    return row.value < 0 ? option : model.index(row.value, 1, option.siblingAtColumn(0));
  }
  return {};
}

QModelIndex Person::listedEntry(const QWidget& panel, const char* name) {
  const auto& list = find<QAbstractItemView>(panel, "treeView");
  QModelIndex found;
  static_cast<void>(eventually([&] {
    const QAbstractItemModel& model = *list.model();
    for (int row = 0; row < model.rowCount(list.rootIndex()) && !found.isValid(); ++row) {
      const QModelIndex index = model.index(row, 0, list.rootIndex());
      if (index.data().toString() == QString::fromUtf8(name)) found = index;
    }
    return found.isValid();
  }));
  return found;
}

QAbstractItemView* Person::openList() {
  QWidget* popup = QApplication::activePopupWidget();
  return popup != nullptr ? popup->findChild<QAbstractItemView*>() : nullptr;
}

void Person::confirm() { ::corvane::test::press(window_, Qt::Key_Return); }

// --- with the mouse

namespace {

QModelIndex rowThatBegins(const QAbstractItemView& view, const char* text) {
  for (int row = 0; row < view.model()->rowCount(view.rootIndex()); ++row) {
    const QModelIndex index = view.model()->index(row, 0, view.rootIndex());
    if (index.data().toString().startsWith(QString::fromUtf8(text))) return index;
  }
  throw std::runtime_error(std::string("no row begins with ") + text);
}

void clickAt(QWidget& widget, const QPoint& point) { QTest::mouseClick(&widget, Qt::LeftButton, {}, point); }

/// Two clicks select a word, the third one the whole text.
void selectWithClicks(QWidget& field) {
  const QPoint middle = field.rect().center();
  QTest::mouseDClick(&field, Qt::LeftButton, {}, middle);
  QTest::mouseClick(&field, Qt::LeftButton, {}, middle);
}

}  // namespace

void MousePerson::scrollTo(QAbstractItemView& view, const QModelIndex& cell) {
  constexpr int kEnough = 500;
  for (int turn = 0; turn < kEnough; ++turn) {
    const QRect place = view.visualRect(cell);
    const QRect inside = view.viewport()->rect();
    if (place.top() >= inside.top() && place.bottom() <= inside.bottom()) return;
    const QPoint step(0, place.top() < inside.top() ? 120 : -120);
    QWheelEvent wheel(inside.center(), view.viewport()->mapToGlobal(inside.center()), {}, step, {}, {},
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(view.viewport(), &wheel);
  }
  ADD_FAILURE() << "the wheel does not bring the row up: " << cell.data().toString().toStdString();
}

void MousePerson::press(const char* control, Qt::KeyboardModifiers modifiers) {
  click(visible(control), modifiers);
}

void MousePerson::fill(const char* field, const char* text) {
  QWidget& widget = visible(field);
  selectWithClicks(widget);
  type(widget, text);
}

void MousePerson::chooseInOpenList(const char* item) {
  QAbstractItemView* list = nullptr;
  ASSERT_TRUE(eventually([&] { return (list = openList()) != nullptr; })) << item;
  const QModelIndex index = rowThatBegins(*list, item);
  scrollTo(*list, index);
  // The rows may be laid out wider than the list is.
  const QPoint place = list->visualRect(index).intersected(list->viewport()->rect()).center();
  // A list that has just opened takes no click for a moment, lest the one that opened it chooses.
  const QPointer<QAbstractItemView> open(list);
  EXPECT_TRUE(eventually([&] {
    if (!open || !open->isVisible()) return true;
    moveMouse(*open->viewport(), place);
    clickAt(*open->viewport(), place);
    return !open || !open->isVisible();
  })) << item;
}

void MousePerson::pick(const char* menu, const char* item) {
  click(visible(menu));
  chooseInOpenList(item);
}

void MousePerson::chooseTab(int index) {
  auto& bar = static_cast<QTabBar&>(visible("tabBar"));
  clickAt(bar, bar.tabRect(index).center());
}

void MousePerson::selectRow(const char* table, const char* text) {
  auto& view = static_cast<QAbstractItemView&>(visible(table));
  const QModelIndex row = rowThatBegins(view, text);
  scrollTo(view, row);
  clickAt(*view.viewport(), view.visualRect(row).center());
}

void MousePerson::switchAccessory() {
  clickAt(visible("accessory"), QPoint(9, visible("accessory").height() / 2));
}

QModelIndex MousePerson::bringUp(const TreeRow& row) {
  if (row.option != nullptr) {
    const QModelIndex top = pluginRow(row.plugin);
    if (!tree().isExpanded(top.siblingAtColumn(0))) {
      scrollTo(tree(), top);
      const QRect place = tree().visualRect(top);
      clickAt(*tree().viewport(), QPoint(place.left() - 8, place.center().y()));
    }
  }
  const QModelIndex cell = cellOf(row);
  EXPECT_TRUE(cell.isValid()) << row.plugin << ", " << row.option;
  scrollTo(tree(), cell);
  return cell;
}

void MousePerson::actOn(const TreeRow& row, Spot spot) {
  const QModelIndex cell = bringUp(row);
  const QRect place = tree().visualRect(spot == Spot::Tick ? cell.siblingAtColumn(0) : cell);
  int x = place.left() + 12;
  if (spot == Spot::Tick) x = place.center().x();
  if (spot == Spot::Trash) x = place.right() - 12;
  clickAt(*tree().viewport(), QPoint(x, place.center().y()));
}

void MousePerson::fillCell(const TreeRow& row, const char* text) {
  actOn(row, Spot::Control);
  auto* field = editor<QLineEdit>();
  ASSERT_NE(field, nullptr) << row.option;
  selectWithClicks(*field);
  type(*field, text);
  // A click on a text ends the typing.
  scrollTo(tree(), pluginRow(row.plugin));
  clickAt(*tree().viewport(), tree().visualRect(pluginRow(row.plugin)).center());
}

void MousePerson::pickInCell(const TreeRow& row, const char* item) {
  actOn(row, Spot::Control);
  auto* box = editor<QComboBox>();
  ASSERT_NE(box, nullptr) << row.option;
  // A menu opens with the first click; the list of a box that can be typed in opens with its arrow.
  if (box->isEditable()) clickAt(*box, QPoint(box->width() - 12, box->height() / 2));
  chooseInOpenList(item);
}

void MousePerson::chooseEntry(QWidget& panel, const char* name) {
  auto& list = find<QAbstractItemView>(panel, "treeView");
  const QModelIndex entry = listedEntry(panel, name);
  ASSERT_TRUE(entry.isValid()) << name;
  scrollTo(list, entry);
  clickAt(*list.viewport(), list.visualRect(entry).center());
  auto* buttons = panel.findChild<QDialogButtonBox*>();
  ASSERT_NE(buttons, nullptr);
  click(*buttons->button(QDialogButtonBox::Open));
}

void MousePerson::cancelPanel(QWidget& panel) { click(find(panel, "cancelButton")); }

// --- with the keyboard

QWidget* KeyboardPerson::keyboardOwner() const {
  for (QWidget* above : {QApplication::activePopupWidget(), QApplication::activeModalWidget()}) {
    if (above != nullptr) return above->focusWidget() != nullptr ? above->focusWidget() : above;
  }
  return window_.focusWidget() != nullptr ? window_.focusWidget() : &window_;
}

void KeyboardPerson::key(Qt::Key key, Qt::KeyboardModifiers modifiers) const {
  QTest::keyClick(keyboardOwner(), key, modifiers);
}

void KeyboardPerson::keys(const QString& text) const {
  for (const QChar letter : text) QTest::keyClicks(keyboardOwner(), QString(letter));
}

void KeyboardPerson::tabTo(const QWidget& control) {
  constexpr int kOnceRound = 60;
  for (int step = 0; step < kOnceRound; ++step) {
    if (keyboardOwner() == &control) return;
    key(Qt::Key_Tab);
  }
  ADD_FAILURE() << "the Tab key does not reach " << control.objectName().toStdString();
}

void KeyboardPerson::press(const char* control, Qt::KeyboardModifiers modifiers) {
  tabTo(visible(control));
  key(Qt::Key_Space, modifiers);
}

void KeyboardPerson::fill(const char* field, const char* text) {
  tabTo(visible(field));
  keys(QString::fromUtf8(text));
}

void KeyboardPerson::pick(const char* menu, const char* item) {
  auto& box = static_cast<QComboBox&>(visible(menu));
  tabTo(box);
  key(Qt::Key_Space);
  ASSERT_TRUE(eventually([] { return openList() != nullptr; }));
  keys(QString::fromUtf8(item).left(1));
  key(Qt::Key_Return);
}

void KeyboardPerson::chooseTab(int index) {
  auto& bar = static_cast<QTabBar&>(visible("tabBar"));
  tabTo(bar);
  while (bar.currentIndex() != index) {
    const int before = bar.currentIndex();
    key(index > before ? Qt::Key_Right : Qt::Key_Left);
    if (bar.currentIndex() == before) return;  // something stands before it
  }
}

void KeyboardPerson::selectRow(const char* table, const char* text) {
  auto& view = static_cast<QAbstractItemView&>(visible(table));
  const QModelIndex wanted = rowThatBegins(view, text);
  tabTo(view);
  const Qt::Key step = view.currentIndex().row() < wanted.row() ? Qt::Key_Down : Qt::Key_Up;
  while (view.currentIndex().row() != wanted.row()) {
    const QModelIndex before = view.currentIndex();
    key(step);
    ASSERT_NE(view.currentIndex(), before) << text << " is not reached";
  }
}

void KeyboardPerson::switchAccessory() {
  // Without a window manager a window that was above this one may still count as the active one.
  window_.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window_, kHangMilliseconds));
  key(Qt::Key_A, Qt::AltModifier);
}

void KeyboardPerson::goToRow(const TreeRow& row) {
  tabTo(tree());
  // The letters of its first word find the plug-in, or a row that begins alike and stands above it.
  key(Qt::Key_Home);
  const QModelIndex plugin = pluginRow(row.plugin).siblingAtColumn(0);
  if (tree().currentIndex().siblingAtColumn(0) != plugin)
    keys(QString::fromUtf8(row.plugin).section(QLatin1Char(' '), 0, 0));
  goDownTo(plugin);
  if (row.option == nullptr) return;
  if (!tree().isExpanded(tree().currentIndex().siblingAtColumn(0))) key(Qt::Key_Right);
  const QModelIndex wanted = cellOf(row).siblingAtColumn(0);
  ASSERT_TRUE(wanted.isValid()) << row.plugin << ", " << row.option;
  goDownTo(wanted);
}

void KeyboardPerson::goDownTo(const QModelIndex& row) {
  while (tree().currentIndex().siblingAtColumn(0) != row) {
    const QModelIndex before = tree().currentIndex();
    key(Qt::Key_Down);
    ASSERT_NE(tree().currentIndex(), before) << firstLine(row.siblingAtColumn(1)).toStdString();
  }
}

void KeyboardPerson::actOn(const TreeRow& row, Spot /*spot*/) {
  goToRow(row);
  // Right after the letters of a plug-in's name Space would be a part of it.
  key(row.option == nullptr ? Qt::Key_Return : Qt::Key_Space);
}

void KeyboardPerson::fillCell(const TreeRow& row, const char* text) {
  goToRow(row);
  key(Qt::Key_Return);
  ASSERT_NE(editor<QLineEdit>(), nullptr) << row.option;
  keys(QString::fromUtf8(text));
  key(Qt::Key_Return);
}

void KeyboardPerson::pickInCell(const TreeRow& row, const char* item) {
  goToRow(row);
  key(Qt::Key_Space);
  auto* box = editor<QComboBox>();
  ASSERT_NE(box, nullptr) << row.option;
  const int wanted = box->findText(QString::fromUtf8(item));
  if (box->isEditable()) {
    while (box->currentIndex() != wanted) key(box->currentIndex() < wanted ? Qt::Key_Down : Qt::Key_Up);
  } else {
    ASSERT_TRUE(eventually([] { return openList() != nullptr; }));
    key(Qt::Key_Home);
    for (int step = 0; step < wanted; ++step) key(Qt::Key_Down);
  }
  key(Qt::Key_Return);
}

void KeyboardPerson::chooseEntry(QWidget& panel, const char* name) {
  ASSERT_TRUE(listedEntry(panel, name).isValid()) << name;
  keys(QString::fromUtf8(name));
  key(Qt::Key_Return);
}

void KeyboardPerson::cancelPanel(QWidget& panel) {
  EXPECT_TRUE(eventually([&] { return keyboardOwner() == &find(panel, "cancelButton"); }));
  key(Qt::Key_Escape);
}

}  // namespace corvane::test
