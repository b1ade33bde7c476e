#include "binders/TextFieldBinder.h"

#include <QEvent>
#include <QKeyEvent>
#include <QToolTip>

#include "Text.h"
#include "accessibility/Spoken.h"

namespace corvane::qt {

TextFieldBinder::TextFieldBinder(TextField& field, EntryField& widget)
    : Binder(field, widget), field_(field), widget_(widget) {
  widget_.setOwner([this](const QString& proposed) { return textAfter(proposed); });
  widget_.installEventFilter(this);
  connect(&widget_, &QLineEdit::textChanged, this, &TextFieldBinder::endEditingFromAfar);
  connect(&widget_, &QLineEdit::editingFinished, this, [this] { field_.endEditing(); });
  connect(&widget_, &QLineEdit::returnPressed, &widget_, &QLineEdit::selectAll);
  refresh();
}

/// Assistive technology sets a text as a whole in a field that need not have the keyboard, and so never
/// leaves it.
void TextFieldBinder::endEditingFromAfar() {
  if (!widget_.hasFocus()) field_.endEditing();
}

/// Also a refused text may change what the field shows: the default, which it showed because a field with the
/// same formatter was cleared, gives way to the value.
std::optional<QString> TextFieldBinder::textAfter(const QString& proposed) {
  if (!isInReach()) return std::nullopt;
  const std::string before = field_.stringValue();
  const bool taken = field_.typeText(fromQString(proposed));
  if (!taken) sayWhatIsTaken();
  if (!taken && field_.stringValue() == before) return std::nullopt;
  return toQString(field_.stringValue());
}

/// A key that does nothing would be a riddle.
void TextFieldBinder::sayWhatIsTaken() {
  if (const QString range = plainToolTip(field_.rangeText()); !range.isEmpty())
    QToolTip::showText(widget_.mapToGlobal(QPoint(0, widget_.height() / 2)), range, &widget_);
}

void TextFieldBinder::show() {
  if (field_.toolTip().empty()) setSpokenDescription(widget_, toQString(field_.rangeText()));
  widget_.setPlaceholderText(toQString(field_.placeholder()));
  widget_.showText(toQString(field_.stringValue()));
}

bool TextFieldBinder::eventFilter(QObject* watched, QEvent* event) {
  if (watched == &widget_ && event->type() == QEvent::KeyPress && field_.editing() &&
      static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
    field_.abortEditing();
    refresh();
    widget_.selectAll();
    return true;
  }
  return Binder::eventFilter(watched, event);
}

}  // namespace corvane::qt
