// Opens the whole pane over a client whose files are the input, does in every control what a user can do,
// changes files behind its back, lets time pass and does it all again. The input is a row of files: a byte
// that says which one, two bytes of length, and the contents. Whatever stands in them, what the pane writes
// is a property list below the client's folders, and the staging folder is empty after each write.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "FuzzPlatform.h"
#include "assembly/PaneAssembly.h"
#include "support/AsciiTexts.h"
#include "support/NamedControls.h"
#include "support/ScriptedFileEventQueues.h"
#include "support/VirtualRunLoop.h"
#include "values/PropertyListCodec.h"

namespace corvane {
namespace {

using namespace fuzz;

constexpr int kMostRows = 30;
constexpr std::string_view kStaging = "/private/tmp/";

void require(bool holds) {
  if (!holds) std::abort();
}

/// The client's files in memory.
struct MemoryTree final : Files, PropertyListFiles {
  bool exists(const std::string& path) override {
    return files.count(path) != 0 || path.ends_with("/Corvane") || !path.ends_with(".plist");
  }
  ModificationDate modificationDate(const std::string& path) override {
    if (files.count(path) == 0) return {std::nullopt, "missing"};
    return {Date{static_cast<double>(changes[path])}, {}};
  }
  std::optional<std::string> contents(const std::string& path, std::size_t limit) override {
    const auto file = files.find(path);
    if (file == files.end() || file->second.size() > limit) return std::nullopt;
    return file->second;
  }
  std::optional<std::vector<std::string>> walk(const std::string& folder) override {
    std::vector<std::string> names;
    for (const auto& [path, bytes] : files) {
      if (path.starts_with(folder + "/")) names.push_back(path.substr(folder.size() + 1));
    }
    return names;
  }
  PropertyList read(const std::string& path) override {
    const auto file = files.find(path);
    return file != files.end() ? readPropertyList(file->second) : PropertyList();
  }
  Result write(const std::string& path, const PropertyList& value) override {
    auto xml = writeXmlPropertyList(value);
    if (!xml) return {"no property list"};
    put(path, *std::move(xml));
    return {};
  }
  void put(const std::string& path, std::string bytes) {
    files[path] = std::move(bytes);
    ++changes[path];
  }

  std::map<std::string, std::string> files;
  std::map<std::string, int> changes;
};

/// Rights without a question; the tools work on the files in memory.
struct MemoryRights final : AuthorizationServices {
  using Arguments = std::vector<std::string>;
  struct Reply final : OutputPipe {
    ReadOutcome read(char* buffer, std::size_t) override {
      constexpr std::string_view text = "0,fine\n";
      std::copy(text.begin(), text.end(), buffer);
      return {text.size(), false, false};
    }
  };

  explicit MemoryRights(MemoryTree& memory) : tree(memory) {}
  bool isDirect() const override { return true; }
  void requestRights(std::string_view, Done done) override {
    done({AuthorizationOutcome::Granted, std::make_unique<Authorization>(), {}});
  }
  LaunchOutcome executeWithPrivileges(Authorization* rights, const std::string& program,
                                      const Arguments& arguments) override {
    if (rights == nullptr) return {launch_status::kInvalidAuthorization, {}};
    if (program == tool::kRm) {
      require(arguments.front().starts_with(kStaging));
      tree.files.erase(arguments.front());
    } else if (program == tool::kCp) {
      copy(arguments.front(), arguments.back());
    }
    return {};
  }
  LaunchOutcome executeWithPrivileges(Authorization* rights, const std::string& program,
                                      const Arguments& arguments,
                                      std::unique_ptr<OutputPipe>& output) override {
    LaunchOutcome outcome = executeWithPrivileges(rights, program, arguments);
    if (outcome.status == launch_status::kStarted) output = std::make_unique<Reply>();
    return outcome;
  }
  void copy(const std::string& source, const std::string& target) {
    require(target.starts_with('/') && target.find("/../") == std::string::npos);
    const auto file = tree.files.find(source);
    if (file == tree.files.end()) return;
    const std::string bytes = file->second;
    if (source.starts_with(kStaging)) require(static_cast<bool>(readPropertyList(bytes)));
    tree.put(target, bytes);
  }
  MemoryTree& tree;
};

struct MemoryEvents final : DirectoryEvents {
  struct Stream final : DirectoryEventStream {
    void scheduleWithRunLoop() override {}
    void unscheduleFromRunLoop() override {}
    bool start() override { return true; }
    void stop() override {}
  };
  std::unique_ptr<DirectoryEventStream> createStream(std::vector<std::string> watched, double,
                                                     Callback callback) override {
    directories = std::move(watched);
    deliver = std::move(callback);
    return std::make_unique<Stream>();
  }
  std::vector<std::string> directories;
  Callback deliver;
};

struct FuzzedPane {
  explicit FuzzedPane(std::string_view input) {
    queues.exists = [this](const std::string& path) { return tree.exists(path); };
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
    for (const auto& [path, bytes] : tree.files) {
      require(!path.starts_with(kStaging) || path.starts_with("/private/tmp/read-"));
    }
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

  PathTable paths;
  MemoryTree tree;
  std::map<std::string, std::string> later;
  MemoryLog log;
  test::VirtualRunLoop loop;
  MemoryEvents events;
  test::ScriptedFileEventQueues queues;
  MemoryRights rights{tree};
  struct : ProcessListing {
    std::optional<std::string> listProcesses() override { return "  PID COMMAND\n    1 diskjournald\n"; }
  } processes;
  test::AsciiTexts texts;
  WillingDialogs dialogs;
  PlainWorkspace workspace;
  PlainBundle bundle;
  Platform platform{log,    tree,      tree,  loop,    events,    queues,
                    rights, processes, texts, dialogs, workspace, bundle};
  PaneAssembly assembly{platform, ""};
};

}  // namespace
}  // namespace corvane

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size > 100'000) return 0;
  corvane::FuzzedPane pane(std::string_view(reinterpret_cast<const char*>(data), size));
  pane.live();
  return 0;
}
