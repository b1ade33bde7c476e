#include "widgets/TabPane.h"

#include <QPainter>
#include <QSignalBlocker>
#include <QStackedWidget>
#include <QTabBar>
#include <QVBoxLayout>

#include "Text.h"
#include "appearance/Appearance.h"
#include "appearance/Shapes.h"

namespace corvane::qt {

TabPane::TabPane(QWidget* parent)
    : QWidget(parent), bar_(new QTabBar(this)), pages_(new QStackedWidget(this)) {
  bar_->setObjectName(QStringLiteral("tabBar"));
  bar_->setDrawBase(false);
  bar_->setExpanding(false);
  bar_->setUsesScrollButtons(false);
  bar_->setElideMode(Qt::ElideNone);
  bar_->setFocusPolicy(Qt::TabFocus);  // a click on a tab leaves the field that is being typed in alone
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(1, 0, 1, 1);
  layout->setSpacing(0);
  layout->addWidget(bar_, 0, Qt::AlignHCenter);
  layout->addWidget(pages_, 1);
  connect(bar_, &QTabBar::currentChanged, this, &TabPane::tabChosen);
}

int TabPane::count() const { return pages_->count(); }

void TabPane::addTab(const QString& label) {
  const QSignalBlocker blocker(bar_);
  bar_->addTab(withoutShortcuts(label));
  pages_->addWidget(new QWidget);
}

void TabPane::setPage(int index, QWidget* page) {
  QWidget* before = pages_->widget(index);
  if (before == nullptr) return;
  const int shown = pages_->currentIndex();
  page->setAccessibleName(bar_->tabText(index));
  pages_->removeWidget(before);
  delete before;
  pages_->insertWidget(index, page);
  pages_->setCurrentIndex(shown);
}

QWidget* TabPane::page(int index) const { return pages_->widget(index); }

void TabPane::showTab(int index) {
  const QSignalBlocker blocker(bar_);
  bar_->setCurrentIndex(index);
  pages_->setCurrentIndex(index);
}

void TabPane::chooseNext(int step) {
  if (count() > 0) bar_->setCurrentIndex((bar_->currentIndex() + step + count()) % count());
}

int TabPane::shownTab() const { return pages_->currentIndex(); }

void TabPane::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const QRectF box = QRectF(rect()).adjusted(0.5, bar_->geometry().center().y() + 0.5, -0.5, -0.5);
  QColor fill = palette().color(QPalette::WindowText);
  fill.setAlphaF(isDark(palette()) ? 0.04F : 0.035F);
  drawRounded(painter, box, 6, fill, separatorColor(palette()));
}

}  // namespace corvane::qt
