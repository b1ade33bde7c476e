#include <memory>

#include <gtest/gtest.h>

#include "controls/Window.h"

namespace corvane {
namespace {

TEST(Window, OpensItsSheetsOneAfterAnotherInTheirOrder) {
  Window window("Pane");
  Window first;
  Window second;
  Window third;
  EXPECT_TRUE(window.beginSheet(first));
  EXPECT_TRUE(window.beginSheet(second));
  EXPECT_TRUE(window.beginSheet(third));
  EXPECT_FALSE(window.beginSheet(first)) << "it is open";
  EXPECT_FALSE(window.beginSheet(second)) << "it waits";
  EXPECT_EQ(window.attachedSheet(), &first);
  EXPECT_TRUE(first.isSheet());
  EXPECT_FALSE(second.isSheet());

  window.endSheet(first);
  EXPECT_EQ(window.attachedSheet(), &second);
  EXPECT_FALSE(first.isSheet());
  EXPECT_TRUE(second.isSheet());
  window.endSheet(second);
  EXPECT_EQ(window.attachedSheet(), &third);
  window.endSheet(third);
  EXPECT_EQ(window.attachedSheet(), nullptr);
  EXPECT_TRUE(window.beginSheet(first)) << "as often as wanted";
}

TEST(Window, ASheetThatEndsWhileItWaitsNeverOpens) {
  Window window;
  Window first;
  Window second;
  int secondChanges = 0;
  second.onChange = [&] { ++secondChanges; };
  ASSERT_TRUE(window.beginSheet(first));
  ASSERT_TRUE(window.beginSheet(second));
  window.endSheet(second);
  window.endSheet(first);
  EXPECT_EQ(window.attachedSheet(), nullptr);
  EXPECT_EQ(secondChanges, 0);
}

TEST(Window, WhatHearsOfAnEndMayBeginAnotherSheetWhichComesAfterThoseThatWait) {
  Window window;
  Window first;
  Window second;
  Window third;
  ASSERT_TRUE(window.beginSheet(first));
  ASSERT_TRUE(window.beginSheet(second));
  first.onChange = [&] {
    if (first.isSheet()) return;
    EXPECT_TRUE(window.beginSheet(third));
  };
  window.endSheet(first);
  EXPECT_EQ(window.attachedSheet(), &second);
  window.endSheet(second);
  EXPECT_EQ(window.attachedSheet(), &third);
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

  auto waiting = std::make_unique<Window>();
  Window open;
  Window last;
  ASSERT_TRUE(window.beginSheet(open));
  ASSERT_TRUE(window.beginSheet(*waiting));
  ASSERT_TRUE(window.beginSheet(last));
  waiting.reset();
  window.endSheet(open);
  EXPECT_EQ(window.attachedSheet(), &last);
}

TEST(Window, ItsTitleCanBeChanged) {
  Window window("Pane");
  window.setTitle("Other");
  EXPECT_EQ(window.title(), "Other");
}

}  // namespace
}  // namespace corvane
