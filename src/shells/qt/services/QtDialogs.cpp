#include "services/QtDialogs.h"

#include <QApplication>
#include <QFileDialog>
#include <QHeaderView>
#include <QTreeView>
#include <utility>

#include "Fonts.h"
#include "Text.h"
#include "trees/Tree.h"
#include "trees/TreeFilePanel.h"
#include "widgets/AlertPanel.h"
#include "widgets/ButtonKeys.h"
#include "widgets/ModalAlert.h"

namespace corvane::qt {
namespace {

/// While it lives, a Return that is still held down from before does not answer the panel that has come up
/// under it.
class IgnoringHeldReturn final : public QObject {
 public:
  IgnoringHeldReturn() { qApp->installEventFilter(this); }
  bool eventFilter(QObject* /*watched*/, QEvent* event) override {
    if (event->type() != QEvent::KeyPress) return false;
    const auto& key = *static_cast<const QKeyEvent*>(event);
    return key.key() != Qt::Key_Space && buttonKeyOf(key) == ButtonKey::Held;
  }
};

/// Shows the dates and kinds of files whole, which the toolkit's own panel would cut off.
void makeRoom(QFileDialog& panel) {
  const auto* files = panel.findChild<QTreeView*>(QStringLiteral("treeView"));
  if (files == nullptr) return;  // the panel is the desktop's
  files->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
  files->header()->setSectionResizeMode(0, QHeaderView::Stretch);
  panel.resize(toPixels(760), toPixels(460));
}

}  // namespace

QtDialogs::QtDialogs(SheetHost& host, std::string rootPrefix)
    : host_(host), rootPrefix_(std::move(rootPrefix)), tree_(treeNote(rootPrefix_)) {}

QWidget* QtDialogs::visibleWindow() const {
  QWidget* window = host_.window();
  return window->isVisible() ? window : nullptr;
}

QString QtDialogs::takeNoteOf(const AlertDescription& alert) {
  const QString note = alert.messageText == note_.first ? std::exchange(note_.second, QString()) : QString();
  return note.isEmpty() || tree_.isEmpty() ? note + tree_ : note + QLatin1Char('\n') + tree_;
}

void QtDialogs::beginSheet(const AlertDescription& alert, SheetWindow /*window*/,
                           std::function<void(const AlertResult&)> ended) {
  auto* panel = new AlertPanel(alert, takeNoteOf(alert), &host_);
  QObject::connect(panel, &AlertPanel::ended, panel,
                   [this, panel, ended = std::move(ended)](const AlertResult& result) {
                     const auto report = ended;  // the panel, and with it this call, may go away meanwhile
                     const AlertResult answer = result;
                     host_.close(panel);
                     panel->deleteLater();
                     if (report) report(answer);
                   });
  host_.open(panel);
}

AlertResult QtDialogs::runModalAlert(const AlertDescription& alert) {
  return qt::runModalAlert(alert, tree_, visibleWindow());
}

std::unique_ptr<QFileDialog> QtDialogs::panelFor(const OpenPanelDescription& description) const {
  if (!rootPrefix_.empty())
    return std::make_unique<TreeFilePanel>(rootPrefix_, description, lastPlace_, visibleWindow());
  auto panel = std::make_unique<QFileDialog>(visibleWindow(), panelTitle(description));
  if (!description.directory.empty()) panel->setDirectory(toQString(description.directory));
  return panel;
}

std::vector<std::string> QtDialogs::runOpenPanel(const OpenPanelDescription& description) {
  const auto panel = panelFor(description);
  panel->setAcceptMode(QFileDialog::AcceptOpen);
  // The toolkit's panel chooses either files or folders; files win where both are allowed.
  if (description.canChooseDirectories && !description.canChooseFiles) {
    panel->setFileMode(QFileDialog::Directory);
    panel->setOption(QFileDialog::ShowDirsOnly);
  } else {
    panel->setFileMode(description.allowsMultipleSelection ? QFileDialog::ExistingFiles
                                                           : QFileDialog::ExistingFile);
  }
  makeRoom(*panel);
  const IgnoringHeldReturn ignoring;
  const bool accepted = panel->exec() == QDialog::Accepted;
  const auto* inTree = qobject_cast<const TreeFilePanel*>(panel.get());
  if (inTree != nullptr) lastPlace_ = inTree->place();
  if (!accepted) return {};
  std::vector<std::string> paths;
  for (const QString& path : inTree != nullptr ? inTree->chosen() : panel->selectedFiles())
    paths.push_back(fromQString(path));
  return paths;
}

}  // namespace corvane::qt
