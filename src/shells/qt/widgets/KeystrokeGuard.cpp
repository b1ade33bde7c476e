#include "widgets/KeystrokeGuard.h"

#include <QSignalBlocker>

namespace corvane::qt {

KeystrokeGuard::KeystrokeGuard(QLineEdit& edit, Check check)
    : QObject(&edit), edit_(edit), check_(std::move(check)) {
  connect(&edit_, &QLineEdit::textEdited, this, &KeystrokeGuard::offer);
  // The toolkit reports the caret and the selection after the text, so these are still the ones before an
  // edit when the edit is offered.
  connect(&edit_, &QLineEdit::cursorPositionChanged, this, &KeystrokeGuard::remember);
  connect(&edit_, &QLineEdit::selectionChanged, this, &KeystrokeGuard::remember);
  connect(&edit_, &QLineEdit::textChanged, this, &KeystrokeGuard::remember);
  remember();
}

void KeystrokeGuard::remember() {
  before_ = {edit_.text(), edit_.cursorPosition(), edit_.selectionStart(), edit_.selectionLength()};
}

void KeystrokeGuard::offer(const QString& proposed) {
  const Before before = before_;
  const std::optional<QString> taken = check_(proposed);
  if (!taken) {
    before_ = before;
    restore();
  } else if (*taken != edit_.text()) {
    setText(*taken);
  }
  remember();
}

void KeystrokeGuard::restore() {
  const Before before = before_;
  const QSignalBlocker blocker(edit_);
  edit_.setText(before.text);
  if (before.selectionLength > 0) {
    const bool backwards = before.caret == before.selectionStart;
    const int from = backwards ? before.selectionStart + before.selectionLength : before.selectionStart;
    edit_.setSelection(from, backwards ? -before.selectionLength : before.selectionLength);
  } else {
    edit_.setCursorPosition(before.caret);
  }
}

void KeystrokeGuard::setText(const QString& text) {
  if (text == edit_.text()) return;
  const QSignalBlocker blocker(edit_);
  const int caret = edit_.cursorPosition();
  edit_.setText(text);
  edit_.setCursorPosition(qMin(caret, static_cast<int>(text.size())));
  remember();
}

}  // namespace corvane::qt
