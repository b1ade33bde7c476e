#include "binders/Binder.h"

#include <QApplication>
#include <QEvent>
#include <QtMath>
#include <algorithm>

#include "Fonts.h"
#include "Text.h"
#include "accessibility/Spoken.h"
#include "widgets/KeyboardParking.h"
#include "widgets/SheetHost.h"

namespace corvane::qt {

Binder::Binder(Control& control, QWidget& widget) : QObject(&widget), control_(control), widget_(widget) {
  // A hidden control leaves its place empty; the others stay where they are.
  QSizePolicy policy = widget.sizePolicy();
  policy.setRetainSizeWhenHidden(true);
  widget.setSizePolicy(policy);
  control_.onChange = [this] { refresh(); };
}

Binder::~Binder() { control_.onChange = nullptr; }

void Binder::refresh() {
  setSpokenName(namedWidget(), toQString(control_.accessibleName()));
  showToolTip();
  show();
  enableOrDisable();
  showOrHide();
  place();
}

/// The toolkit would let assistive technology read the tool tip as it was made for showing, and tell of no
/// other one.
void Binder::showToolTip() {
  const QString toolTip = plainToolTip(control_.toolTip());
  if (toolTip == widget_.toolTip()) return;
  widget_.setToolTip(toolTip);
  setSpokenDescription(widget_, toQString(control_.toolTip()));
}

bool Binder::isInReach() const {
  if (!widget_.isVisible()) return false;
  const QWidget* panel = QApplication::activeModalWidget();
  if (panel != nullptr && panel != widget_.window()) return false;
  const auto* sheets = widget_.window()->findChild<SheetHost*>(QString(), Qt::FindDirectChildrenOnly);
  return sheets == nullptr || sheets->current() == nullptr || sheets->isAncestorOf(&widget_);
}

void Binder::enableOrDisable() {
  const bool takes = takesActs();
  if (!takes && widget_.isEnabled()) parkKeyboard(widget_);
  widget_.setEnabled(takes);
  returnKeyboard(widget_);
}

void Binder::showOrHide() {
  if (control_.hidden() && widget_.hasFocus()) {
    // Hiding takes the keyboard away. A controller that rebuilds what it shows may hide a control and show it
    // again in one go, so a control that is being typed in is hidden only after that.
    QMetaObject::invokeMethod(
        this,
        [this] {
          if (control_.hidden()) parkKeyboard(widget_);
          widget_.setVisible(!control_.hidden());
        },
        Qt::QueuedConnection);
    return;
  }
  widget_.setVisible(!control_.hidden());
  returnKeyboard(widget_);
}

void Binder::placeHorizontally() {
  isPlacedHorizontally_ = true;
  if (widget_.parentWidget() != nullptr) widget_.parentWidget()->installEventFilter(this);
  place();
}

void Binder::place() {
  const QWidget* parent = widget_.parentWidget();
  if (!isPlacedHorizontally_ || parent == nullptr) return;
  const Rect& frame = control_.frame();
  const int left = std::max(0, toPixels(frame.x));
  // A text that has just its width is not cut off for a part of a pixel.
  const int right = std::min(parent->width(), left + qCeil(frame.width / toPoints(1)));
  widget_.setGeometry(left, widget_.y(), std::max(0, right - left), widget_.height());
}

bool Binder::eventFilter(QObject* watched, QEvent* event) {
  if (watched == widget_.parentWidget() && event->type() == QEvent::Resize) place();
  return QObject::eventFilter(watched, event);
}

}  // namespace corvane::qt
