#include <QAccessible>
#include <QApplication>
#include <QDialog>
#include <QLineEdit>
#include <QPushButton>

#include "Events.h"
#include "InputMethod.h"
#include "binders/TextFieldBinder.h"
#include "formatters/CustomTextFieldCellFormatter.h"
#include "formatters/MyNumberFormatter.h"

namespace corvane::test {
namespace {

class TextFieldBinder : public ::testing::Test {
 protected:
  void SetUp() override {
    edit->setGeometry(10, 10, 200, 28);
    other->setGeometry(10, 50, 100, 28);
    new qt::TextFieldBinder(field, *edit);
    field.onUserEdit = [this] { ++edits; };
    field.textDidChange = [this](TextField&) { ++changes; };
    window.resize(240, 100);
    showActive(window);
    edit->setFocus();
    ASSERT_TRUE(eventually([this] { return edit->hasFocus(); }));
    edit->deselect();
  }
  void limitTo(std::int32_t minimum, std::int32_t maximum) {
    auto formatter = std::make_shared<MyNumberFormatter>();
    formatter->setMinimum(minimum);
    formatter->setMaximum(maximum);
    formatter->setDefaultValue(minimum);
    field.setFormatter(formatter);
  }

  TextField field{TextField::Role::Entry};
  QWidget window;
  qt::EntryField* edit = new qt::EntryField(&window);
  QPushButton* other = new QPushButton(&window);
  int edits = 0;
  int changes = 0;
};

TEST_F(TextFieldBinder, ShowsWhatTheCoreSets) {
  field.setStringValue("first");
  EXPECT_EQ(edit->text(), QStringLiteral("first"));
  field.setPlaceholder("Type here");
  EXPECT_EQ(edit->placeholderText(), QStringLiteral("Type here"));
  field.setEnabled(false);
  EXPECT_FALSE(edit->isEnabled());
}

TEST_F(TextFieldBinder, EveryKeystrokeReachesTheCoreAtOnce) {
  type(*edit, "abc");
  EXPECT_EQ(field.stringValue(), "abc");
  EXPECT_EQ(changes, 3);
  EXPECT_EQ(edits, 0);
}

TEST_F(TextFieldBinder, ARefusedKeystrokeIsNotTakenAndTheCaretStays) {
  limitTo(1, 60);
  field.setIntValue(45);
  edit->setCursorPosition(1);
  type(*edit, "x");
  EXPECT_EQ(edit->text(), QStringLiteral("45"));
  EXPECT_EQ(field.stringValue(), "45");
  EXPECT_EQ(edit->cursorPosition(), 1);
  EXPECT_EQ(changes, 0);
}

TEST_F(TextFieldBinder, ARefusedKeystrokeLeavesTheSelectionAsItWas) {
  limitTo(1, 60);
  field.setIntValue(45);
  edit->setSelection(0, 2);
  type(*edit, "x");
  EXPECT_EQ(edit->text(), QStringLiteral("45"));
  EXPECT_EQ(edit->selectedText(), QStringLiteral("45"));
}

TEST_F(TextFieldBinder, ARefusedKeystrokeThatEndsTheShowingOfTheDefaultShowsTheValueAgain) {
  limitTo(1, 60);
  field.setIntValue(45);
  static_cast<void>(field.formatter()->isPartialStringValid(""));  // a field that shares it is cleared
  ASSERT_EQ(edit->text(), QStringLiteral("1"));
  type(*edit, "x");
  EXPECT_EQ(field.stringValue(), "45");
  EXPECT_EQ(edit->text(), QStringLiteral("45"));
}

TEST_F(TextFieldBinder, ATextThatIsTooLongTakesNoFurtherCharacter) {
  auto formatter = std::make_shared<CustomTextFieldCellFormatter>();
  formatter->setMaximumLength(3);
  field.setFormatter(formatter);
  type(*edit, "abcd");
  EXPECT_EQ(edit->text(), QStringLiteral("abc"));
  EXPECT_EQ(edit->cursorPosition(), 3);
}

TEST_F(TextFieldBinder, ReturnEndsTheEditing) {
  type(*edit, "abc");
  press(window, Qt::Key_Return);
  EXPECT_EQ(edits, 1);
  EXPECT_FALSE(field.editing());
  press(window, Qt::Key_Return);
  EXPECT_EQ(edits, 1);  // nothing was typed
}

TEST_F(TextFieldBinder, LeavingTheFieldEndsTheEditing) {
  type(*edit, "abc");
  other->setFocus();
  EXPECT_TRUE(eventually([this] { return edits == 1; }));
  EXPECT_EQ(field.objectValue(), PropertyList::string("abc"));
}

TEST_F(TextFieldBinder, EscapeBringsBackTheValue) {
  field.setStringValue("before");
  type(*edit, "more");
  press(window, Qt::Key_Escape);
  EXPECT_EQ(edit->text(), QStringLiteral("before"));
  EXPECT_EQ(edits, 0);
  EXPECT_FALSE(field.editing());
}

TEST_F(TextFieldBinder, AValueThatComesWhileTypingReplacesTheText) {
  type(*edit, "abc");
  field.setStringValue("from the file");
  EXPECT_EQ(edit->text(), QStringLiteral("from the file"));
  other->setFocus();
  EXPECT_TRUE(eventually([this] { return other->hasFocus(); }));
  EXPECT_EQ(edits, 0);
}

TEST_F(TextFieldBinder, AValueThatComesBehindTheEditingDoesNotDisturbTheText) {
  type(*edit, "abc");
  field.setObjectValueBehindEditing(PropertyList::string("from the file"));
  EXPECT_EQ(edit->text(), QStringLiteral("abc"));
  press(window, Qt::Key_Escape);
  EXPECT_EQ(edit->text(), QStringLiteral("from the file"));
}

TEST_F(TextFieldBinder, PastedTextIsCheckedAsAWhole) {
  limitTo(1, 60);
  field.setIntValue(5);
  edit->selectAll();
  edit->insert(QStringLiteral("7x"));  // as pasting does
  EXPECT_EQ(edit->text(), QStringLiteral("5"));
}

TEST_F(TextFieldBinder, WhatADeadKeyGivesIsCheckedToo) {
  limitTo(1, 6);
  field.setIntValue(4);
  edit->setCursorPosition(1);
  compose(*edit, "´");
  EXPECT_FALSE(field.editing());
  commit(*edit, "é");
  EXPECT_EQ(edit->text(), QStringLiteral("4"));
  EXPECT_EQ(field.stringValue(), "4");
  EXPECT_EQ(changes, 0);
}

TEST_F(TextFieldBinder, AComposingThatIsGivenUpDoesNotClearTheFieldWhoseTextWasSelected) {
  limitTo(0, 60);
  field.setIntValue(45);
  edit->selectAll();
  compose(*edit, "´");
  commit(*edit, "é");
  EXPECT_EQ(edit->text(), QStringLiteral("45"));
  EXPECT_EQ(changes, 0);
}

TEST_F(TextFieldBinder, UndoingIsTyping) {
  field.setStringValue("before");
  edit->selectAll();
  type(*edit, "after");
  edit->undo();
  EXPECT_EQ(field.stringValue(), "before");
  EXPECT_TRUE(field.editing());
}

TEST_F(TextFieldBinder, AStoredNumberOutsideTheRangeIsNoLicenceToTypeAnything) {
  limitTo(1, 60);
  field.setIntValue(75);
  edit->setCursorPosition(2);
  type(*edit, "x");
  EXPECT_EQ(edit->text(), QStringLiteral("75"));
  edit->selectAll();
  type(*edit, "5");
  EXPECT_EQ(field.stringValue(), "5");
  edit->undo();
  EXPECT_EQ(edit->text(), QStringLiteral("5")) << "75 may not be typed, so it is not undone to";
  EXPECT_EQ(field.stringValue(), "5");
}

TEST_F(TextFieldBinder, ATextThatAssistiveTechnologySetsIsStoredAlsoWithoutTheKeyboard) {
  limitTo(1, 60);
  field.setIntValue(45);
  other->setFocus();
  QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(edit);
  ASSERT_NE(interface, nullptr);
  interface->setText(QAccessible::Value, QStringLiteral("7"));
  EXPECT_EQ(edits, 1);
  EXPECT_EQ(field.objectValue(), PropertyList::integer(7));
  interface->setText(QAccessible::Value, QStringLiteral("77"));
  EXPECT_EQ(edits, 1);
  EXPECT_EQ(edit->text(), QStringLiteral("7"));
  EXPECT_FALSE(field.editing());
}

TEST_F(TextFieldBinder, AssistiveTechnologySetsNoTextBehindAPanel) {
  field.setStringValue("before");
  QDialog panel;
  panel.setModal(true);
  panel.show();
  ASSERT_TRUE(eventually([&] { return QApplication::activeModalWidget() == &panel; }));
  QAccessible::queryAccessibleInterface(edit)->setText(QAccessible::Value, QStringLiteral("after"));
  EXPECT_EQ(edit->text(), QStringLiteral("before"));
  EXPECT_EQ(field.stringValue(), "before");
  EXPECT_EQ(edits, 0);
}

TEST_F(TextFieldBinder, NoTextIsTooLongForTheToolkit) {
  const std::string text(40000, 'a');
  field.setStringValue(text);
  EXPECT_EQ(edit->text().toStdString(), text);
  edit->setCursorPosition(0);
  type(*edit, "b");
  EXPECT_EQ(field.stringValue(), "b" + text);
}

}  // namespace
}  // namespace corvane::test
