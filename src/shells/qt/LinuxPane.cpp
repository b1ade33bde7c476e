#include "LinuxPane.h"

#include "plugins/PluginVerdict.h"
#include "services/TestingPanel.h"
#include "tabs/ConfigurationTabPage.h"
#include "tabs/OptionsTabPage.h"
#include "tabs/PluginsTabPage.h"
#include "trees/Tree.h"

namespace corvane::qt {

LinuxPane::LinuxPane(const std::string& root)
    : window_(std::make_unique<PaneWindow>()),
      dialogs_(window_->sheets(), root),
      system_(runLoop_, {dialogs_, workspace_, bundle_},
              {root, [this](int descriptor) { return waitForOutput(descriptor); }}),
      assembly_(system_.platform(), root) {
  window_->setTree(treeTitle(root));
}

// The widgets go before the controls that they show.
LinuxPane::~LinuxPane() { window_.reset(); }

bool LinuxPane::waitForOutput(int descriptor) {
  const bool answered = waitReadable(window_.get(), descriptor, treeNote(assembly_.paths().rootPrefix()));
  // The verdict that follows tells of a plug-in that gave no answer; it was not asked to the end.
  dialogs_.addNote(
      verdictMessage(false),
      answered ? QString() : QStringLiteral("You have cancelled the test before the plug-in answered."));
  return answered;
}

void LinuxPane::open() {
  // The frame comes first and its contents together: a client on a slow or a large volume takes its time to
  // read. What is not seen yet is made behind that picture.
  window_->bindFrameTo(assembly_.view());
  const bool isSeen = window_->showPainted();
  window_->bindHeaderTo(assembly_.view());
  window_->setTabPage(0, new ConfigurationTabPage(assembly_.configurationView()));
  assembly_.load();
  if (isSeen) window_->showPainted();
  window_->setTabPage(1, new OptionsTabPage(assembly_.optionsView(), window_->sheets()));
  window_->setTabPage(2, new PluginsTabPage(assembly_.pluginsView()));
  window_->bindIconTo(assembly_.view());
}

}  // namespace corvane::qt
