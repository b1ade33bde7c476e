#include "trees/TreeWindows.h"

#include <QApplication>
#include <QDropEvent>
#include <QFileDialog>
#include <QMimeData>
#include <QShortcut>
#include <QUrl>
#include <algorithm>

#include "LinuxPane.h"
#include "Text.h"
#include "WindowSize.h"
#include "platform/linux/MountTable.h"
#include "trees/StartPage.h"
#include "trees/Tree.h"
#include "widgets/ModalAlert.h"

namespace corvane::qt {
namespace {

/// The one folder of this computer that is being dropped; empty for anything else.
QString folderIn(const QMimeData* data) {
  if (data == nullptr || data->urls().size() != 1) return {};
  const QString path = data->urls().constFirst().toLocalFile();
  return QFileInfo(path).isDir() ? path : QString();
}

AlertDescription refusalAlert(const QString& reason) {
  return {.style = AlertStyle::Warning,
          .messageText = "This folder can't be opened",
          .informativeText = fromQString(reason),
          .buttons = {{"OK", {}}},
          .iconPath = {},
          .accessory = {}};
}

AlertDescription aboutAlert() {
  return {
      .style = AlertStyle::Informational,
      .messageText = "Monitoring Client " CORVANE_VERSION,
      .informativeText =
          "See and change the settings of a monitoring client, on a Mac volume that is mounted here or in "
          "a tree that is being prepared.\n\n"
          "Ctrl-O  open another tree\n"
          "Ctrl-Tab  next tab\n"
          "Ctrl-F  find a plug-in or a setting\n"
          "Ctrl-W  close the window\n"
          "Ctrl-Q  close all windows\n\n"
          "The manual page says more: man corvane-pane",
      .buttons = {{"OK", {}}},
      .iconPath = {},
      .accessory = {}};
}

}  // namespace

TreeWindows::TreeWindows(Surroundings surroundings) : surroundings_(std::move(surroundings)) {}

TreeWindows::~TreeWindows() = default;

std::vector<LinuxPane*> TreeWindows::panes() const {
  std::vector<LinuxPane*> result;
  for (const auto& pane : panes_) result.push_back(pane.get());
  return result;
}

LinuxPane* TreeWindows::openPane(const std::string& rootPrefix) {
  if (!rootPrefix.empty() && holdsClient(rootPrefix)) surroundings_.recents.add(toQString(rootPrefix));
  for (const auto& pane : panes_) {
    if (pane->assembly().paths().rootPrefix() != rootPrefix) continue;
    pane->window().raise();
    pane->window().activateWindow();
    endStartPage();
    return pane.get();
  }
  LinuxPane* pane = panes_.emplace_back(std::make_unique<LinuxPane>(rootPrefix)).get();
  attend(pane->window());
  rememberSize(pane->window());
  opening_ = pane;
  pane->open();
  opening_ = nullptr;
  endStartPage();
  const bool isThere = pane->window().isVisible();
  forgetClosed();
  return isThere ? pane : nullptr;
}

void TreeWindows::open(const QString& folder, QWidget* chosenIn) {
  const QString objection = objectionTo(folder);
  if (objection.isEmpty()) {
    openPane(rootPrefixOf(folder));
  } else if (chosenIn == nullptr || chosenIn == startPage_.get()) {
    showStart(objection);
  } else {
    runModalAlert(refusalAlert(objection), {}, chosenIn);
  }
}

void TreeWindows::showStart(const QString& refusal) {
  if (!startPage_) {
    startPage_ = std::make_unique<StartPage>(surroundings_.disks(), surroundings_.recents.list());
    attend(*startPage_);
    connect(startPage_.get(), &StartPage::chosen, this,
            [this](const QString& folder) { open(folder, startPage_.get()); });
    connect(startPage_.get(), &StartPage::wantsFolder, this, [this] { chooseFolder(*startPage_); });
    connect(startPage_.get(), &StartPage::wantsNoRecents, this, [this] { surroundings_.recents.clear(); });
    startPage_->show();
  }
  startPage_->showRefusal(refusal);
}

void TreeWindows::attend(QWidget& window) {
  window.setAcceptDrops(true);
  window.installEventFilter(this);
  const auto key = [&](const QKeySequence& keys, auto act) {
    connect(new QShortcut(keys, &window), &QShortcut::activated, this, act);
  };
  key(Qt::CTRL | Qt::Key_O, [this, &window] { chooseFolder(window); });
  key(Qt::CTRL | Qt::Key_W, [&window] { window.close(); });
  key(Qt::CTRL | Qt::Key_Q, [] { QApplication::closeAllWindows(); });
  key(Qt::Key_F1, [this, &window] { showAbout(window); });
}

void TreeWindows::chooseFolder(QWidget& window) {
  const QString folder = QFileDialog::getExistingDirectory(
      &window, QStringLiteral("Open a folder that holds a monitoring client"), QString());
  if (!folder.isEmpty()) open(folder, &window);
}

void TreeWindows::showAbout(QWidget& window) {
  const bool isStart = &window == startPage_.get();  // there is no tree to name
  runModalAlert(aboutAlert(), isStart ? QString() : window.windowTitle(), &window);
}

bool TreeWindows::eventFilter(QObject* watched, QEvent* event) {
  auto* window = qobject_cast<QWidget*>(watched);
  switch (event->type()) {
    case QEvent::DragEnter:
    case QEvent::DragMove: {
      auto& drag = *static_cast<QDragMoveEvent*>(event);
      if (folderIn(drag.mimeData()).isEmpty()) return false;
      drag.acceptProposedAction();
      return true;
    }
    case QEvent::Drop: {
      auto& drop = *static_cast<QDropEvent*>(event);
      const QString folder = folderIn(drop.mimeData());
      if (folder.isEmpty()) return false;
      drop.acceptProposedAction();
      // Later: whoever drags waits until the drop has been taken.
      QMetaObject::invokeMethod(
          window, [this, folder, window] { open(folder, window); }, Qt::QueuedConnection);
      return true;
    }
    case QEvent::Close:
      QMetaObject::invokeMethod(this, &TreeWindows::forgetClosed, Qt::QueuedConnection);
      return false;
    default:
      return false;
  }
}

void TreeWindows::endStartPage() {
  if (!startPage_) return;
  startPage_->hide();
  startPage_.release()->deleteLater();  // it may be what has asked for this
}

void TreeWindows::forgetClosed() {
  if (startPage_ && !startPage_->isVisible()) endStartPage();
  // A pane that is being opened ends what it is at first.
  std::erase_if(panes_,
                [this](const auto& pane) { return pane.get() != opening_ && !pane->window().isVisible(); });
}

QStringList mountedTrees() {
  QStringList trees;
  for (const std::string& disk : MountTable().disks()) {
    if (disk != "/" && holdsClient(disk)) trees.append(toQString(disk));
  }
  return trees;
}

}  // namespace corvane::qt
