#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "pane/SheetQueue.h"
#include "support/TestPlatform.h"

namespace corvane::test {
namespace {

using ::testing::ElementsAre;

class SheetQueueTest : public ::testing::Test {
 protected:
  static AlertDescription alert(const char* message, std::vector<AlertButton> buttons = {{"OK", {}}}) {
    AlertDescription description;
    description.messageText = message;
    description.buttons = std::move(buttons);
    return description;
  }
  void begin(const AlertDescription& description) {
    queue_->beginSheet(description, SheetWindow::PaneWindow, [this, description](const AlertResult& result) {
      ends_.push_back(description.messageText + " " + std::to_string(result.returnCode));
    });
  }
  /// The messages of the sheets that the platform was asked for.
  std::vector<std::string> shown() const {
    std::vector<std::string> messages;
    for (const auto& sheet : platform_.sheets) messages.push_back(sheet.alert.messageText);
    return messages;
  }

  ScriptedDialogs platform_;
  Window window_;
  std::unique_ptr<SheetQueue> queue_ = std::make_unique<SheetQueue>(platform_, window_);
  std::vector<std::string> ends_;
};

TEST_F(SheetQueueTest, ThePlatformIsAskedForOneSheetAtATimeInTheirOrder) {
  begin(alert("one"));
  begin(alert("two"));
  begin(alert("three"));
  EXPECT_THAT(shown(), ElementsAre("one"));
  platform_.endSheet(1000);
  EXPECT_THAT(shown(), ElementsAre("one", "two"));
  platform_.endSheet(1001);
  platform_.endSheet(1000);
  EXPECT_THAT(shown(), ElementsAre("one", "two", "three"));
  EXPECT_THAT(ends_, ElementsAre("one 1000", "two 1001", "three 1000"));
  EXPECT_EQ(window_.attachedSheet(), nullptr);
}

TEST_F(SheetQueueTest, WhatToShowAndItsEndAreHandedOnAsTheyAre) {
  AlertDescription description = alert("one", {{"Uninstall", ""}, {"Cancel", kReturnKey}});
  description.accessory = AlertCheckBox{"Report", 200, 40, true, true};
  AlertResult ended;
  queue_->beginSheet(description, SheetWindow::ApplicationMainWindow,
                     [&](const AlertResult& result) { ended = result; });
  EXPECT_EQ(platform_.sheets[0].alert, description);
  EXPECT_EQ(platform_.sheets[0].window, SheetWindow::ApplicationMainWindow);
  platform_.endSheet(1001, true);
  EXPECT_EQ(ended.returnCode, 1001);
  EXPECT_TRUE(ended.accessoryOn);
}

TEST_F(SheetQueueTest, AlertsAndSheetsWithControlsWaitForEachOther) {
  Window advanced;
  ASSERT_TRUE(window_.beginSheet(advanced));
  begin(alert("one"));
  EXPECT_THAT(shown(), ElementsAre());
  window_.endSheet(advanced);
  EXPECT_THAT(shown(), ElementsAre("one"));
  ASSERT_TRUE(window_.beginSheet(advanced));
  EXPECT_FALSE(advanced.isSheet());
  platform_.endSheet(1000);
  EXPECT_TRUE(advanced.isSheet());
}

TEST_F(SheetQueueTest, WhatIsAlreadySaidOrAboutToBeIsNotSaidTwice) {
  begin(alert("one"));
  begin(alert("two"));
  begin(alert("one"));
  begin(alert("two"));
  platform_.endSheet(1000);
  EXPECT_THAT(ends_, ElementsAre("one 1000", "one 1000")) << "one end is the end of both";
  platform_.endSheet(1000);
  EXPECT_THAT(shown(), ElementsAre("one", "two"));
  EXPECT_EQ(ends_.size(), 4U);
  begin(alert("two"));
  EXPECT_THAT(shown(), ElementsAre("one", "two", "two")) << "what was read and closed is said again";
}

TEST_F(SheetQueueTest, AlertsThatDifferOrLeaveSomethingToDecideAreAllShown) {
  AlertDescription otherText = alert("one");
  otherText.informativeText = "Something else";
  AlertDescription fillIn = alert("one");
  fillIn.accessory = AlertCheckBox{"Report", 200, 40, true, true};
  const AlertDescription choice = alert("one", {{"OK", {}}, {"Cancel", {}}});
  const std::vector<AlertDescription> all = {alert("one"), otherText, fillIn, fillIn, choice, choice};
  for (const AlertDescription& description : all) begin(description);
  for (std::size_t answered = 1; answered <= all.size(); ++answered) {
    ASSERT_EQ(platform_.sheets.size(), answered);
    platform_.endSheet(1000);
    EXPECT_EQ(ends_.size(), answered);
  }
}

TEST_F(SheetQueueTest, AnEndHandlerMayBeginTheSameAlertAgainWhichComesAfterThoseThatWait) {
  queue_->beginSheet(alert("one"), SheetWindow::PaneWindow,
                     [this](const AlertResult&) { begin(alert("one")); });
  begin(alert("two"));
  platform_.endSheet(1000);
  platform_.endSheet(1000);
  EXPECT_THAT(shown(), ElementsAre("one", "two", "one"));
}

TEST_F(SheetQueueTest, APlatformMayEndASheetBeforeItsBeginningReturns) {
  class AtOnce final : public Dialogs {
   public:
    void beginSheet(const AlertDescription& alert, SheetWindow,
                    std::function<void(const AlertResult&)> ended) override {
      shown.push_back(alert.messageText);
      ended({kAlertFirstButtonReturn, false});
    }
    AlertResult runModalAlert(const AlertDescription&) override { return {}; }
    std::vector<std::string> runOpenPanel(const OpenPanelDescription&) override { return {}; }
    std::vector<std::string> shown;
  } platform;
  Window window;
  SheetQueue queue(platform, window);
  Window advanced;
  ASSERT_TRUE(window.beginSheet(advanced));
  for (const char* message : {"one", "two"}) {
    queue.beginSheet(alert(message), SheetWindow::PaneWindow, [&, message](const AlertResult&) {
      platform.shown.push_back(std::string("end of ") + message);
    });
  }
  window.endSheet(advanced);
  EXPECT_THAT(platform.shown, ElementsAre("one", "end of one", "two", "end of two"));
  EXPECT_EQ(window.attachedSheet(), nullptr);
}

TEST_F(SheetQueueTest, AfterItsEndNothingIsShownAndNobodyIsTold) {
  begin(alert("one"));
  begin(alert("two"));
  queue_.reset();
  EXPECT_EQ(window_.attachedSheet(), nullptr);
  platform_.endSheet(1000);
  EXPECT_THAT(shown(), ElementsAre("one"));
  EXPECT_TRUE(ends_.empty());
}

TEST_F(SheetQueueTest, ModalAlertsAndOpenPanelsGoStraightToThePlatform) {
  begin(alert("one"));
  EXPECT_EQ(queue_->runModalAlert(alert("modal")).returnCode, kAlertFirstButtonReturn);
  EXPECT_EQ(platform_.modalAlerts.size(), 1U);
  platform_.chosenPaths = {"/chosen"};
  EXPECT_THAT(queue_->runOpenPanel({}), ElementsAre("/chosen"));
}

}  // namespace
}  // namespace corvane::test
