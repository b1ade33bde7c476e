#include "pane/MyTabViewController.h"

#include "pane/PaneAlerts.h"

namespace corvane {
namespace {

constexpr int kPluginsTab = 2;

}  // namespace

MyTabViewController::MyTabViewController(Platform& platform, const PathTable& paths, TabView& tabView)
    : platform_(platform), paths_(paths), tabView_(tabView) {
  tabView_.setDelegate(this);
}

MyTabViewController::~MyTabViewController() { tabView_.setDelegate(nullptr); }

bool MyTabViewController::tabViewShouldSelectTabViewItem(TabView& tabView, const TabViewItem& item) {
  if (uninstalled_) {
    showRemovedAlert();
    return false;
  }
  if (clientSettingsReadError_ && platform_.files.exists(paths_.installFolder)) {
    showSettingsAlert();
    return false;
  }
  if (tabView.indexOfTabViewItem(item) == kPluginsTab && !showPluginTab_) {
    showCautionAlert();
    return false;
  }
  return true;
}

void MyTabViewController::alertDidEndReturnCodeContextInfo(int returnCode) {
  if (uninstalled_) return;
  // Which alert has ended is not asked: dismissing the settings alert counts as a confirmation too and asks
  // for the Plugins tab, which runs the guard again. This shared handling is intended.
  showPluginTab_ = returnCode == kAlertFirstButtonReturn;
  if (showPluginTab_) tabView_.selectTabViewItemAtIndex(kPluginsTab);
}

void MyTabViewController::showRemovedAlert() {
  beginSheet(removedAlert(platform_.bundle.name()), SheetWindow::ApplicationMainWindow);
}

void MyTabViewController::showSettingsAlert() {
  beginSheet(settingsUnreadableAlert(), SheetWindow::ApplicationMainWindow);
}

void MyTabViewController::showCautionAlert() {
  beginSheet(
      questionAlert(platform_.bundle, "Proceed with caution",
                    "Altering these settings may result in unreported errors or false alarms.\n", "Continue"),
      SheetWindow::PaneWindow);
}

void MyTabViewController::beginSheet(const AlertDescription& alert, SheetWindow window) {
  platform_.dialogs.beginSheet(alert, window, calls_.wrap([this](const AlertResult& result) {
    alertDidEndReturnCodeContextInfo(result.returnCode);
  }));
}

}  // namespace corvane
