// What the keyboard does to buttons, in one place for the tree, the panels and the sheets, and the same under
// every desktop, whose theme might have it otherwise. Space presses the button that has the keyboard. Return
// presses the button of the panel or sheet that has this key, whichever has the keyboard; outside of panels
// the one that has the keyboard. A key that is held down presses once: not again, and not what has come up
// under the finger.
#pragma once

#include <QAbstractButton>
#include <QKeyEvent>

namespace corvane::qt {

enum class ButtonKey {
  None,  // no key for buttons
  Held,  // one that is still down: does nothing
  Space,
  Return,  // and Enter
  Escape,
};

[[nodiscard]] ButtonKey buttonKeyOf(const QKeyEvent& event);

/// For a button that gets a key. True: that was all, the toolkit is not to hear of it.
[[nodiscard]] bool takeButtonKey(QAbstractButton& button, QKeyEvent& event);

/// For a panel or sheet that gets a key which no control inside has taken: presses the push button that is
/// the default one (Return), or whose `escapes` is set (Escape). False for a key that is not for buttons.
bool pressButtonOf(const QWidget& panel, const QKeyEvent& event);

}  // namespace corvane::qt
