#include "accessibility/AccessibleMenu.h"

#include <QAbstractItemView>
#include <QLineEdit>

namespace corvane::qt {

QAccessibleInterface* AccessibleMenu::child(int index) const {
  if (index == 0) return QAccessible::queryAccessibleInterface(box_.view());
  return index == 1 && box_.isEditable() ? QAccessible::queryAccessibleInterface(box_.lineEdit()) : nullptr;
}

int AccessibleMenu::indexOfChild(const QAccessibleInterface* child) const {
  for (int index = 0; index < childCount(); ++index) {
    if (this->child(index) == child) return index;
  }
  return -1;
}

QString AccessibleMenu::text(QAccessible::Text kind) const {
  return kind == QAccessible::Value ? box_.currentText() : QAccessibleWidget::text(kind);
}

QAccessible::State AccessibleMenu::state() const {
  QAccessible::State state = QAccessibleWidget::state();
  state.hasPopup = true;
  state.expandable = true;
  state.expanded = box_.view()->isVisible();
  state.collapsed = !state.expanded;
  return state;
}

QStringList AccessibleMenu::actionNames() const {
  QStringList names = QAccessibleWidget::actionNames();
  if (box_.isEnabled()) names.prepend(showMenuAction());
  return names;
}

void AccessibleMenu::doAction(const QString& name) {
  if (name != showMenuAction()) {
    QAccessibleWidget::doAction(name);
  } else if (box_.view()->isVisible()) {
    box_.hidePopup();
  } else if (box_.isEnabled()) {
    box_.showPopup();
  }
}

}  // namespace corvane::qt
