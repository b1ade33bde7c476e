// Feeds a plug-in definition and, behind a NUL byte, a storage file to the Plugins tab, then does in it
// whatever a user can do: every row is shown, clicked and edited in both columns, every question is answered.
// A sound plug-in beside the other one is shown in any case.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "FuzzPlatform.h"
#include "plugins/PluginReview.h"
#include "plugins/PluginsTabViewController.h"
#include "values/PropertyListCodec.h"

namespace corvane {
namespace {

using namespace fuzz;

constexpr int kMostRows = 200;  // of a large definition; enough for every kind of row

struct TwoDefinitions final : Files {
  bool exists(const std::string&) override { return true; }
  ModificationDate modificationDate(const std::string&) override { return {}; }
  std::optional<std::string> contents(const std::string&, std::size_t) override { return std::nullopt; }
  std::optional<std::vector<std::string>> walk(const std::string&) override {
    return std::vector<std::string>{"good.plist", "tested.plist"};
  }
};

Dictionary goodDefinition() {
  const auto text = [](const char* value) { return PropertyList::string(value); };
  return Dictionary::make(
      {{"PluginName", text("good")},
       {"PluginOptions",
        Array::make({Dictionary::make({{"SettingTitle", text("t")},
                                       {"SettingType", Dictionary::make({{"Type", text("Checkbox")}})},
                                       {"SettingStoragePath", text("/Library/Corvane/good")},
                                       {"SettingStorageKey", text("k")}})})}});
}

struct MemoryPropertyLists final : PropertyListFiles {
  PropertyList read(const std::string& path) override {
    if (!path.starts_with('/')) return {};
    if (path.ends_with("/good.plist")) return goodDefinition();
    if (path.ends_with("/tested.plist")) return readPropertyList(definition);
    if (path.ends_with("_settings.plist")) {
      return Dictionary::make({{"PrefPaneVisibility", PropertyList::boolean(true)}});
    }
    return readPropertyList(storage);
  }
  Result write(const std::string&, const PropertyList&) override { return {}; }
  std::string_view definition;
  std::string_view storage;
};

bool climbs(const std::string& path) {
  return path.ends_with("/..") || path.find("/../") != std::string::npos;
}

/// Checks what reaches root.
struct CheckingPane final : PaneServices {
  bool unlocked() const override { return true; }
  void addUnlockedObserver(UnlockedObserver& observer) override { observer.unlockedDidChange(); }
  void setPlistFileValues(const std::string& path, const PropertyList& values) override {
    if (!path.starts_with('/') || climbs(path) || !values.asDictionary()) std::abort();
  }
  Dictionary readRootFile(const std::string&) override { return {}; }
  void executeQLHelperArguments(const std::string&, const std::vector<std::string>&) override {
    std::abort();
  }
  std::optional<std::string> validatePluginWithArguments(const std::string& plugin,
                                                         const std::vector<std::string>& arguments) override {
    const bool isBelow = plugin.starts_with("/Library/Corvane/Plugins/") && !climbs(plugin);
    if (!isBelow || arguments.front() != plugin || arguments.back() != "--test-mode") std::abort();
    return "0,fine";
  }
};

struct FuzzedTab {
  FuzzedTab(std::string_view definition, std::string_view storage) {
    propertyLists.definition = definition;
    propertyLists.storage = storage;
    tab.awakeFromNib(pane);
    view.pluginsTable.expandItem({}, true);
  }

  void doEverything() {
    OutlineView& outline = view.pluginsTable;
    const std::vector<PropertyList> typed = {PropertyList::string("7"), PropertyList::integer(1),
                                             PropertyList::boolean(true)};
    for (int row = 0; row < outline.numberOfRows() && row < kMostRows; ++row) {
      for (const OutlineView::Column& column : outline.columns()) {
        const OutlineItem item = outline.itemAtRow(row);
        if (outline.preparedCell(column, item).cell == nullptr) std::abort();
        if (!(outline.heightOfRow(item) >= outline.rowHeight())) std::abort();
        outline.clickCell(outline.itemAtRow(row), column);
        for (const PropertyList& value : typed) outline.editCell(outline.itemAtRow(row), column, value);
      }
    }
  }

  /// Whether the author of each definition is told what the tab does with it.
  [[nodiscard]] bool isReviewedAsItIsShown() {
    const PluginReviewer reviewer(platform, paths);
    const auto definitions = reviewer.definitions();
    for (const std::string& path : definitions ? *definitions : std::vector<std::string>()) {
      const std::string name = path.substr(0, path.rfind('.'));
      bool isShown = false;
      for (const Dictionary& entry : tab.catalogue().plugins())
        isShown = isShown || *entry.string("PluginFileName") == name;
      if (reviewer.review(paths.plugins + "/" + path).isShown != isShown) return false;
    }
    return definitions.has_value();
  }

  [[nodiscard]] bool showsTheGoodPlugin() const {
    for (const Dictionary& entry : tab.catalogue().plugins()) {
      const std::string* fileName = entry.string("PluginFileName");
      if (fileName != nullptr && *fileName == "good") return true;
    }
    return false;
  }

  MemoryLog log;
  TwoDefinitions files;
  MemoryPropertyLists propertyLists;
  NoRunLoop runLoop;
  NoDirectoryEvents directoryEvents;
  NoFileEventQueues fileEventQueues;
  NoAuthorization authorization;
  NoProcessListing processes;
  WillingDialogs dialogs;
  PlainWorkspace workspace;
  AsciiTexts texts;
  PlainBundle bundle;
  Platform platform{log,           files,     propertyLists, runLoop, directoryEvents, fileEventQueues,
                    authorization, processes, texts,         dialogs, workspace,       bundle};
  PathTable paths;
  CheckingPane pane;
  PluginsTabView view;
  PluginsTabViewController tab{platform, paths, view};
};

}  // namespace
}  // namespace corvane

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view input(reinterpret_cast<const char*>(data), size);
  // The text forms hold no NUL; a binary definition has to do with an empty storage file.
  const bool isBinary = input.starts_with("bplist");
  const std::string_view definition = isBinary ? input : input.substr(0, input.find('\0'));
  corvane::FuzzedTab tab(definition, input.substr(std::min(size, definition.size() + 1)));
  if (!tab.isReviewedAsItIsShown()) std::abort();
  tab.doEverything();
  if (!tab.showsTheGoodPlugin()) std::abort();
  return 0;
}
