// What the Plugins tab shows is what is stored, also where the client changes its files while the user is in
// the middle of something and the rows have to stay; and when they are made anew, the user stays where he
// was.
#include <QAbstractItemView>
#include <QComboBox>
#include <QFileDialog>
#include <QScrollBar>
#include <functional>
#include <ostream>

#include "PluginsTabFixture.h"
#include "values/Conversions.h"

namespace corvane::test {
namespace {

class PluginsTabHolds : public PluginsTab {
 public:
  using PluginsTab::answerSheet;
  using PluginsTab::clickCell;
  using PluginsTab::option;
  using PluginsTab::plugin;
  using PluginsTab::tree;
  using PluginsTab::value;

  static Array list(std::initializer_list<const char*> entries) {
    Array array = Array::make();
    for (const char* entry : entries) array.append(text(entry));
    return array;
  }
  /// The client stores values of its own, also in the set and in the lists, and the tab hears of it.
  void clientChangesItsFiles() {
    Dictionary contents = readPlist(settingsFile()).asDictionary();
    contents.set("Set",
                 Dictionary::make({{"cupsd", flag(false)}, {"ntpd", flag(true)}, {"sshd", flag(false)}}));
    contents.set("Files", list({"Add a new entry", "/Users/a", "/Users/client", "/Users/b"}));
    contents.set("Folders", list({"Add a new entry", "/Users/client"}));
    contents.set("UnknownToThePane", text("by the client"));
    writePlist(settingsFile(), contents);
    pane->assembly().plugins().refresh();
  }
  /// Chooses in the panel that the act opens; something else happens before.
  void chooseInPanel(
      const std::function<void()>& act, const char* path, const std::function<void()>& before = [] {}) {
    EXPECT_TRUE(answerPanel<QFileDialog>(act, [&](QFileDialog& panel) {
      before();
      panel.selectFile(QString::fromStdString(paths.onDisk(path)));
      QMetaObject::invokeMethod(&panel, "accept");
    }));
  }
  void clickBox(const QModelIndex& cell) { clickCell(cell, tree().visualRect(cell).width() / 2); }
  /// Until the rows are those of the client's files again.
  [[nodiscard]] bool isMadeUpFor() {
    return eventually([this] { return outline().rowForItem(watched_) < 0; });
  }
  void watchRows() { watched_ = outline().itemAtRow(0); }
  void expectStored(const char* key, const PropertyList& expected) {
    EXPECT_TRUE(becomes(key, expected)) << key << " is " << corvane::description(stored(key));
  }
  void expectTheClientsValuesBut(const std::string& edited) {
    const Dictionary clients = Dictionary::make(
        {{"Set", Dictionary::make({{"cupsd", flag(false)}, {"ntpd", flag(true)}, {"sshd", flag(false)}})},
         {"Files", list({"Add a new entry", "/Users/a", "/Users/client", "/Users/b"})},
         {"Folders", list({"Add a new entry", "/Users/client"})},
         {"UnknownToThePane", text("by the client")}});
    for (const auto& [key, value] : clients.entries()) {
      if (key == edited) continue;
      EXPECT_EQ(stored(key), value) << key;
    }
  }

 private:
  OutlineItem watched_;
};

/// Something that the mouse does in the tree, and what is stored then.
struct MouseEdit {
  const char* name;
  const char* key;
  PropertyList expected;
  std::function<QModelIndex(PluginsTabHolds&)> cell;
  int fromLeft = 12;             // where it is clicked; below 0: from the right
  const char* chosen = nullptr;  // in the panel that opens
  const char* answer = nullptr;  // of the sheet that opens
};
void PrintTo(const MouseEdit& one, std::ostream* stream) { *stream << one.name; }

std::function<QModelIndex(PluginsTabHolds&)> optionCalled(const char* title) {
  return [=](PluginsTabHolds& tab) { return tab.option(QString::fromLatin1(title)); };
}
std::function<QModelIndex(PluginsTabHolds&)> valueOf(const char* title, int row = 0) {
  return [=](PluginsTabHolds& tab) { return tab.value(QString::fromLatin1(title), row); };
}

const std::vector<MouseEdit> kMouseEdits = {
    {"Enabled", "Plugin_Enabled", flag(false),
     [](PluginsTabHolds& tab) { return tab.plugin().siblingAtColumn(0); }, 28},
    {"Checkbox", "Tick", flag(true), optionCalled("Tick")},
    {"Checkboxes", "Set",
     Dictionary::make({{"cupsd", flag(false)}, {"ntpd", flag(true)}, {"sshd", flag(true)}}),
     valueOf("Set", 1)},
    {"FilePicker", "File", text("/Users/new.conf"), valueOf("File"), 12, "/Users/new.conf"},
    {"FolderPicker", "Folder", text("/Users/Chosen"), valueOf("Folder"), 12, "/Users/Chosen"},
    {"AddFile", "Files",
     PluginsTabHolds::list({"Add a new entry", "/Users/a", "/Users/b", "/Users/client", "/Users/new.conf"}),
     valueOf("Files"), 12, "/Users/new.conf"},
    {"AddFolder", "Folders", PluginsTabHolds::list({"Add a new entry", "/Users/Chosen", "/Users/client"}),
     valueOf("Folders"), 12, "/Users/Chosen"},
    {"Remove", "Files", PluginsTabHolds::list({"Add a new entry", "/Users/client", "/Users/b"}),
     valueOf("Files", 1), -12, nullptr, "Remove"},
    {"TestSettings", "Tick", flag(false), valueOf("Test"), 12, nullptr, "OK"},
};

class PluginsTabHoldsByMouse : public PluginsTabHolds, public ::testing::WithParamInterface<MouseEdit> {
 protected:
  void SetUp() override {
    PluginsTabHolds::SetUp();
    writeExecutable("echo 0,fine");
    openTab();
    expand();
    watchRows();
  }
  /// Does what leads to the edit and answers what it opens.
  void carryOut(const std::function<void()>& act) {
    const MouseEdit& one = GetParam();
    if (one.chosen != nullptr) {
      chooseInPanel(act, one.chosen);
    } else {
      act();
    }
    if (one.answer != nullptr) answerSheet(one.answer);
  }
  void expectAllStored() {
    expectStored(GetParam().key, GetParam().expected);
    expectTheClientsValuesBut(GetParam().key);
    EXPECT_TRUE(isMadeUpFor());
    EXPECT_TRUE(tree().isExpanded(plugin().siblingAtColumn(0)));
    EXPECT_EQ(isTicked(plugin().siblingAtColumn(0)), stored("Plugin_Enabled") != flag(false));
    EXPECT_EQ(isTicked(value(QStringLiteral("Set"), 1)), true) << "the client's";
  }
};

TEST_P(PluginsTabHoldsByMouse, AClickThatEndsTypingKeepsWhatTheClientHasStoredMeanwhile) {
  clickCell(value(QStringLiteral("User")));
  type(*editor<QLineEdit>(), "operator");
  clientChangesItsFiles();
  EXPECT_TRUE(isTicked(plugin().siblingAtColumn(0))) << "the boxes stay";
  carryOut([this] { clickCell(GetParam().cell(*this), GetParam().fromLeft); });
  expectStored("User", text("operator"));
  expectAllStored();
}

TEST_P(PluginsTabHoldsByMouse, AButtonThatIsHeldDownKeepsWhatTheClientHasStoredMeanwhile) {
  const QModelIndex cell = GetParam().cell(*this);
  tree().scrollTo(cell);
  const QRect place = tree().visualRect(cell);
  const int x =
      GetParam().fromLeft >= 0 ? place.left() + GetParam().fromLeft : place.right() + GetParam().fromLeft;
  QTest::mousePress(tree().viewport(), Qt::LeftButton, {}, QPoint(x, place.center().y()));
  clientChangesItsFiles();
  carryOut(
      [&] { QTest::mouseRelease(tree().viewport(), Qt::LeftButton, {}, QPoint(x, place.center().y())); });
  expectAllStored();
}

class PluginsTabHoldsByPanelOrSheet : public PluginsTabHoldsByMouse {};

TEST_P(PluginsTabHoldsByPanelOrSheet, WhatAClickHasOpenedKeepsWhatTheClientHasStoredMeanwhile) {
  const MouseEdit& one = GetParam();
  const auto act = [this] { clickCell(GetParam().cell(*this), GetParam().fromLeft); };
  if (one.chosen != nullptr) {
    chooseInPanel(act, one.chosen, [this] { clientChangesItsFiles(); });
  } else {
    act();
    ASSERT_NE(sheet(), nullptr);
    clientChangesItsFiles();
    answerSheet(one.answer);
  }
  expectAllStored();
}

std::string nameOf(const ::testing::TestParamInfo<MouseEdit>& tested) { return tested.param.name; }

std::vector<MouseEdit> thoseThatOpenSomething() {
  std::vector<MouseEdit> edits = kMouseEdits;
  std::erase_if(edits, [](const MouseEdit& one) { return one.chosen == nullptr && one.answer == nullptr; });
  return edits;
}

INSTANTIATE_TEST_SUITE_P(EveryEdit, PluginsTabHoldsByMouse, ::testing::ValuesIn(kMouseEdits), nameOf);
INSTANTIATE_TEST_SUITE_P(EveryEdit, PluginsTabHoldsByPanelOrSheet,
                         ::testing::ValuesIn(thoseThatOpenSomething()), nameOf);

TEST_F(PluginsTabHolds, TextsNumbersAndMenusKeepWhatTheClientHasStoredMeanwhile) {
  openTab();
  for (const char* title : {"Text", "User", "Password", "Number"}) {
    watchRows();
    clickCell(value(QString::fromLatin1(title)));
    auto* box = editor<QComboBox>();
    QLineEdit* field = box != nullptr ? box->lineEdit() : editor<QLineEdit>();
    ASSERT_NE(field, nullptr) << title;
    type(*field, "10");
    clientChangesItsFiles();
    EXPECT_EQ(field->text(), QStringLiteral("10"));
    press(window(), Qt::Key_Return);
    expectStored(title, box != nullptr ? number(10) : text("10"));
    EXPECT_TRUE(isMadeUpFor());
  }
  watchRows();
  clickCell(value(QStringLiteral("Menu")));
  auto* menu = editor<QComboBox>();
  ASSERT_NE(menu, nullptr);
  ASSERT_TRUE(eventually([&] { return menu->view()->isVisible(); }));
  clientChangesItsFiles();
  QTest::keyClick(menu->view(), Qt::Key_End);
  QTest::keyClick(menu->view(), Qt::Key_Return);
  expectStored("Menu", number(2));
  EXPECT_TRUE(isMadeUpFor());
  expectTheClientsValuesBut({});
}

TEST_F(PluginsTabHolds, ATestThatRunsWhileAFileChangesEndsAsOtherwise) {
  const std::string go = paths.onDisk("/private/tmp/go");
  writeExecutable("until [ -e " + go + " ]; do read -t 0.01 <> <(:); done; echo 0,fine");
  openTab();
  expand();
  watchRows();
  EXPECT_TRUE(answerPanel<QDialog>([&] { clickCell(value(QStringLiteral("Test"))); },
                                   [&](QDialog&) {
                                     clientChangesItsFiles();
                                     std::ofstream(go) << "go";
                                   }));
  ASSERT_NE(sheet(), nullptr);
  answerSheet("OK");
  EXPECT_TRUE(isMadeUpFor());
  expectTheClientsValuesBut({});
}

TEST_F(PluginsTabHolds, AnEntryThatWasRemovedWhileAFileChangedDoesNotComeBack) {
  openTab();
  clickCell(value(QStringLiteral("Files"), 1), -12);
  ASSERT_NE(sheet(), nullptr);
  clientChangesItsFiles();
  answerSheet("Remove");
  EXPECT_EQ(stored("Files"), list({"Add a new entry", "/Users/client", "/Users/b"}));
  EXPECT_EQ(shown(value(QStringLiteral("Files"), 2)), QStringLiteral("/Users/b"));
  chooseInPanel([this] { clickCell(value(QStringLiteral("Files"), 0)); }, "/Users/new.conf");
  EXPECT_EQ(stored("Files"), list({"Add a new entry", "/Users/b", "/Users/client", "/Users/new.conf"}));
}

/// Several plug-ins of which some are open.
class PluginsTabPlace : public PluginsTab {
 protected:
  void addPlugin(const std::string& name) {
    writePlist(paths.plugins + "/" + name + ".plist",
               Dictionary::make({{"PluginName", text(name)}, {"PluginOptions", options}}));
    writePlist(paths.pluginSupport + "/" + name + "_settings.plist",
               Dictionary::make({{"PrefPaneVisibility", flag(true)}}));
  }
  void removePlugin(const std::string& name) {
    std::filesystem::remove(paths.plugins + "/" + name + ".plist");
  }
  void refresh() {
    pane->assembly().plugins().refresh();
    QApplication::processEvents();
  }
  [[nodiscard]] QModelIndex named(const char* name) {
    for (int row = 0; row < tree().model()->rowCount(); ++row) {
      if (shown(tree().model()->index(row, 1)) == QString::fromLatin1(name))
        return tree().model()->index(row, 0);
    }
    return {};
  }
  void toggle(const char* name) {
    const QModelIndex cell = named(name).siblingAtColumn(1);
    tree().scrollTo(cell);
    const QRect place = tree().visualRect(cell);
    QTest::mouseClick(tree().viewport(), Qt::LeftButton, {}, QPoint(place.left() - 8, place.center().y()));
  }
  [[nodiscard]] std::string openOnes() {
    std::string names;
    for (int row = 0; row < tree().model()->rowCount(); ++row) {
      const QModelIndex index = tree().model()->index(row, 0);
      if (tree().isExpanded(index)) names += shown(index.siblingAtColumn(1)).toStdString() + " ";
    }
    return names;
  }
  [[nodiscard]] QString current() { return shown(tree().currentIndex().siblingAtColumn(1)); }
  [[nodiscard]] int heightOfCurrent() { return tree().visualRect(tree().currentIndex()).top(); }
};

TEST_F(PluginsTabPlace, WhatTheUserHadOpenIsOpenAfterARefreshAndTheRestIsClosed) {
  for (const char* name : {"B", "C", "D"}) addPlugin(name);
  openTab();
  for (const char* name : {"B", "C", "D"}) toggle(name);
  toggle("C");
  EXPECT_EQ(openOnes(), "B D ");
  addPlugin("A");
  refresh();
  EXPECT_EQ(openOnes(), "B D ");
  EXPECT_TRUE(tree().isExpanded(tree().model()->index(3, 0, named("D")))) << "with all its options";
  refresh();
  EXPECT_EQ(openOnes(), "B D ") << "again and again";
  toggle("B");
  refresh();
  EXPECT_EQ(openOnes(), "D ");
}

TEST_F(PluginsTabPlace, APluginIsKnownByItsFileAndNotByItsName) {
  addPlugin("B");
  addPlugin("C");
  openTab();
  toggle("B");
  writePlist(paths.plugins + "/B.plist",
             Dictionary::make({{"PluginName", text("Z")}, {"PluginOptions", options}}));
  writePlist(paths.plugins + "/C.plist",
             Dictionary::make({{"PluginName", text("B")}, {"PluginOptions", options}}));
  refresh();
  EXPECT_EQ(openOnes(), "Z ");
}

TEST_F(PluginsTabPlace, APluginThatWasGoneForAMomentIsOpenAgain) {
  addPlugin("B");
  openTab();
  toggle("B");
  removePlugin("B");
  refresh();
  EXPECT_EQ(openOnes(), "");
  addPlugin("B");
  refresh();
  EXPECT_EQ(openOnes(), "B ");
}

TEST_F(PluginsTabPlace, TheCurrentRowAndItsPlaceOnTheScreenAreKept) {
  for (const char* name : {"B", "C", "D"}) addPlugin(name);
  openTab();
  for (const char* name : {"B", "C", "D"}) toggle(name);
  const QModelIndex set = tree().model()->index(6, 1, named("C"));
  goTo(tree().model()->index(0, 1, set.siblingAtColumn(0)));
  ASSERT_EQ(current(), QStringLiteral("abc"));
  ASSERT_GT(tree().verticalScrollBar()->value(), 0);
  const int height = heightOfCurrent();
  addPlugin("A");
  removePlugin("B");
  refresh();
  EXPECT_EQ(current(), QStringLiteral("abc"));
  EXPECT_EQ(shown(tree().currentIndex().parent().siblingAtColumn(1)), QStringLiteral("Text"));
  EXPECT_EQ(shown(tree().currentIndex().parent().parent().siblingAtColumn(1)), QStringLiteral("C"));
  EXPECT_EQ(heightOfCurrent(), height);
  EXPECT_EQ(tree().currentIndex().column(), 1);
}

TEST_F(PluginsTabPlace, WhoIsAtTheTopSeesWhatComesInThere) {
  for (const char* name : {"B", "C", "D"}) addPlugin(name);
  openTab();
  toggle("C");
  addPlugin("A");
  refresh();
  EXPECT_EQ(tree().verticalScrollBar()->value(), 0);
}

TEST_F(PluginsTabPlace, WhereTheCurrentRowHasGoneTheOneInItsPlaceIsTheCurrentOne) {
  addPlugin("B");
  addPlugin("C");
  openTab();
  toggle("B");
  goTo(tree().model()->index(2, 1, tree().model()->index(11, 0, named("B"))));
  ASSERT_EQ(current(), QStringLiteral("/Users/b"));
  settings.set("Files", Array::make({text("Add a new entry"), text("/Users/a")}));
  writePlist(settingsFile(), settings);
  refresh();
  EXPECT_EQ(current(), QStringLiteral("/Users/a"));
  removePlugin("B");
  refresh();
  EXPECT_EQ(current(), QStringLiteral("C"));
}

}  // namespace
}  // namespace corvane::test
