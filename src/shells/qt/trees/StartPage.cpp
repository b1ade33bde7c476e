#include "trees/StartPage.h"

#include <QAccessible>
#include <QDir>

#include "Fonts.h"
#include "Text.h"
#include "appearance/Appearance.h"
#include "trees/TreeButton.h"
#include "ui_StartPage.h"

namespace corvane::qt {
namespace {

constexpr int kIconSize = 64;  // points

}  // namespace

StartPage::StartPage(const QStringList& disks, const QStringList& recents)
    : ui_(std::make_unique<Ui::StartPage>()) {
  ui_->setupUi(this);
  scaleToFont(*this);
  setWindowTitle(QStringLiteral("Monitoring Client"));
  const QIcon icon = productIcon();
  setWindowIcon(icon);
  ui_->icon->setPixmap(icon.pixmap(QSize(toPixels(kIconSize), toPixels(kIconSize)), devicePixelRatioF()));
  QFont bold = font();
  bold.setBold(true);
  ui_->heading->setText(QStringLiteral("Open a monitoring client"));
  ui_->heading->setFont(bold);
  ui_->explanation->setText(QStringLiteral(
      "This computer itself runs none. Open a folder that holds one: a Mac volume that is mounted "
      "here, or a tree that is being prepared. A folder can also be dropped on this window."));
  ui_->openButton->setText(QStringLiteral("Open Folder…"));
  ui_->disksLabel->setText(QStringLiteral("Mounted disks with a client:"));
  ui_->recentsLabel->setText(QStringLiteral("Opened last:"));
  ui_->clearButton->setText(QStringLiteral("Clear"));
  ui_->clearButton->setAccessibleName(QStringLiteral("Clear the trees that were opened last"));
  ui_->treesArea->setFocusPolicy(Qt::NoFocus);
  showRefusal({});
  QWidget* last = addTrees(disks, *ui_->disksLayout, ui_->openButton);
  setTabOrder(last, ui_->clearButton);
  ui_->disks->setVisible(!disks.isEmpty());
  QStringList others = recents;
  others.removeIf([&](const QString& folder) { return disks.contains(folder); });
  addTrees(others, *ui_->recentsLayout, ui_->clearButton);
  ui_->recents->setVisible(!others.isEmpty());
  connect(ui_->openButton, &QAbstractButton::clicked, this, &StartPage::wantsFolder);
  connect(ui_->clearButton, &QAbstractButton::clicked, this, [this] {
    clearRecents();
    emit wantsNoRecents();
  });
  ui_->openButton->setFocus();
}

StartPage::~StartPage() = default;

void StartPage::showRefusal(const QString& reason) {
  ui_->refusal->setVisible(!reason.isEmpty());
  ui_->refusal->setText(reason);
  if (reason.isEmpty()) return;
  QAccessibleEvent told(ui_->refusal, QAccessible::Alert);
  QAccessible::updateAccessibility(&told);
}

QWidget* StartPage::addTrees(const QStringList& folders, QBoxLayout& list, QWidget* before) {
  for (const QString& folder : folders) {
    auto* button = new TreeButton(folder);
    connect(button, &QAbstractButton::clicked, this, [this, folder] { emit chosen(folder); });
    list.addWidget(button);
    setTabOrder(before, button);
    before = button;
  }
  return before;
}

void StartPage::clearRecents() {
  ui_->openButton->setFocus();
  ui_->recents->hide();
}

}  // namespace corvane::qt
