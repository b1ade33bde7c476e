// The composition root: builds the whole pane over a platform and ties the controllers to their controls. A
// shell creates one, shows its views, and calls `load` once it is ready to show alerts.
#pragma once

#include <string_view>

#include "configuration/ConfigurationTabView.h"
#include "configuration/ConfigurationTabViewController.h"
#include "options/OptionsTabView.h"
#include "options/OptionsTabViewController.h"
#include "pane/CorvanePref.h"
#include "pane/MyTabViewController.h"
#include "pane/PaneView.h"
#include "pane/PathTable.h"
#include "pane/SheetQueue.h"
#include "platform/Platform.h"
#include "plugins/PluginsTabView.h"
#include "plugins/PluginsTabViewController.h"

namespace corvane {

class PaneAssembly {
 public:
  /// The services of the platform must outlive the assembly. `rootPrefix` as in the path table.
  PaneAssembly(const Platform& platform, std::string_view rootPrefix);
  PaneAssembly(const PaneAssembly&) = delete;
  PaneAssembly& operator=(const PaneAssembly&) = delete;
  ~PaneAssembly() = default;

  /// The two steps of the host's life cycle that follow the making of the controls: the tabs and the pane
  /// awake, then the main view is there. A shell whose host plays them one by one does so too.
  ///
  /// The layout of the core starts from frames in points: of the tab view, greeting and support link (the
  /// header), of the list of volumes, the header and the first column of its table (the box beside them), and
  /// of the check box, field and label in each row with a number. The views come with the frames of a pane of
  /// the usual width. A shell that wants others sets them before the first step; what is computed from them
  /// tells its shell by `onChange`.
  void awakeFromNib();
  void mainViewDidLoad() { pane_.mainViewDidLoad(); }
  /// Plays both.
  void load();

  [[nodiscard]] const PathTable& paths() const { return paths_; }
  [[nodiscard]] PaneView& view() { return view_; }
  [[nodiscard]] ConfigurationTabView& configurationView() { return configurationView_; }
  [[nodiscard]] OptionsTabView& optionsView() { return optionsView_; }
  [[nodiscard]] PluginsTabView& pluginsView() { return pluginsView_; }
  [[nodiscard]] CorvanePref& pane() { return pane_; }
  [[nodiscard]] ConfigurationTabViewController& configuration() { return configuration_; }
  [[nodiscard]] OptionsTabViewController& options() { return options_; }
  [[nodiscard]] PluginsTabViewController& plugins() { return plugins_; }

 private:
  PathTable paths_;
  PaneView view_;
  SheetQueue dialogs_;
  Platform platform_;  // with the dialogs of this assembly
  ConfigurationTabView configurationView_;
  OptionsTabView optionsView_;
  PluginsTabView pluginsView_;
  MyTabViewController tabGuard_;
  ConfigurationTabViewController configuration_;
  OptionsTabViewController options_;
  PluginsTabViewController plugins_;
  CorvanePref pane_;  // goes first: it holds the tabs, the tabs only borrow it
};

}  // namespace corvane
