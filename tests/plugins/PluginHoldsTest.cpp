// Every kind of edit while every kind of act holds the rows and the client changes its files behind them:
// rows and catalogue stay together, no edit puts anything old back, and all is made up for when the act ends.
#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>

#include "plugins/BusyDialogs.h"
#include "plugins/PluginsTabFixture.h"
#include "values/Conversions.h"

namespace corvane {
namespace {

using namespace test;

constexpr int kRemove = 1000;
constexpr int kCancel = 1001;

Dictionary titled(const char* title, const char* type, const PropertyList& value = {}) {
  Dictionary one = with(option(type, value), "SettingTitle", text(title));
  one.set("SettingStorageKey", text(title));
  return one;
}

Dictionary boxes(bool a, bool b) { return Dictionary::make({{"a", flag(a)}, {"b", flag(b)}}); }

/// One plug-in with an option of every type that is edited, all in one file, and a client that changes the
/// file.
class HoldsFixture : public PluginsTabFixture {
 public:
  using PluginsTabFixture::click;
  using PluginsTabFixture::edit;
  using PluginsTabFixture::enabledColumn;
  using PluginsTabFixture::outline;
  using PluginsTabFixture::pane;
  using PluginsTabFixture::platform;
  using PluginsTabFixture::plugin;

  HoldsFixture() {
    controller = std::make_unique<PluginsTabViewController>(*busyPlatform, platform.paths, view);
    platform.dialogs.chosenPaths = {platform.paths.onDisk("/chosen")};
    store(Dictionary::make({{"Tick", flag(false)},
                            {"Set", boxes(true, false)},
                            {"Number", number(1)},
                            {"Menu", number(0)},
                            {"Text", text("old")},
                            {"User", text("old")},
                            {"Password", text("old")},
                            {"File", text("/old")},
                            {"Folder", text("/old")},
                            {"Files", texts({"Add a new entry", "/a", "/b"})},
                            {"Folders", texts({"Add a new entry", "/a", "/b"})}}));
    Dictionary definition = Dictionary::make(
        {{"PluginName", text("check_x")},
         {"ProgramArguments", texts({"check_x"})},
         {"PluginOptions",
          options({titled("Tick", "Checkbox", text("Positive")), titled("Set", "Checkboxes"),
                   titled("Number", "NumberPicker", text("0-9")),
                   titled("Menu", "PopUpMenu", texts({"first", "second"})), titled("Text", "TextField"),
                   titled("User", "UsernameField"), titled("Password", "PasswordField", number(9)),
                   titled("File", "FilePicker"), titled("Folder", "FolderPicker"),
                   titled("Files", "FileArray"), titled("Folders", "FolderArray"),
                   titled("Test", "PluginValidation")})}});
    addDefinition("check_x", definition);
    awake();
  }

  OutlineItem row(const char* title) {
    for (const OutlineItem& item : outline().childrenOfItem(plugin())) {
      if (*item.object().asDictionary().string("SettingTitle") == title) return item;
    }
    ADD_FAILURE() << title;
    return {};
  }
  OutlineItem value(const char* title, const char* entry) {
    for (const OutlineItem& item : outline().childrenOfItem(row(title))) {
      if (*item.object().asString() == entry) return item;
    }
    ADD_FAILURE() << title << " has no row " << entry;
    return {};
  }

  /// What the client stores behind the user's back, in the set and in the lists as well.
  void clientChangesItsFiles() {
    Dictionary contents = stored();
    contents.set("Set", Dictionary::make({{"a", flag(true)}, {"b", flag(true)}, {"client", flag(true)}}));
    contents.set("Files", texts({"Add a new entry", "/a", "/client", "/b"}));
    contents.set("Folders", texts({"Add a new entry", "/a", "/client", "/b"}));
    contents.set("Text", text("client"));
    contents.set("Unknown", number(7));
    store(contents);
    addPlugin("check_y", options({option("TextField")}));
    controller->refresh();
  }
  void expectRowsOfTheCatalogue() {
    const std::vector<OutlineItem> rows = outline().childrenOfItem({});
    const auto& plugins = controller->catalogue().plugins();
    ASSERT_EQ(rows.size(), plugins.size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
      EXPECT_TRUE(rows[i].object().isSameObject(plugins[i]));
      const bool isDisabled =
          controller->catalogue().isPluginBlacklisted(*plugins[i].string("PluginFileName") + ".plugin");
      const ObjectValue shown = enabledShown(rows[i]);
      ASSERT_TRUE(std::holds_alternative<PropertyList>(shown)) << "the box shows nothing";
      EXPECT_EQ(std::get<PropertyList>(shown), flag(!isDisabled));
    }
  }
  /// What the tab has loaded, compared with what one that is opened now loads.
  void expectNothingOld() {
    PluginStorage storage(platform.platform, platform.paths);
    PluginCatalogue fresh(platform.platform, platform.paths, storage);
    fresh.refresh();
    EXPECT_EQ(controller->catalogue().plugins(), fresh.plugins());
    EXPECT_EQ(controller->catalogue().blacklistPlugins(), fresh.blacklistPlugins());
    expectRowsOfTheCatalogue();
  }

  BusyDialogs dialogs{platform.dialogs};
  std::unique_ptr<Platform> busyPlatform = withDialogs(platform, dialogs);
};

/// An act in whose middle something else comes.
struct HoldCase {
  const char* name;
  std::function<void(HoldsFixture&, const std::function<void()>& meanwhile)> during;
};
void PrintTo(const HoldCase& one, std::ostream* stream) { *stream << one.name; }

HoldCase panelOf(const char* title, const char* entry) {
  return {title, [=](HoldsFixture& tab, const std::function<void()>& meanwhile) {
            tab.dialogs.meanwhile = [&] {
              meanwhile();
              tab.platform.dialogs.chosenPaths.clear();  // cancelled
            };
            tab.click(tab.value(title, entry));
            tab.platform.dialogs.chosenPaths = {tab.platform.paths.onDisk("/chosen")};
          }};
}

/// During these the tree takes clicks.
const std::vector<HoldCase> kOpenHolds = {
    {"Typing",
     [](HoldsFixture& tab, const std::function<void()>& meanwhile) {
       OutlineView::Hold shells = tab.outline().holdRows();
       meanwhile();
       shells.reset();
     }},
    {"RemovalSheet",
     [](HoldsFixture& tab, const std::function<void()>& meanwhile) {
       tab.click(tab.value("Files", "/a"));
       meanwhile();
       tab.platform.dialogs.endSheet(kCancel);
     }},
};
/// These are clicks that are still being carried out: no other one comes through.
const std::vector<HoldCase> kClicks = {
    panelOf("File", "File"),
    panelOf("Folder", "Folder"),
    panelOf("Files", "Add a new entry"),
    panelOf("Folders", "Add a new entry"),
    {"TestingPanel",
     [](HoldsFixture& tab, const std::function<void()>& meanwhile) {
       tab.pane.whileValidating = meanwhile;
       tab.click(tab.value("Test", "Test"));
       tab.pane.whileValidating = nullptr;
     }},
};

/// An edit, and what it makes of the file that the client has changed.
struct EditCase {
  const char* name;
  std::function<void(HoldsFixture&)> act;
  const char* key = nullptr;
  PropertyList expected = {};
};
void PrintTo(const EditCase& one, std::ostream* stream) { *stream << one.name; }

EditCase typed(const char* title, const PropertyList& value) {
  return {title, [=](HoldsFixture& tab) { tab.edit(tab.value(title, title), value); }, title, value};
}

const std::vector<EditCase> kTypedEdits = {typed("Number", number(7)), typed("Menu", number(1)),
                                           typed("Text", text("typed")), typed("User", text("typed")),
                                           typed("Password", text("typed"))};

const std::vector<EditCase> kClickedEdits = {
    {"Enabled", [](HoldsFixture& tab) { tab.outline().clickCell(tab.plugin(), tab.enabledColumn()); }},
    {"Checkbox", [](HoldsFixture& tab) { tab.click(tab.row("Tick")); }, "Tick", flag(true)},
    {"Checkboxes", [](HoldsFixture& tab) { tab.click(tab.value("Set", "a")); }, "Set",
     Dictionary::make({{"a", flag(false)}, {"b", flag(true)}, {"client", flag(true)}})},
    {"FilePicker", [](HoldsFixture& tab) { tab.click(tab.value("File", "File")); }, "File", text("/chosen")},
    {"FolderPicker", [](HoldsFixture& tab) { tab.click(tab.value("Folder", "Folder")); }, "Folder",
     text("/chosen")},
    {"AddFile", [](HoldsFixture& tab) { tab.click(tab.value("Files", "Add a new entry")); }, "Files",
     texts({"Add a new entry", "/a", "/b", "/chosen", "/client"})},
    {"AddFolder", [](HoldsFixture& tab) { tab.click(tab.value("Folders", "Add a new entry")); }, "Folders",
     texts({"Add a new entry", "/a", "/b", "/chosen", "/client"})},
    {"Remove",
     [](HoldsFixture& tab) {
       tab.click(tab.value("Files", "/b"));
       tab.platform.dialogs.endSheet(kRemove);
     },
     "Files", texts({"Add a new entry", "/a", "/client"})},
    {"TestSettings", [](HoldsFixture& tab) { tab.click(tab.value("Test", "Test")); }},
};

class PluginHoldsTest : public HoldsFixture,
                        public testing::WithParamInterface<std::tuple<HoldCase, EditCase>> {
 protected:
  const HoldCase& hold() { return std::get<0>(GetParam()); }
  const EditCase& editing() { return std::get<1>(GetParam()); }
};

TEST_P(PluginHoldsTest, AnEditKeepsWhatTheClientHasStoredMeanwhile) {
  const OutlineItem before = plugin();
  hold().during(*this, [this, before] {
    clientChangesItsFiles();
    EXPECT_EQ(plugin(), before) << "the rows stay";
    expectRowsOfTheCatalogue();
    Dictionary expected = stored().deepCopy().asDictionary();
    if (editing().key != nullptr) expected.set(editing().key, editing().expected);
    editing().act(*this);
    EXPECT_EQ(stored(), expected);
    EXPECT_EQ(plugin(), before);
    expectRowsOfTheCatalogue();
  });
  EXPECT_FALSE(outline().holdsRows());
  EXPECT_NE(plugin(0), before) << "made up for";
  EXPECT_EQ(pluginNames(), (std::vector<std::string>{"check_x", "check_y"}));
  expectNothingOld();
}

std::string nameOf(const testing::TestParamInfo<std::tuple<HoldCase, EditCase>>& tested) {
  return std::string(std::get<0>(tested.param).name) + "_" + std::get<1>(tested.param).name;
}

INSTANTIATE_TEST_SUITE_P(Clicks, PluginHoldsTest,
                         testing::Combine(testing::ValuesIn(kOpenHolds), testing::ValuesIn(kClickedEdits)),
                         nameOf);
INSTANTIATE_TEST_SUITE_P(Texts, PluginHoldsTest,
                         testing::Combine(testing::ValuesIn(kOpenHolds), testing::ValuesIn(kTypedEdits)),
                         nameOf);
INSTANTIATE_TEST_SUITE_P(TextsDuringClicks, PluginHoldsTest,
                         testing::Combine(testing::ValuesIn(kClicks), testing::ValuesIn(kTypedEdits)),
                         nameOf);

class PluginHoldEditsTest : public HoldsFixture, public testing::WithParamInterface<EditCase> {};

TEST_P(PluginHoldEditsTest, AnEditWhoseWriteFailsLeavesTheTabWithWhatIsStored) {
  kOpenHolds.front().during(*this, [this] {
    clientChangesItsFiles();
    pane.writesReachTheFile = false;
    const Dictionary expected = stored();
    GetParam().act(*this);
    EXPECT_EQ(stored(), expected);
    expectRowsOfTheCatalogue();
  });
  expectNothingOld();
}

TEST_P(PluginHoldEditsTest, TwoEditsInOneActAreBothStored) {
  kOpenHolds.front().during(*this, [this] {
    clientChangesItsFiles();
    click(value("Set", "b"));  // ticked by the client; the row shows what was loaded
    GetParam().act(*this);
    edit(value("User", "User"), text("second"));
  });
  EXPECT_EQ(stored().value("User"), text("second"));
  EXPECT_EQ(stored().dictionary("Set").value("client"), flag(true));
  EXPECT_EQ(stored().value("Unknown"), number(7));
  expectNothingOld();
}

INSTANTIATE_TEST_SUITE_P(Clicks, PluginHoldEditsTest, testing::ValuesIn(kClickedEdits),
                         [](const auto& tested) { return std::string(tested.param.name); });
INSTANTIATE_TEST_SUITE_P(Texts, PluginHoldEditsTest, testing::ValuesIn(kTypedEdits),
                         [](const auto& tested) { return std::string(tested.param.name); });

class PluginHoldChoicesTest : public HoldsFixture, public testing::WithParamInterface<EditCase> {};

TEST_P(PluginHoldChoicesTest, WhatIsChosenInAPanelKeepsWhatTheClientHasStoredBehindIt) {
  Dictionary expected;
  dialogs.meanwhile = [&] {
    clientChangesItsFiles();
    expected = with(stored(), GetParam().key, GetParam().expected);
  };
  GetParam().act(*this);
  EXPECT_TRUE(expected) << "there was no panel";
  EXPECT_EQ(stored(), expected);
  expectNothingOld();
}

std::vector<EditCase> choices() {
  std::vector<EditCase> edits = kClickedEdits;
  std::erase_if(edits, [](const EditCase& one) {
    const std::string_view name = one.name;
    return !name.starts_with("Add") && !name.ends_with("Picker");
  });
  return edits;
}
INSTANTIATE_TEST_SUITE_P(EveryPanel, PluginHoldChoicesTest, testing::ValuesIn(choices()),
                         [](const auto& tested) { return std::string(tested.param.name); });

class PluginHoldsAloneTest : public HoldsFixture {};

TEST_F(PluginHoldsAloneTest, AnEntryThatWasRemovedWhileAFileChangedDoesNotComeBack) {
  click(value("Files", "/a"));
  clientChangesItsFiles();
  platform.dialogs.endSheet(kRemove);
  EXPECT_EQ(stored().value("Files"), texts({"Add a new entry", "/client", "/b"}));
  expectNothingOld();
  outline().expandItem({}, true);
  click(value("Files", "Add a new entry"));
  EXPECT_EQ(stored().value("Files"), texts({"Add a new entry", "/b", "/chosen", "/client"}));
}

TEST_F(PluginHoldsAloneTest, ATickOnANameThatTheClientHasTakenAwayStoresNothing) {
  const OutlineView::Hold typing = outline().holdRows();
  const OutlineItem box = value("Set", "a");
  store(with(stored(), "Set", Dictionary::make({{"client", flag(true)}})));
  controller->refresh();
  click(box);
  EXPECT_TRUE(pane.writes.empty());
}

TEST_F(PluginHoldsAloneTest, ManyRefreshesOfOneActAreMadeUpForOnce) {
  countReloads();
  OutlineView::Hold typing = outline().holdRows();
  for (int i = 0; i < 5; ++i) controller->refresh();
  EXPECT_EQ(wholeReloads, 0);
  typing.reset();
  EXPECT_EQ(wholeReloads, 1);
  typing = outline().holdRows();
  typing.reset();
  EXPECT_EQ(wholeReloads, 1) << "nothing is due";
}

TEST_F(PluginHoldsAloneTest, ASheetThatIsNeverAnsweredHoldsTheRowsNoLongerThanItIsKept) {
  click(value("Files", "/a"));
  controller->refresh();
  EXPECT_TRUE(outline().holdsRows());
  platform.dialogs.sheets.clear();
  EXPECT_FALSE(outline().holdsRows());
  expectNothingOld();
}

}  // namespace
}  // namespace corvane
