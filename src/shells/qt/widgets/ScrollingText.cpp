#include "widgets/ScrollingText.h"

#include <algorithm>

namespace corvane::qt {
namespace {

constexpr int kFewestLines = 4;

}  // namespace

ScrollingText::ScrollingText(QWidget* parent) : QScrollArea(parent) {
  setFrameShape(QFrame::NoFrame);
  setWidgetResizable(true);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setFocusPolicy(Qt::NoFocus);  // the panel around it scrolls it with its keys
  viewport()->setAutoFillBackground(false);
  QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Preferred);
  policy.setHeightForWidth(true);
  setSizePolicy(policy);
}

int ScrollingText::heightForWidth(int width) const {
  return widget() != nullptr ? widget()->heightForWidth(width) : -1;
}

QSize ScrollingText::sizeHint() const {
  return widget() != nullptr ? widget()->sizeHint() : QScrollArea::sizeHint();
}

QSize ScrollingText::minimumSizeHint() const {
  if (widget() == nullptr) return QScrollArea::minimumSizeHint();
  const QSize smallest = widget()->minimumSizeHint();
  return {smallest.width(), std::min(smallest.height(), kFewestLines * fontMetrics().lineSpacing())};
}

}  // namespace corvane::qt
