#include "widgets/SheetHost.h"

#include <QApplication>
#include <QEvent>
#include <QPainter>
#include <QPropertyAnimation>
#include <algorithm>

#include "widgets/SheetPanel.h"

namespace corvane::qt {
namespace {

constexpr int kSlideMilliseconds = 160;

}  // namespace

SheetHost::SheetHost(QWidget* window)
    : QWidget(window), panel_(new SheetPanel(this)), slide_(new QPropertyAnimation(panel_, "pos", this)) {
  setObjectName(QStringLiteral("sheetHost"));
  hide();
  slide_->setDuration(kSlideMilliseconds);
  slide_->setEasingCurve(QEasingCurve::OutCubic);
  window->installEventFilter(this);
  connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) { keepFocus(now); });
}

SheetHost::~SheetHost() { disconnect(qApp, nullptr, this, nullptr); }

void SheetHost::open(QWidget* contents) {
  if (contents == current_) return;
  focusBefore_ = window()->focusWidget();
  focusInSheet_ = nullptr;
  current_ = contents;
  panel_->setContents(current_);
  show();
  raise();
  place();
  slide_->setStartValue(QPoint(panel_->x(), -panel_->height()));
  slide_->setEndValue(QPoint(panel_->x(), 0));
  slide_->start();
  panel_->takeFocus();
}

void SheetHost::close(QWidget* contents) {
  if (contents != current_) return;
  slide_->stop();
  current_ = nullptr;
  panel_->setContents(nullptr);
  hide();
  // What had the keyboard may be out of use by now; what was taken from it meanwhile goes nowhere else.
  QWidget* next =
      focusBefore_ && focusBefore_->isEnabled() && focusBefore_->isVisible() ? focusBefore_.data() : window();
  next->setFocus(Qt::OtherFocusReason);
  focusBefore_ = nullptr;
  focusInSheet_ = nullptr;
}

bool SheetHost::isSliding() const { return slide_->state() == QAbstractAnimation::Running; }

void SheetHost::place() {
  setGeometry(parentWidget()->rect());
  if (!current_) return;
  const QSize wanted = panel_->sizeHint().expandedTo(panel_->minimumSizeHint());
  const int width = std::min(wanted.width(), this->width());
  const int fitting = panel_->hasHeightForWidth() ? panel_->heightForWidth(width) : wanted.height();
  const int height = std::min(std::max(fitting, panel_->minimumSizeHint().height()), this->height());
  panel_->resize(width, height);
  panel_->move((this->width() - width) / 2, isSliding() ? panel_->y() : 0);
}

void SheetHost::keepFocus(QWidget* now) {
  if (!current_ || now == nullptr || now->window() != window()) return;
  if (panel_->isAncestorOf(now)) {
    focusInSheet_ = now;
  } else if (focusInSheet_) {
    focusInSheet_->setFocus(Qt::OtherFocusReason);
  } else {
    panel_->takeFocus();
  }
}

bool SheetHost::eventFilter(QObject* watched, QEvent* event) {
  if (watched == parentWidget() && event->type() == QEvent::Resize) place();
  return QWidget::eventFilter(watched, event);
}

void SheetHost::paintEvent(QPaintEvent*) { QPainter(this).fillRect(rect(), QColor(0, 0, 0, 28)); }

}  // namespace corvane::qt
