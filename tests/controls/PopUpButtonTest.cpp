#include <gtest/gtest.h>

#include "controls/PopUpButton.h"

namespace corvane {
namespace {

TEST(PopUpButton, StartsWithTheFirstItemOrWithNone) {
  EXPECT_EQ(PopUpButton({"AM", "PM"}).indexOfSelectedItem(), 0);
  EXPECT_EQ(PopUpButton({}).indexOfSelectedItem(), -1);
}

TEST(PopUpButton, AnIndexOutsideTheMenuSelectsNothing) {
  PopUpButton button({"AM", "PM"});
  for (const int index : {2, -1, -7, 100}) {
    button.selectItemAtIndex(1);
    button.selectItemAtIndex(index);
    EXPECT_EQ(button.indexOfSelectedItem(), -1) << index;
  }
}

TEST(PopUpButton, AChoiceSelectsTellsTheBindingOfANewValueAndCallsTheAction) {
  PopUpButton button({"AM", "PM"});
  int changes = 0;
  int edits = 0;
  int actions = 0;
  button.onChange = [&] { ++changes; };
  button.onUserEdit = [&] { ++edits; };
  button.action = [&](PopUpButton& sender) { actions += sender.indexOfSelectedItem() == 1 ? 1 : 0; };
  button.choose(1);
  EXPECT_EQ(button.indexOfSelectedItem(), 1);
  button.choose(1);
  EXPECT_EQ(changes, 1);
  EXPECT_EQ(edits, 1);
  EXPECT_EQ(actions, 2);
}

TEST(PopUpButton, ChoicesOutsideTheMenuOrOnADisabledButtonDoNothing) {
  PopUpButton button({"AM", "PM"});
  int actions = 0;
  button.action = [&](PopUpButton&) { ++actions; };
  button.choose(2);
  button.choose(-1);
  button.setEnabled(false);
  button.choose(1);
  EXPECT_EQ(button.indexOfSelectedItem(), 0);
  EXPECT_EQ(actions, 0);
}

}  // namespace
}  // namespace corvane
