#include "widgets/StatusLabel.h"

#include <QAccessibleWidget>

#include "AttributedTextLayout.h"

namespace corvane::qt {
namespace {

class Notification final : public QAccessibleWidget {
 public:
  explicit Notification(StatusLabel* label)
      : QAccessibleWidget(label, QAccessible::Notification), label_(*label) {}
  [[nodiscard]] QString text(QAccessible::Text kind) const override {
    return kind == QAccessible::Name ? label_.text() : QAccessibleWidget::text(kind);
  }

 private:
  StatusLabel& label_;
};

QAccessibleInterface* interfaceOf(const QString& /*className*/, QObject* object) {
  auto* label = qobject_cast<StatusLabel*>(object);
  return label != nullptr ? new Notification(label) : nullptr;
}

}  // namespace

StatusLabel::StatusLabel(QWidget* parent) : FittedLabel(parent) {
  QAccessible::installFactory(interfaceOf);  // once, however often it is asked
}

QColor StatusLabel::color() const { return colorOf(TextColor::Red, palette()); }

}  // namespace corvane::qt
