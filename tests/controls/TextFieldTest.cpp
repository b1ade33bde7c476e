#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "controls/TextField.h"
#include "formatters/CustomTextFieldCellFormatter.h"
#include "formatters/MyNumberFormatter.h"

namespace corvane {
namespace {

class TextFieldTest : public testing::Test {
 protected:
  TextFieldTest() {
    field.textDidChange = [this](TextField& sender) { typed.push_back(sender.stringValue()); };
    field.onUserEdit = [this] { ++edits; };
  }
  TextField field{TextField::Role::Entry};
  std::vector<std::string> typed;
  int edits = 0;
};

TEST_F(TextFieldTest, ShowsTheDescriptionOfAValueAndNothingAsEmpty) {
  field.setObjectValue(PropertyList::integer(12));
  EXPECT_EQ(field.stringValue(), "12");
  EXPECT_EQ(field.intValue(), 12);
  field.setObjectValue(PropertyList::string("group"));
  EXPECT_EQ(field.stringValue(), "group");
  field.setObjectValue({});
  EXPECT_EQ(field.stringValue(), "");
  EXPECT_EQ(field.intValue(), 0);
}

TEST_F(TextFieldTest, ShowsAValueAsItsFormatterGivesIt) {
  field.setFormatter(std::make_shared<MyNumberFormatter>(1, 12, 1));
  field.setObjectValue(PropertyList::real(3.7));
  EXPECT_EQ(field.stringValue(), "3");
  field.setObjectValue(PropertyList::string("text"));  // no number: nothing to show
  EXPECT_EQ(field.stringValue(), "");
  field.setStringValue("7x");
  EXPECT_EQ(field.stringValue(), "7");
  field.setStringValue("");
  EXPECT_EQ(field.stringValue(), "");
  EXPECT_FALSE(field.objectValue());
}

TEST_F(TextFieldTest, AFormatterThatComesLaterShowsThePresentValueAnew) {
  field.setObjectValue(PropertyList::real(3.7));
  field.setFormatter(std::make_shared<MyNumberFormatter>());
  EXPECT_EQ(field.stringValue(), "3");
}

TEST_F(TextFieldTest, ReportsEachTextThatWasTyped) {
  EXPECT_TRUE(field.typeText("1"));
  EXPECT_TRUE(field.typeText("12"));
  EXPECT_EQ(typed, (std::vector<std::string>{"1", "12"}));
  EXPECT_TRUE(field.editing());
  EXPECT_EQ(edits, 0);
}

TEST_F(TextFieldTest, ATextThatTheFormatterRefusesIsNotTaken) {
  field.setFormatter(std::make_shared<MyNumberFormatter>(1, 12, 1));
  field.setIntValue(7);
  EXPECT_FALSE(field.typeText("70"));
  EXPECT_EQ(field.stringValue(), "7");
  EXPECT_FALSE(field.editing());
  EXPECT_TRUE(typed.empty());
  field.endEditing();
  EXPECT_EQ(edits, 0);
}

TEST_F(TextFieldTest, LabelsAndDisabledOrHiddenFieldsTakeNoText) {
  TextField label(TextField::Role::Label, "Run every");
  EXPECT_FALSE(label.typeText("x"));
  EXPECT_EQ(label.stringValue(), "Run every");
  field.setEnabled(false);
  EXPECT_FALSE(field.typeText("x"));
  field.setEnabled(true);
  field.setHidden(true);
  EXPECT_FALSE(field.typeText("x"));
  EXPECT_EQ(field.stringValue(), "");
}

TEST_F(TextFieldTest, EndingTheEditingMakesTheTextTheValueAndTellsTheBindingOnce) {
  field.setFormatter(std::make_shared<MyNumberFormatter>(0, 99, 0));
  ASSERT_TRUE(field.typeText("07"));
  field.endEditing();
  EXPECT_EQ(field.stringValue(), "7");
  EXPECT_EQ(field.objectValue().asInteger(), 7);
  EXPECT_EQ(edits, 1);
  field.endEditing();
  EXPECT_EQ(edits, 1);
}

TEST_F(TextFieldTest, TheBindingSeesTheNewValueAndAnEndedEditing) {
  std::string seen;
  field.onUserEdit = [&] { seen = field.stringValue() + (field.editing() ? " editing" : " ended"); };
  ASSERT_TRUE(field.typeText("west"));
  field.endEditing();
  EXPECT_EQ(seen, "west ended");
  EXPECT_EQ(field.objectValue(), PropertyList::string("west"));
}

TEST_F(TextFieldTest, AClearedNumberFieldStaysEmptyUntilItsEditingEndsAndThenHoldsTheDefaultThatItShows) {
  field.setFormatter(std::make_shared<MyNumberFormatter>(1, 6, 2));
  field.setIntValue(5);
  EXPECT_TRUE(field.typeText(""));
  EXPECT_EQ(field.stringValue(), "");
  EXPECT_EQ(typed, (std::vector<std::string>{""}));
  field.endEditing();
  EXPECT_EQ(field.stringValue(), "2");
  EXPECT_EQ(field.objectValue().asInteger(), 2);
  EXPECT_EQ(field.intValue(), 2);
  EXPECT_EQ(edits, 1);
}

TEST_F(TextFieldTest, AValueThatIsSetIsShownAndDropsWhatIsBeingTyped) {
  field.setStringValue("old");
  ASSERT_TRUE(field.typeText("typed"));
  field.setStringValue("new");
  EXPECT_EQ(field.stringValue(), "new");
  EXPECT_FALSE(field.editing());
  field.endEditing();
  EXPECT_EQ(field.objectValue(), PropertyList::string("new"));
  EXPECT_EQ(edits, 0);
}

TEST_F(TextFieldTest, AValueThatIsSetWhileATextIsReportedStandsInItsPlace) {
  field.textDidChange = [](TextField& sender) { sender.setStringValue("better"); };
  EXPECT_TRUE(field.typeText("typed"));
  EXPECT_EQ(field.stringValue(), "better");
  EXPECT_FALSE(field.editing());
}

TEST_F(TextFieldTest, AValueThatIsSetBehindTheEditingIsShownWhenTheEditingIsDropped) {
  field.setStringValue("old");
  ASSERT_TRUE(field.typeText("typed"));
  field.setObjectValueBehindEditing(PropertyList::string("new"));
  EXPECT_EQ(field.stringValue(), "typed");
  field.abortEditing();
  EXPECT_EQ(field.stringValue(), "new");
  EXPECT_FALSE(field.editing());
  EXPECT_EQ(edits, 0);
}

TEST_F(TextFieldTest, WhatWasTypedWinsOverAValueThatWasSetBehindIt) {
  ASSERT_TRUE(field.typeText("typed"));
  field.setObjectValueBehindEditing(PropertyList::string("new"));
  field.endEditing();
  EXPECT_EQ(field.objectValue(), PropertyList::string("typed"));
  EXPECT_EQ(edits, 1);
}

TEST_F(TextFieldTest, AFieldThatWasDisabledWhileTheUserTypedDropsTheText) {
  field.setStringValue("old");
  ASSERT_TRUE(field.typeText("typed"));
  field.setEnabled(false);
  field.endEditing();
  EXPECT_EQ(field.stringValue(), "old");
  EXPECT_EQ(edits, 0);
}

TEST_F(TextFieldTest, AFormatterOfTextsCapsTheLength) {
  const auto formatter = std::make_shared<CustomTextFieldCellFormatter>();
  formatter->setMaximumLength(3);
  field.setFormatter(formatter);
  EXPECT_TRUE(field.typeText("abc"));
  EXPECT_FALSE(field.typeText("abcd"));
  EXPECT_EQ(field.stringValue(), "abc");
}

class SharedFormatterTest : public testing::Test {
 protected:
  SharedFormatterTest() {
    for (TextField* field : {&first, &second}) field->setFormatter(formatter);
    first.setIntValue(40);
    second.setIntValue(50);
  }
  std::shared_ptr<MyNumberFormatter> formatter = std::make_shared<MyNumberFormatter>(1, 99, 1);
  TextField first{TextField::Role::Entry};
  TextField second{TextField::Role::Entry};
};

TEST_F(SharedFormatterTest, ClearingOneFieldShowsTheDefaultInTheOthersUntilATextIsChecked) {
  int changes = 0;
  second.onChange = [&] { ++changes; };
  ASSERT_TRUE(first.typeText(""));
  EXPECT_EQ(second.stringValue(), "1");
  EXPECT_EQ(second.objectValue().asInteger(), 50);  // only shown
  EXPECT_EQ(changes, 1);
  second.setIntValue(60);
  EXPECT_EQ(second.stringValue(), "1");

  ASSERT_TRUE(first.typeText("7"));
  EXPECT_EQ(second.stringValue(), "60");
  EXPECT_EQ(first.stringValue(), "7");
}

TEST_F(SharedFormatterTest, ARefusedTextAlsoEndsTheShowingOfTheDefault) {
  ASSERT_TRUE(first.typeText(""));
  first.endEditing();
  ASSERT_EQ(second.stringValue(), "1");
  EXPECT_FALSE(second.typeText("x"));
  EXPECT_EQ(second.stringValue(), "50");
  EXPECT_EQ(first.stringValue(), "1");  // the default became its value
}

TEST_F(SharedFormatterTest, AFieldThatWasDetachedOrHasGoneHearsNothing) {
  second.setFormatter(nullptr);
  auto third = std::make_unique<TextField>(TextField::Role::Entry);
  third->setFormatter(formatter);
  third.reset();
  ASSERT_TRUE(first.typeText(""));
  EXPECT_EQ(second.stringValue(), "50");
}

}  // namespace
}  // namespace corvane
