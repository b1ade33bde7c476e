#import "WindowFixture.h"
#include "formatters/CustomTextFieldCellFormatter.h"
#include "formatters/MyNumberFormatter.h"

namespace corvane::test {
namespace {

class AppKitField : public AppKitWindowTest {
 protected:
  AppKitField() {
    one.setFormatter(shared);
    two.setFormatter(shared);
    one.setIntValue(7);
    two.setIntValue(8);
    one.onUserEdit = [this] { ++edits; };
  }
  void begin(NSTextField* view) {
    ASSERT_TRUE([window makeFirstResponder:view]);
    [[view currentEditor] selectAll:nil];
  }
  void leave() { [window makeFirstResponder:nil]; }

  std::shared_ptr<MyNumberFormatter> shared = std::make_shared<MyNumberFormatter>(1, 60, 5);
  TextField one{TextField::Role::Entry};
  TextField two{TextField::Role::Entry};
  TextField name{TextField::Role::Entry};
  NSTextField* oneView = page.entry(one, NSMakeRect(20, 20, 60, 22));
  NSTextField* twoView = page.entry(two, NSMakeRect(120, 20, 60, 22));
  NSTextField* nameView = page.entry(name, NSMakeRect(220, 20, 200, 22));
  int edits = 0;
};

TEST_F(AppKitField, TheValueIsShownAndFollowed) {
  EXPECT_EQ(textOf(oneView), "7");
  one.setIntValue(33);
  EXPECT_EQ(textOf(oneView), "33");
}

TEST_F(AppKitField, EachKeyIsOfferedToTheNumberFormatter) {
  begin(oneView);
  type(window, "6");
  EXPECT_EQ(one.stringValue(), "6");
  EXPECT_TRUE(one.editing());
  type(window, "1x.-");
  EXPECT_EQ(typedText(window), "6");
  type(window, "0");
  EXPECT_EQ(typedText(window), "60");
  EXPECT_EQ(one.stringValue(), "60");
}

TEST_F(AppKitField, EachKeyIsOfferedToTheLengthFormatter) {
  const auto atMostFive = std::make_shared<CustomTextFieldCellFormatter>();
  atMostFive->setMaximumLength(5);
  name.setFormatter(atMostFive);
  begin(nameView);
  type(window, "Büros");
  EXPECT_EQ(typedText(window), "Büros");
  type(window, "x");
  EXPECT_EQ(typedText(window), "Büros");
  press(window, kBackspace);
  type(window, "🗂");  // two units, of which one has room
  EXPECT_EQ(typedText(window), "Büro");
  type(window, "y");
  EXPECT_EQ(typedText(window), "Büroy");
}

TEST_F(AppKitField, ReturnMakesWhatWasTypedTheValueAndABindingHearsOfItOnce) {
  begin(oneView);
  type(window, "42");
  EXPECT_EQ(edits, 0);
  press(window, kReturn);
  EXPECT_EQ(edits, 1);
  EXPECT_FALSE(one.editing());
  EXPECT_EQ(one.objectValue(), PropertyList::integer(42));
  leave();
  EXPECT_EQ(edits, 1);
}

TEST_F(AppKitField, LeavingTheFieldDoesToo) {
  begin(oneView);
  type(window, "43");
  leave();
  EXPECT_EQ(edits, 1);
  EXPECT_EQ(one.objectValue(), PropertyList::integer(43));
}

TEST_F(AppKitField, AFieldThatIsOnlyVisitedKeepsItsValueAndTellsNobody) {
  begin(oneView);
  press(window, kTab);
  EXPECT_EQ(edits, 0);
  EXPECT_EQ(textOf(oneView), "7");
}

TEST_F(AppKitField, EscapeDropsWhatWasTyped) {
  begin(oneView);
  type(window, "9");
  press(window, kEscape);
  EXPECT_FALSE(one.editing());
  EXPECT_EQ(typedText(window), "7");
  leave();
  EXPECT_EQ(edits, 0);
  EXPECT_EQ(textOf(oneView), "7");
}

TEST_F(AppKitField, AValueThatLetsTheUserGoOnIsShownWhenTheTypingIsDropped) {
  begin(oneView);
  type(window, "6");
  one.setObjectValueBehindEditing(PropertyList::integer(33));
  EXPECT_EQ(typedText(window), "6");
  press(window, kEscape);
  EXPECT_EQ(typedText(window), "33");
}

TEST_F(AppKitField, AnyOtherValueTakesThePlaceOfWhatWasTyped) {
  begin(oneView);
  type(window, "6");
  one.setIntValue(33);
  EXPECT_EQ(typedText(window), "33");
  leave();
  EXPECT_EQ(edits, 0);
  EXPECT_EQ(textOf(oneView), "33");
}

TEST_F(AppKitField, AClearedFieldShowsTheDefaultInAllFieldsOfItsFormatter) {
  begin(oneView);
  press(window, kBackspace);
  EXPECT_EQ(typedText(window), "");
  EXPECT_EQ(textOf(twoView), "5");  // intended
  leave();
  EXPECT_EQ(textOf(oneView), "5");
  EXPECT_EQ(edits, 1);
}

TEST_F(AppKitField, AFieldThatIsDisabledDropsWhatWasTyped) {
  begin(oneView);
  type(window, "9");
  one.setEnabled(false);
  EXPECT_FALSE(isTyping(window));
  EXPECT_EQ(textOf(oneView), "7");
  EXPECT_EQ(edits, 0);
}

TEST_F(AppKitField, ADisabledFieldTakesNoKeyboard) {
  one.setEnabled(false);
  click(oneView);
  EXPECT_FALSE(isTyping(window));
}

TEST_F(AppKitField, BytesThatAreNoTextAreShownOneByOne) {
  name.setStringValue("a\xff"
                      "b");
  EXPECT_EQ(textOf(nameView), "aÿb");
}

TEST_F(AppKitField, ThePlaceholderIsTheControls) {
  name.setPlaceholder("None");
  EXPECT_TRUE([[[nameView cell] placeholderString] isEqual:@"None"]);
}

TEST_F(AppKitField, ABinderThatGoesLeavesItsViewUsable) {
  TextField gone{TextField::Role::Entry};
  NSTextField* view = nil;
  {
    TestPage other;
    view = [[other.entry(gone, NSMakeRect(20, 60, 60, 22)) retain] autorelease];
    [[window contentView] addSubview:view];
  }
  EXPECT_EQ(gone.onChange, nullptr);
  begin(view);
  type(window, "free");
  EXPECT_EQ(typedText(window), "free");
  leave();
  [view removeFromSuperview];
}

// What the toolkit of a Mac asks: the text before and the selections with it.
TEST_F(AppKitField, ARefusedKeyLeavesTheInsertionPointWhereItWas) {
  NSString* partial = @"6x";
  NSRange selection = NSMakeRange(2, 0);
  NSString* error = nil;
  EXPECT_FALSE([[oneView formatter] isPartialStringValid:&partial
                                   proposedSelectedRange:&selection
                                          originalString:@"7"
                                   originalSelectedRange:NSMakeRange(1, 0)
                                        errorDescription:&error]);
  EXPECT_TRUE([partial isEqual:@"7"]);
  EXPECT_EQ(selection.location, 1U);
  partial = @"61";
  selection = NSMakeRange(2, 0);
  EXPECT_FALSE([[oneView formatter] isPartialStringValid:&partial
                                   proposedSelectedRange:&selection
                                          originalString:@"6"
                                   originalSelectedRange:NSMakeRange(0, 1)
                                        errorDescription:&error]);
  partial = @"12";
  EXPECT_TRUE([[oneView formatter] isPartialStringValid:&partial
                                  proposedSelectedRange:&selection
                                         originalString:@"1"
                                  originalSelectedRange:NSMakeRange(1, 0)
                                       errorDescription:&error]);
  EXPECT_EQ(one.stringValue(), "12");
}

}  // namespace
}  // namespace corvane::test
