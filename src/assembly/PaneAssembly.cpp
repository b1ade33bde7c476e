#include "assembly/PaneAssembly.h"

namespace corvane {

namespace {

Platform withDialogs(const Platform& platform, Dialogs& dialogs) {
  return {.log = platform.log,
          .files = platform.files,
          .propertyLists = platform.propertyLists,
          .runLoop = platform.runLoop,
          .directoryEvents = platform.directoryEvents,
          .fileEventQueues = platform.fileEventQueues,
          .authorization = platform.authorization,
          .processes = platform.processes,
          .texts = platform.texts,
          .dialogs = dialogs,
          .workspace = platform.workspace,
          .bundle = platform.bundle};
}

}  // namespace

PaneAssembly::PaneAssembly(const Platform& platform, std::string_view rootPrefix)
    : paths_(rootPrefix),
      view_(platform.authorization),
      dialogs_(platform.dialogs, view_.mainWindow),
      platform_(withDialogs(platform, dialogs_)),
      optionsView_(view_.mainWindow),
      tabGuard_(platform_, paths_, view_.tabView),
      configuration_(platform_, paths_, configurationView_),
      options_(platform_, paths_, optionsView_),
      plugins_(platform_, paths_, pluginsView_),
      pane_(platform_, paths_, {view_, tabGuard_, configuration_, options_, plugins_}) {}

void PaneAssembly::awakeFromNib() {
  configuration_.awakeFromNib(pane_);
  options_.awakeFromNib(pane_);
  plugins_.awakeFromNib(pane_);
  pane_.awakeFromNib();
}

void PaneAssembly::load() {
  awakeFromNib();
  mainViewDidLoad();
}

}  // namespace corvane
