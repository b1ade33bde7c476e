// What is recognized as one of the commands that root carries out: every command, and what comes close to
// one.
#include <ostream>

#include <gtest/gtest.h>

#include "helper/CommandShapes.h"

namespace corvane::helper {
namespace {

constexpr const char* kHelper = "/opt/corvane/qlhelper";

struct Case {
  std::string name;
  std::string program;
  std::vector<std::string> arguments;
  bool wantsOutput = false;
  std::string root = {};
};
void PrintTo(const Case& value, std::ostream* stream) { *stream << value.name; }
std::string nameOf(const testing::TestParamInfo<Case>& info) { return info.param.name; }

Command recognized(const Case& value) {
  return recognize({.program = value.program, .arguments = value.arguments, .wantsOutput = value.wantsOutput},
                   {.root = value.root, .helper = kHelper});
}

class AcceptedCommand : public testing::TestWithParam<Case> {};
TEST_P(AcceptedCommand, IsRecognized) {
  const auto command = recognized(GetParam());
  const auto* refusal = std::get_if<Refusal>(&command);
  EXPECT_EQ(refusal, nullptr) << refusal->reason;
}

class RefusedCommand : public testing::TestWithParam<Case> {};
TEST_P(RefusedCommand, IsARefusalWithAReason) {
  const auto command = recognized(GetParam());
  ASSERT_TRUE(std::holds_alternative<Refusal>(command));
  EXPECT_FALSE(std::get<Refusal>(command).reason.empty());
}

const std::string kTarget = "/Library/Corvane/PluginSupport/a.plist";
INSTANTIATE_TEST_SUITE_P(
    Commands, AcceptedCommand,
    testing::Values(
        Case{"Removal", "/bin/rm", {"/private/tmp/a.plist"}},
        Case{"RemovalBelowAPrefix", "/bin/rm", {"/a b/private/tmp/a.plist"}, false, "/a b"},
        Case{"RemovalOfANameWithABlank", "/bin/rm", {"/private/tmp/a b.plist"}},
        Case{"Write", "/bin/cp", {"/private/tmp/a.plist", kTarget}},
        Case{"WriteBelowAPrefix", "/bin/cp", {"/m/private/tmp/a.plist", "/m" + kTarget}, false, "/m"},
        Case{"WriteInTheTopFolder", "/bin/cp", {"/private/tmp/a.plist", "/a.plist"}},
        Case{"Read", "/bin/cp", {kTarget, "/private/tmp/read-a.plist"}},
        Case{"ReadOfAStagingFile", "/bin/cp", {"/private/tmp/a.plist", "/private/tmp/read-a.plist"}},
        Case{"FolderInRootsHome", "/bin/mkdir", {"-p", "/var/root/Library/Preferences"}},
        Case{"RootsHomeItself", "/bin/mkdir", {"-p", "/var/root"}},
        Case{"FolderInRootsHomeInOtherLetterCase", "/bin/mkdir", {"-p", "/VAR/Root/x"}},
        Case{"FolderInRootsHomeBelowAPrefix", "/bin/mkdir", {"-p", "/m/var/root/x"}, false, "/m"},
        Case{"ResettingTheModes", "/bin/chmod", {"644"}},
        Case{"ClientRun",
             kHelper,
             {"/bin/bash", "/Library/Corvane/RunClient", "--log-parent", "prefpane-client", "--force"}},
        Case{"UpdaterRun",
             kHelper,
             {"/bin/bash", "/Library/Corvane/RunUpdater", "--log-parent", "prefpane-updater", "--force"}},
        Case{"Removing",
             kHelper,
             {"/bin/bash", "/Library/Corvane/RunClient", "--log-parent", "prefpane-remove", "--remove"}},
        Case{"RemovingQuietly",
             kHelper,
             {"/bin/bash", "/Library/Corvane/RunClient", "--log-parent", "prefpane-remove", "--remove",
              "--quiet"}},
        Case{"ClientRunBelowAPrefix",
             kHelper,
             {"/bin/bash", "/m/Library/Corvane/RunClient", "--log-parent", "prefpane-client", "--force"},
             false,
             "/m"},
        Case{"Validation", kHelper, {"/Library/Corvane/Plugins/check_x", "--test-mode"}, true},
        Case{"ValidationWithAnyArguments",
             kHelper,
             {"/Library/Corvane/Plugins/sub/check_x", "", "a\nb", "../..", "--test-mode"},
             true}),
    nameOf);

INSTANTIATE_TEST_SUITE_P(
    NearMisses, RefusedCommand,
    testing::Values(
        Case{"AnotherProgram", "/usr/bin/id", {}}, Case{"NoProgram", "", {}},
        Case{"RelativeProgram", "rm", {"/private/tmp/a"}}, Case{"RemovalOfNothing", "/bin/rm", {}},
        Case{"RemovalOfTwo", "/bin/rm", {"/private/tmp/a", "/private/tmp/b"}},
        Case{"RemovalWithAnOption", "/bin/rm", {"-rf", "/private/tmp/a"}},
        Case{"RemovalOutsideTheStagingFolder", "/bin/rm", {kTarget}},
        Case{"RemovalBelowTheStagingFolder", "/bin/rm", {"/private/tmp/a/b"}},
        Case{"RemovalOfTheStagingFolder", "/bin/rm", {"/private/tmp"}},
        Case{"RemovalOfTheStagingFolderWithASlash", "/bin/rm", {"/private/tmp/"}},
        Case{"RemovalOfTheStagingFolderWithADot", "/bin/rm", {"/private/tmp/."}},
        Case{"RemovalThatClimbs", "/bin/rm", {"/private/tmp/../tmp/a"}},
        Case{"RemovalOfTwoDots", "/bin/rm", {"/private/tmp/.."}},
        Case{"RemovalOfARelativePath", "/bin/rm", {"private/tmp/a"}},
        Case{"RemovalOutsideThePrefix", "/bin/rm", {"/private/tmp/a"}, false, "/m"},
        Case{"RemovalBesideThePrefix", "/bin/rm", {"/mm/private/tmp/a"}, false, "/m"},
        Case{"RemovalOfATooLongName", "/bin/rm", {"/private/tmp/" + std::string(256, 'a')}},
        Case{"RemovalWithANullCharacter", "/bin/rm", {std::string("/private/tmp/a\0b", 16)}},
        Case{"RemovalWithOutput", "/bin/rm", {"/private/tmp/a"}, true},
        Case{"CopyOfOne", "/bin/cp", {"/private/tmp/a"}},
        Case{"CopyOfThree", "/bin/cp", {"/private/tmp/a", "/x/a", "/y/a"}},
        Case{"WriteOfAnotherName", "/bin/cp", {"/private/tmp/b.plist", kTarget}},
        Case{"WriteThatClimbs", "/bin/cp", {"/private/tmp/a", "/Library/../etc/a"}},
        Case{"WriteOfARelativeTarget", "/bin/cp", {"/private/tmp/a", "etc/a"}},
        Case{"WriteOutsideThePrefix", "/bin/cp", {"/m/private/tmp/a", "/etc/a"}, false, "/m"},
        Case{"CopyWithoutStaging", "/bin/cp", {"/etc/a", "/Library/a"}},
        Case{"ReadIntoAnotherName", "/bin/cp", {kTarget, "/private/tmp/read-b.plist"}},
        Case{"ReadIntoTheWriteStagingFile", "/bin/cp", {kTarget, "/private/tmp/a.plist"}},
        Case{"ReadThatClimbs", "/bin/cp", {"/Library/../etc/a", "/private/tmp/read-a"}},
        Case{"TargetOfATooLongPath", "/bin/cp", {"/private/tmp/a", "/" + std::string(5000, '/') + "a"}},
        Case{"FolderWithoutOption", "/bin/mkdir", {"/var/root/x"}},
        Case{"FolderWithMode", "/bin/mkdir", {"-p", "-m", "777", "/var/root/x"}},
        Case{"FolderElsewhere", "/bin/mkdir", {"-p", "/var/rooted"}},
        Case{"FolderThatClimbs", "/bin/mkdir", {"-p", "/var/root/../log"}},
        Case{"FolderOutsideThePrefix", "/bin/mkdir", {"-p", "/var/root/x"}, false, "/m"},
        Case{"ModesOfAFile", "/bin/chmod", {"644", kTarget}}, Case{"OtherModes", "/bin/chmod", {"666"}},
        Case{"ModesOfNothing", "/bin/chmod", {}}, Case{"ModesWithOutput", "/bin/chmod", {"644"}, true},
        Case{"Shell", "/bin/sh", {"-c", "id"}}, Case{"SyntaxChecker", "/usr/bin/plutil", {kTarget}},
        Case{"HelperWithNothing", kHelper, {}},
        Case{"HelperWithATool", kHelper, {"/bin/rm", "/private/tmp/a"}},
        Case{"HelperWithBash", kHelper, {"/bin/bash"}},
        Case{"HelperWithAShellText", kHelper, {"/bin/bash", "-c", "id"}},
        Case{"ScriptWithoutItsLastArgument",
             kHelper,
             {"/bin/bash", "/Library/Corvane/RunClient", "--log-parent", "prefpane-client"}},
        Case{"ScriptWithAFurtherArgument",
             kHelper,
             {"/bin/bash", "/Library/Corvane/RunClient", "--log-parent", "prefpane-client", "--force",
              "--quiet"}},
        Case{"ScriptWithTheOtherScriptsArguments",
             kHelper,
             {"/bin/bash", "/Library/Corvane/RunUpdater", "--log-parent", "prefpane-client", "--force"}},
        Case{"AnotherScript",
             kHelper,
             {"/bin/bash", "/Library/Corvane/Run", "--log-parent", "prefpane-client", "--force"}},
        Case{"ScriptOutsideThePrefix",
             kHelper,
             {"/bin/bash", "/Library/Corvane/RunClient", "--log-parent", "prefpane-client", "--force"},
             false,
             "/m"},
        Case{"ScriptWithOutput",
             kHelper,
             {"/bin/bash", "/Library/Corvane/RunClient", "--log-parent", "prefpane-client", "--force"},
             true},
        Case{"PluginWithoutTestMode", kHelper, {"/Library/Corvane/Plugins/check_x", "-v"}, true},
        Case{"PluginWithTestModeFirst",
             kHelper,
             {"/Library/Corvane/Plugins/check_x", "--test-mode", "-v"},
             true},
        Case{"PluginAlone", kHelper, {"/Library/Corvane/Plugins/check_x"}, true},
        Case{"PluginThatClimbs", kHelper, {"/Library/Corvane/Plugins/../RunClient", "--test-mode"}, true},
        Case{"ThePluginsFolder", kHelper, {"/Library/Corvane/Plugins", "--test-mode"}, true},
        Case{"ThePluginsFolderWithASlash", kHelper, {"/Library/Corvane/Plugins/", "--test-mode"}, true},
        Case{"PluginOfAnotherFolder", kHelper, {"/Library/Corvane/PluginsX/check_x", "--test-mode"}, true},
        Case{"RelativePlugin", kHelper, {"check_x", "--test-mode"}, true},
        Case{"PluginWithoutOutput", kHelper, {"/Library/Corvane/Plugins/check_x", "--test-mode"}},
        Case{"AnotherHelper", "/tmp/qlhelper", {"/Library/Corvane/Plugins/check_x", "--test-mode"}, true}),
    nameOf);

TEST(CommandShapes, EmptyHelperPathIsNotAnEmptyProgram) {
  const auto command = recognize(
      {.program = "", .arguments = {"/Library/Corvane/Plugins/x", "--test-mode"}, .wantsOutput = true}, {});
  EXPECT_TRUE(std::holds_alternative<Refusal>(command));
}

struct RootCase {
  std::string given;
  std::optional<std::string> normalized;
};
TEST(CommandShapes, RootPrefixLosesItsLastSlashesAndMustBeAbsoluteAndPlain) {
  for (const auto& [given, normalized] : std::vector<RootCase>{{"", ""},
                                                               {"/", ""},
                                                               {"/a/", "/a"},
                                                               {"/a b/c'\n", "/a b/c'\n"},
                                                               {"a", std::nullopt},
                                                               {"/a/../b", std::nullopt},
                                                               {"/a//b", std::nullopt},
                                                               {"/a/./b", std::nullopt},
                                                               {std::string("/a\0", 3), std::nullopt}}) {
    EXPECT_EQ(normalizedRoot(given), normalized) << given;
  }
}

TEST(CommandShapes, CopyIsTakenApartIntoNameAndFolder) {
  const auto write = recognized({"", "/bin/cp", {"/m/private/tmp/a", "/m/x/y/a"}, false, "/m"});
  ASSERT_TRUE(std::holds_alternative<WriteTarget>(write));
  EXPECT_EQ(std::get<WriteTarget>(write).folder, "/x/y");
  EXPECT_EQ(std::get<WriteTarget>(write).name, "a");
  const auto read = recognized({"", "/bin/cp", {"/m/x/y/a", "/m/private/tmp/read-a"}, false, "/m"});
  ASSERT_TRUE(std::holds_alternative<ReadSource>(read));
  EXPECT_EQ(std::get<ReadSource>(read).folder, "/x/y");
  EXPECT_EQ(std::get<ReadSource>(read).name, "a");
}

}  // namespace
}  // namespace corvane::helper
