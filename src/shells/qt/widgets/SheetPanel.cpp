#include "widgets/SheetPanel.h"

#include <QPainter>
#include <QVBoxLayout>

#include "appearance/Appearance.h"
#include "appearance/Shapes.h"
#include "widgets/ButtonKeys.h"

namespace corvane::qt {
namespace {

constexpr int kShadow = 14;
constexpr int kRadius = 8;

}  // namespace

SheetPanel::SheetPanel(QWidget* parent) : QWidget(parent), layout_(new QVBoxLayout(this)) {
  setObjectName(QStringLiteral("sheet"));
  setFocusPolicy(Qt::NoFocus);
  layout_->setContentsMargins(kShadow, 0, kShadow, kShadow);
  layout_->setSizeConstraint(QLayout::SetNoConstraint);
}

void SheetPanel::setContents(QWidget* contents) {
  while (QLayoutItem* item = layout_->takeAt(0)) {
    if (item->widget() != nullptr) {
      item->widget()->hide();
      item->widget()->setParent(parentWidget());
    }
    delete item;
  }
  if (contents != nullptr) {
    layout_->addWidget(contents);
    contents->show();
  }
}

QWidget* SheetPanel::contents() const {
  return layout_->count() > 0 ? layout_->itemAt(0)->widget() : nullptr;
}

void SheetPanel::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const QRectF box = QRectF(rect()).adjusted(kShadow, -kRadius, -kShadow, -kShadow);
  for (int i = 0; i < kShadow; ++i) {
    const qreal spread = kShadow - i;
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0, 0, 0, 2 + i / 3));
    painter.drawRoundedRect(box.adjusted(-spread, 0, spread, spread), kRadius + spread, kRadius + spread);
  }
  drawRounded(painter, box.adjusted(-0.5, 0, 0.5, 0.5), kRadius, palette().color(QPalette::Window),
              outlineColor(palette()));
}

QWidget* SheetPanel::nextFocus(QWidget* from, bool next) const {
  QWidget* widget = from;
  do {
    widget = next ? widget->nextInFocusChain() : widget->previousInFocusChain();
    if (widget != this && isAncestorOf(widget) && widget->isVisibleTo(this) && widget->isEnabled() &&
        (widget->focusPolicy() & Qt::TabFocus) != 0 && widget->focusProxy() == nullptr) {
      return widget;
    }
  } while (widget != from);
  return nullptr;
}

bool SheetPanel::focusNextPrevChild(bool next) {
  QWidget* focus = window()->focusWidget();
  if (focus == nullptr || !isAncestorOf(focus)) focus = this;
  QWidget* following = nextFocus(focus, next);
  if (following == nullptr) return false;
  following->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
  return true;
}

void SheetPanel::keyPressEvent(QKeyEvent* event) {
  if (!pressButtonOf(*this, *event)) QWidget::keyPressEvent(event);
}

void SheetPanel::takeFocus() {
  QWidget* contents = this->contents();
  if (contents == nullptr) return;
  QWidget* first = contents->focusProxy();
  if (first == nullptr && contents->focusPolicy() != Qt::NoFocus) first = contents;
  if (first == nullptr) first = nextFocus(contents, true);
  // As if the Tab key had gone there: the text of a field is selected, ready to be typed over.
  if (first != nullptr) first->setFocus(Qt::TabFocusReason);
}

}  // namespace corvane::qt
