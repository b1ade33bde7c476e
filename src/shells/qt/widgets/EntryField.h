// A field of one line whose owner is asked about every text before the toolkit takes it, whatever the text
// comes from: keys, an input method, pasting, dropping, undoing, assistive technology. The owner may refuse
// it or put another one in its place. What is refused leaves the text, the selection and the undo history as
// they were. No length is too long for the field itself; how much may be typed is the owner's to say.
//
// Line breaks are nobody's to ask about: of what is put in, those at the ends are left out and each one
// between becomes a blank. A text that is shown keeps its own.
#pragma once

#include <QLineEdit>
#include <functional>
#include <optional>
#include <utility>

namespace corvane::qt {

class EntryField : public QLineEdit {
  Q_OBJECT

 public:
  explicit EntryField(QWidget* parent = nullptr);

  /// Answers with the text that is to stand in the field now; nothing refuses the proposed one.
  using Owner = std::function<std::optional<QString>(const QString& proposed)>;
  /// Without an owner every text is taken.
  void setOwner(Owner owner) { owner_ = std::move(owner); }
  /// Shows a text that is not the user's; nobody is asked. May be called while the owner is being asked.
  void showText(const QString& text);
  /// The text that was shown or taken last. What an input method is still composing is no part of it, nor is
  /// the selection gone that will make place for it.
  [[nodiscard]] const QString& standingText() const { return standing_; }
  /// Without the line breaks at the ends, and with a blank for those between two words.
  [[nodiscard]] static QString inOneLine(const QString& text);

 protected:
  bool event(QEvent* event) override;
  void inputMethodEvent(QInputMethodEvent* event) override;

 private:
  class Question;
  /// The toolkit would change its text to `proposed`, which may be replaced. False: it takes the change back.
  bool mayStand(QString& proposed, int& caret);
  void putInWithoutLineBreaks();
  /// The owner hears of it too when the user has put the same text in the place of the one before: from then
  /// on it is theirs.
  void askAboutTheSameText();
  /// Whatever the toolkit has kept without an answer goes.
  void settle();

  Owner owner_;
  QString standing_;
  qsizetype lineBreaksShown_ = 0;         // in the owner's text: these may stay
  QString withLineBreaks_;                // a proposed text, until it is put in without them
  std::pair<int, int> placeOfComposing_;  // the selection, as start and length
  bool isAsking_ = false;
  bool wasAsked_ = false;      // about the change that the toolkit is making
  bool isComposing_ = false;   // an input method shows what is not part of the text yet
  bool isCommitting_ = false;  // and hands some of it over now
  bool isBringingBack_ = false;
};

}  // namespace corvane::qt
