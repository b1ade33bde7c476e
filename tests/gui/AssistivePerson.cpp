#include "AssistivePerson.h"

#include <QDialogButtonBox>
#include <QPushButton>
#include <QWindow>
#include <stdexcept>

namespace corvane::test {
namespace {

QAccessibleInterface& childCalled(QAccessibleInterface& parent, const QString& name) {
  for (int index = 0; index < parent.childCount(); ++index) {
    if (nameOf(*parent.child(index)) == name) return *parent.child(index);
  }
  throw std::runtime_error(nameOf(parent).toStdString() + " has nothing called " + name.toStdString());
}

}  // namespace

QAccessibleInterface& AssistivePerson::found(QWidget& control) {
  QAccessibleInterface& own = accessible(control);
  QAccessibleInterface& thing = thingCalled(accessible(*control.window()), own.role(), nameOf(own));
  EXPECT_EQ(thing.object(), &control) << nameOf(own).toStdString() << " is another one";
  return thing;
}

QAccessibleInterface& AssistivePerson::thing(const char* control) {
  used_.insert(control);
  return found(visible(control));
}

void AssistivePerson::use(QAccessibleInterface& thing) {
  const QString toggle = QAccessibleActionInterface::toggleAction();
  act(thing, actionsOf(thing).contains(toggle) ? toggle : QAccessibleActionInterface::pressAction());
}

void AssistivePerson::setText(QAccessibleInterface& field, const char* text) {
  QAccessibleEditableTextInterface* editable = field.editableTextInterface();
  ASSERT_NE(editable, nullptr) << nameOf(field).toStdString();
  editable->replaceText(0, field.textInterface()->characterCount(), QString::fromUtf8(text));
  QApplication::processEvents();
}

void AssistivePerson::press(const char* control, Qt::KeyboardModifiers modifiers) {
  QAccessibleInterface& pressed = thing(control);
  QWindow* window = window_.windowHandle();
  if (modifiers.testFlag(Qt::ControlModifier)) QTest::keyPress(window, Qt::Key_Control, modifiers);
  use(pressed);
  if (modifiers.testFlag(Qt::ControlModifier)) QTest::keyRelease(window, Qt::Key_Control);
}

void AssistivePerson::fill(const char* field, const char* text) { setText(thing(field), text); }

void AssistivePerson::pick(const char* menu, const char* item) {
  use(childCalled(*thing(menu).child(0), QString::fromUtf8(item)));
}

void AssistivePerson::chooseTab(int index) {
  used_.insert("tabView");
  QAccessibleInterface& bar = found(visible("tabBar"));
  use(thingCalled(bar, QAccessible::PageTab, nameOf(*bar.child(index))));
}

void AssistivePerson::selectRow(const char* table, const char* text) {
  QAccessibleTableInterface* rows = thing(table).tableInterface();
  ASSERT_NE(rows, nullptr);
  for (int row = 0; row < rows->rowCount(); ++row) {
    if (!nameOf(*rows->cellAt(row, 0)).startsWith(QString::fromUtf8(text))) continue;
    ASSERT_TRUE(rows->selectRow(row));
    EXPECT_TRUE(rows->cellAt(row, 0)->state().selected);
    return;
  }
  ADD_FAILURE() << "no row begins with " << text;
}

void AssistivePerson::switchAccessory() { press("accessory", {}); }

QAccessibleInterface& AssistivePerson::rowOf(const TreeRow& row) {
  const auto plugin = [&]() -> QAccessibleInterface& {
    return childCalled(thing("pluginsTable"), QString::fromUtf8(row.plugin));
  };
  if (row.option == nullptr) return plugin();
  if (plugin().state().collapsed) act(plugin(), QStringLiteral("Expand"));
  // Looked for again: the rows may have been read anew while the act was carried out.
  QAccessibleInterface& option = childCalled(plugin(), QString::fromUtf8(row.option));
  if (row.value < 0) return option;
  QAccessibleInterface* value = option.child(row.value);
  if (value == nullptr) throw std::runtime_error(std::string(row.option) + " has no such row");
  return *value;
}

void AssistivePerson::actOn(const TreeRow& row, Spot /*spot*/) { use(rowOf(row)); }

void AssistivePerson::fillCell(const TreeRow& row, const char* text) { setText(rowOf(row), text); }

void AssistivePerson::pickInCell(const TreeRow& row, const char* item) {
  QAccessibleInterface& box = rowOf(row);
  EXPECT_EQ(box.role(), QAccessible::ComboBox);
  if (box.editableTextInterface() != nullptr) {
    setText(box, item);
  } else {
    use(childCalled(box, QString::fromUtf8(item)));
  }
}

void AssistivePerson::chooseEntry(QWidget& panel, const char* name) {
  ASSERT_TRUE(listedEntry(panel, name).isValid()) << name;
  setText(accessible(find(panel, "fileNameEdit")), name);
  auto* buttons = panel.findChild<QDialogButtonBox*>();
  ASSERT_NE(buttons, nullptr);
  use(accessible(*buttons->button(QDialogButtonBox::Open)));
}

void AssistivePerson::cancelPanel(QWidget& panel) {
  used_.insert("cancelButton");
  use(found(find(panel, "cancelButton")));
}

}  // namespace corvane::test
