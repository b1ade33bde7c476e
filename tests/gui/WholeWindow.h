// The whole window over the test platform: real files, widgets, sheets and panels, while time, directory
// events and what becomes of a command as root are played by the test. So nothing that happens depends on
// how fast the machine is.
#pragma once

#include <algorithm>
#include <fstream>
#include <functional>
#include <iterator>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <unistd.h>

#include "Events.h"
#include "PaneWindow.h"
#include "PlainReader.h"
#include "WholeModel.h"
#include "assembly/PaneAssembly.h"
#include "posix/Pipe.h"
#include "services/QtBundle.h"
#include "services/QtDialogs.h"
#include "services/QtWorkspace.h"
#include "services/TestingPanel.h"
#include "support/TestPlatform.h"
#include "tabs/ConfigurationTabPage.h"
#include "tabs/OptionsTabPage.h"
#include "tabs/PluginsTabPage.h"

namespace corvane::test {

/// Commands as root that change a file say so; a plug-in that is asked for its verdict answers when the test
/// lets it.
class PlayedRoot final : public AuthorizationServices {
 public:
  explicit PlayedRoot(QWidget& window) : window_(window) {}
  std::function<void(const std::string& path)> onCopied = [](const std::string&) {};
  RecordingAuthorization recording;
  /// What a plug-in that is being tested answers now.
  void answerTest() { ASSERT_EQ(::write(answer_.writeEnd.get(), "!", 1), 1); }

  bool isDirect() const override { return false; }
  void requestRights(std::string_view right, Done done) override {
    recording.requestRights(right, std::move(done));
  }
  LaunchOutcome executeWithPrivileges(Authorization* authorization, const std::string& tool,
                                      const std::vector<std::string>& arguments) override {
    LaunchOutcome launch = recording.executeWithPrivileges(authorization, tool, arguments);
    if (tool == tool::kCp && launch.result()) onCopied(arguments.at(1));
    return launch;
  }
  LaunchOutcome executeWithPrivileges(Authorization* authorization, const std::string& tool,
                                      const std::vector<std::string>& arguments,
                                      std::unique_ptr<OutputPipe>& output) override {
    recording.replies.emplace_back("0,fine");
    LaunchOutcome launch = recording.executeWithPrivileges(authorization, tool, arguments, output);
    if (output) output = std::make_unique<AwaitedPipe>(*this, std::move(output));
    return launch;
  }

 private:
  class AwaitedPipe final : public OutputPipe {
   public:
    AwaitedPipe(PlayedRoot& root, std::unique_ptr<OutputPipe> output)
        : root_(root), output_(std::move(output)) {}
    ReadOutcome read(char* buffer, std::size_t capacity) override {
      if (!root_.waitForAnswer()) return {0, false, true};
      return output_->read(buffer, capacity);
    }

   private:
    PlayedRoot& root_;
    std::unique_ptr<OutputPipe> output_;
  };
  [[nodiscard]] bool waitForAnswer() {
    if (!qt::waitReadable(&window_, answer_.readEnd.get())) return false;
    char byte = 0;
    return ::read(answer_.readEnd.get(), &byte, 1) == 1;
  }

  QWidget& window_;
  Pipe answer_ = makePipe();
};

class WholeWindow {
 public:
  explicit WholeWindow(const WholeModel& model) {
    test_.layOutFolders();
    std::filesystem::create_directories(disk(model.paths.updaterSupport));
    test_.writeText(disk(model.paths.diskJournalPid), "4711\n");
    test_.processes.text = "  PID\n 4711\n";
    test_.fileEventQueues.exists = [this](const std::string& path) { return test_.files.exists(path); };
    for (const ModelPlugin& plugin : WholeModel::pluginDefinitions()) writeDefinition(plugin);
    for (int i = 0; i < 4; ++i) {
      test_.writeText(disk("/Users/file" + std::to_string(i)), "");
      std::filesystem::create_directories(disk("/Users/folder" + std::to_string(i)));
    }
    // What is read for the user as root is a copy that the commands of this test have made.
    test_.propertyLists.copiesTo = [this](const std::string& path) {
      return static_cast<std::size_t>(
          std::ranges::count_if(root.recording.commands, [&](const RootCommand& command) {
            return command.tool == tool::kCp && command.arguments.back() == path;
          }));
    };
    root.onCopied = [this](const std::string& path) { wasChanged(path); };
  }
  ~WholeWindow() { window_.reset(); }  // before the controls that it shows
  WholeWindow(const WholeWindow&) = delete;
  WholeWindow& operator=(const WholeWindow&) = delete;

  void open() {
    assembly_ = std::make_unique<PaneAssembly>(platform_, test_.root.path());
    window_->bindFrameTo(assembly_->view());
    window_->bindHeaderTo(assembly_->view());
    window_->bindIconTo(assembly_->view());
    window_->setTabPage(0, new qt::ConfigurationTabPage(assembly_->configurationView()));
    window_->setTabPage(1, new qt::OptionsTabPage(assembly_->optionsView(), window_->sheets()));
    window_->setTabPage(2, new qt::PluginsTabPage(assembly_->pluginsView()));
    assembly_->load();
    showActive(*window_);
  }

  [[nodiscard]] qt::PaneWindow& window() { return *window_; }
  [[nodiscard]] PaneAssembly& assembly() { return *assembly_; }
  [[nodiscard]] std::string disk(const std::string& clientPath) const {
    return test_.paths.onDisk(clientPath);
  }
  [[nodiscard]] PropertyList stored(const std::string& clientPath) const {
    return PlainReader::read(disk(clientPath));
  }
  /// Others put these contents there, or remove it (null).
  void changeByOthers(const std::string& clientPath, const PropertyList& contents) {
    const std::string path = disk(clientPath);
    if (contents) {
      test_.writePlist(path, contents);
    } else {
      test_.remove(path);
    }
    wasChanged(path);
  }
  /// Others put something there that is no settings file.
  void breakByOthers(const std::string& clientPath, const std::string& contents) {
    const std::string path = disk(clientPath);
    test_.writeText(path, contents);
    broken_[clientPath] = contents;
    wasChanged(path);
  }
  /// Whether what others have broken is as they left it.
  [[nodiscard]] bool isStillBroken(const std::string& clientPath) const {
    std::ifstream file(disk(clientPath), std::ios::binary);
    const std::string contents{std::istreambuf_iterator<char>(file), {}};
    return broken_.contains(clientPath) && contents == broken_.at(clientPath);
  }
  void reportDirectories(const std::vector<std::string>& onClient) {
    std::vector<std::string> directories;
    for (const std::string& directory : onClient) directories.push_back(disk(directory));
    test_.directoryEvents.deliver(directories);
  }
  void letTimePass(double seconds) { test_.runLoop.advance(seconds); }
  [[nodiscard]] std::string staging() const { return disk("/private/tmp"); }
  /// How writes and starts of scripts end from now on.
  void setFate(const std::string& whyStagingFails, const std::string& whyCopyingFails,
               const std::string& whyStartsFail) {
    test_.propertyLists.whyWritesFail = whyStagingFails;
    root.recording.reasonOfTool.clear();
    if (!whyCopyingFails.empty()) root.recording.reasonOfTool[tool::kCp] = whyCopyingFails;
    if (!whyStartsFail.empty())
      root.recording.reasonOfTool[bundle_.pathForAuxiliaryExecutable("qlhelper")] = whyStartsFail;
  }

 private:
  void writeDefinition(const ModelPlugin& plugin) {
    Array options = Array::make();
    for (const ModelOption& one : plugin.options) {
      Dictionary kind = Dictionary::make({{"Type", text(one.type)}});
      if (one.value) kind.set("Value", one.value);
      options.append(Dictionary::make({{"SettingStorageKey", text(one.key)},
                                       {"SettingStoragePath", text(one.path)},
                                       {"SettingTitle", text(one.key)},
                                       {"SettingTitleHint", text("What it is for")},
                                       {"SettingType", kind}}));
    }
    test_.writePlist(disk("/Library/Corvane/Plugins/" + plugin.name + ".plist"),
                     Dictionary::make({{"PluginName", text(plugin.name)},
                                       {"ProgramArguments", Array::make({text(plugin.name)})},
                                       {"PluginOptions", options}}));
  }
  /// Its date is later than all before.
  void wasChanged(const std::string& path) { test_.files.dates[path] = {Date{4e9 + ++changes_}, {}}; }

  TestPlatform test_;
  qt::QtBundle bundle_;
  qt::QtWorkspace workspace_;
  std::unique_ptr<qt::PaneWindow> window_ = std::make_unique<qt::PaneWindow>();
  qt::QtDialogs dialogs_{window_->sheets()};
  int changes_ = 0;
  std::map<std::string, std::string> broken_;

 public:
  PlayedRoot root{*window_};

 private:
  Platform platform_{test_.log,
                     test_.files,
                     test_.propertyLists,
                     test_.runLoop,
                     test_.directoryEvents,
                     test_.fileEventQueues,
                     root,
                     test_.processes,
                     test_.texts,
                     dialogs_,
                     workspace_,
                     bundle_};
  std::unique_ptr<PaneAssembly> assembly_;
};

}  // namespace corvane::test
