// The plug-ins: what the outline of the window shows, and what becomes of changes.
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <sys/inotify.h>

#include "Ctl.h"
#include "plugins/FileFolderList.h"
#include "plugins/PluginTree.h"
#include "polkit/WholePane.h"

namespace corvane::test {
namespace {

using ::testing::HasSubstr;

class CtlPlugins : public CtlTest {
 protected:
  [[nodiscard]] Json option(const std::string& plugin, const std::string& name) {
    const Json options = json({"plugins", "show", plugin}).at("plugins").at(0).at("options");
    for (const Json& each : options)
      if (each.at("option") == name) return each;
    return {};
  }
  [[nodiscard]] Json value(const std::string& plugin, const std::string& name) {
    return option(plugin, name).at("value");
  }
};

/// What a cell of the window shows, in words.
std::string textOf(const Cell& cell) {
  if (const auto* button = std::get_if<ButtonCell>(&cell)) return button->title.text;
  if (const auto* menu = std::get_if<PopUpButtonCell>(&cell))
    return menu->selectedIndex < 0 ? "" : menu->items.at(static_cast<std::size_t>(menu->selectedIndex));
  if (const auto* field = std::get_if<TextFieldCell>(&cell)) return field->text;
  if (const auto* secret = std::get_if<SecureTextFieldCell>(&cell))
    return secret->text.empty() ? "" : "********";
  if (const auto* number = std::get_if<ComboBoxCell>(&cell)) return number->text;
  return {};
}

TEST_F(CtlPlugins, EveryPluginWithItsStateIsWhatTheWindowShows) {
  WholePane pane(demo.root, QLHELPER_PATH);
  OutlineView& outline = pane.assembly.pluginsView().pluginsTable;
  Json expected = Json::array();
  for (const OutlineItem& row : outline.childrenOfItem({})) {
    const Dictionary entry = row.object().asDictionary();
    const auto enabled = outline.preparedCell(outline.columns()[0], row);
    expected.push_back({{"plugin", *entry.string("PluginFileName")},
                        {"title", *entry.string("PluginName")},
                        {"enabled", std::get<ButtonCell>(*enabled.cell).on}});
  }
  EXPECT_EQ(json({"plugins"}), Json({{"root", demo.root}, {"plugins", expected}}));
  EXPECT_EQ(expected.size(), 9U);
}

TEST_F(CtlPlugins, EveryOptionOfEveryTypeHasTheValueThatTheWindowShows) {
  WholePane pane(demo.root, QLHELPER_PATH);
  OutlineView& outline = pane.assembly.pluginsView().pluginsTable;
  outline.expandItem({}, true);
  const auto& column = outline.columns()[1];
  const Json all = json({"plugins", "show"}).at("plugins");
  std::set<std::string> types;
  const auto plugins = outline.childrenOfItem({});
  ASSERT_EQ(all.size(), plugins.size());
  for (std::size_t p = 0; p < plugins.size(); ++p) {
    const auto options = outline.childrenOfItem(plugins[p]);
    ASSERT_EQ(all[p].at("options").size(), options.size());
    for (std::size_t o = 0; o < options.size(); ++o) {
      const Json& told = all[p].at("options")[o];
      const PluginOption option = PluginTree::optionOfOptionRow(options[o]);
      types.insert(option.type());
      EXPECT_EQ(told.at("type"), option.type());
      EXPECT_EQ(told.at("title"), option.title());
      EXPECT_EQ(told.at("hint"), option.hint());
      std::vector<OutlineItem> rows = outline.childrenOfItem(options[o]);
      std::erase_if(rows, [](const OutlineItem& row) { return !PluginTree::isItemSubOption(row); });
      const auto cellOf = [&](const OutlineItem& row) { return *outline.preparedCell(column, row).cell; };
      const std::string where =
          all[p].at("plugin").get<std::string>() + " " + told.at("option").get<std::string>();
      if (option.isOfType("Checkbox")) {
        EXPECT_EQ(told.at("value"), std::get<ButtonCell>(cellOf(options[o])).on) << where;
      } else if (option.isOfType("Checkboxes")) {
        for (const OutlineItem& row : rows)
          EXPECT_EQ(told.at("value").at(*row.object().asString()), std::get<ButtonCell>(cellOf(row)).on)
              << where;
      } else if (option.isOfType("FileArray") || option.isOfType("FolderArray")) {
        Json entries = Json::array();
        for (const OutlineItem& row : rows)
          if (!isAddEntry(*row.object().asString())) entries.push_back(textOf(cellOf(row)).substr(1));
        EXPECT_EQ(told.at("value"), entries) << where;
      } else if (option.isOfType("PluginValidation") || option.isOfType("DisplayOnly")) {
        EXPECT_EQ(told.at("value"), Json()) << where;
      } else {
        const Json value = told.at("value");
        EXPECT_EQ(value.is_string() ? value.get<std::string>()
                  : value.is_null() ? ""
                                    : value.dump(),
                  rows.empty() ? "" : textOf(cellOf(rows.front())))
            << where;
      }
    }
  }
  EXPECT_EQ(types.size(), 13U) << "the demo client has every type";
}

TEST_F(CtlPlugins, APluginIsSwitchedOffAndOn) {
  good({"plugins", "disable", "check_files"});
  EXPECT_EQ(DemoClient::plist(demo.paths.pluginSupport + "/check_files_settings.plist")
                .asDictionary()
                .value("Plugin_Enabled"),
            PropertyList::boolean(false));
  good({"plugins", "enable", "Files and Folders"});
  EXPECT_EQ(DemoClient::plist(demo.paths.pluginSupport + "/check_files_settings.plist")
                .asDictionary()
                .value("Plugin_Enabled"),
            PropertyList::boolean(true));
  const auto before = files();
  good({"plugins", "enable", "check_files"});
  EXPECT_EQ(files(), before) << "what is so already is not written";
}

TEST_F(CtlPlugins, WhatTheCellRefusesIsRefused) {
  const auto before = files();
  refused({"plugins", "set", "check_web_sites", "Slow_After_Seconds", "9999"}, 65,
          "Slow_After_Seconds: \"9999\" is refused: expected a whole number from 1 to 30");
  refused({"plugins", "set", "check_web_sites", "Watch_Company_Site", "often"}, 65,
          "Watch_Company_Site: \"often\" is refused: expected on or off");
  refused({"plugins", "set", "check_files", "Log_Folder", "/none"}, 65,
          "Log_Folder: \"/none\" is refused: there is no such file, or it is of the other kind");
  refused({"plugins", "set", "check_files", "Configuration_File", "/Users"}, 65,
          "Configuration_File: \"/Users\" is refused: there is no such file, or it is of the other kind");
  refused({"plugins", "set", "check_files", "Required_Files", "/etc/hosts"}, 65,
          "Required_Files is a FileArray, which is changed with add and remove");
  refused({"plugins", "add", "check_files", "Log_Folder", "/Users"}, 65,
          "Log_Folder is a FolderPicker, which is no list");
  refused({"plugins", "add", "check_files", "Missing_List", "/Users"}, 65,
          "Missing_List holds no \"Add a new entry\", so nothing can be added");
  refused({"plugins", "remove", "check_files", "Required_Files", "/none"}, 65,
          "Required_Files holds no \"/none\"");
  refused({"plugins", "set", "check_services", "#2", "x"}, 65, "#2 is a DisplayOnly, which has no value");
  refused({"plugins", "set", "check_services", "Services", "sshd"}, 65,
          "Services: \"sshd\" is refused: expected NAME=on or NAME=off, with one of the names Backup agent, "
          "cupsd, "
          "ntpd, sshd");
  refused({"plugins", "set", "check_none", "x", "y"}, 65, "there is no plug-in \"check_none\"");
  refused({"plugins", "set", "check_files", "None", "y"}, 65, "check_files has no option \"None\"");
  refused({"plugins", "test", "check_files"}, 65, "check_files has no test of its settings");
  EXPECT_EQ(files(), before);
}

TEST_F(CtlPlugins, WhatThePaneDoesNotStoreIsToldWithItsReason) {
  const auto before = files();
  refused({"plugins", "set", "check_odd", "Neither", "on"}, 65,
          "Neither was not changed: You should not be here.  Value is neither Postive or Negative for a "
          "checkbox");
  refused({"plugins", "set", "check_odd", "Outside", "x"}, 65,
          "Outside was not changed: Cannot create file, not in the Corvane Directory.");
  EXPECT_EQ(files(), before);
}

TEST_F(CtlPlugins, ABoxThatStaysAsItIsInTheWindowIsTold) {
  // A click on a box of this kind stores the inverse of what the box shows then, which is what is stored.
  ASSERT_EQ(value("check_web_sites", "Check_Certificates"), true);
  refused({"plugins", "set", "check_web_sites", "Check_Certificates", "off"}, 65,
          "Check_Certificates was not changed: the pane still shows \"on\"");
}

TEST_F(CtlPlugins, APasswordThatNobodyTypesIsNotStored) {
  refused({"plugins", "set", "check_file_server", "Password", "-"}, 65,
          "Password: standard input holds no password");
}

TEST_F(CtlPlugins, APasswordThatIsTypedIsNotShown) {
  const std::string file = demo.root + "/var/root/Library/Preferences/com.example.file_server_check.plist";
  const Terminal terminal;
  RunningCtl asking(at({"plugins", "set", "check_file_server", "Password", "-"}), {.terminal = &terminal});
  ASSERT_TRUE(waitUntil([&] { return !terminal.echoes(); }));
  terminal.type("pa55 & word\n");
  EXPECT_EQ(asking.end().status, 0);
  EXPECT_EQ(terminal.shown(), "Password: \r\n");
  EXPECT_TRUE(terminal.echoes());
  EXPECT_EQ(*DemoClient::plist(file).asDictionary().string("Password"), "pa55 & word");
}

TEST_F(CtlPlugins, ATerminalThatWasAskedForAPasswordShowsWhatIsTypedAgainAfterAnInterrupt) {
  const auto before = files();
  const Terminal terminal;
  RunningCtl asking(at({"plugins", "set", "check_file_server", "Password", "-"}), {.terminal = &terminal});
  ASSERT_TRUE(waitUntil([&] { return !terminal.echoes(); }));
  terminal.type("half\x03");
  EXPECT_EQ(asking.end().status, 130);
  EXPECT_TRUE(terminal.echoes());
  EXPECT_EQ(files(), before);
}

TEST_F(CtlPlugins, PluginsAreReadOnlyForWhatShowsThem) {
  const FileDescriptor watch(::inotify_init1(IN_CLOEXEC | IN_NONBLOCK));
  const std::string definition = demo.paths.plugins + "/check_files.plist";
  ASSERT_GE(::inotify_add_watch(watch.get(), definition.c_str(), IN_OPEN), 0);
  const auto isOpened = [&] {
    char events[4096];
    return ::read(watch.get(), events, sizeof events) > 0;
  };
  for (const Words& words : {Words{"get"}, {"volumes"}, {"set", "run-interval", "3"}, {"run", "--wait"}}) {
    static_cast<void>(good(words));
    EXPECT_FALSE(isOpened()) << words.front();
  }
  for (const Words& words : {Words{"status"}, {"plugins"}}) {
    static_cast<void>(good(words));
    EXPECT_TRUE(isOpened()) << words.front();
  }
}

TEST_F(CtlPlugins, AnEntryThatIsInTheListIsNotAddedAgain) {
  std::filesystem::create_directories(demo.root + "/etc");
  std::ofstream(demo.root + "/etc/hosts") << "text";
  refused({"plugins", "add", "check_files", "Required_Files", "/etc/hosts"}, 65,
          "An error has occurred: /etc/hosts already exists in the list.");
}

TEST_F(CtlPlugins, APasswordIsNeitherShownNorToldOf) {
  good({"plugins", "set", "check_odd", "Text", "plain"});
  EXPECT_EQ(value("check_odd", "Text"), "plain");
  const Ended ended = run({"plugins", "set", "check_odd", "Password", "s3cret"});
  EXPECT_EQ(ended.status, 65) << "a password without a length";
  EXPECT_EQ(ended.errors, "corvanectl: Password: the value is refused: expected at most 0 characters\n");
}

TEST_F(CtlPlugins, TheTestOfAPluginEndsWithItsCode) {
  const auto outcomes = option("check_test_mode", "Outcome").at("choices");
  const auto choose = [&](std::size_t index) {
    good({"plugins", "set", "check_test_mode", "Outcome", outcomes.at(index).get<std::string>()});
  };
  choose(0);
  const Ended succeeded = run({"plugins", "test", "check_test_mode"});
  EXPECT_EQ(succeeded.status, 0);
  EXPECT_NE(succeeded.output, "");
  EXPECT_EQ(succeeded.errors, "");
  choose(1);
  const Ended failed = run({"plugins", "test", "check_test_mode"});
  WholePane pane(demo.root, QLHELPER_PATH);
  ASSERT_TRUE(pane.openLock());
  OutlineView& outline = pane.assembly.pluginsView().pluginsTable;
  outline.expandItem({}, true);
  for (const OutlineItem& plugin : outline.childrenOfItem({})) {
    for (const OutlineItem& row : outline.childrenOfItem(plugin)) {
      if (*plugin.object().asDictionary().string("PluginFileName") != "check_test_mode") continue;
      if (!PluginTree::isItemPluginOptionOfType(row, "PluginValidation")) continue;
      outline.clickCell(outline.childrenOfItem(row).front(), outline.columns()[1]);
    }
  }
  const auto& verdict = pane.assembly.plugins().validation().verdict();
  ASSERT_TRUE(verdict);
  EXPECT_NE(verdict->code, 0);
  EXPECT_EQ(failed.status, verdict->code);
  EXPECT_EQ(failed.errors, "corvanectl: Plugin Validation Failed: " + verdict->message + "\n");
}

TEST_F(CtlPlugins, TheListIsALineForEachPlugin) {
  EXPECT_THAT(good({"plugins"}), HasSubstr("check_printers\toff\tPrinters\n"));
}

}  // namespace
}  // namespace corvane::test
