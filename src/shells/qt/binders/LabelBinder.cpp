#include "binders/LabelBinder.h"

#include "Text.h"

namespace corvane::qt {

LabelBinder::LabelBinder(TextField& field, QLabel& widget)
    : Binder(field, widget), field_(field), widget_(widget) {
  widget_.setTextFormat(Qt::PlainText);
  refresh();
}

void LabelBinder::show() { widget_.setText(toQString(field_.stringValue())); }

}  // namespace corvane::qt
