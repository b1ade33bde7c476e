#import "services/AppKitDialogs.h"

#import "Text.h"
#import "services/AlertSheet.h"

namespace corvane::appkit {

void AppKitDialogs::beginSheet(const AlertDescription& alert, SheetWindow /*window*/,
                               std::function<void(const AlertResult&)> ended) {
  sheets_.add(std::make_shared<AlertSheet>(sheets_, alert, std::move(ended)));
}

AlertResult AppKitDialogs::runModalAlert(const AlertDescription& alert) { return Alert(alert).runModal(); }

std::vector<std::string> AppKitDialogs::runOpenPanel(const OpenPanelDescription& description) {
  NSOpenPanel* panel = [NSOpenPanel openPanel];
  [panel setCanChooseFiles:description.canChooseFiles];
  [panel setCanChooseDirectories:description.canChooseDirectories];
  [panel setAllowsMultipleSelection:description.allowsMultipleSelection];
  if (!description.directory.empty())
    [panel setDirectoryURL:[NSURL fileURLWithPath:toNSString(description.directory)]];
  std::vector<std::string> paths;
  if ([panel runModal] != kPanelOk) return paths;
  for (NSURL* url in [panel URLs]) paths.push_back(fromNSString([url path]));
  return paths;
}

}  // namespace corvane::appkit
