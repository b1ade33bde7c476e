// The Plugins tab in the whole pane, over a client whose one plug-in has an option of every type. Rows are
// found by their texts; clicks and keys go to the places where a person would put them.
#pragma once

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "GuiFixture.h"
#include "support/Values.h"
#include "widgets/OutlineTree.h"

namespace corvane::test {

class PluginsTab : public GuiTest {
 protected:
  void SetUp() override {
    GuiTest::SetUp();
    addOption("Title", "DisplayOnly", {}, "https://www.example.com/more");
    addOption("Tick", "Checkbox", text("Positive"));
    addOption("Reverse", "Checkbox", text("Negative"));
    addOption("Set", "Checkboxes");
    addOption("Number", "NumberPicker", text("0-10,5"));
    addOption("Menu", "PopUpMenu", Array::make({text("First"), text("Second"), text("Third")}));
    addOption("Text", "TextField", number(5));
    addOption("User", "UsernameField", number(10));
    addOption("Password", "PasswordField", number(10));
    addOption("File", "FilePicker");
    addOption("Folder", "FolderPicker");
    addOption("Files", "FileArray");
    addOption("Folders", "FolderArray");
    addOption("Test", "PluginValidation");
    settings.set("PrefPaneVisibility", flag(true));
    settings.set("Tick", flag(false));
    settings.set("Reverse", flag(true));
    settings.set("Set", Dictionary::make({{"cupsd", flag(true)}, {"sshd", flag(false)}}));
    settings.set("Number", number(5));
    settings.set("Menu", number(0));
    settings.set("Text", text("abc"));
    settings.set("User", text("admin"));
    settings.set("Password", text("secret"));
    settings.set("File", text("/Users/old.conf"));
    settings.set("Folder", text("/Users"));
    settings.set("Files", Array::make({text("Add a new entry"), text("/Users/a"), text("/Users/b")}));
    settings.set("Folders", Array::make({text("Add a new entry")}));
    settings.set("UnknownToThePane", text("kept"));
    std::filesystem::create_directories(paths.onDisk("/Users/Chosen"));
    std::ofstream(paths.onDisk("/Users/old.conf")) << "old";
    std::ofstream(paths.onDisk("/Users/new.conf")) << "new";
  }

  /// Writes the client's files, opens the pane and goes to the tab with the lock open.
  void openTab(bool unlocked = true) {
    writePlist(paths.plugins + "/check_all.plist",
               Dictionary::make({{"PluginName", text("All Types")},
                                 {"ProgramArguments", Array::make({text("check_all"), text("-v")})},
                                 {"PluginOptions", options}}));
    writePlist(settingsFile(), settings);
    open();
    if (unlocked) openLock();
    clickTab(2);
    answerSheet("Continue");
    ASSERT_TRUE(eventually([this] { return tree().isVisible() && tree().model()->rowCount() > 0; }));
  }

  [[nodiscard]] std::string settingsFile() const { return paths.pluginSupport + "/check_all_settings.plist"; }
  [[nodiscard]] PropertyList stored(const std::string& key) const {
    return readPlist(settingsFile()).asDictionary().value(key);
  }
  [[nodiscard]] qt::OutlineTree& tree() { return widget<qt::OutlineTree>("pluginsTable"); }
  [[nodiscard]] OutlineView& outline() { return pane->assembly().pluginsView().pluginsTable; }

  // Rows. A refresh of the tab collapses them, and one follows every change of a file; so each look-up opens
  // the plug-in first.
  [[nodiscard]] QModelIndex plugin() { return tree().model()->index(0, 1); }
  void expand() {
    if (!tree().isExpanded(plugin().siblingAtColumn(0))) clickTriangle();
    QApplication::processEvents();
  }
  void clickTriangle() {
    tree().scrollTo(plugin());
    const QRect place = tree().visualRect(plugin());
    QTest::mouseClick(tree().viewport(), Qt::LeftButton, {}, QPoint(place.left() - 8, place.center().y()));
  }
  [[nodiscard]] QModelIndex option(const QString& title) {
    expand();
    const QModelIndex top = plugin().siblingAtColumn(0);
    for (int row = 0; row < tree().model()->rowCount(top); ++row) {
      const QModelIndex index = tree().model()->index(row, 1, top);
      if (shown(index) == title) return index;
    }
    ADD_FAILURE() << "no option is called " << title.toStdString();
    return {};
  }
  [[nodiscard]] QModelIndex value(const QString& title, int row = 0) {
    const QModelIndex index = tree().model()->index(row, 1, option(title).siblingAtColumn(0));
    EXPECT_TRUE(index.isValid()) << title.toStdString() << " has no row " << row;
    return index;
  }
  /// The first line of what the cell shows.
  [[nodiscard]] static QString shown(const QModelIndex& index) {
    return index.data().toString().section(QLatin1Char('\n'), 0, 0).trimmed();
  }
  [[nodiscard]] static bool isTicked(const QModelIndex& index) {
    return index.data(Qt::CheckStateRole).toInt() == Qt::Checked;
  }

  /// Where the control of a cell begins.
  static constexpr int kLeft = 12;
  void clickCell(const QModelIndex& index, int fromLeft = kLeft) {
    tree().scrollTo(index);
    const QRect place = tree().visualRect(index);
    const int x = fromLeft >= 0 ? place.left() + fromLeft : place.right() + fromLeft;
    QTest::mouseClick(tree().viewport(), Qt::LeftButton, {}, QPoint(x, place.center().y()));
  }
  /// Makes the row the current one, as the arrow keys would.
  void goTo(const QModelIndex& index) {
    tree().setFocus();
    tree().setCurrentIndex(index);
  }
  template <typename Editor>
  [[nodiscard]] Editor* editor() {
    for (Editor* widget : tree().viewport()->findChildren<Editor*>(QStringLiteral("cellEditor"))) {
      if (widget->isVisible()) return widget;
    }
    return nullptr;
  }
  [[nodiscard]] bool isEditing() { return editor<QWidget>() != nullptr; }
  [[nodiscard]] bool becomes(const std::string& key, const PropertyList& expected) {
    return eventually([&] { return stored(key) == expected; });
  }

  /// An executable of the plug-in that is asked for its verdict.
  void writeExecutable(const std::string& script) {
    const std::string file = paths.plugins + "/check_all";
    std::ofstream(file) << "#!/bin/bash\n" << script << "\n";
    std::filesystem::permissions(file, std::filesystem::perms::owner_all);
  }

  Array options = Array::make();
  Dictionary settings = Dictionary::make();

 private:
  void addOption(const std::string& key, const std::string& type, const PropertyList& parameter = {},
                 const std::string& url = {}) {
    Dictionary kind = Dictionary::make({{"Type", text(type)}});
    if (parameter) kind.set("Value", parameter);
    Dictionary option = Dictionary::make({{"SettingStorageKey", text(key)},
                                          {"SettingStoragePath", text(kClientSettingsFile)},
                                          {"SettingTitle", text(key)},
                                          {"SettingTitleHint", text("What it is for")},
                                          {"SettingType", kind}});
    if (!url.empty()) option.set("SettingDetailsURL", text(url));
    options.append(option);
  }
  static constexpr const char* kClientSettingsFile =
      "/Library/Corvane/PluginSupport/check_all_settings.plist";
};

}  // namespace corvane::test
