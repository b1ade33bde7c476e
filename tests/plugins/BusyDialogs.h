// Dialogs whose open panel is open for as long as something else happens.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "support/TestPlatform.h"

namespace corvane::test {

/// Sheets and the answers of panels are those of the platform's scripted dialogs.
class BusyDialogs final : public Dialogs {
 public:
  explicit BusyDialogs(ScriptedDialogs& scripted) : scripted_(scripted) {}
  void beginSheet(const AlertDescription& alert, SheetWindow window,
                  std::function<void(const AlertResult&)> ended) override {
    scripted_.beginSheet(alert, window, std::move(ended));
  }
  AlertResult runModalAlert(const AlertDescription& alert) override { return scripted_.runModalAlert(alert); }
  std::vector<std::string> runOpenPanel(const OpenPanelDescription& panel) override {
    if (const auto call = std::exchange(meanwhile, nullptr)) call();
    return scripted_.runOpenPanel(panel);
  }
  std::function<void()> meanwhile;  // once

 private:
  ScriptedDialogs& scripted_;
};

/// The platform of the test with these dialogs.
inline std::unique_ptr<Platform> withDialogs(TestPlatform& platform, Dialogs& dialogs) {
  return std::make_unique<Platform>(
      Platform{platform.log, platform.files, platform.propertyLists, platform.runLoop,
               platform.directoryEvents, platform.fileEventQueues, platform.authorization, platform.processes,
               platform.texts, dialogs, platform.workspace, platform.bundle});
}

}  // namespace corvane::test
