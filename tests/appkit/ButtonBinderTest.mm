#import "WindowFixture.h"

namespace corvane::test {
namespace {

class AppKitButton : public AppKitWindowTest {
 protected:
  Button push{ButtonKind::Push, "Go"};
  Button box{ButtonKind::CheckBox, "On"};
  Button link{ButtonKind::Label, "help.example.com"};
  NSButton* pushView = page.pushButton(push, NSMakePoint(20, 20));
  NSButton* boxView = page.checkBox(box, NSMakeRect(20, 60, 200, 20));
  NSButton* linkView = page.labelButton(link, NSMakeRect(20, 100, 200, 20));
};

TEST_F(AppKitButton, AClickIsOneActOfTheControl) {
  int acts = 0;
  push.action = link.action = [&](Button&) { ++acts; };
  click(pushView);
  EXPECT_EQ(acts, 1);
  click(linkView);
  EXPECT_EQ(acts, 2);
}

TEST_F(AppKitButton, ADisabledControlTakesNoClick) {
  int acts = 0;
  push.action = [&](Button&) { ++acts; };
  push.setEnabled(false);
  EXPECT_FALSE([pushView isEnabled]);
  click(pushView);
  EXPECT_EQ(acts, 0);
}

TEST_F(AppKitButton, AHiddenControlHidesItsView) {
  push.setHidden(true);
  EXPECT_TRUE([pushView isHidden]);
  push.setHidden(false);
  EXPECT_FALSE([pushView isHidden]);
}

TEST_F(AppKitButton, TitleAndTipAreTheControls) {
  EXPECT_EQ(textOf(pushView), "Go");
  push.setTitle("Stop & go");
  push.setToolTip("At once");
  EXPECT_EQ(textOf(pushView), "Stop & go");
  EXPECT_TRUE([[pushView toolTip] isEqual:@"At once"]);
}

TEST_F(AppKitButton, AClickSwitchesACheckBoxAndABindingHearsOfItOnce) {
  int edits = 0;
  box.onUserEdit = [&] { ++edits; };
  click(boxView);
  EXPECT_EQ(box.state(), ButtonState::On);
  EXPECT_EQ([boxView state], appkit::kOn);
  EXPECT_EQ(edits, 1);
}

TEST_F(AppKitButton, TheMixedStateIsShownAndNoClickLeadsBackToIt) {
  box.setState(ButtonState::Mixed);
  EXPECT_EQ([boxView state], appkit::kMixed);
  click(boxView);
  EXPECT_EQ(box.state(), ButtonState::On);
  EXPECT_EQ([boxView state], appkit::kOn);
  click(boxView);
  EXPECT_EQ([boxView state], appkit::kOff);
}

TEST_F(AppKitButton, TheControlsStateCountsWhateverTheToolkitHasMadeOfTheClick) {
  box.action = [](Button& sender) { sender.setState(ButtonState::Off); };
  click(boxView);
  EXPECT_EQ(box.state(), ButtonState::Off);
  EXPECT_EQ([boxView state], appkit::kOff);
}

TEST_F(AppKitButton, AStyledTitleKeepsItsStyle) {
  link.setAttributedTitle(
      AttributedText("support", {Font{Font::Family::Arial, 14}, TextColor::Blue, {}, true}));
  NSDictionary* style = [[linkView attributedTitle] attributesAtIndex:0 effectiveRange:nullptr];
  EXPECT_EQ([[style objectForKey:NSFontAttributeName] pointSize], 14);
  EXPECT_TRUE([[style objectForKey:NSForegroundColorAttributeName] isEqual:appkit::linkTextColor()]);
  EXPECT_EQ([[style objectForKey:NSUnderlineStyleAttributeName] intValue], NSUnderlineStyleSingle);
}

TEST_F(AppKitButton, ALabelWithAnActionLooksDisabledWithItsControlAndOneWithoutNever) {
  const auto color = [&] {
    return [[linkView attributedTitle] attribute:NSForegroundColorAttributeName
                                         atIndex:0
                                  effectiveRange:nullptr];
  };
  link.setEnabled(false);
  EXPECT_TRUE([color() isEqual:[NSColor controlTextColor]]);
  link.setEnabled(true);
  link.action = [](Button&) {};
  link.setEnabled(false);
  EXPECT_TRUE([color() isEqual:[NSColor disabledControlTextColor]]);
}

TEST_F(AppKitButton, OfTheLabelsOnlyALinkAndAPictureThatDoSomethingHaveTheKeyboard) {
  const AttributedText underlined("support", {{}, TextColor::Blue, {}, true});
  const auto takes = [&](const AttributedText& title) {
    link.setAttributedTitle(title);
    return [linkView acceptsFirstResponder] == YES;
  };
  EXPECT_FALSE(takes(underlined)) << "without an action";
  int acts = 0;
  link.action = [&](Button&) { ++acts; };
  EXPECT_FALSE(takes(AttributedText("percent full"))) << "the words beside a box";
  click(linkView);
  EXPECT_EQ(acts, 1) << "the mouse presses the words";
  EXPECT_TRUE(takes(underlined));
  EXPECT_TRUE(takes({})) << "a picture has no text";
}

TEST_F(AppKitButton, TheKeyboardPressesIt) {
  int acts = 0;
  push.action = [&](Button&) { ++acts; };
  ASSERT_TRUE([window makeFirstResponder:pushView]);
  press(window, " ");
  EXPECT_EQ(acts, 1);
}

TEST_F(AppKitButton, AControlThatIsDisabledGivesTheKeyboardAway) {
  ASSERT_TRUE([window makeFirstResponder:pushView]);
  push.setEnabled(false);
  EXPECT_NE([window firstResponder], pushView);
}

}  // namespace
}  // namespace corvane::test
