#include "accessibility/AccessibleWidgets.h"

#include <QAccessibleWidget>

#include "PaneWindow.h"
#include "accessibility/AccessibleMenu.h"
#include "accessibility/AccessibleOutline.h"
#include "widgets/LabelButton.h"
#include "widgets/SheetPanel.h"

namespace corvane::qt {
namespace {

/// A sheet is a dialog that is called what its contents are called, and that stands before everything else of
/// its window.
class AccessibleSheet final : public QAccessibleWidget {
 public:
  explicit AccessibleSheet(SheetPanel& panel)
      : QAccessibleWidget(&panel, QAccessible::Dialog), panel_(panel) {}

  [[nodiscard]] QString text(QAccessible::Text kind) const override {
    const QWidget* contents = panel_.contents();
    if (contents != nullptr && kind == QAccessible::Name) return contents->windowTitle();
    if (contents != nullptr && kind == QAccessible::Description) return contents->accessibleDescription();
    return QAccessibleWidget::text(kind);
  }
  [[nodiscard]] QAccessible::State state() const override {
    QAccessible::State state = QAccessibleWidget::state();
    state.modal = true;
    return state;
  }

 private:
  const SheetPanel& panel_;
};

/// A link, or a text: what a click on the text of a control does is the control's own to tell.
class AccessibleLabelButton final : public QAccessibleWidget {
 public:
  explicit AccessibleLabelButton(LabelButton& button) : QAccessibleWidget(&button), button_(button) {}

  [[nodiscard]] QAccessible::Role role() const override {
    return button_.isLink() ? QAccessible::Link : QAccessible::StaticText;
  }
  [[nodiscard]] QString text(QAccessible::Text kind) const override {
    const QString own = QAccessibleWidget::text(kind);
    return kind == QAccessible::Name && own.isEmpty() ? button_.text() : own;
  }
  [[nodiscard]] QStringList actionNames() const override {
    QStringList names = QAccessibleWidget::actionNames();
    if (button_.isLink() && button_.isEnabled()) names.prepend(pressAction());
    return names;
  }
  void doAction(const QString& name) override {
    if (name != pressAction()) {
      QAccessibleWidget::doAction(name);
    } else if (actionNames().contains(name)) {
      button_.animateClick();
    }
  }

 private:
  LabelButton& button_;
};

QAccessibleInterface* makeAccessible(const QString& /*className*/, QObject* object) {
  if (auto* window = qobject_cast<PaneWindow*>(object))
    return new QAccessibleWidget(window, QAccessible::Window);
  if (auto* panel = qobject_cast<SheetPanel*>(object)) return new AccessibleSheet(*panel);
  if (auto* box = qobject_cast<MenuBox*>(object)) return new AccessibleMenu(*box);
  if (auto* tree = qobject_cast<OutlineTree*>(object)) return new AccessibleOutline(*tree);
  if (auto* button = qobject_cast<LabelButton*>(object)) return new AccessibleLabelButton(*button);
  return nullptr;
}

}  // namespace

void installAccessibleWidgets() { QAccessible::installFactory(makeAccessible); }

}  // namespace corvane::qt
