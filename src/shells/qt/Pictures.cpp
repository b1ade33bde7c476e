#include "Pictures.h"

#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QEvent>
#include <QPixmap>
#include <QPushButton>
#include <QTimer>
#include <cstdio>

#include "Text.h"
#include "widgets/SheetHost.h"

namespace corvane::qt {
namespace {

void pressFirstButton(const QWidget& alert) {
  const auto buttons = alert.findChildren<QPushButton*>();
  if (!buttons.isEmpty()) buttons.constFirst()->click();
}

/// Answers every modal alert that opens while this lives.
class ModalAlertPictures final : public QObject {
 public:
  explicit ModalAlertPictures(const QString& file) : file_(file) { qApp->installEventFilter(this); }
  [[nodiscard]] bool areWritten() const { return areWritten_; }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    auto* alert = qobject_cast<QDialog*>(watched);
    if (event->type() == QEvent::Show && alert != nullptr &&
        alert->objectName() == QStringLiteral("modalAlert")) {
      // In the event loop of its own that waits for the answer.
      QTimer::singleShot(0, alert, [this, alert] {
        if (!alert->grab().save(file_)) areWritten_ = false;
        pressFirstButton(*alert);
      });
    }
    return QObject::eventFilter(watched, event);
  }

 private:
  QString file_;
  bool areWritten_ = true;
};

class Photographer {
 public:
  Photographer(LinuxPane& pane, const QString& folder) : pane_(pane), folder_(folder) {}

  bool take(const QString& name) {
    SheetHost& sheets = pane_.window().sheets();
    while (sheets.isSliding()) QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    QApplication::processEvents();
    return pane_.window().grab().save(folder_.filePath(name + QStringLiteral(".png")));
  }

  bool takeTab(int index, const QString& suffix) {
    TabView& tabs = pane_.assembly().view().tabView;
    const QString name = toQString(tabs.items()[static_cast<std::size_t>(index)].label);
    tabs.selectTabViewItemAtIndex(index);
    if (QWidget* alert = pane_.window().sheets().current()) {
      if (!take(name + QStringLiteral("-alert"))) return false;
      pressFirstButton(*alert);
    }
    return take(name + suffix);
  }

 private:
  LinuxPane& pane_;
  QDir folder_;
};

}  // namespace

bool openForPictures(LinuxPane& pane, const QString& folder) {
  const ModalAlertPictures pictures(QDir(folder).filePath(QStringLiteral("Start-alert.png")));
  pane.open();
  return pictures.areWritten();
}

bool takePictures(LinuxPane& pane, const QString& folder, int onlyTab) {
  PaneView& view = pane.assembly().view();
  Photographer photographer(pane, folder);
  const auto takeAll = [&](const QString& suffix) {
    for (int index = 0; index < static_cast<int>(view.tabView.items().size()); ++index) {
      if (onlyTab >= 0 && index != onlyTab) continue;
      if (!photographer.takeTab(index, suffix)) return false;
    }
    return true;
  };
  if (!takeAll({})) return false;
  if (!pane.isDirect()) return true;
  view.authView.click();
  if (view.authView.state() != AuthorizationView::State::Open) {
    std::fputs("corvane-pane: the lock stays closed: no pictures of the unlocked tabs\n", stderr);
    return true;
  }
  pane.assembly().pluginsView().pluginsTable.expandItem({}, true);
  return takeAll(QStringLiteral("-unlocked"));
}

}  // namespace corvane::qt
