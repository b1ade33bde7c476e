// Opens the whole pane over a client whose files are the input, does in every control what a user can do,
// changes files behind its back, lets time pass and does it all again. The input is a row of files: a byte
// that says which one, two bytes of length, and the contents. Whatever stands in them, what the pane writes
// is a property list below the client's folders, and the staging folder is empty after each write.
#include <algorithm>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "MemoryPane.h"
#include "support/NamedControls.h"

namespace corvane {
namespace {

using namespace fuzz;

constexpr int kMostRows = 30;

struct FuzzedPane : MemoryPane {
  explicit FuzzedPane(std::string_view input) {
    const std::vector<std::string> places = {paths.clientSettings,
                                             paths.clientSettingsBackup,
                                             paths.diskJournal,
                                             paths.diskJournalPid,
                                             paths.volumesSettings,
                                             paths.timeMachineSettings,
                                             paths.rootCapacitySettings,
                                             paths.autoDiskMount,
                                             paths.updateStatus,
                                             paths.plugins + "/a.plist",
                                             paths.plugins + "/b.plist",
                                             paths.pluginSupport + "/a_settings.plist",
                                             paths.pluginSupport + "/b_settings.plist",
                                             paths.pluginSupport + "/storage.plist"};
    while (input.size() > 3) {
      const auto at = [&](std::size_t i) {
        return static_cast<std::size_t>(static_cast<std::uint8_t>(input[i]));
      };
      const std::string& path = places[at(0) % places.size()];
      const std::size_t length = std::min(input.size() - 3, at(1) | at(2) << 8);
      // A file that comes a second time is what it becomes later.
      auto& when = tree.files.count(path) == 0 ? tree.files : later;
      when[path] = input.substr(3, length);
      input.remove_prefix(3 + length);
    }
  }

  void live() {
    assembly.load();
    assembly.pluginsView().pluginsTable.expandItem({}, true);
    assembly.view().authView.click();
    useEverything();
    for (auto& [path, bytes] : later) tree.put(path, bytes);
    events.deliver(events.directories);
    loop.advance(1);
    assembly.pluginsView().pluginsTable.expandItem({}, true);
    useEverything();
    tree.files.erase(paths.clientSettings);
    queues.fire(paths.clientSettings);
    loop.advance(6);
    events.deliver(events.directories);
    useEverything();
  }

  void useEverything() {
    for (const test::NamedControl& named : test::namedControls(assembly)) use(*named.control);
    requireEmptyStaging();
  }
  void use(Control& control) {
    if (auto* field = dynamic_cast<TextField*>(&control)) {
      for (const char* typed : {"7", "x", "", "100000"}) field->typeText(typed);
      field->endEditing();
    } else if (auto* popUp = dynamic_cast<PopUpButton*>(&control)) {
      popUp->choose(1);
    } else if (auto* button = dynamic_cast<Button*>(&control)) {
      button->click();
    } else if (auto* outline = dynamic_cast<OutlineView*>(&control)) {
      useTree(*outline);
    } else if (auto* table = dynamic_cast<TableView*>(&control)) {
      for (int row = 0; row < std::min(kMostRows, table->numberOfRows()); ++row) table->clickRow(row);
    }
  }
  static void useTree(OutlineView& outline) {
    for (int row = 0; row < std::min(kMostRows, outline.numberOfRows()); ++row) {
      for (const OutlineView::Column& column : outline.columns()) {
        outline.clickCell(outline.itemAtRow(row), column);
        outline.editCell(outline.itemAtRow(row), column, PropertyList::string("7"));
        outline.editCell(outline.itemAtRow(row), column, PropertyList::integer(1));
      }
    }
  }

  std::map<std::string, std::string> later;
};

}  // namespace
}  // namespace corvane

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size > 100'000) return 0;
  corvane::FuzzedPane pane(std::string_view(reinterpret_cast<const char*>(data), size));
  pane.live();
  return 0;
}
