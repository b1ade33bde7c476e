// Random sessions of the whole core against a small model: edits, writes that fail in every way, changes by
// others, opening and closing the lock, starts of the updater. What is shown is what the store holds, what is
// in the file is what was written last with success, and the status tells exactly what failed and was not
// done since.
#include <random>

#include "AssemblyFixture.h"
#include "pane/ClientKeys.h"
#include "values/Text.h"

namespace corvane::test {
namespace {

constexpr int kActs = 400;

class RandomSession : public AssemblyFixture, public ::testing::WithParamInterface<unsigned> {
 protected:
  /// One setting with a control, in a file of its own.
  struct Setting {
    std::string file;
    std::string key;
    std::string watched;  // the directory that is reported when others have changed the file
    Button* box;          // null: the group's field
    std::string stored;
    std::string shown;
  };

  void SetUp() override {
    const PropertyList off = PropertyList::boolean(false);
    for (const auto& file : {paths_.timeMachineSettings, paths_.rootCapacitySettings})
      platform_.writePlist(file, Dictionary::make({{client_key::kPluginEnabled, off}}));
    platform_.writePlist(paths_.autoDiskMount, Dictionary::make({{client_key::kAutomountDisks, off}}));
    loadUnlocked();
    OptionsTabView& options = assembly_->optionsView();
    settings_ = {
        {paths_.clientSettings, client_key::kClientGroup, paths_.installFolder, nullptr, "lab", "lab"},
        {paths_.timeMachineSettings, client_key::kPluginEnabled, paths_.pluginSupport,
         &options.timeMachineWarningCheckbox, "off", "off"},
        {paths_.rootCapacitySettings, client_key::kPluginEnabled, paths_.pluginSupport,
         &options.bootVolumeWarningCheckbox, "off", "off"},
        {paths_.autoDiskMount, client_key::kAutomountDisks, paths_.systemConfiguration,
         &options.automountCheckbox, "off", "off"}};
  }

  std::size_t below(std::size_t end) { return static_cast<std::size_t>(random_()) % end; }
  [[nodiscard]] TextField& group() const { return assembly_->configurationView().clientGroupTextField; }

  void edit(Setting& setting) {
    const bool open = assembly_->pane().unlocked();
    if (setting.box != nullptr) {
      setting.box->click();
    } else {
      const std::string typed = "group " + std::to_string(++counter_);
      EXPECT_EQ(group().enabled(), open);
      if (!open) return;
      ASSERT_TRUE(group().typeText(typed));
      group().endEditing();
    }
    if (!open) return;
    const std::string value = setting.box == nullptr  ? "group " + std::to_string(counter_)
                              : setting.shown == "on" ? "off"
                                                      : "on";
    setting.shown = value;
    if (reason_.empty()) setting.stored = value;
    note(setting.file, "%@ was not saved%@: %@", reason_);
  }

  void startUpdater() {
    assembly_->pane().executeQLHelperArguments(tool::kBash, {paths_.runUpdater, "--force"});
    const std::string why = !assembly_->pane().unlocked() ? "status 5534" : startReason_;
    note(paths_.runUpdater, "%@ was not started%@: %@", why);
  }

  void note(const std::string& path, const char* format, const std::string& reason) {
    std::erase_if(failures_, [&](const auto& failure) { return failure.path == path; });
    if (!reason.empty()) failures_.insert(failures_.begin(), {path, format, reason});
  }

  /// Others replace the files that lie in one directory, which is then reported.
  void changeByOthers(const std::string& directory) {
    for (Setting& setting : settings_) {
      if (setting.watched != directory) continue;
      const bool on = below(2) == 0;
      setting.stored = setting.box != nullptr ? (on ? "on" : "off") : "theirs " + std::to_string(++counter_);
      setting.shown = setting.stored;
      platform_.writePlist(setting.file,
                           Dictionary::make({{setting.key, setting.box != nullptr ? PropertyList::boolean(on)
                                                                                  : text(setting.stored)}}));
      platform_.files.dates[setting.file] = {Date{4e9 + ++counter_}, {}};
    }
    platform_.directoryEvents.deliver({directory});
  }

  void click() {
    assembly_->view().authView.click();
    if (!assembly_->pane().unlocked()) return;
    for (Setting& setting : settings_) setting.shown = setting.stored;  // opening reads everything again
  }

  /// How writes and starts end from now on.
  void setFate() {
    platform_.propertyLists.whyWritesFail.clear();
    platform_.authorization.reasonOfTool.clear();
    platform_.authorization.statusOfTool.clear();
    reason_.clear();
    startReason_.clear();
    switch (below(5)) {
      case 0:
        platform_.propertyLists.whyWritesFail = "No space left on device";
        reason_ = "No space left on device (" + platform_.root.path() + "/private/tmp)";
        break;
      case 1:
        reason_ = platform_.authorization.reasonOfTool[tool::kCp] = "the copy failed";
        break;
      case 2:
        platform_.authorization.statusOfTool[tool::kCp] = launch_status::kToolExecuteFailure;
        reason_ = "status 5505";
        break;
      case 3:
        startReason_ = platform_.authorization.reasonOfTool["/bundle/MacOS/qlhelper"] = "not today";
        break;
      default:
        break;
    }
  }

  void act() {
    switch (below(12)) {
      case 0:
        return setFate();
      case 1:
        return click();
      case 2:
        return changeByOthers(settings_[below(settings_.size())].watched);
      case 3:
        return startUpdater();
      default:
        return edit(settings_[below(settings_.size())]);
    }
  }

  void check() {
    for (const Setting& setting : settings_) {
      SCOPED_TRACE(setting.file);
      const PropertyList stored = platform_.readPlist(setting.file).asDictionary().value(setting.key);
      if (setting.box == nullptr) {
        EXPECT_EQ(group().stringValue(), setting.shown);
        EXPECT_EQ(stored, text(setting.stored));
      } else {
        EXPECT_EQ(setting.box->state() == ButtonState::On ? "on" : "off", setting.shown);
        EXPECT_EQ(stored == PropertyList::boolean(true) ? "on" : "off", setting.stored);
      }
    }
    std::string said;
    if (!failures_.empty()) {
      const auto& [path, format, reason] = failures_.front();
      const std::size_t others = failures_.size() - 1;
      said = formatText(format, {lastPathComponent(path),
                                 others > 0 ? " (and " + std::to_string(others) + " more)" : "", reason});
    }
    EXPECT_EQ(assembly_->view().statusField.stringValue(), said);
    EXPECT_EQ(assembly_->view().statusField.hidden(), said.empty());
  }

  std::mt19937 random_{GetParam()};
  std::vector<Setting> settings_;
  struct Failure {
    std::string path;
    const char* format;
    std::string reason;
  };
  std::vector<Failure> failures_;  // the newest first
  std::string reason_;             // why writes fail now; empty: they don't
  std::string startReason_;        // the same for starts
  int counter_ = 0;
};

TEST_P(RandomSession, ShowsWhatIsStoredAndTellsWhatIsNot) {
  check();
  for (int step = 0; step < kActs && !HasFailure(); ++step) {
    SCOPED_TRACE("act " + std::to_string(step));
    act();
    check();
  }
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomSession, ::testing::Range(1U, 9U));

}  // namespace
}  // namespace corvane::test
