#include "PaneWindow.h"

#include <QApplication>
#include <QEventLoop>
#include <QShortcut>
#include <QTimer>

#include "Fonts.h"
#include "Text.h"
#include "accessibility/AccessibleWidgets.h"
#include "appearance/Appearance.h"
#include "binders/AuthorizationViewBinder.h"
#include "binders/ButtonBinder.h"
#include "binders/StatusBinder.h"
#include "binders/TabViewBinder.h"
#include "ui_PaneWindow.h"
#include "widgets/SheetHost.h"

namespace corvane::qt {

PaneWindow::PaneWindow(QWidget* parent)
    : QWidget(parent), ui_(std::make_unique<Ui::PaneWindow>()), sheets_(new SheetHost(this)) {
  installAccessibleWidgets();
  ui_->setupUi(this);
  scaleToFont(*this);
  ui_->quorlenIconButton->setIconSize(QSize(1, 1) * toPixels(24));
  // The header's room is measured for this font; a text that comes without one is shown in it too.
  const QFont header = toQFont(Font{Font::Family::Arial, 14});
  for (QWidget* text : {ui_->greetingButton, ui_->urlButton}) text->setFont(header);
  ui_->greetingButton->setAlignment(Qt::AlignHCenter);
  const QFont small = toQFont(Font{Font::Family::System, 12});
  for (QWidget* text : std::initializer_list<QWidget*>{ui_->treeField, ui_->statusField, ui_->authLabel})
    text->setFont(small);
  ui_->treeField->hide();
  ui_->clientVersionButton->setFont(small);
  ui_->clientVersionButton->setAlignment(Qt::AlignRight);
  setFocus();  // no control is marked before the keyboard is used
  addTabKeys(QKeySequence::keyBindings(QKeySequence::NextChild) << (Qt::CTRL | Qt::Key_PageDown), 1);
  addTabKeys(QKeySequence::keyBindings(QKeySequence::PreviousChild) << (Qt::CTRL | Qt::Key_PageUp), -1);
}

PaneWindow::~PaneWindow() {
  if (shown_ != nullptr) shown_->onChange = nullptr;
}

void PaneWindow::bindFrameTo(PaneView& view) {
  shown_ = &view.mainWindow;
  shown_->onChange = [this] {
    const QString title = toQString(shown_->title());
    setWindowTitle(tree_.isEmpty() ? title : QStringLiteral("%1 — %2").arg(tree_, title));
  };
  shown_->onChange();
  new AuthorizationViewBinder(view.authView, *ui_->authView, *ui_->authLabel, tree_);
  new StatusBinder(view.statusField, *ui_->statusField);
  new TabViewBinder(view.tabView, *ui_->tabView);
}

void PaneWindow::setTree(const QString& tree) {
  tree_ = tree;
  ui_->treeField->showAsPath();
  ui_->treeField->setText(tree);
  ui_->treeField->setVisible(!tree.isEmpty());
  if (tree.isEmpty()) return;
  // A line more below the tabs, which keep their room.
  setMinimumHeight(minimumHeight() + ui_->treeLayout->sizeHint().height());
}

void PaneWindow::bindHeaderTo(PaneView& view) {
  (new ButtonBinder(view.greetingButton, *ui_->greetingButton))->placeHorizontally();
  (new ButtonBinder(view.urlButton, *ui_->urlButton))->placeHorizontally();
  new ButtonBinder(view.clientVersionButton, *ui_->clientVersionButton);
}

void PaneWindow::bindIconTo(PaneView& view) {
  const QIcon icon = productIcon();
  QApplication::setWindowIcon(icon);
  ui_->quorlenIconButton->setIcon(icon);
  new ButtonBinder(view.quorlenIconButton, *ui_->quorlenIconButton);
}

void PaneWindow::addTabKeys(const QList<QKeySequence>& keys, int step) {
  auto* shortcut = new QShortcut(this);
  shortcut->setKeys(keys);
  connect(shortcut, &QShortcut::activated, this, [this, step] {
    if (sheets_->current() == nullptr) ui_->tabView->chooseNext(step);
  });
}

void PaneWindow::setTabPage(int index, QWidget* page) {
  ui_->tabView->setPage(index, page);
  // The Tab key would come to a page that is put in later only after the controls below it.
  QWidget* last = previousInFocusChain();
  while (last->focusPolicy() == Qt::NoFocus) last = last->previousInFocusChain();
  setTabOrder(last, ui_->authView);
  setTabOrder(ui_->authView, ui_->quorlenIconButton);
}

TabPane& PaneWindow::tabs() const { return *ui_->tabView; }

bool PaneWindow::showPainted() {
  QEventLoop loop;
  bool isSeen = false;
  // Queued: the window's children are painted, and all of it is put on the screen, after the window itself.
  connect(
      this, &PaneWindow::painted, &loop,
      [&] {
        isSeen = true;
        loop.quit();
      },
      Qt::QueuedConnection);
  QTimer::singleShot(longestWaitForPaint, &loop, &QEventLoop::quit);
  if (isVisible()) {
    update();
  } else {
    show();
  }
  loop.exec(QEventLoop::ExcludeUserInputEvents);
  return isSeen;
}

void PaneWindow::paintEvent(QPaintEvent* event) {
  QWidget::paintEvent(event);
  emit painted();
}

}  // namespace corvane::qt
