#include "PaneWindow.h"

#include <QEventLoop>
#include <QTimer>
#include <chrono>

#include "Text.h"
#include "appearance/Appearance.h"
#include "binders/AuthorizationViewBinder.h"
#include "binders/ButtonBinder.h"
#include "binders/TabViewBinder.h"
#include "ui_PaneWindow.h"
#include "widgets/SheetHost.h"

namespace corvane::qt {

PaneWindow::PaneWindow(QWidget* parent)
    : QWidget(parent), ui_(std::make_unique<Ui::PaneWindow>()), sheets_(new SheetHost(this)) {
  ui_->setupUi(this);
  ui_->quorlenIconButton->setIcon(productIcon());
  QFont small = font();
  small.setPixelSize(12);
  ui_->authLabel->setFont(small);
  ui_->clientVersionButton->setFont(small);
  ui_->clientVersionButton->setAlignment(Qt::AlignRight);
  setFocus();  // no control is marked before the keyboard is used
}

PaneWindow::~PaneWindow() = default;

void PaneWindow::bindFrameTo(PaneView& view) {
  view.mainWindow.onChange = [this, &view] { setWindowTitle(toQString(view.mainWindow.title())); };
  view.mainWindow.onChange();
  new AuthorizationViewBinder(view.authView, *ui_->authView, *ui_->authLabel);
  new TabViewBinder(view.tabView, *ui_->tabView);
}

void PaneWindow::bindHeaderTo(PaneView& view) {
  (new ButtonBinder(view.greetingButton, *ui_->greetingButton))->setPlacement(Placement::Horizontal);
  (new ButtonBinder(view.urlButton, *ui_->urlButton))->setPlacement(Placement::Horizontal);
  new ButtonBinder(view.clientVersionButton, *ui_->clientVersionButton);
  new ButtonBinder(view.quorlenIconButton, *ui_->quorlenIconButton);
}

void PaneWindow::setTabPage(int index, QWidget* page) { ui_->tabView->setPage(index, page); }

TabPane& PaneWindow::tabs() const { return *ui_->tabView; }

void PaneWindow::showPainted() {
  constexpr std::chrono::milliseconds kLongestWait(250);
  QEventLoop loop;
  // Queued: the window's children are painted, and all of it is put on the screen, after the window itself.
  connect(this, &PaneWindow::painted, &loop, &QEventLoop::quit, Qt::QueuedConnection);
  QTimer::singleShot(kLongestWait, &loop, &QEventLoop::quit);
  show();
  loop.exec(QEventLoop::ExcludeUserInputEvents);
}

void PaneWindow::paintEvent(QPaintEvent* event) {
  QWidget::paintEvent(event);
  emit painted();
}

}  // namespace corvane::qt
