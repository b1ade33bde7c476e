#include <ostream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "plugins/PluginValidation.h"
#include "plugins/PluginsTabFixture.h"

namespace corvane {
namespace {

using namespace test;
using Texts = std::vector<std::string>;

class PluginValidationTest : public PluginsTabFixture {
 protected:
  void awakeWithArguments(const PropertyList& arguments) {
    Dictionary definition = Dictionary::make(
        {{"PluginName", text("check_x")}, {"PluginOptions", options({option("PluginValidation")})}});
    definition.set("ProgramArguments", arguments);
    addDefinition("check_x", definition);
    awake();
  }
  std::string executable(const std::string& name) const { return platform.paths.plugins + "/" + name; }
  void expectSheet(AlertStyle style, const std::string& message, const std::string& informative) {
    ASSERT_EQ(platform.dialogs.sheets.size(), 1U);
    const auto& sheet = platform.dialogs.sheets[0];
    EXPECT_EQ(sheet.window, SheetWindow::PaneWindow);
    EXPECT_EQ(sheet.alert.style, style);
    EXPECT_EQ(sheet.alert.messageText, message);
    EXPECT_EQ(sheet.alert.informativeText, informative);
    EXPECT_EQ(sheet.alert.iconPath, "/bundle/Resources/Corvane.icns");
    ASSERT_EQ(sheet.alert.buttons.size(), 1U);
    EXPECT_EQ(sheet.alert.buttons[0].title, "OK");
    EXPECT_EQ(sheet.alert.buttons[0].keyEquivalent, "\r");
  }
};

TEST_F(PluginValidationTest, RunsTheExecutableInThePluginsFolderWithItsArgumentsInTestMode) {
  awakeWithArguments(texts({"check_x", "-v", "--deep"}));
  click(valueRow());
  ASSERT_EQ(pane.validations.size(), 1U);
  EXPECT_EQ(pane.validations[0].program, executable("check_x"));
  EXPECT_EQ(pane.validations[0].arguments, (Texts{executable("check_x"), "-v", "--deep", "--test-mode"}));
}

TEST_F(PluginValidationTest, TheDefinitionsArgumentsStayAsTheyAre) {
  awakeWithArguments(texts({"check_x"}));
  click(valueRow());
  click(valueRow());
  EXPECT_EQ(controller->catalogue().plugins()[0].value("ProgramArguments"), texts({"check_x"}));
  EXPECT_EQ(pane.validations.at(1).arguments, (Texts{executable("check_x"), "--test-mode"}));
}

TEST_F(PluginValidationTest, ASecondClickWhileThePluginAnswersStartsNoSecondOne) {
  awakeWithArguments(texts({"check_x"}));
  pane.whileValidating = [this] { click(valueRow()); };
  click(valueRow());
  EXPECT_EQ(pane.validations.size(), 1U);
  EXPECT_EQ(platform.dialogs.sheets.size(), 1U);
  click(valueRow());
  EXPECT_EQ(pane.validations.size(), 2U);
}

struct VerdictCase {
  std::optional<std::string> reply;
  bool succeeded;
  const char* message;
};
void PrintTo(const VerdictCase& verdict, std::ostream* stream) {
  *stream << verdict.reply.value_or("(no text)");
}

class PluginValidationVerdictTest : public PluginValidationTest,
                                    public testing::WithParamInterface<VerdictCase> {};

TEST_P(PluginValidationVerdictTest, TheVerdictIsShownInASheet) {
  awakeWithArguments(texts({"check_x"}));
  pane.replies = {GetParam().reply};
  click(valueRow());
  expectSheet(GetParam().succeeded ? AlertStyle::Informational : AlertStyle::Critical,
              GetParam().succeeded ? "Plugin Validation Succeeded" : "Plugin Validation Failed",
              GetParam().message);
}

constexpr const char* kNoResult = "The plugin gave no readable result.";

INSTANTIATE_TEST_SUITE_P(
    Replies, PluginValidationVerdictTest,
    testing::Values(VerdictCase{"0,All settings valid", true, "All settings valid"},
                    VerdictCase{"3,Server unreachable\nmore", false, "Server unreachable"},
                    VerdictCase{"-2,Error running plugin", false, "Error running plugin"},
                    VerdictCase{"-1,Error authorizing execution", false, "Error authorizing execution"},
                    VerdictCase{"0,\nDone", true, "Done"}, VerdictCase{"OK,fine", true, "fine"},
                    VerdictCase{"no comma", false, kNoResult}, VerdictCase{"0,", false, kNoResult},
                    VerdictCase{"0,\n", false, kNoResult}, VerdictCase{"", false, kNoResult},
                    VerdictCase{std::nullopt, false, kNoResult}));

TEST_F(PluginValidationTest, NoRowIsSelectedAfterwards) {
  awakeWithArguments(texts({"check_x"}));
  click(valueRow());
  EXPECT_EQ(outline().selectedRow(), -1);
}

TEST_F(PluginValidationTest, ClosingTheSheetDoesNothingFurther) {
  awakeWithArguments(texts({"check_x"}));
  click(valueRow());
  platform.dialogs.endSheet(1000);
  EXPECT_EQ(platform.dialogs.sheets.size(), 1U);
  EXPECT_TRUE(pane.writes.empty());
}

TEST_F(PluginValidationTest, APluginWithoutAnExecutableDoesNothing) {
  Array mixed = texts({"check_x"});
  mixed.append(number(1));
  for (const PropertyList& arguments :
       {PropertyList(), PropertyList(Array::make()), text("x"), PropertyList(mixed)}) {
    awakeWithArguments(arguments);
    click(valueRow());
  }
  EXPECT_TRUE(pane.validations.empty());
  EXPECT_TRUE(platform.dialogs.sheets.empty());
  EXPECT_TRUE(platform.log.lines.empty());
}

TEST_F(PluginValidationTest, AnExecutableThatIsNotNamedBelowThePluginsFolderIsRefused) {
  for (const char* name : {"..", "../RunClient", "sub/../../RunClient", "sub/../check_x", "/../../bin/sh", "",
                           "/", ".", "./", "sub/.."}) {
    awakeWithArguments(texts({name}));
    platform.log.lines.clear();
    click(valueRow());
    EXPECT_EQ(platform.log.lines,
              Texts{std::string("Plugin executable is not in the Plugins folder: ") + name});
  }
  EXPECT_TRUE(pane.validations.empty());
  EXPECT_TRUE(platform.dialogs.sheets.empty());
}

TEST_F(PluginValidationTest, AnExecutableWithANulInItsNameIsRefused) {
  awakeWithArguments(texts({"check_x"}));
  Dictionary entry = controller->catalogue().plugins()[0];  // XML has no NUL, other forms of the file do
  entry.set("ProgramArguments", Array::make({text(std::string("check_x\0/check_y", 16))}));
  click(valueRow());
  EXPECT_EQ(platform.log.lines.size(), 1U);
  EXPECT_TRUE(pane.validations.empty());
}

TEST_F(PluginValidationTest, AnExecutableIsAlwaysBelowThePluginsFolder) {
  const std::vector<std::pair<const char*, const char*>> cases = {
      {"sub/check_x", "sub/check_x"},   {"/bin/sh", "bin/sh"},  {"./check_x", "check_x"},
      {"sub//check_x/", "sub/check_x"}, {"..check", "..check"}, {"check x", "check x"}};
  for (const auto& [name, path] : cases) {
    awakeWithArguments(texts({name}));
    pane.validations.clear();
    click(valueRow());
    ASSERT_EQ(pane.validations.size(), 1U) << name;
    EXPECT_EQ(pane.validations[0].program, executable(path));
  }
}

TEST_F(PluginValidationTest, ARowThatHasNoPluginAboveItsOptionDoesNothing) {
  awakeWithArguments(texts({"check_x"}));
  PluginAlerts alerts(platform.dialogs, platform.bundle);
  PluginValidation validation(controller->tree(), platform.paths, alerts, platform.log);
  validation.setPane(pane);
  for (const int row : {0, 1}) {
    outline().selectRow(row);
    validation.runPluginValidation(outline());
  }
  outline().deselectAll();
  validation.runPluginValidation(outline());
  EXPECT_TRUE(pane.validations.empty());
}

TEST_F(PluginValidationTest, TheSettingsAreOnDiskWhenThePluginRuns) {
  addDefinition(
      "check_x",
      Dictionary::make({{"PluginName", text("check_x")},
                        {"ProgramArguments", texts({"check_x"})},
                        {"PluginOptions", options({option("PluginValidation"), option("TextField")})}}));
  awake();
  edit(outline().childrenOfItem(optionRow(1)).at(0), text("new"));
  EXPECT_EQ(stored(), Dictionary::make({{kKey, text("new")}}));
  click(valueRow());
  EXPECT_EQ(pane.validations.size(), 1U);
}

}  // namespace
}  // namespace corvane
