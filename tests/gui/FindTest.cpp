// Finding plug-ins and options: the field above the tree narrows what the window shows, and nothing else.
#include <QLabel>
#include <algorithm>
#include <random>

#include "Assistive.h"
#include "PluginsTabFixture.h"

namespace corvane::test {
namespace {

using Texts = std::vector<std::string>;

class Find : public PluginsTab {
 protected:
  void SetUp() override {
    PluginsTab::SetUp();
    addPlugin("check_disks", "Disks",
              {{"Free space", "How much is to be left"}, {"Names", "Case does not matter"}});
    addPlugin("check_web", "Web Sites", {{"Addresses", "One on each line"}, {"Space between", "In seconds"}});
    openTab();
  }
  void addPlugin(const std::string& file, const std::string& name,
                 const std::vector<std::pair<std::string, std::string>>& titlesAndHints) {
    Array list = Array::make();
    for (const auto& [title, hint] : titlesAndHints) {
      list.append(Dictionary::make(
          {{"SettingStorageKey", text(title)},
           {"SettingStoragePath", text("/Library/Corvane/PluginSupport/" + file + ".plist")},
           {"SettingTitle", text(title)},
           {"SettingTitleHint", text(hint)},
           {"SettingType", Dictionary::make({{"Type", text("TextField")}, {"Value", number(20)}})}}));
    }
    writePlist(paths.plugins + "/" + file + ".plist",
               Dictionary::make({{"PluginName", text(name)},
                                 {"ProgramArguments", Array::make({text(file)})},
                                 {"PluginOptions", list}}));
    writePlist(paths.pluginSupport + "/" + file + "_settings.plist",
               Dictionary::make({{"PrefPaneVisibility", flag(true)}}));
  }

  QLineEdit& field() { return widget<QLineEdit>("findField"); }
  void find(const char* sought) {
    press(window(), Qt::Key_F, Qt::ControlModifier);
    EXPECT_TRUE(field().hasFocus());
    type(field(), sought);
  }
  /// What a person sees of plug-ins and options, from the top to the bottom.
  Texts seen() {
    Texts rows;
    for (QModelIndex index = firstSeen(); index.isValid(); index = tree().indexBelow(index)) {
      const bool isValue = index.parent().isValid() && index.parent().parent().isValid();
      if (!isValue)
        rows.push_back((index.parent().isValid() ? "  " : "") +
                       shown(index.siblingAtColumn(1)).toStdString());
    }
    return rows;
  }
  QModelIndex firstSeen() {
    for (int row = 0; row < tree().model()->rowCount(); ++row) {
      if (!tree().isRowHidden(row, {})) return tree().model()->index(row, 0);
    }
    return {};
  }
  /// The rows of the core that can be seen, by their identities.
  std::vector<OutlineItem::Id> rowsOfTheCore() {
    std::vector<OutlineItem::Id> ids;
    for (int row = 0; row < outline().numberOfRows(); ++row) ids.push_back(outline().itemAtRow(row).id());
    return ids;
  }
};

TEST_F(Find, NarrowsTheTreeToTitlesHintsAndFileNamesWhateverTheirCase) {
  EXPECT_EQ(seen(), (Texts{"All Types", "Disks", "Web Sites"}));
  find("DISKS");
  EXPECT_EQ(seen(), (Texts{"Disks"})) << "the title of a plug-in";
  press(window(), Qt::Key_Escape);
  find("check_web");
  EXPECT_EQ(seen(), (Texts{"Web Sites"})) << "the name of its file";
  press(window(), Qt::Key_Escape);
  find("space");
  EXPECT_EQ(seen(), (Texts{"Disks", "  Free space", "Web Sites", "  Space between"})) << "titles of options";
  press(window(), Qt::Key_Escape);
  find("each line");
  EXPECT_EQ(seen(), (Texts{"Web Sites", "  Addresses"})) << "the hint of an option";
}

TEST_F(Find, EachLetterNarrowsFurtherAndTakingItBackWidensAgain) {
  find("s");
  EXPECT_EQ(seen(), (Texts{"All Types", "Disks", "Web Sites"})) << "in their own titles: all of them";
  type(field(), "pace b");
  EXPECT_EQ(seen(), (Texts{"Web Sites", "  Space between"}));
  press(window(), Qt::Key_Backspace);
  press(window(), Qt::Key_Backspace);
  EXPECT_EQ(seen(), (Texts{"Disks", "  Free space", "Web Sites", "  Space between"}));
}

TEST_F(Find, EscapeGivesTheWholeTreeBackAsItWas) {
  expand();
  const Texts before = seen();
  const auto rows = rowsOfTheCore();
  find("space");
  EXPECT_NE(seen(), before);
  press(window(), Qt::Key_Escape);
  EXPECT_EQ(seen(), before);
  EXPECT_EQ(rowsOfTheCore(), rows) << "the very same rows, open and closed as before";
  EXPECT_EQ(field().text(), QString());
  EXPECT_TRUE(tree().hasFocus());
}

TEST_F(Find, WhatIsFoundCanBeChangedAndIsStored) {
  find("between");
  press(window(), Qt::Key_Return);
  EXPECT_TRUE(tree().hasFocus());
  EXPECT_EQ(shown(tree().currentIndex().siblingAtColumn(1)), QStringLiteral("Web Sites"));
  const QModelIndex web = tree().model()->index(2, 0);
  const QModelIndex value = tree().model()->index(0, 1, tree().model()->index(1, 0, web));
  clickCell(value);
  ASSERT_NE(editor<QLineEdit>(), nullptr);
  type(*editor<QLineEdit>(), "30");
  press(window(), Qt::Key_Return);
  EXPECT_TRUE(eventually([&] {
    return readPlist(paths.pluginSupport + "/check_web.plist").asDictionary().value("Space between") ==
           text("30");
  }));
}

TEST_F(Find, ATreeThatIsReadAgainStaysNarrow) {
  find("space");
  const Texts narrow = seen();
  addPlugin("check_more", "More", {{"Space of more", ""}, {"Else", ""}});
  EXPECT_TRUE(eventually([&] { return outline().childrenOfItem({}).size() == 4; }));
  QApplication::processEvents();
  Texts expected = narrow;
  expected.insert(expected.begin() + 2, {"More", "  Space of more"});
  EXPECT_EQ(seen(), expected);
  press(window(), Qt::Key_Escape);
  EXPECT_EQ(seen(), (Texts{"All Types", "Disks", "More", "Web Sites"}));
}

TEST_F(Find, NothingFoundIsSaid) {
  auto& nothing = widget<QLabel>("nothingFound");
  EXPECT_FALSE(nothing.isVisible());
  Listener listener;
  find("xyzzy");
  EXPECT_TRUE(seen().empty());
  EXPECT_TRUE(nothing.isVisible());
  EXPECT_EQ(listener.namesOf(QAccessible::Alert), QStringList{QStringLiteral("nothingFound")})
      << "once, not with every letter";
  press(window(), Qt::Key_Escape);
  EXPECT_FALSE(nothing.isVisible());
}

TEST_F(Find, AssistiveTechnologyPerceivesOnlyWhatIsLeft) {
  find("space");
  Texts perceived;
  for (QAccessibleInterface* thing : everythingBelow(accessible(tree()))) {
    if (!thing->state().invisible && nameOf(*thing).contains(QStringLiteral("i")))
      perceived.push_back(nameOf(*thing).toStdString());
  }
  EXPECT_NE(std::find(perceived.begin(), perceived.end(), "Disks"), perceived.end());
  EXPECT_EQ(std::find(perceived.begin(), perceived.end(), "Tick"), perceived.end());
  EXPECT_EQ(spokenName(field()), QStringLiteral("Find plugins and settings"));
}

TEST_F(Find, WhateverIsTypedAndTakenBackTheWholeTreeIsThereInTheEnd) {
  expand();
  const Texts before = seen();
  const auto rows = rowsOfTheCore();
  std::mt19937 random(7);
  const QString letters = QStringLiteral("aeinst f_");
  press(window(), Qt::Key_F, Qt::ControlModifier);
  for (int step = 0; step < 200; ++step) {
    if (random() % 3 == 0) {
      press(window(), Qt::Key_Backspace);
    } else {
      type(field(),
           QString(letters.at(static_cast<int>(random() % static_cast<unsigned>(letters.size())))).toUtf8());
    }
  }
  press(window(), Qt::Key_F, Qt::ControlModifier);
  press(window(), Qt::Key_Escape);
  EXPECT_EQ(seen(), before);
  EXPECT_EQ(rowsOfTheCore(), rows);
}

}  // namespace
}  // namespace corvane::test
