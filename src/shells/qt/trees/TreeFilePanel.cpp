#include "trees/TreeFilePanel.h"

#include <QAbstractItemView>
#include <QAccessible>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileInfo>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QToolButton>

#include "Text.h"
#include "pane/PathTable.h"
#include "trees/Tree.h"
#include "widgets/FittedLabel.h"

namespace corvane::qt {

QString panelTitle(const OpenPanelDescription& description) {
  if (!description.canChooseDirectories)
    return description.allowsMultipleSelection ? QStringLiteral("Choose files")
                                               : QStringLiteral("Choose a file");
  if (!description.canChooseFiles)
    return description.allowsMultipleSelection ? QStringLiteral("Choose folders")
                                               : QStringLiteral("Choose a folder");
  return QStringLiteral("Choose a file or a folder");
}

TreeFilePanel::TreeFilePanel(const std::string& rootPrefix, const OpenPanelDescription& description,
                             const QString& last, QWidget* window)
    : QFileDialog(window),
      root_(toQString(rootPrefix)),
      placeLabel_(new FittedLabel(this)),
      refusal_(new QLabel(this)) {
  setOption(DontUseNativeDialog);
  setOption(DontResolveSymlinks);  // what is chosen is called what it was found under
  setOption(ReadOnly);             // nothing is made, renamed or removed here
  setWindowTitle(QStringLiteral("%1 — %2").arg(panelTitle(description), treeTitle(rootPrefix)));
  setSidebarUrls({});
  for (const char* part : {"sidebar", "newFolderButton"}) {
    if (auto* widget = findChild<QWidget*>(QLatin1String(part))) widget->hide();
  }
  placeLabel_->setObjectName(QStringLiteral("place"));
  placeLabel_->showAsPath();
  if (auto* places = findChild<QComboBox*>(QStringLiteral("lookInCombo"))) {
    delete layout()->replaceWidget(places, placeLabel_);
    places->hide();
  }
  refusal_->setObjectName(QStringLiteral("refusal"));
  refusal_->setTextFormat(Qt::PlainText);
  refusal_->setWordWrap(true);
  refusal_->hide();
  if (auto* grid = qobject_cast<QGridLayout*>(layout()))
    grid->addWidget(refusal_, grid->rowCount(), 0, 1, -1);
  name_ = findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
  if (name_ != nullptr) {
    name_->setCompleter(nullptr);  // it would offer this computer's folders
    // After the panel itself, which takes the path for one of this computer.
    connect(name_, &QLineEdit::textChanged, this, &TreeFilePanel::offerTyped);
  }

  place_ = beginning(description.directory.empty() ? last : toQString(description.directory));
  setDirectory(place_);
  showPlace();
  connect(this, &QFileDialog::directoryEntered, this, &TreeFilePanel::enter);
}

QString TreeFilePanel::beginning(const QString& wanted) const {
  QString folder = wanted;
  while (folder.size() > root_.size() && !QFileInfo(folder).isDir()) folder = QFileInfo(folder).path();
  return isInside(folder) ? folder : root_;
}

bool TreeFilePanel::isInside(const QString& path) const {
  const QString found = QFileInfo(path).canonicalFilePath();
  const QString root = QFileInfo(root_).canonicalFilePath();
  return !root.isEmpty() && (found == root || found.startsWith(root + QLatin1Char('/')));
}

QString TreeFilePanel::onDisk(const QString& typed) const {
  return QDir::cleanPath(toQString(PathTable(fromQString(root_)).onDisk(fromQString(typed))));
}

void TreeFilePanel::offerTyped(const QString& typed) {
  auto* buttons = findChild<QDialogButtonBox*>(QStringLiteral("buttonBox"));
  if (buttons == nullptr || !typed.startsWith(QLatin1Char('/'))) return;
  selectNothing();  // it has taken the path, or its beginning, for one of this computer
  buttons->button(QDialogButtonBox::Open)->setEnabled(QFileInfo::exists(onDisk(typed)));
}

void TreeFilePanel::selectNothing() {
  for (const char* list : {"listView", "treeView"}) {
    if (const auto* view = findChild<QAbstractItemView*>(QLatin1String(list)))
      view->selectionModel()->clearSelection();
  }
}

void TreeFilePanel::enter(const QString& folder) {
  if (isInside(folder)) {
    refusal_->hide();
    place_ = folder;
  } else {
    refuse(folder);
    setDirectory(place_);
  }
  showPlace();
}

void TreeFilePanel::showPlace() {
  placeLabel_->setText(toQString(PathTable(fromQString(root_)).onClient(fromQString(place_))));
  auto* up = findChild<QToolButton*>(QStringLiteral("toParentButton"));
  if (up == nullptr) return;
  // Later: the panel itself has its say about the button after this.
  QMetaObject::invokeMethod(
      up, [this, up] { up->setEnabled(place_ != root_); }, Qt::QueuedConnection);
}

void TreeFilePanel::refuse(const QString& path) {
  const std::string known = PathTable(fromQString(root_)).onClient(fromQString(path));
  const QString reason = QFileInfo::exists(path)
                             ? QStringLiteral("it lies outside of %1").arg(treeName(root_))
                             : QStringLiteral("it does not exist");
  refusal_->setText(QStringLiteral("\"%1\" can't be chosen: %2.").arg(toQString(known), reason));
  refusal_->show();
  QAccessibleEvent told(refusal_, QAccessible::Alert);
  QAccessible::updateAccessibility(&told);
}

QStringList TreeFilePanel::wanted() const {
  const QString typed = name_ != nullptr ? name_->text() : QString();
  return typed.startsWith(QLatin1Char('/')) ? QStringList(onDisk(typed)) : selectedFiles();
}

// The panel's own way to end looks for what was typed among the folders of this computer.
void TreeFilePanel::accept() {
  const QStringList paths = wanted();
  for (const QString& path : paths) {
    if (!isInside(path)) {
      refuse(path);
      return;
    }
    if (QFileInfo(path).isDir() && fileMode() != Directory) {
      setDirectory(path);
      enter(path);
      if (name_ != nullptr) name_->clear();
      return;
    }
  }
  if (paths.isEmpty()) return;
  chosen_ = paths;
  place_ = QFileInfo(paths.front()).path();
  QDialog::accept();
}

}  // namespace corvane::qt
