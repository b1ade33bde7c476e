// Where the keyboard goes when the control that has it is taken out of use behind the user's back: by a run
// of the client that begins, a volume that goes, a lock that closes. The toolkit would give it to the next
// control, and the Space or the digit that was meant for the one would act on the other. It is put on the
// window instead, where keys do nothing, until the control is in use again or the user goes elsewhere.
#pragma once

#include <QWidget>

namespace corvane::qt {

/// To be called before a widget is disabled or hidden; does nothing when the keyboard is elsewhere.
void parkKeyboard(QWidget& widget);
/// To be called after a widget was enabled or shown: gives back what was last taken from it, unless the
/// keyboard has gone elsewhere.
void returnKeyboard(QWidget& widget);

}  // namespace corvane::qt
