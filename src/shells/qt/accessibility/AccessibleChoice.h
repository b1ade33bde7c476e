// An item of a menu that stands in a row of an outline, for assistive technology: it can be chosen without
// opening the menu.
#pragma once

#include <QAccessibleInterface>

#include "accessibility/AccessibleRows.h"

namespace corvane::qt {

class AccessibleChoice final : public QAccessibleInterface, private QAccessibleActionInterface {
 public:
  /// The item of this index in the menu of the row.
  AccessibleChoice(AccessibleRows& rows, OutlineItem row, int index);

  [[nodiscard]] bool isValid() const override { return !name().isNull(); }
  [[nodiscard]] QObject* object() const override { return nullptr; }
  [[nodiscard]] QWindow* window() const override;
  [[nodiscard]] QAccessibleInterface* parent() const override { return rows_.interfaceOf(row_); }
  [[nodiscard]] int childCount() const override { return 0; }
  [[nodiscard]] QAccessibleInterface* child(int /*index*/) const override { return nullptr; }
  [[nodiscard]] int indexOfChild(const QAccessibleInterface* /*child*/) const override { return -1; }
  [[nodiscard]] QAccessibleInterface* childAt(int /*x*/, int /*y*/) const override { return nullptr; }
  [[nodiscard]] QString text(QAccessible::Text kind) const override {
    return kind == QAccessible::Name ? name() : QString();
  }
  void setText(QAccessible::Text /*kind*/, const QString& /*text*/) override {}
  /// It is not on the screen while its menu is closed.
  [[nodiscard]] QRect rect() const override { return {}; }
  [[nodiscard]] QAccessible::Role role() const override { return QAccessible::ListItem; }
  [[nodiscard]] QAccessible::State state() const override;

 protected:
  void* interface_cast(QAccessible::InterfaceType type) override;

 private:
  [[nodiscard]] QStringList actionNames() const override;
  void doAction(const QString& name) override;
  [[nodiscard]] QStringList keyBindingsForAction(const QString& /*name*/) const override { return {}; }
  /// Null when there is no such item any more.
  [[nodiscard]] QString name() const;

  AccessibleRows& rows_;
  OutlineItem row_;
  int index_;
};

}  // namespace corvane::qt
