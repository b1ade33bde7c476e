// `get` and `set`: each setting is a control of the window, and what the window refuses is refused.
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>

#include "Ctl.h"
#include "polkit/WholePane.h"

namespace corvane::test {
namespace {

class CtlSettings : public CtlTest {
 protected:
  /// What the pane's controls show for the same tree, by the names of the command line.
  [[nodiscard]] Json shown() const {
    WholePane pane(demo.root, QLHELPER_PATH);
    const ConfigurationTabView& configuration = pane.assembly.configurationView();
    const OptionsTabView& options = pane.assembly.optionsView();
    const auto number = [](const TextField& field) { return Json::parse(field.stringValue()); };
    const auto isOn = [](const Button& button) { return button.state() == ButtonState::On; };
    return {{"run-interval", number(configuration.runIntervalTextField)},
            {"group", configuration.clientGroupTextField.stringValue()},
            {"startup-disk.warn", isOn(options.bootVolumeWarningCheckbox)},
            {"startup-disk.percent", number(options.bootVolumeFullTextField)},
            {"time-machine.warn", isOn(options.timeMachineWarningCheckbox)},
            {"time-machine.days", number(options.timeMachineInactiveTextField)},
            {"time-machine.backup-days", number(options.manuallyTriggerTextField)},
            {"time-machine.backup-hour", number(options.timeOfDayTextField)},
            {"time-machine.backup-half", options.amPmButton.indexOfSelectedItem() == 0 ? "AM" : "PM"},
            {"time-machine.removal-warn", isOn(options.timeMachineRemovalWarning)},
            {"automount", isOn(options.automountCheckbox)}};
  }
};

TEST_F(CtlSettings, EverySettingIsWhatTheWindowShows) {
  EXPECT_EQ(json({"get"}), Json({{"root", demo.root}, {"settings", shown()}}));
}

TEST_F(CtlSettings, OneSettingIsPrintedAlone) {
  EXPECT_EQ(good({"get", "run-interval"}), "2\n");
  EXPECT_EQ(good({"get", "group"}), "Design Studio\n");
  EXPECT_EQ(good({"get", "automount"}), "off\n");
  EXPECT_EQ(json({"get", "run-interval"}).at("settings"), Json({{"run-interval", 2}}));
}

TEST_F(CtlSettings, SeveralAreLinesWithTabsWhereNobodyLooks) {
  EXPECT_EQ(good({"get", "automount", "run-interval", "group"}),
            "automount\toff\nrun-interval\t2\ngroup\tDesign Studio\n");
}

TEST_F(CtlSettings, WhatIsSetIsWhatTheWindowShowsThen) {
  const std::vector<std::pair<const char*, std::pair<const char*, Json>>> changes = {
      {"run-interval", {"5", 5}},
      {"group", {"R&D <lab>", "R&D <lab>"}},
      {"startup-disk.warn", {"off", false}},
      {"startup-disk.percent", {"77", 77}},
      {"time-machine.warn", {"No", false}},
      {"time-machine.days", {"21", 21}},
      {"time-machine.backup-days", {"0", 0}},
      {"time-machine.backup-hour", {"11", 11}},
      {"time-machine.backup-half", {"am", "AM"}},
      {"time-machine.removal-warn", {"yes", true}},
      {"automount", {"TRUE", true}}};
  Json expected = shown();
  for (const auto& [name, change] : changes) {
    EXPECT_NE(expected.at(name), change.second) << name << " would not be seen to change";
    expected[name] = change.second;
    EXPECT_EQ(good({"set", name, change.first}), "");
    EXPECT_EQ(shown(), expected) << name;
    EXPECT_TRUE(nothingIsStaged());
  }
}

TEST_F(CtlSettings, SeveralSettingsAreSetInOneCall) {
  good({"set", "run-interval", "4", "time-machine.backup-hour", "12", "time-machine.backup-half", "AM",
        "group", ""});
  const Json now = shown();
  EXPECT_EQ(now.at("run-interval"), 4);
  EXPECT_EQ(now.at("group"), "");
  EXPECT_EQ(now.at("time-machine.backup-hour"), 12);
  EXPECT_EQ(*DemoClient::plist(demo.paths.timeMachineSettings).asDictionary().string("Manual_Run_Hour"), "0");
}

TEST_F(CtlSettings, AValueMayLookLikeACommandOrAnOption) {
  good({"set", "group", "status"});
  EXPECT_EQ(shown().at("group"), "status");
  good({"set", "group", "--", "--json"});
  EXPECT_EQ(shown().at("group"), "--json");
}

TEST_F(CtlSettings, AClearedNumberIsTheDefaultAsInTheWindow) {
  good({"set", "run-interval", ""});
  EXPECT_EQ(shown().at("run-interval"), 1);
}

TEST_F(CtlSettings, WhatTheFieldWouldRefuseIsRefusedWithTheRangeAndNothingIsWritten) {
  const auto before = files();
  const auto number = [](const char* name, const char* value, const char* range) {
    return std::pair{Words{"set", name, value}, std::string(name) + ": \"" + value +
                                                    "\" is refused: expected a whole number from " + range};
  };
  const std::vector<std::pair<Words, std::string>> cases = {
      number("run-interval", "7", "1 to 6"),
      number("run-interval", "0", "1 to 6"),
      number("run-interval", "2.5", "1 to 6"),
      number("run-interval", "two", "1 to 6"),
      number("run-interval", " 2", "1 to 6"),
      number("run-interval", "+2", "1 to 6"),
      number("run-interval", "99999999999", "1 to 6"),
      number("startup-disk.percent", "100", "1 to 99"),
      number("time-machine.days", "0", "1 to 99"),
      number("time-machine.backup-days", "100", "0 to 99"),
      number("time-machine.backup-hour", "13", "1 to 12"),
      {{"set", "time-machine.backup-half", "noon"},
       "time-machine.backup-half: \"noon\" is refused: expected one of AM, PM"},
      {{"set", "automount", "maybe"}, "automount: \"maybe\" is refused: expected on or off"}};
  for (const auto& [words, line] : cases) refused(words, 65, line);
  refused({"set", "run-interval", "3", "startup-disk.percent", "100"}, 65,
          "startup-disk.percent: \"100\" is refused: expected a whole number from 1 to 99");
  EXPECT_EQ(files(), before);
}

TEST_F(CtlSettings, UnknownNamesAndMissingValuesAreTold) {
  const std::string known =
      "run-interval, group, startup-disk.warn, startup-disk.percent, time-machine.warn, time-machine.days, "
      "time-machine.backup-days, time-machine.backup-hour, time-machine.backup-half, "
      "time-machine.removal-warn, "
      "automount";
  refused({"get", "interval"}, 65, "there is no setting \"interval\", only " + known);
  refused({"set", "interval", "3"}, 65, "there is no setting \"interval\", only " + known);
  refused({"set", "run-interval", "3", "group"}, 64, "\"group\" has no value");
}

TEST_F(CtlSettings, SettingsThatCannotBeReadCannotBeSet) {
  std::ofstream(demo.paths.rootCapacitySettings) << "no property list";
  const Ended ended = run({"set", "startup-disk.percent", "50"});
  EXPECT_EQ(ended.status, 65);
  EXPECT_THAT(ended.errors, testing::HasSubstr("Some preferences could not be read."));
  EXPECT_EQ(DemoClient::contents(demo.paths.rootCapacitySettings), "no property list");
  const Ended shown = run({"--json", "get", "startup-disk.percent"});
  EXPECT_EQ(shown.status, 66);
  EXPECT_EQ(shown.errors, "corvanectl: " + demo.paths.rootCapacitySettings + " cannot be read\n");
  EXPECT_EQ(Json::parse(shown.output, nullptr, false).at("settings").at("startup-disk.percent"), Json());
}

}  // namespace
}  // namespace corvane::test
