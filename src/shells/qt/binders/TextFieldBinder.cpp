#include "binders/TextFieldBinder.h"

#include <QEvent>
#include <QKeyEvent>
#include <QSignalBlocker>

#include "Text.h"

namespace corvane::qt {

TextFieldBinder::TextFieldBinder(TextField& field, QLineEdit& widget)
    : Binder(field, widget), field_(field), widget_(widget) {
  widget_.installEventFilter(this);
  connect(&widget_, &QLineEdit::textEdited, this, &TextFieldBinder::offer);
  // The toolkit reports the caret and the selection after the text, so these are still the ones before an
  // edit when the edit is offered.
  connect(&widget_, &QLineEdit::cursorPositionChanged, this, &TextFieldBinder::remember);
  connect(&widget_, &QLineEdit::selectionChanged, this, &TextFieldBinder::remember);
  connect(&widget_, &QLineEdit::editingFinished, this, [this] { field_.endEditing(); });
  connect(&widget_, &QLineEdit::returnPressed, &widget_, &QLineEdit::selectAll);
  refresh();
}

void TextFieldBinder::remember() {
  before_ = {widget_.cursorPosition(), widget_.selectionStart(), widget_.selectionLength()};
}

void TextFieldBinder::offer(const QString& proposed) {
  const Editing before = before_;
  if (field_.typeText(fromQString(proposed))) {
    refresh();
    return;
  }
  const QSignalBlocker blocker(widget_);
  widget_.setText(toQString(field_.stringValue()));
  if (before.selectionLength > 0) {
    const bool backwards = before.caret == before.selectionStart;
    const int from = backwards ? before.selectionStart + before.selectionLength : before.selectionStart;
    widget_.setSelection(from, backwards ? -before.selectionLength : before.selectionLength);
  } else {
    widget_.setCursorPosition(before.caret);
  }
  remember();
}

void TextFieldBinder::show() {
  widget_.setPlaceholderText(toQString(field_.placeholder()));
  const QString text = toQString(field_.stringValue());
  if (text == widget_.text()) return;
  const QSignalBlocker blocker(widget_);
  const int caret = widget_.cursorPosition();
  widget_.setText(text);
  widget_.setCursorPosition(qMin(caret, static_cast<int>(text.size())));
  remember();
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
