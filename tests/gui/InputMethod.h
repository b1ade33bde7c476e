// What an input method or a dead key sends to the widget that has the keyboard.
#pragma once

#include <QApplication>
#include <QInputMethodEvent>
#include <QWidget>

namespace corvane::test {

/// Shows what is being composed, which is no part of the text yet; empty ends the composing.
inline void compose(QWidget& widget, const char* preedit) {
  QInputMethodEvent event(QString::fromUtf8(preedit), {});
  QApplication::sendEvent(&widget, &event);
}

/// Puts a text in, in place of as many characters from there as it says (counted from the caret).
inline void commit(QWidget& widget, const char* text, int replaceFrom = 0, int replaceLength = 0) {
  QInputMethodEvent event;
  event.setCommitString(QString::fromUtf8(text), replaceFrom, replaceLength);
  QApplication::sendEvent(&widget, &event);
}

}  // namespace corvane::test
