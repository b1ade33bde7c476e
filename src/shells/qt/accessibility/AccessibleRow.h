// One row of an outline for assistive technology. What it is may change with what it is asked of: everything
// is read anew each time.
#pragma once

#include <QAccessibleInterface>
#include <map>

#include "accessibility/AccessibleRows.h"

namespace corvane::qt {

class AccessibleRow final : public QAccessibleInterface,
                            private QAccessibleActionInterface,
                            private QAccessibleValueInterface,
                            private QAccessibleTextInterface,
                            private QAccessibleEditableTextInterface {
 public:
  AccessibleRow(AccessibleRows& rows, OutlineItem item);
  /// The items of its menu that were asked for, by their index.
  [[nodiscard]] const std::map<int, QAccessible::Id>& choices() const { return choices_; }
  ~AccessibleRow() override;

  [[nodiscard]] bool isValid() const override;
  [[nodiscard]] QObject* object() const override { return nullptr; }
  [[nodiscard]] QWindow* window() const override;
  [[nodiscard]] QAccessibleInterface* parent() const override;
  [[nodiscard]] int childCount() const override;
  [[nodiscard]] QAccessibleInterface* child(int index) const override;
  [[nodiscard]] int indexOfChild(const QAccessibleInterface* child) const override;
  [[nodiscard]] QAccessibleInterface* childAt(int x, int y) const override;
  [[nodiscard]] QAccessibleInterface* focusChild() const override;
  [[nodiscard]] QString text(QAccessible::Text kind) const override;
  void setText(QAccessible::Text kind, const QString& text) override;
  [[nodiscard]] QRect rect() const override;
  [[nodiscard]] QAccessible::Role role() const override;
  [[nodiscard]] QAccessible::State state() const override;

 protected:
  void* interface_cast(QAccessible::InterfaceType type) override;

 private:
  // Acts.
  [[nodiscard]] QStringList actionNames() const override;
  void doAction(const QString& name) override;
  [[nodiscard]] QStringList keyBindingsForAction(const QString& name) const override;

  // The value of a menu is the number of the item, from 0; of a box of numbers the number.
  [[nodiscard]] QVariant currentValue() const override;
  void setCurrentValue(const QVariant& value) override;
  [[nodiscard]] QVariant maximumValue() const override;
  [[nodiscard]] QVariant minimumValue() const override;
  [[nodiscard]] QVariant minimumStepSize() const override;

  // The text of a field. It is set as a whole; there is no caret before the field is opened.
  void selection(int index, int* start, int* end) const override;
  [[nodiscard]] int selectionCount() const override { return 0; }
  void addSelection(int /*start*/, int /*end*/) override {}
  void removeSelection(int /*index*/) override {}
  void setSelection(int /*index*/, int /*start*/, int /*end*/) override {}
  [[nodiscard]] int cursorPosition() const override { return 0; }
  void setCursorPosition(int /*position*/) override {}
  [[nodiscard]] QString text(int start, int end) const override;
  [[nodiscard]] int characterCount() const override;
  [[nodiscard]] QRect characterRect(int /*offset*/) const override { return rect(); }
  [[nodiscard]] int offsetAtPoint(const QPoint& /*point*/) const override { return 0; }
  void scrollToSubstring(int start, int end) override;
  [[nodiscard]] QString attributes(int offset, int* start, int* end) const override;
  void deleteText(int start, int end) override { replaceText(start, end, QString()); }
  void insertText(int offset, const QString& text) override { replaceText(offset, offset, text); }
  void replaceText(int start, int end, const QString& text) override;

  [[nodiscard]] SpokenRow spoken() const { return spokenRow(rows_.outline(), item_); }
  [[nodiscard]] bool mayEdit(const SpokenRow& row) const;

  AccessibleRows& rows_;
  OutlineItem item_;
  mutable std::map<int, QAccessible::Id> choices_;
};

}  // namespace corvane::qt
