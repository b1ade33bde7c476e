#include <memory>

#include <gtest/gtest.h>

#include "controls/Window.h"

namespace corvane {
namespace {

TEST(Window, OpensOneSheetAtATime) {
  Window window("Pane");
  Window sheet;
  Window other;
  EXPECT_TRUE(window.beginSheet(sheet));
  EXPECT_EQ(window.attachedSheet(), &sheet);
  EXPECT_TRUE(sheet.isSheet());
  EXPECT_FALSE(window.beginSheet(other));
  EXPECT_FALSE(window.beginSheet(sheet));
  EXPECT_EQ(window.attachedSheet(), &sheet);
  EXPECT_FALSE(other.isSheet());

  window.endSheet(sheet);
  EXPECT_EQ(window.attachedSheet(), nullptr);
  EXPECT_FALSE(sheet.isSheet());
  EXPECT_TRUE(window.beginSheet(other));
}

TEST(Window, ASheetCannotHangOnTwoWindowsOnItselfOrOnItsOwnSheet) {
  Window window;
  Window other;
  Window sheet;
  EXPECT_FALSE(window.beginSheet(window));
  ASSERT_TRUE(window.beginSheet(sheet));
  EXPECT_FALSE(other.beginSheet(sheet));
  EXPECT_FALSE(sheet.beginSheet(window));
  EXPECT_EQ(sheet.attachedSheet(), nullptr);
}

TEST(Window, EndingASheetThatIsNotOpenHereDoesNothing) {
  Window window;
  Window other;
  Window sheet;
  ASSERT_TRUE(window.beginSheet(sheet));
  other.endSheet(sheet);
  EXPECT_TRUE(sheet.isSheet());
  EXPECT_EQ(window.attachedSheet(), &sheet);
}

TEST(Window, BothWindowsTellTheirShellThatASheetBeganOrEnded) {
  Window window;
  Window sheet;
  int windowChanges = 0;
  int sheetChanges = 0;
  window.onChange = [&] { ++windowChanges; };
  sheet.onChange = [&] { ++sheetChanges; };
  ASSERT_TRUE(window.beginSheet(sheet));
  window.endSheet(sheet);
  window.endSheet(sheet);
  EXPECT_EQ(windowChanges, 2);
  EXPECT_EQ(sheetChanges, 2);
}

TEST(Window, AWindowThatGoesTakesItselfOffTheOther) {
  Window window;
  auto sheet = std::make_unique<Window>();
  ASSERT_TRUE(window.beginSheet(*sheet));
  sheet.reset();
  EXPECT_EQ(window.attachedSheet(), nullptr);

  auto host = std::make_unique<Window>();
  ASSERT_TRUE(host->beginSheet(window));
  host.reset();
  EXPECT_FALSE(window.isSheet());
}

TEST(Window, ItsTitleCanBeChanged) {
  Window window("Pane");
  window.setTitle("Other");
  EXPECT_EQ(window.title(), "Other");
}

}  // namespace
}  // namespace corvane
