#include "widgets/FittedLabel.h"

#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

#include "AttributedTextLayout.h"
#include "Text.h"
#include "TextLine.h"
#include "widgets/CopyMenu.h"

namespace corvane::qt {

FittedLabel::FittedLabel(QWidget* parent) : QLabel(parent) {
  setTextFormat(Qt::PlainText);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
}

void FittedLabel::showAsPath() {
  isPath_ = true;
  offerCopy(*this, [this] { return text(); });
}

QSize FittedLabel::sizeHint() const {
  constexpr int kSomeCharacters = 10;
  return {fontMetrics().averageCharWidth() * kSomeCharacters, fontMetrics().height()};
}

bool FittedLabel::event(QEvent* event) {
  if (event->type() != QEvent::ToolTip || !isCut_ || !toolTip().isEmpty()) return QLabel::event(event);
  QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), plainToolTip(fromQString(text())), this);
  return true;
}

void FittedLabel::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const QString shown = isPath_ ? shortenedPath(text(), font(), width()) : text();
  const AttributedTextLayout layout(AttributedText(fromQString(shown)), font(), palette(), color());
  isCut_ = !layout.draw(painter, rect(), Qt::AlignLeft) || shown != text();
}

}  // namespace corvane::qt
