#include "Pictures.h"

#include <QApplication>
#include <QDir>
#include <QPixmap>
#include <QPushButton>

#include "Text.h"
#include "widgets/SheetHost.h"

namespace corvane::qt {
namespace {

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
      const auto buttons = alert->findChildren<QPushButton*>();
      if (!buttons.isEmpty()) buttons.constFirst()->click();
    }
    return take(name + suffix);
  }

 private:
  LinuxPane& pane_;
  QDir folder_;
};

}  // namespace

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
  if (view.authView.state() != AuthorizationView::State::Open) return true;
  pane.assembly().pluginsView().pluginsTable.expandItem({}, true);
  return takeAll(QStringLiteral("-unlocked"));
}

}  // namespace corvane::qt
