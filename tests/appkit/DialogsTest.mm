// Alerts and open panels, as sheets of a window and by themselves.
#include <fstream>

#import "Text.h"
#import "WindowFixture.h"
#import "services/AppKitDialogs.h"
#include "support/TemporaryFolder.h"

namespace corvane::test {
namespace {

class AppKitDialogsTest : public AppKitWindowTest {
 protected:
  static AlertDescription telling(const char* message) {
    AlertDescription alert;
    alert.messageText = message;
    alert.informativeText = "Something is to be known.";
    alert.buttons = {{"OK", std::nullopt}};
    return alert;
  }
  static AlertDescription asking() {
    AlertDescription alert = telling("Please confirm removal.");
    alert.style = AlertStyle::Critical;
    alert.buttons = {{"Remove", ""}, {"Cancel", kReturnKey, true}};
    return alert;
  }
  void begin(const AlertDescription& alert, const std::string& name) {
    dialogs.beginSheet(alert, SheetWindow::PaneWindow, [this, name](const AlertResult& result) {
      ended.push_back(name + " " + std::to_string(result.returnCode) + (result.accessoryOn ? " on" : ""));
    });
  }
  void waitForAll() {
    EXPECT_TRUE(eventually([this] { return queue.isEmpty(); }));
  }

  bool isShown = true;
  appkit::SheetStage queue{[this] { return isShown ? window : nil; }};
  appkit::AppKitDialogs dialogs{queue};
  std::vector<std::string> ended;
};

using Ended = std::vector<std::string>;

TEST_F(AppKitDialogsTest, AnAlertShowsItsTextsAndAnswersWithTheCodeOfItsButton) {
  EXPECT_TRUE(answering([&] { begin(asking(), "asked"); },
                        [&](NSWindow* sheet) {
                          EXPECT_EQ([window attachedSheet], sheet);
                          const std::string texts = textsIn([sheet contentView]);
                          EXPECT_NE(texts.find("Please confirm removal.\n"), std::string::npos) << texts;
                          EXPECT_NE(texts.find("Something is to be known.\n"), std::string::npos) << texts;
                          picture(sheet, "alert");
                          [buttonTitled([sheet contentView], "Cancel") performClick:nil];
                        }));
  waitForAll();
  EXPECT_EQ(ended, Ended{"asked 1001"});
  EXPECT_TRUE(answering([&] { begin(asking(), "again"); }, "Remove"));
  waitForAll();
  EXPECT_EQ(ended.back(), "again 1000");
}

TEST_F(AppKitDialogsTest, NothingIsOpenedFromInsideTheCall) {
  begin(telling("First"), "first");
  EXPECT_FALSE(queue.isOpen());
  EXPECT_TRUE(answering([] {}, "OK"));
  waitForAll();
}

TEST_F(AppKitDialogsTest, ReturnPressesTheButtonThatHasItAsItsKeyAndNotTheFirstOne) {
  EXPECT_TRUE(
      answering([&] { begin(asking(), "asked"); },
                [](NSWindow* sheet) {
                  EXPECT_TRUE([[buttonTitled([sheet contentView], "Remove") keyEquivalent] isEqual:@""]);
                  EXPECT_TRUE([[buttonTitled([sheet contentView], "Cancel") keyEquivalent] isEqual:@"\r"]);
                  press(sheet, kReturn);
                }));
  waitForAll();
  EXPECT_EQ(ended, Ended{"asked 1001"});
}

TEST_F(AppKitDialogsTest, EscapePressesTheButtonThatCancelsWhateverItsOwnKeyOrTheOnlyOne) {
  AlertDescription other = asking();
  other.buttons = {{"Continue", std::nullopt}, {"Cancel", std::nullopt, true}};
  const auto escape = [](NSWindow* sheet) { press(sheet, kEscape); };
  for (const auto& [alert, name] :
       {std::pair(asking(), "asked"), std::pair(other, "other"), std::pair(telling("Told"), "told")}) {
    EXPECT_TRUE(answering([&, alert = alert, name = name] { begin(alert, name); }, Answer(escape)));
    waitForAll();
  }
  EXPECT_EQ(ended, (Ended{"asked 1001", "other 1001", "told 1000"}));
  AlertResult result;
  EXPECT_TRUE(answering([&] { result = dialogs.runModalAlert(asking()); }, Answer(escape)));
  EXPECT_EQ(result.returnCode, 1001);
}

TEST_F(AppKitDialogsTest, SheetsOpenOneAfterAnother) {
  const auto pressing = [](const char* title) {
    return Answer([title](NSWindow* sheet) { [buttonTitled([sheet contentView], title) performClick:nil]; });
  };
  EXPECT_TRUE(answering(
      [&] {
        begin(telling("First"), "first");
        begin(asking(), "second");
      },
      {pressing("OK"), pressing("Remove")}));
  waitForAll();
  EXPECT_EQ(ended, (Ended{"first 1000", "second 1000"}));
}

TEST_F(AppKitDialogsTest, ASheetWaitsForTheWindowOfThePane) {
  isShown = false;
  begin(telling("Early"), "early");
  settle();
  EXPECT_FALSE(queue.isOpen());
  isShown = true;
  EXPECT_TRUE(answering([&] { queue.resume(); }, "OK"));
  waitForAll();
  EXPECT_EQ(ended, Ended{"early 1000"});
}

TEST_F(AppKitDialogsTest, TheAccessoryIsShownAndReadAndNeverTakesTheKeyboard) {
  AlertDescription alert = asking();
  alert.accessory = AlertCheckBox{"Allow client to report removal.", 200, 40, true, true};
  for (const bool switchedOff : {false, true}) {
    EXPECT_TRUE(answering([&] { begin(alert, "asked"); },
                          [&](NSWindow* sheet) {
                            NSButton* box =
                                buttonTitled([sheet contentView], "Allow client to report removal.");
                            ASSERT_NE(box, nil) << textsIn([sheet contentView]);
                            EXPECT_EQ([box state], appkit::kOn);
                            EXPECT_FALSE([box acceptsFirstResponder]);
                            picture(sheet, "alert with accessory");
                            if (switchedOff) [box performClick:nil];
                            [buttonTitled([sheet contentView], "Remove") performClick:nil];
                          }));
    waitForAll();
  }
  EXPECT_EQ(ended, (Ended{"asked 1000 on", "asked 1000"}));
}

TEST_F(AppKitDialogsTest, EachStyleIsTheToolkits) {
  for (const AlertStyle style : {AlertStyle::Warning, AlertStyle::Informational, AlertStyle::Critical}) {
    AlertDescription alert = telling("Styled");
    alert.style = style;
    alert.iconPath = std::string(CORVANE_PANE_BUNDLE) + "/Contents/Resources/Corvane.icns";
    EXPECT_TRUE(answering([&] { begin(alert, "styled"); }, "OK"));
    waitForAll();
  }
  EXPECT_EQ(ended.size(), 3U);
}

TEST_F(AppKitDialogsTest, AModalAlertReturnsItsAnswer) {
  AlertResult result;
  EXPECT_TRUE(answering([&] { result = dialogs.runModalAlert(asking()); }, "Cancel"));
  EXPECT_EQ(result.returnCode, 1001);
}

TEST_F(AppKitDialogsTest, AnOpenPanelChoosesAsItWasTold) {
  const TemporaryFolder folder;
  std::ofstream(folder / "ntp.conf") << "text";
  OpenPanelDescription description;
  description.directory = folder.path();
  std::vector<std::string> chosen;
  EXPECT_TRUE(answering([&] { chosen = dialogs.runOpenPanel(description); },
                        [&](NSWindow* panel) {
                          auto* open = static_cast<NSOpenPanel*>(panel);
                          ASSERT_TRUE([open isKindOfClass:[NSOpenPanel class]]);
                          EXPECT_TRUE([open canChooseFiles]);
                          EXPECT_FALSE([open canChooseDirectories]);
                          EXPECT_FALSE([open allowsMultipleSelection]);
                          EXPECT_EQ(appkit::fromNSString([[open directoryURL] path]), folder.path());
                          picture(panel, "open panel");
                          [open cancel:nil];
                        }));
  EXPECT_TRUE(chosen.empty());
}

}  // namespace
}  // namespace corvane::test
