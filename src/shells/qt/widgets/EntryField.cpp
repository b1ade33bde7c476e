#include "widgets/EntryField.h"

#include <QEvent>
#include <QInputMethodEvent>
#include <QScopedValueRollback>
#include <QValidator>
#include <algorithm>
#include <limits>
#include <utility>

namespace corvane::qt {
namespace {

bool isLineBreak(QChar character) {
  switch (character.unicode()) {
    case '\n':
    case '\v':
    case '\f':
    case '\r':
    case 0x85:
    case QChar::LineSeparator:
    case QChar::ParagraphSeparator:
      return true;
    default:
      return false;
  }
}

qsizetype lineBreaksIn(const QString& text) { return std::count_if(text.begin(), text.end(), isLineBreak); }

}  // namespace

/// The one place through which the toolkit takes every change of the text.
class EntryField::Question final : public QValidator {
 public:
  explicit Question(EntryField& field) : QValidator(&field), field_(field) {}
  State validate(QString& proposed, int& caret) const override {
    return field_.mayStand(proposed, caret) ? Acceptable : Invalid;
  }

 private:
  EntryField& field_;
};

EntryField::EntryField(QWidget* parent) : QLineEdit(parent) {
  setMaxLength(std::numeric_limits<int>::max());
  setValidator(new Question(*this));
  connect(this, &QLineEdit::textEdited, this, &EntryField::askAboutTheSameText);
  connect(this, &QLineEdit::textChanged, this, [this] {
    wasAsked_ = false;
    settle();  // undoing and redoing are asked about too, but the toolkit does not take them back by itself
  });
}

QString EntryField::inOneLine(const QString& text) {
  QString line;
  bool isAfterBreak = false;
  for (const QChar character : text) {
    if (isLineBreak(character)) {
      isAfterBreak = !line.isEmpty();
      continue;
    }
    if (std::exchange(isAfterBreak, false)) line += QLatin1Char(' ');
    line += character;
  }
  return line;
}

void EntryField::showText(const QString& text) {
  if (text == standing_) return;
  standing_ = text;
  lineBreaksShown_ = lineBreaksIn(text);
  if (isAsking_) return;  // the answer puts it in
  const int caret = cursorPosition();
  setText(text);
  setCursorPosition(std::min(caret, static_cast<int>(text.size())));
}

bool EntryField::mayStand(QString& proposed, int& caret) {
  if (isAsking_ || isBringingBack_ || proposed == standing_) return true;
  // The selection has made place for what is being composed; both are one change, which is asked about when
  // it is whole.
  if (isComposing_ && !isCommitting_) return true;
  if (lineBreaksIn(proposed) > lineBreaksShown_) {
    withLineBreaks_ = proposed;
    QMetaObject::invokeMethod(this, &EntryField::putInWithoutLineBreaks, Qt::QueuedConnection);
    return false;
  }
  std::optional<QString> answer(proposed);
  if (owner_) {
    const QScopedValueRollback<bool> asking(isAsking_, true);
    answer = owner_(proposed);
  }
  wasAsked_ = answer.has_value();
  if (!answer) return false;
  standing_ = *answer;
  proposed = standing_;
  caret = std::min(caret, static_cast<int>(proposed.size()));
  return true;
}

// While the toolkit asks, this can't be told from its asking whether the text as it stands is acceptable.
void EntryField::askAboutTheSameText() {
  const bool isTheSame = !wasAsked_ && text() == standing_;
  if (!isTheSame || isAsking_ || isBringingBack_ || isComposing_ || !owner_) return;
  {
    const QScopedValueRollback<bool> asking(isAsking_, true);
    standing_ = owner_(standing_).value_or(standing_);
  }
  settle();
}

// The toolkit has taken the text with the line breaks back, so the caret and the selection are again where it
// was put in.
void EntryField::putInWithoutLineBreaks() {
  const QString proposed = std::exchange(withLineBreaks_, QString());
  if (proposed.isNull() || text() != standing_) return;
  const QString before = standing_.left(hasSelectedText() ? selectionStart() : cursorPosition());
  const QString after = standing_.mid(hasSelectedText() ? selectionEnd() : cursorPosition());
  const qsizetype length = proposed.size() - before.size() - after.size();
  if (length <= 0 || !proposed.startsWith(before) || !proposed.endsWith(after)) return;
  const QString line = inOneLine(proposed.mid(before.size(), length));
  if (!line.isEmpty()) insert(line);
}

void EntryField::inputMethodEvent(QInputMethodEvent* event) {
  QInputMethodEvent inLine(event->preeditString(), event->attributes());
  inLine.setCommitString(inOneLine(event->commitString()), event->replacementStart(),
                         event->replacementLength());
  const QString before = text();
  const int caret = cursorPosition();
  const bool hadSelection = hasSelectedText();
  {
    const QScopedValueRollback<bool> committing(
        isCommitting_, !inLine.commitString().isEmpty() || inLine.replacementLength() > 0);
    if (!isComposing_) placeOfComposing_ = {selectionStart(), selectionLength()};
    isComposing_ = !inLine.preeditString().isEmpty();
    QLineEdit::inputMethodEvent(&inLine);
  }
  event->setAccepted(inLine.isAccepted());
  // A refused replacement would leave what it was to replace selected.
  if (inLine.replacementLength() > 0 && text() == before && !hadSelection) setCursorPosition(caret);
}

bool EntryField::event(QEvent* event) {
  switch (event->type()) {
    case QEvent::KeyPress:
    case QEvent::InputMethod:
    case QEvent::Drop:
    case QEvent::MouseButtonRelease: {  // of the middle button, which pastes
      const bool isTaken = QLineEdit::event(event);
      putInWithoutLineBreaks();
      settle();
      return isTaken;
    }
    case QEvent::FocusOut: {
      const bool isTaken = QLineEdit::event(event);
      isComposing_ = false;  // what was not handed over by now is given up
      settle();
      return isTaken;
    }
    default:
      return QLineEdit::event(event);
  }
}

void EntryField::settle() {
  if (isAsking_ || isComposing_ || isBringingBack_ || text() == standing_) return;
  const QScopedValueRollback<bool> bringingBack(isBringingBack_, true);
  // By its history as far as that leads there, so that the history stays.
  if (echoMode() == Normal) {
    redo();
    while (text() != standing_ && isUndoAvailable()) undo();
  }
  if (text() == standing_) return;
  setText(standing_);
  const auto [start, length] = std::exchange(placeOfComposing_, {});
  if (length > 0 && start + length <= standing_.size()) setSelection(start, length);
}

}  // namespace corvane::qt
