// The rows of the Plugins tab as assistive technology finds them: what each is called and is, what can be
// done to it, and that what was done stands in the plug-in's file.
#include <QFileDialog>
#include <algorithm>
#include <set>

#include "Assistive.h"
#include "PluginsTabFixture.h"
#include "plugins/PluginKeys.h"

namespace corvane::test {
namespace {

class AccessibleRows : public PluginsTab {
 protected:
  [[nodiscard]] QAccessibleInterface& outlineThing() {
    return thingCalled(accessible(window()), QAccessible::Tree, QStringLiteral("Plugins and their settings"));
  }
  [[nodiscard]] QAccessibleInterface& pluginThing() { return *outlineThing().child(0); }
  [[nodiscard]] QAccessibleInterface& optionThing(const char* title) {
    if (pluginThing().state().collapsed) act(pluginThing(), QStringLiteral("Expand"));
    for (int i = 0; i < pluginThing().childCount(); ++i) {
      if (nameOf(*pluginThing().child(i)) == QString::fromUtf8(title)) return *pluginThing().child(i);
    }
    throw std::runtime_error(std::string("no option is called ") + title);
  }
  [[nodiscard]] QAccessibleInterface& valueThing(const char* title, int index = 0) {
    QAccessibleInterface* found = optionThing(title).child(index);
    if (found == nullptr) throw std::runtime_error(std::string(title) + " has no such row");
    return *found;
  }
  static void setText(QAccessibleInterface& field, const char* text) {
    ASSERT_NE(field.editableTextInterface(), nullptr);
    field.editableTextInterface()->replaceText(0, -1, QString::fromUtf8(text));
    QApplication::processEvents();
  }
};

struct Kind {
  const char* option;
  int value;  // -1: the option's own row
  QAccessible::Role role;
  const char* name;
  const char* text;
  const char* description;
  const char* action;
};

constexpr Kind kKinds[] = {
    {"Title", -1, QAccessible::TreeItem, "Title", "", "What it is for", "SetFocus"},
    {"Title", 0, QAccessible::Link, "https://www.example.com/more", "", "Title", "Press"},
    {"Tick", -1, QAccessible::CheckBox, "Tick", "", "What it is for", "Toggle"},
    {"Set", 0, QAccessible::CheckBox, "cupsd", "", "", "Toggle"},
    {"Number", 0, QAccessible::ComboBox, "Number", "5", "", "ShowMenu"},
    {"Menu", 0, QAccessible::ComboBox, "Menu", "First", "", "ShowMenu"},
    {"Text", 0, QAccessible::EditableText, "Text", "abc", "", "Edit"},
    {"User", 0, QAccessible::EditableText, "User", "admin", "", "Edit"},
    {"Password", 0, QAccessible::EditableText, "Password", "••••••", "", "Edit"},
    {"File", 0, QAccessible::Button, "File: /Users/old.conf", "", "Chooses a file", "Press"},
    {"Folder", 0, QAccessible::Button, "Folder: /Users", "", "Chooses a folder", "Press"},
    {"Files", 0, QAccessible::Button, "Files: Add a new entry", "", "Chooses a file", "Press"},
    {"Files", 1, QAccessible::Button, "Files: /Users/a", "", "Removes the entry", "Press"},
    {"Folders", 0, QAccessible::Button, "Folders: Add a new entry", "", "Chooses a folder", "Press"},
    {"Test", 0, QAccessible::Button, "Test Settings", "", "Test", "Press"},
};

TEST_F(AccessibleRows, EachIsCalledWhatItShowsAndIsWhatItLooksLike) {
  openTab();
  for (const Kind& kind : kKinds) {
    SCOPED_TRACE(::testing::Message() << kind.option << " " << kind.value);
    QAccessibleInterface& row =
        kind.value < 0 ? optionThing(kind.option) : valueThing(kind.option, kind.value);
    EXPECT_EQ(row.role(), kind.role);
    EXPECT_EQ(nameOf(row).toStdString(), kind.name);
    EXPECT_EQ(row.text(QAccessible::Value).toStdString(), kind.text);
    EXPECT_EQ(row.text(QAccessible::Description).toStdString(), kind.description);
    EXPECT_EQ(actionsOf(row).value(0).toStdString(), kind.action);
    EXPECT_FALSE(row.state().disabled);
    EXPECT_FALSE(row.rect().isEmpty());
    EXPECT_EQ(row.parent()->child(row.parent()->indexOfChild(&row)), &row);
  }
  std::set<std::string_view> types(std::begin(setting_type::kAll), std::end(setting_type::kAll));
  for (std::size_t i = 0; i < options.size(); ++i)
    types.erase(*options.at(i).asDictionary().dictionary("SettingType").string("Type"));
  EXPECT_TRUE(types.empty()) << "no row is of the type " << *types.begin();
  for (std::size_t i = 0; i < options.size(); ++i) {
    const std::string title = *options.at(i).asDictionary().string("SettingTitle");
    EXPECT_TRUE(title == "Reverse" || std::any_of(std::begin(kKinds), std::end(kKinds),
                                                  [&](const Kind& kind) { return title == kind.option; }))
        << title << " was not looked at";
  }
}

TEST_F(AccessibleRows, NoneIsNamelessAndNoneIsOpenBelowAClosedOne) {
  openTab();
  EXPECT_EQ(everythingBelow(outlineThing()).size(), 2U) << "the tree and the closed plug-in";
  static_cast<void>(optionThing("Tick"));
  const auto all = everythingBelow(outlineThing());
  EXPECT_GT(all.size(), 25U);
  for (QAccessibleInterface* thing : all) EXPECT_FALSE(nameOf(*thing).isEmpty());
}

TEST_F(AccessibleRows, APlugInIsOpenedAndClosedAndSwitchedOnAndOff) {
  openTab();
  EXPECT_EQ(pluginThing().role(), QAccessible::TreeItem);
  EXPECT_EQ(nameOf(pluginThing()), QStringLiteral("All Types"));
  EXPECT_TRUE(pluginThing().state().collapsed);
  EXPECT_TRUE(pluginThing().state().checkable);
  EXPECT_TRUE(pluginThing().state().checked);
  EXPECT_EQ(actionsOf(pluginThing()),
            (QStringList{QStringLiteral("Toggle"), QStringLiteral("Expand"), QStringLiteral("SetFocus")}));
  act(pluginThing(), QStringLiteral("Expand"));
  EXPECT_TRUE(pluginThing().state().expanded);
  EXPECT_TRUE(tree().isExpanded(plugin().siblingAtColumn(0)));
  toggleThing(pluginThing());
  EXPECT_TRUE(becomes("Plugin_Enabled", flag(false)));
  EXPECT_FALSE(pluginThing().state().checked);
  toggleThing(pluginThing());
  EXPECT_TRUE(becomes("Plugin_Enabled", flag(true)));
  EXPECT_TRUE(pluginThing().state().checked);
  act(pluginThing(), QStringLiteral("Collapse"));
  EXPECT_TRUE(pluginThing().state().collapsed);
  EXPECT_EQ(pluginThing().childCount(), 0);
}

TEST_F(AccessibleRows, ASwitchIsStored) {
  openTab();
  toggleThing(optionThing("Tick"));
  EXPECT_TRUE(becomes("Tick", flag(true)));
  EXPECT_TRUE(optionThing("Tick").state().checked);
  toggleThing(optionThing("Reverse"));
  EXPECT_EQ(stored("Reverse"), flag(true)) << "a negative one stays as it is stored";
  EXPECT_TRUE(optionThing("Reverse").state().checked);
  toggleThing(valueThing("Set", 1));
  EXPECT_TRUE(becomes("Set", Dictionary::make({{"cupsd", flag(true)}, {"sshd", flag(true)}})));
  EXPECT_TRUE(valueThing("Set", 1).state().checked);
  EXPECT_EQ(stored("UnknownToThePane"), text("kept"));
}

TEST_F(AccessibleRows, AMenuHasItsItemsAndTheOneThatIsChosenIsStored) {
  openTab();
  QAccessibleInterface& menu = valueThing("Menu");
  ASSERT_EQ(menu.childCount(), 3);
  EXPECT_EQ(nameOf(*menu.child(2)), QStringLiteral("Third"));
  EXPECT_TRUE(menu.child(0)->state().selected);
  pressThing(*menu.child(2));
  EXPECT_TRUE(becomes("Menu", number(2)));
  EXPECT_TRUE(valueThing("Menu").child(2)->state().selected);
  EXPECT_EQ(valueThing("Menu").text(QAccessible::Value), QStringLiteral("Third"));
  valueThing("Menu").valueInterface()->setCurrentValue(1);
  EXPECT_TRUE(becomes("Menu", number(1)));
  valueThing("Menu").valueInterface()->setCurrentValue(3);
  valueThing("Menu").setText(QAccessible::Value, QStringLiteral("Fourth"));
  EXPECT_EQ(stored("Menu"), number(1));
  EXPECT_EQ(valueThing("Menu").valueInterface()->currentValue().toInt(), 1);
}

TEST_F(AccessibleRows, ANumberIsStoredAndOneOutOfRangeIsRefusedAndShownAsStored) {
  openTab();
  QAccessibleValueInterface& box = *valueThing("Number").valueInterface();
  EXPECT_EQ(box.minimumValue().toInt(), 0);
  EXPECT_EQ(box.maximumValue().toInt(), 10);
  EXPECT_EQ(box.minimumStepSize().toInt(), 5);
  EXPECT_EQ(box.currentValue().toInt(), 5);
  box.setCurrentValue(7);
  EXPECT_TRUE(becomes("Number", number(7)));
  valueThing("Number").valueInterface()->setCurrentValue(11);
  setText(valueThing("Number"), "four");
  EXPECT_EQ(stored("Number"), number(7));
  EXPECT_EQ(valueThing("Number").text(QAccessible::Value), QStringLiteral("7"));
}

TEST_F(AccessibleRows, ATextIsStoredAndOneThatIsTooLongIsRefused) {
  openTab();
  QAccessibleInterface& field = valueThing("Text");
  EXPECT_TRUE(field.state().editable);
  EXPECT_EQ(field.textInterface()->text(0, 2), QStringLiteral("ab"));
  field.editableTextInterface()->insertText(3, QStringLiteral("d"));
  EXPECT_TRUE(becomes("Text", text("abcd")));
  valueThing("Text").editableTextInterface()->deleteText(0, 2);
  EXPECT_TRUE(becomes("Text", text("cd")));
  setText(valueThing("Text"), "sixsix");
  EXPECT_EQ(stored("Text"), text("cd"));
  EXPECT_EQ(valueThing("Text").text(QAccessible::Value), QStringLiteral("cd"));
  setText(valueThing("Text"), "");
  EXPECT_TRUE(becomes("Text", text("")));
  EXPECT_EQ(valueThing("Text").text(QAccessible::Description), QStringLiteral("Click to enter text"));
}

TEST_F(AccessibleRows, ATextIsPutInWithoutLineBreaks) {
  openTab();
  setText(valueThing("Text"), "a\nb\n");
  EXPECT_TRUE(becomes("Text", text("a b")));
  valueThing("Text").editableTextInterface()->insertText(3, QStringLiteral("\r\nc"));
  EXPECT_TRUE(becomes("Text", text("a bc")));
  valueThing("Text").setText(QAccessible::Value, QStringLiteral("d\ne"));
  EXPECT_TRUE(becomes("Text", text("d e")));
}

TEST_F(AccessibleRows, ATextThatIsBeingTypedStaysWhenAnotherRowIsGivenOne) {
  openTab();
  act(valueThing("User"), QStringLiteral("Edit"));
  type(*editor<QLineEdit>(), "typed");
  setText(valueThing("Text"), "other");
  EXPECT_TRUE(becomes("Text", text("other")));
  ASSERT_TRUE(isEditing());
  press(window(), Qt::Key_Return);
  EXPECT_TRUE(becomes("User", text("typed")));
}

TEST_F(AccessibleRows, APasswordIsStoredAndNeverReadOut) {
  openTab();
  EXPECT_TRUE(valueThing("Password").state().passwordEdit);
  EXPECT_EQ(valueThing("Password").textInterface()->text(0, 6), QStringLiteral("••••••"));
  valueThing("Password").editableTextInterface()->insertText(6, QStringLiteral("2"));
  EXPECT_TRUE(becomes("Password", text("secret2")));
  for (QAccessibleInterface* thing : everythingBelow(outlineThing())) {
    for (const auto kind : {QAccessible::Name, QAccessible::Description, QAccessible::Value})
      EXPECT_FALSE(thing->text(kind).contains(QStringLiteral("secret")));
  }
}

TEST_F(AccessibleRows, APressOpensWhatAClickWouldOpen) {
  openTab();
  pressThing(valueThing("Title"));
  EXPECT_EQ(openedUrls.list, (std::vector<std::string>{"https://www.example.com/more"}));
  EXPECT_TRUE(answerPanel<QFileDialog>([this] { pressThing(valueThing("Folder")); },
                                       [](QFileDialog& panel) { panel.reject(); }));
  pressThing(valueThing("Files", 1));
  ASSERT_NE(sheet(), nullptr);
  answerSheet("Remove");
  EXPECT_TRUE(becomes("Files", Array::make({text("Add a new entry"), text("/Users/b")})));
}

TEST_F(AccessibleRows, AFieldIsOpenedToBeTypedIn) {
  openTab();
  act(valueThing("User"), QStringLiteral("Edit"));
  auto* field = editor<QLineEdit>();
  ASSERT_NE(field, nullptr);
  EXPECT_EQ(spokenName(*field), QStringLiteral("User"));
  setText(valueThing("User"), "other");
  EXPECT_TRUE(becomes("User", text("other")));
  EXPECT_FALSE(isEditing()) << "what stands in the open field is older";
}

TEST_F(AccessibleRows, WithTheLockClosedRowsAreOpenedAndReadAndNothingIsStored) {
  openTab(false);
  for (const char* option : {"Tick", "Text", "Menu"}) static_cast<void>(optionThing(option));
  EXPECT_FALSE(actionsOf(pluginThing()).contains(QStringLiteral("Toggle")));
  EXPECT_EQ(actionsOf(optionThing("Tick")), QStringList{QStringLiteral("SetFocus")});
  EXPECT_TRUE(optionThing("Tick").state().disabled);
  optionThing("Tick").actionInterface()->doAction(QStringLiteral("Toggle"));
  EXPECT_FALSE(valueThing("Text").state().editable);
  EXPECT_TRUE(valueThing("Text").state().readOnly);
  setText(valueThing("Text"), "no");
  EXPECT_EQ(actionsOf(*valueThing("Menu").child(1)), QStringList());
  valueThing("Menu").valueInterface()->setCurrentValue(2);
  QApplication::processEvents();
  EXPECT_EQ(stored("Tick"), flag(false));
  EXPECT_EQ(stored("Text"), text("abc"));
  EXPECT_EQ(stored("Menu"), number(0));
}

TEST_F(AccessibleRows, ThatALockHasClosedIsToldOfWhatCanNoLongerBeChanged) {
  Listener listener;
  openTab();
  for (const char* title : {"Title", "Tick", "Text"}) static_cast<void>(optionThing(title));
  static_cast<void>(valueThing("Text"));
  static_cast<void>(valueThing("Menu").child(1));
  listener.forget();
  click(widget("authView"));
  ASSERT_TRUE(eventually([this] { return valueThing("Text").state().disabled; }));
  const QStringList told = listener.toldNames(QAccessible::StateChanged);
  EXPECT_EQ(told.count(QStringLiteral("Tick")), 1);
  EXPECT_EQ(told.count(QStringLiteral("Text")), 1) << "the field alone, not the option above it";
  EXPECT_EQ(told.count(QStringLiteral("Second")), 1) << "an item of the menu";
  EXPECT_FALSE(told.contains(QStringLiteral("Title")));
}

TEST_F(AccessibleRows, WhatOnlyRootMayReadIsToldToBeGoneWhenTheLockCloses) {
  Dictionary option = options.at(6).asDictionary();
  ASSERT_EQ(*option.string("SettingTitle"), "Text");
  option.set("SettingStoragePath", text("/var/root/text.plist"));
  std::filesystem::create_directories(paths.onDisk("/var/root"));
  writePlist(paths.onDisk("/var/root/text.plist"), Dictionary::make({{"Text", text("secret")}}));
  Listener listener;
  openTab();
  ASSERT_EQ(valueThing("Text").text(QAccessible::Value), QStringLiteral("secret"));
  listener.forget();
  click(widget("authView"));
  ASSERT_TRUE(eventually([this] { return valueThing("Text").text(QAccessible::Value).isEmpty(); }));
  EXPECT_TRUE(listener.toldNames(QAccessible::ValueChanged).contains(QStringLiteral("Text")));
}

TEST_F(AccessibleRows, NothingIsDoneToARowBehindASheetOrOnAHiddenTab) {
  openTab();
  // The permissions that were put right when the lock opened are told a second later, and the rows made anew.
  const OutlineView::Hold still = outline().holdRows();
  QAccessibleInterface& tick = optionThing("Tick");
  pressThing(valueThing("Files", 1));
  ASSERT_NE(sheet(), nullptr);
  tick.actionInterface()->doAction(QStringLiteral("Toggle"));
  EXPECT_EQ(stored("Tick"), flag(false));
  answerSheet("Cancel");
  clickTab(0);
  tick.actionInterface()->doAction(QStringLiteral("Toggle"));
  EXPECT_EQ(stored("Tick"), flag(false));
}

TEST_F(AccessibleRows, TheRowThatTheKeyboardIsOnIsTold) {
  openTab();
  act(valueThing("User"), QStringLiteral("SetFocus"));
  EXPECT_TRUE(valueThing("User").state().focused);
  EXPECT_EQ(outlineThing().focusChild(), &valueThing("User"));
  const Listener listener;
  press(window(), Qt::Key_Down);
  EXPECT_EQ(listener.toldNames(QAccessible::Focus), QStringList{QStringLiteral("Password")});
}

TEST_F(AccessibleRows, WhatChangesInARowIsToldOnceAndNothingElse) {
  openTab();
  static_cast<void>(everythingBelow(outlineThing()));
  static_cast<void>(optionThing("Tick"));
  static_cast<void>(everythingBelow(outlineThing()));
  Listener listener;
  toggleThing(optionThing("Tick"));
  EXPECT_EQ(listener.toldNames(QAccessible::StateChanged), QStringList{QStringLiteral("Tick")});
  EXPECT_EQ(listener.toldNames(QAccessible::NameChanged), QStringList());
  listener.forget();
  setText(valueThing("Text"), "xyz");
  EXPECT_EQ(listener.toldNames(QAccessible::ValueChanged), QStringList{QStringLiteral("Text")});
  listener.forget();
  act(pluginThing(), QStringLiteral("Collapse"));
  EXPECT_EQ(listener.toldNames(QAccessible::StateChanged), QStringList{QStringLiteral("All Types")});
}

TEST_F(AccessibleRows, ARowThatHasGoneIsNotFoundAndDoesNothing) {
  openTab();
  QAccessibleInterface& last = valueThing("Files", 2);
  EXPECT_EQ(nameOf(last), QStringLiteral("Files: /Users/b"));
  settings.set("Files", Array::make({text("Add a new entry")}));
  writePlist(settingsFile(), settings);
  EXPECT_TRUE(eventually([this] { return optionThing("Files").childCount() == 1; }));
  EXPECT_EQ(nameOf(valueThing("Files", 0)), QStringLiteral("Files: Add a new entry"));
}

}  // namespace
}  // namespace corvane::test
