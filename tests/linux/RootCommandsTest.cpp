// The two sides of the border to root: what the pane asks for is spelled in the core, what root carries out
// in the helper, which believes nothing that comes from the core. Here both meet.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "assembly/PaneAssembly.h"
#include "helper/CommandShapes.h"
#include "platform/Housekeeping.h"
#include "support/TestPlatform.h"
#include "support/Values.h"

namespace corvane::test {
namespace {

class RootCommands : public ::testing::Test {
 protected:
  RootCommands() {
    platform_.layOutFolders();
    platform_.writePlist(platform_.paths.clientSettings, Dictionary::make({{"ClientGroup", text("lab")}}));
    pane_.load();
    pane_.view().authView.click();
    EXPECT_TRUE(pane_.pane().unlocked());
  }

  void write(const std::string& path) {
    pane_.pane().setPlistFileValues(path, Dictionary::make({{"a", number(1)}}));
  }
  void uninstall(bool accessoryOn) {
    pane_.configurationView().uninstallButton.click();
    platform_.dialogs.endSheet(kAlertFirstButtonReturn, accessoryOn);
  }

  [[nodiscard]] std::string refusalOf(const RootCommand& command) const {
    const bool isHelper = command.tool.ends_with("/qlhelper");
    const helper::Command recognized = helper::recognize(
        {.program = command.tool, .arguments = command.arguments, .wantsOutput = command.wantsOutput},
        {.root = platform_.root.path(), .helper = isHelper ? command.tool : "/opt/qlhelper"});
    const auto* refusal = std::get_if<helper::Refusal>(&recognized);
    return refusal != nullptr ? refusal->reason : std::string();
  }

  TestPlatform platform_;
  PaneAssembly pane_{platform_.platform, platform_.root.path()};
};

TEST_F(RootCommands, EveryCommandOfThePaneIsOneThatRootCarriesOut) {
  const PathTable& paths = platform_.paths;
  write(paths.volumesSettings);
  write(paths.onDisk("/var/root/Library/Preferences/check.plist"));
  platform_.writeText(paths.writeStaging(paths.autoDiskMount), "of an earlier write");
  write(paths.autoDiskMount);
  (void)pane_.pane().readRootFile(paths.onDisk("/var/root/Library/Preferences/check.plist"));
  pane_.configurationView().runClientButton.click();
  pane_.configurationView().updateClientNowButton.click();
  uninstall(true);
  uninstall(false);
  (void)pane_.pane().validatePluginWithArguments("", {paths.plugins + "/check_x", "-v", "--test-mode"});

  std::vector<std::string> tools;
  for (const RootCommand& command : platform_.authorization.commands) {
    tools.push_back(command.tool.substr(command.tool.rfind('/') + 1));
    // The housekeeping is recognized by the platform, which asks root for its half of it as a command of its
    // own.
    if (command.tool == tool::kSh) continue;
    EXPECT_EQ(refusalOf(command), "") << ::testing::PrintToString(command);
  }
  EXPECT_EQ(refusalOf({"/bin/chmod", {"644"}, false}), "");
  const auto times = [&](const char* name) { return std::ranges::count(tools, name); };
  EXPECT_EQ(times("sh"), 2);
  EXPECT_EQ(times("cp"), 4);
  EXPECT_EQ(times("mkdir"), 1);
  EXPECT_EQ(times("rm"), 4);
  EXPECT_EQ(times("qlhelper"), 5);
}

TEST_F(RootCommands, TheFoldersOfBothSidesAreTheSame) {
  const PathTable paths;
  EXPECT_EQ(paths.installFolder, helper::kClientFolder);
  EXPECT_EQ(paths.plugins, helper::kPluginsFolder);
  EXPECT_EQ(paths.writeStaging("/x/a"), std::string(helper::kStagingFolder) + "/a");
  EXPECT_EQ(paths.readStaging("/x/a"),
            std::string(helper::kStagingFolder) + "/" + std::string(helper::kReadPrefix) + "a");
}

}  // namespace
}  // namespace corvane::test
