#include <gtest/gtest.h>

#include "controls/Control.h"

namespace corvane {
namespace {

TEST(Control, TellsTheShellOfEachRealChangeOnce) {
  Control control;
  int changes = 0;
  control.onChange = [&] { ++changes; };

  control.setEnabled(true);  // as it was
  control.setHidden(false);
  control.setFrame({});
  control.setToolTip("");
  control.setAccessibleName("");
  EXPECT_EQ(changes, 0);

  control.setEnabled(false);
  EXPECT_EQ(changes, 1);
  control.setHidden(true);
  EXPECT_EQ(changes, 2);
  control.setFrame({1, 2, 3, 4});
  EXPECT_EQ(changes, 3);
  control.setToolTip("tip");
  EXPECT_EQ(changes, 4);
  control.setAccessibleName("name");
  EXPECT_EQ(changes, 5);

  EXPECT_FALSE(control.enabled());
  EXPECT_TRUE(control.hidden());
  EXPECT_EQ(control.frame(), (Rect{1, 2, 3, 4}));
  EXPECT_EQ(control.toolTip(), "tip");
  EXPECT_EQ(control.accessibleName(), "name");
}

}  // namespace
}  // namespace corvane
