#include "assembly/PaneAssembly.h"

namespace corvane {

PaneAssembly::PaneAssembly(const Platform& platform, std::string_view rootPrefix)
    : platform_(platform),
      paths_(rootPrefix),
      view_(platform.authorization),
      optionsView_(view_.mainWindow),
      guard_(platform_, paths_, view_.tabView),
      configuration_(platform_, paths_, configurationView_),
      options_(platform_, paths_, optionsView_),
      plugins_(platform_, paths_, pluginsView_),
      pane_(platform_, paths_, {view_, guard_, configuration_, options_, plugins_}) {}

void PaneAssembly::load() {
  configuration_.awakeFromNib(pane_);
  options_.awakeFromNib(pane_);
  plugins_.awakeFromNib(pane_);
  pane_.awakeFromNib();
  pane_.mainViewDidLoad();
}

}  // namespace corvane
