// A plug-in with one file or folder list, and what the tests of adding and of removing look at.
#pragma once

#include <initializer_list>
#include <string>

#include "plugins/PluginsTabFixture.h"

namespace corvane::test {

class PluginListsFixture : public PluginsTabFixture {
 protected:
  void storeList(std::initializer_list<const char*> entries) { store(contentsWith(entries)); }
  /// A storage file with this list and a key that the list has nothing to do with.
  static Dictionary contentsWith(std::initializer_list<const char*> entries) {
    return Dictionary::make({{kKey, texts(entries)}, {"Other", number(1)}});
  }
  Array listInMemory() { return optionRow().object().asDictionary().array("FileFolderArray"); }
  void expectErrorSheet(const std::string& message) {
    ASSERT_FALSE(platform.dialogs.sheets.empty());
    const auto& sheet = platform.dialogs.sheets.back();
    EXPECT_EQ(sheet.window, SheetWindow::PaneWindow);
    EXPECT_EQ(sheet.alert.style, AlertStyle::Warning);
    EXPECT_EQ(sheet.alert.messageText, "An error has occurred");
    EXPECT_EQ(sheet.alert.informativeText, message);
    EXPECT_EQ(sheet.alert.iconPath, "/bundle/Resources/Corvane.icns");
    ASSERT_EQ(sheet.alert.buttons.size(), 1U);
    EXPECT_EQ(sheet.alert.buttons[0].title, "Ok");
    EXPECT_EQ(sheet.alert.buttons[0].keyEquivalent, "\r");
  }
};

}  // namespace corvane::test
