#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "controls/Button.h"

namespace corvane {
namespace {

TEST(Button, AClickOnACheckBoxChangesTheStateThenTellsTheBindingThenTheAction) {
  Button button(ButtonKind::CheckBox, "Check");
  std::vector<std::string> calls;
  const auto note = [&](const std::string& what) {
    calls.push_back(what + (button.state() == ButtonState::On ? " on" : " off"));
  };
  button.onChange = [&] { note("change"); };
  button.onUserEdit = [&] { note("edit"); };
  button.action = [&](Button& sender) {
    EXPECT_EQ(&sender, &button);
    note("action");
  };
  button.click();
  EXPECT_EQ(calls, (std::vector<std::string>{"change on", "edit on", "action on"}));
  calls.clear();
  button.click();
  EXPECT_EQ(calls, (std::vector<std::string>{"change off", "edit off", "action off"}));
}

TEST(Button, OfTheLabelsOnlyALinkAndAPictureThatDoSomethingTakeTheKeyboard) {
  TextAttributes underlined;
  underlined.underlined = true;
  Button link(ButtonKind::Label), words(ButtonKind::Label, "percent full"), picture(ButtonKind::Label);
  link.setAttributedTitle(AttributedText("support", underlined));
  for (const Button* label : {&link, &words, &picture})
    EXPECT_FALSE(label->takesKeyboard()) << label->title();
  for (Button* label : {&link, &words, &picture}) label->action = [](Button&) {};
  EXPECT_TRUE(link.takesKeyboard());
  EXPECT_FALSE(words.takesKeyboard());
  EXPECT_TRUE(picture.takesKeyboard());
  for (const ButtonKind kind : {ButtonKind::Push, ButtonKind::CheckBox})
    EXPECT_TRUE(Button(kind, "Run").takesKeyboard());
}

TEST(Button, AClickTurnsAMixedCheckBoxOn) {
  Button button(ButtonKind::CheckBox);
  button.setState(ButtonState::Mixed);
  button.click();
  EXPECT_EQ(button.state(), ButtonState::On);
}

TEST(Button, AClickOnAnotherKindOnlyCallsTheAction) {
  for (const ButtonKind kind : {ButtonKind::Push, ButtonKind::Label}) {
    Button button(kind, "Run");
    int actions = 0;
    int edits = 0;
    button.action = [&](Button&) { ++actions; };
    button.onUserEdit = [&] { ++edits; };
    button.click();
    EXPECT_EQ(actions, 1);
    EXPECT_EQ(edits, 0);
    EXPECT_EQ(button.state(), ButtonState::Off);
  }
}

TEST(Button, ADisabledOrHiddenButtonTakesNoClick) {
  Button button(ButtonKind::CheckBox);
  int calls = 0;
  button.action = [&](Button&) { ++calls; };
  button.onUserEdit = [&] { ++calls; };
  button.setEnabled(false);
  button.click();
  button.setEnabled(true);
  button.setHidden(true);
  button.click();
  EXPECT_EQ(calls, 0);
  EXPECT_EQ(button.state(), ButtonState::Off);
}

TEST(Button, AnIntegerStateIsOffForZeroMixedForMinusOneAndElseOn) {
  const struct {
    int state;
    ButtonState expected;
  } cases[] = {{0, ButtonState::Off},
               {1, ButtonState::On},
               {7, ButtonState::On},
               {-1, ButtonState::Mixed},
               {-2, ButtonState::On}};
  for (const auto& set : cases) {
    Button button(ButtonKind::CheckBox);
    button.setIntState(set.state);
    EXPECT_EQ(button.state(), set.expected) << set.state;
  }
}

TEST(Button, AClickThatComesWhileOneIsBeingCarriedOutDoesNothing) {
  Button button(ButtonKind::CheckBox);
  int actions = 0;
  button.action = [&](Button& sender) {
    ++actions;
    sender.click();  // as from an event loop in which the action waits
  };
  button.click();
  EXPECT_EQ(actions, 1);
  EXPECT_EQ(button.state(), ButtonState::On);
  button.click();
  EXPECT_EQ(actions, 2);
}

TEST(Button, APlainTitleReplacesAStyledOne) {
  Button button(ButtonKind::Label, "old");
  int changes = 0;
  button.onChange = [&] { ++changes; };
  TextAttributes attributes;
  attributes.underlined = true;
  button.setAttributedTitle(AttributedText("link", attributes));
  EXPECT_EQ(button.title(), "link");
  EXPECT_EQ(button.attributedTitle().runs.size(), 1U);
  button.setTitle("link");
  EXPECT_TRUE(button.attributedTitle().runs.empty());
  button.setTitle("link");
  EXPECT_EQ(changes, 2);
}

}  // namespace
}  // namespace corvane
