// The guard of the tabs: decides before every switch whether it may happen. It refuses all switches once the
// client was removed and while the client settings can't be read, and asks before the Plugins tab is opened
// for the first time.
#pragma once

#include "controls/TabView.h"
#include "pane/PathTable.h"
#include "platform/LateCalls.h"
#include "platform/Platform.h"

namespace corvane {

class MyTabViewController final : public TabViewDelegate {
 public:
  /// All references must outlive the guard; it becomes the tab view's delegate.
  MyTabViewController(Platform& platform, const PathTable& paths, TabView& tabView);
  MyTabViewController(const MyTabViewController&) = delete;
  MyTabViewController& operator=(const MyTabViewController&) = delete;
  ~MyTabViewController() override;

  /// The client was removed: no tab may be switched any more.
  void setUninstalled(bool uninstalled) { uninstalled_ = uninstalled; }
  /// The client settings can't be read: no tab may be switched while the install folder exists.
  void setClientSettingsReadError(bool readError) { clientSettingsReadError_ = readError; }
  /// Whether the Plugins tab opens without a question.
  [[nodiscard]] bool showPluginTab() const { return showPluginTab_; }

  [[nodiscard]] bool tabViewShouldSelectTabViewItem(TabView& tabView, const TabViewItem& item) override;
  /// The end of any of the guard's alerts.
  void alertDidEndReturnCodeContextInfo(int returnCode);

 private:
  void showRemovedAlert();
  void showSettingsAlert();
  void showCautionAlert();
  void beginSheet(const AlertDescription& alert, SheetWindow window);

  Platform& platform_;
  const PathTable& paths_;
  TabView& tabView_;
  bool showPluginTab_ = false;  // the user has confirmed the caution alert
  bool uninstalled_ = false;
  bool clientSettingsReadError_ = false;
  LateCalls calls_;  // a sheet may end after the guard has gone
};

}  // namespace corvane
