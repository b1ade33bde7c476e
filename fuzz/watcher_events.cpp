// What the watchers report, in any order: batches that name any folders in any spelling, for changes that are
// there or not; changes that nobody reports, or that leave an older date; queues whose steps fail, which call
// for nothing, late or after their end; all between the acts of a user. The watchers themselves are held to a
// small model. Once everything has been written anew and reported for certain, the pane shows what one that
// was opened just now shows.
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "MemoryPane.h"
#include "TakeByte.h"
#include "pane/QLCFileWatcher.h"
#include "support/NamedControls.h"
#include "values/Text.h"

namespace corvane {
namespace {

using namespace fuzz;
using Step = test::ScriptedFileEventQueues::Step;

constexpr std::size_t kMostActs = 200;
constexpr std::array<std::string_view, 6> kOwnHistory = {
    "statusField",        "authView",   "manuallyTriggerTextField",
    "timeOfDayTextField", "amPmButton", "timeMachineRemovalWarning"};
/// What each kind of file says; the word stands in for the %@.
constexpr std::string_view kSettings =
    R"(<plist version="1.0"><dict><key>Branding_PrefPane_Greeting</key><string>Hello %@</string>)"
    R"(<key>Support_Address</key><string>https://%@</string><key>Client_Version</key><string>%@</string>)"
    R"(<key>ClientGroup</key><string>group %@</string><key>Run_Interval</key><integer>3</integer>)"
    R"(<key>Date_Client_Run</key><date>2026-01-02T03:04:05Z</date>)"
    R"(<key>Date_Last_Checked</key><date>2026-01-02T03:04:05Z</date>)"
    R"(<key>AutomountDisksWithoutUserLogin</key><true/><key>Days_Until_Warning</key><integer>7</integer>)"
    R"(<key>Capacity_Threshold</key><integer>80</integer><key>Plugin_Enabled</key><true/>)"
    R"(<key>PrefPaneVisibility</key><true/></dict></plist>)";
constexpr std::string_view kPlugin =
    R"(<plist version="1.0"><dict><key>PluginName</key><string>Plugin %@</string><key>ProgramArguments</key>)"
    R"(<array><string>check</string></array><key>PluginOptions</key><array><dict><key>SettingTitle</key>)"
    R"(<string>Group %@</string><key>SettingStorageKey</key><string>ClientGroup</string>)"
    R"(<key>SettingStoragePath</key><string>/Library/Corvane/PluginSupport/p_settings.plist</string>)"
    R"(<key>SettingType</key><dict><key>Type</key><string>TextField</string></dict></dict></array></dict></plist>)";
constexpr std::string_view kJournal =
    R"(<plist version="1.0"><dict><key>Devices</key><dict><key>disk1</key><array><dict><key>DAVolumeName</key>)"
    R"(<string>Volume %@</string><key>DAVolumePath</key><string>/Volumes/%@</string><key>DAVolumeKind</key>)"
    R"(<string>hfs</string></dict></array></dict><key>CurrentlyMountedVolumeDevices</key><array>)"
    R"(<string>disk1</string></array></dict></plist>)";
constexpr std::string_view kVolumes =
    R"(<plist version="1.0"><array><dict><key>VolumeName</key><string>Saved %@</string><key>VolumePath</key>)"
    R"(<string>/Volumes/saved %@</string><key>MonitorPresence</key><true/></dict></array></plist>)";

/// A watch of the target's own beside the pane's. A disappearance is told once, unless the queue calls once
/// more than it was asked to; nothing is told after the end.
struct HeldWatch : QLCFileWatcherDelegate {
  HeldWatch(MemoryPane& pane, const std::string& path, bool forWrites, const bool& queueCallsTwice)
      : callsTwice(queueCallsTwice),
        watcher(QLCFileWatcher::createWithPathWatchForWriteOnly(pane.queues, pane.log, path, forWrites)) {
    if (watcher) watcher->setDelegate(this);
  }
  HeldWatch(const HeldWatch&) = delete;
  HeldWatch& operator=(const HeldWatch&) = delete;
  ~HeldWatch() override { end(); }
  void end() {
    ended = true;
    if (watcher) watcher->endWatching();
  }
  void fileWatcherFileHasDisappeared(QLCFileWatcher& told, const std::string& path) override {
    require(&told == watcher.get() && path == told.path() && !told.watchForWriteOnly());
    require(!ended && (callsTwice || ++tellings == 1));
    if (endsWhenTold) end();
  }
  void fileWatcherFileHasBeenWritten(QLCFileWatcher& told, const std::string& path) override {
    require(&told == watcher.get() && path == told.path() && told.watchForWriteOnly() && !ended);
    if (endsWhenTold) end();
  }
  const bool& callsTwice;
  std::shared_ptr<QLCFileWatcher> watcher;
  bool ended = false;
  bool endsWhenTold = false;
  int tellings = 0;
};

class Session {
 public:
  explicit Session(std::string_view input) : input_(input) {
    for (const auto& [path, text] : contents()) pane_.tree.files[path] = text("a");
    pane_.tree.files[paths_.diskJournalPid] = "1";
    pane_.tree.missing.insert(paths_.errorLoggerPid);
    if ((byte() & 1U) != 0) pane_.tree.files.erase(paths_.clientSettings);
  }

  void live() {
    pane_.assembly.load();
    for (std::size_t i = 0; i < kMostActs && !input_.empty(); ++i) {
      act();
      pane_.requireEmptyStaging();
    }
    settle();
    requireSameAsNew();
    watches_.clear();
    late_.clear();
  }

 private:
  struct File {
    std::string path;
    std::function<std::string(std::string_view)> text;
  };
  std::vector<File> contents() const {
    const auto filled = [](std::string_view format) {
      return [format](std::string_view word) {
        const std::string text(word);
        return formatText(format, {text, text, text, text});
      };
    };
    return {{paths_.clientSettings, filled(kSettings)},
            {paths_.clientSettingsBackup, filled(kSettings)},
            {paths_.updateStatus, filled(kSettings)},
            {paths_.autoDiskMount, filled(kSettings)},
            {paths_.timeMachineSettings, filled(kSettings)},
            {paths_.rootCapacitySettings, filled(kSettings)},
            {paths_.diskJournal, filled(kJournal)},
            {paths_.volumesSettings, filled(kVolumes)},
            {paths_.plugins + "/p.plist", filled(kPlugin)},
            {paths_.pluginSupport + "/p_settings.plist", filled(kSettings)}};
  }

  std::size_t byte() { return fuzz::takeByte(input_); }

  void act() {
    switch (byte() % 12) {
      case 0:
        return change();
      case 1:
        return deliver();
      case 2: {
        pane_.queues.fire(watchedPath(),
                          byte() % 2 == 0 ? FileEventKind::Disappearance : FileEventKind::Write);
        return;
      }
      case 3:
        return keepCall();
      case 4:
        return callLate();
      case 5:
        return pane_.loop.advance(static_cast<double>(byte()) / 32);
      case 6:
        return pane_.queues.fail(step());
      case 7:
        return pane_.queues.succeed(step());
      case 8:
        return pane_.assembly.view().authView.click();
      case 9:
        return useControl();
      case 10:
        return watch();
      default:
        return changeWatch();
    }
  }

  Step step() { return static_cast<Step>(byte() % 5); }

  std::string watchedPath() {
    const std::vector<std::string> all = {paths_.installFolder, paths_.clientSettings, paths_.errorLoggerPid,
                                          paths_.updateStatus};
    return all[byte() % all.size()];
  }

  /// A file is written, removed, or put back to what it was with an older date or none.
  void change() {
    const auto all = contents();
    const std::size_t choice = byte();
    const std::size_t which = choice % (all.size() + 2);
    MemoryTree& tree = pane_.tree;
    if (which >= all.size()) {
      const std::string& path = which == all.size() ? paths_.errorLoggerPid : paths_.installFolder;
      if (!tree.missing.erase(path)) tree.missing.insert(path);
      return;
    }
    const auto& [path, text] = all[which];
    switch (choice / 16 % 6) {
      case 0:
        tree.files.erase(path);
        return;
      case 1:
        tree.put(path, "no list");
        return;
      case 2:
        tree.files[path] = text("c");  // the date stays
        return;
      case 3:
        tree.put(path, text("d"));
        tree.changes[path] = -1;
        return;
      default:
        tree.put(path, text(choice > 128 ? "e" : "f"));
    }
  }

  /// Any of the folders, as often and in whatever spelling.
  void deliver() {
    std::vector<std::string> batch;
    const std::size_t which = byte();
    const std::size_t spelling = byte();
    for (std::size_t i = 0; i < pane_.events.directories.size(); ++i) {
      if ((which >> i & 1U) == 0) continue;
      const std::string& folder = pane_.events.directories[i];
      batch.push_back(folder);
      if ((spelling & 1U) != 0) batch.back() += '/';
      if ((spelling & 2U) != 0) batch.back() += "/below/..";
      if ((spelling & 4U) != 0) batch.push_back(folder);
      if ((spelling & 8U) != 0) batch.push_back(folder + "/below");
    }
    if ((spelling & 16U) != 0) std::ranges::reverse(batch);
    if ((spelling & 32U) != 0) batch.insert(batch.end(), {"", "/", "relative", std::string("/\0", 2)});
    pane_.events.deliver(batch);
  }

  /// A call that comes when it will: after others, or after the end of its queue.
  void keepCall() {
    const auto call = pane_.queues.callbackFor(watchedPath());
    if (call && late_.size() < 8) late_.push_back(call);
  }
  void callLate() {
    if (late_.empty()) return;
    const auto call = late_[byte() % late_.size()];
    callsTwice_ = true;
    call();
    callsTwice_ = false;
  }

  void watch() {
    const std::string path = watchedPath();
    if (watches_.size() == 4) return;
    watches_.push_back(std::make_unique<HeldWatch>(pane_, path, byte() % 2 == 0, callsTwice_));
  }
  void changeWatch() {
    if (watches_.empty()) return;
    const std::size_t which = byte() % watches_.size();
    switch (byte() % 3) {
      case 0:
        return watches_[which]->end();
      case 1:
        watches_[which]->endsWhenTold = true;
        return;
      default:
        watches_.erase(watches_.begin() + static_cast<std::ptrdiff_t>(which));
    }
  }

  void useControl() {
    const auto controls = test::namedControls(pane_.assembly);
    Control* control = controls[byte() % controls.size()].control;
    if (control == &pane_.assembly.optionsView().showAllVolumeTypesButton) return;  // not what a file says
    if (auto* field = dynamic_cast<TextField*>(control)) {
      field->typeText("2");
      if (byte() % 2 == 0) field->endEditing();
    } else if (auto* button = dynamic_cast<Button*>(control)) {
      button->click();
    } else if (auto* outline = dynamic_cast<OutlineView*>(control)) {
      outline->expandItem({}, true);
      if (hold_) {
        hold_.reset();
      } else {
        hold_ = outline->holdRows();
      }
    } else if (auto* table = dynamic_cast<TableView*>(control)) {
      table->clickRow(static_cast<int>(byte() % 3));
    }
  }

  /// Every file is written anew and reported, with nothing of a user's act left.
  void settle() {
    for (const Step each : {Step::Open, Step::CreateQueue, Step::Register, Step::Wrap, Step::AddToRunLoop}) {
      pane_.queues.succeed(each);
    }
    hold_.reset();
    for (const auto& [name, control] : test::namedControls(pane_.assembly)) {
      if (auto* field = dynamic_cast<TextField*>(control)) field->abortEditing();
    }
    pane_.tree.missing.erase(paths_.installFolder);
    runClientOnce();
    for (const auto& [path, text] : contents()) {
      pane_.tree.put(path, text("z"));
      pane_.tree.changes[path] = 1000;
    }
    // The folder whose change shows everything comes in a batch of its own: two share one file and the first
    // takes its change.
    pane_.events.deliver({paths_.installFolder});
    pane_.events.deliver(pane_.events.directories);
  }

  /// The button is free again when a run has ended.
  void runClientOnce() {
    pane_.tree.missing.erase(paths_.errorLoggerPid);
    pane_.loop.advance(1.5);
    pane_.tree.missing.insert(paths_.errorLoggerPid);
    pane_.queues.fire(paths_.errorLoggerPid);
    pane_.loop.advance(6);
  }

  void requireSameAsNew() {
    MemoryPane fresh;
    fresh.tree.files = pane_.tree.files;
    fresh.tree.changes = pane_.tree.changes;
    fresh.tree.missing = pane_.tree.missing;
    fresh.assembly.load();
    if (pane_.assembly.pane().unlocked()) fresh.assembly.view().authView.click();
    require(pane_.assembly.pane().unlocked() == fresh.assembly.pane().unlocked());
    const auto shown = shownBy(pane_.assembly);
    const auto expected = shownBy(fresh.assembly);
    if (shown == expected) return;
    for (std::size_t i = 0; i < std::max(shown.size(), expected.size()); ++i) {
      const std::string left = i < shown.size() ? shown[i] : "(nothing)";
      const std::string right = i < expected.size() ? expected[i] : "(nothing)";
      if (left != right) std::fprintf(stderr, "shows %s\n  where %s\n", left.c_str(), right.c_str());
    }
    std::abort();
  }

  static std::string shownValue(const ObjectValue& value) {
    if (const auto* text = std::get_if<AttributedText>(&value)) return text->text;
    const auto* list = std::get_if<PropertyList>(&value);
    return list != nullptr ? writeXmlPropertyList(*list).value_or("") : "";
  }
  static std::string shownCell(const PreparedCell& cell) {
    if (!cell.cell) return shownValue(cell.value);
    if (const auto* field = std::get_if<TextFieldCell>(cell.cell.get())) return field->text;
    if (const auto* button = std::get_if<ButtonCell>(cell.cell.get())) {
      return button->title.text + (button->on ? " on" : " off");
    }
    return std::to_string(cell.cell->index());
  }
  static std::vector<std::string> shownBy(PaneAssembly& assembly) {
    assembly.pluginsView().pluginsTable.expandItem({}, true);
    assembly.optionsView().volumesTable.clickRow(0);
    std::vector<std::string> all;
    for (const auto& [name, control] : test::namedControls(assembly)) {
      // These have a history of their own: what failed, and a sheet that reads its file when it is opened.
      if (std::ranges::find(kOwnHistory, name) != kOwnHistory.end()) continue;
      const std::string about =
          name + (control->enabled() ? " enabled " : " ") + (control->hidden() ? "hidden " : "");
      if (const auto* field = dynamic_cast<TextField*>(control)) {
        all.push_back(about + field->stringValue());
      } else if (const auto* button = dynamic_cast<Button*>(control)) {
        all.push_back(about + button->title() + std::to_string(static_cast<int>(button->state())));
      } else if (auto* outline = dynamic_cast<OutlineView*>(control)) {
        for (int row = 0; row < outline->numberOfRows(); ++row) {
          const OutlineItem item = outline->itemAtRow(row);
          for (const auto& column : outline->columns()) {
            all.push_back(about + shownCell(outline->preparedCell(column, item)));
          }
        }
      } else if (const auto* table = dynamic_cast<TableView*>(control)) {
        for (int row = 0; row < table->numberOfRows(); ++row) {
          for (const auto& column : table->columns()) {
            all.push_back(about + shownValue(table->objectValue(column, row)));
          }
        }
      }
    }
    return all;
  }

  std::string_view input_;
  MemoryPane pane_;
  const PathTable& paths_ = pane_.paths;
  std::vector<std::unique_ptr<HeldWatch>> watches_;
  std::vector<std::function<void()>> late_;
  bool callsTwice_ = false;
  OutlineView::Hold hold_;
};

}  // namespace
}  // namespace corvane

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  corvane::Session session(std::string_view(reinterpret_cast<const char*>(data), size));
  session.live();
  return 0;
}
