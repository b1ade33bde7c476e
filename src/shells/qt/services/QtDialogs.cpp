#include "services/QtDialogs.h"

#include <QApplication>
#include <QDialog>
#include <QFileDialog>
#include <QHeaderView>
#include <QTreeView>
#include <QVBoxLayout>
#include <utility>

#include "Fonts.h"
#include "Text.h"
#include "widgets/AlertPanel.h"
#include "widgets/ButtonKeys.h"

namespace corvane::qt {
namespace {

/// Ends only through its buttons: the window's own ways to close it press the button that leaves everything
/// as it is.
class ModalAlert final : public QDialog {
 public:
  ModalAlert(const AlertDescription& alert, QWidget* parent)
      : QDialog(parent), panel_(new AlertPanel(alert)) {
    setObjectName(QStringLiteral("modalAlert"));
    setWindowTitle(toQString(alert.messageText));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    layout->addWidget(panel_);
    connect(panel_, &AlertPanel::ended, this, [this](const AlertResult& result) {
      result_ = result;
      accept();
    });
  }
  void reject() override { panel_->cancel(); }
  [[nodiscard]] const AlertResult& alertResult() const { return result_; }

 protected:
  void keyPressEvent(QKeyEvent* event) override {
    if (!pressButtonOf(*this, *event)) QDialog::keyPressEvent(event);
  }

 private:
  AlertPanel* panel_;
  AlertResult result_;
};

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

QWidget* QtDialogs::visibleWindow() const {
  QWidget* window = host_.window();
  return window->isVisible() ? window : nullptr;
}

QString QtDialogs::takeNoteOf(const AlertDescription& alert) {
  return alert.messageText == note_.first ? std::exchange(note_.second, QString()) : QString();
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
  ModalAlert dialog(alert, visibleWindow());
  dialog.exec();
  return dialog.alertResult();
}

std::vector<std::string> QtDialogs::runOpenPanel(const OpenPanelDescription& description) {
  QFileDialog panel(visibleWindow());
  panel.setAcceptMode(QFileDialog::AcceptOpen);
  // The toolkit's panel chooses either files or folders; files win where both are allowed.
  if (description.canChooseDirectories && !description.canChooseFiles) {
    panel.setFileMode(QFileDialog::Directory);
    panel.setOption(QFileDialog::ShowDirsOnly);
  } else {
    panel.setFileMode(description.allowsMultipleSelection ? QFileDialog::ExistingFiles
                                                          : QFileDialog::ExistingFile);
  }
  makeRoom(panel);
  if (!description.directory.empty()) panel.setDirectory(toQString(description.directory));
  const IgnoringHeldReturn ignoring;
  if (panel.exec() != QDialog::Accepted) return {};
  std::vector<std::string> paths;
  for (const QString& path : panel.selectedFiles()) paths.push_back(fromQString(path));
  return paths;
}

}  // namespace corvane::qt
