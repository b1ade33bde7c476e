// The life of the pane, its frame, and its first two tabs.
#import "OpenedUrls.h"
#import "PaneFixture.h"
#import "Text.h"
#import "widgets/LockButton.h"

namespace corvane::test {
namespace {

class AppKitPane : public AppKitPaneTest {};

TEST_F(AppKitPane, TheBundleIsLaidOutLikeOneOfAMac) {
  NSBundle* bundle = [NSBundle bundleWithPath:appkit::toNSString(CORVANE_PANE_BUNDLE)];
  NSDictionary* info = [NSDictionary
      dictionaryWithContentsOfFile:appkit::toNSString(CORVANE_PANE_BUNDLE "/Contents/Info.plist")];
  EXPECT_TRUE([[info objectForKey:@"CFBundleName"] isEqual:@"Monitoring Client"]);
  EXPECT_TRUE([[info objectForKey:@"NSPrincipalClass"] isEqual:@"CorvanePrefPane"]);
  appkit::AppKitBundle resources(bundle);
  EXPECT_EQ(resources.name(), "Monitoring Client");
  const auto exists = [](const std::string& path) { return std::filesystem::exists(path); };
  EXPECT_TRUE(exists(resources.pathForResource("Corvane", "icns")));
  EXPECT_TRUE(exists(resources.pathForResource("qlhelper", "")));
  EXPECT_TRUE(exists(resources.pathForAuxiliaryExecutable("qlhelper")));
  EXPECT_EQ(resources.pathForResource("qlhelper", ""), resources.pathForAuxiliaryExecutable("qlhelper"))
      << "root knows the helper by one path";
  EXPECT_EQ(resources.pathForAuxiliaryExecutable("missing"), "");
  EXPECT_EQ(resources.pathForResource("missing", "icns"), "");
}

TEST_F(AppKitPane, TheMainViewIsMadeOnceAndAsWideAsAPreferencePane) {
  open();
  NSView* main = [host().prefPane() mainView];
  EXPECT_EQ([main frame].size.width, 668);
  EXPECT_EQ([host().prefPane() loadMainView], main);
}

TEST_F(AppKitPane, TheHeaderIsTheClients) {
  open();
  EXPECT_EQ(textOf(view(paneView().urlButton)), paneView().urlButton.title());
  EXPECT_EQ(paneView().urlButton.title(), "support@example.com");
  // Greeting and link stand side by side around the middle of the tabs.
  const NSRect greeting = [view(paneView().greetingButton) frame];
  const NSRect link = [view(paneView().urlButton) frame];
  EXPECT_EQ(NSMinX(link), NSMaxX(greeting) + 2);
  EXPECT_NEAR((NSMinX(greeting) + NSMaxX(link)) / 2, 668 / 2.0, 1.5);
  picture(window(), "configuration locked");
}

TEST_F(AppKitPane, TheLinkAndWithAKeyHeldTheIconOpenTheirAddresses) {
  openedUrls().clear();
  open();
  press(paneView().urlButton);
  press(paneView().quorlenIconButton);
  EXPECT_EQ(openedUrls(), std::vector<std::string>{"mailto:support@example.com"});
  press(paneView().quorlenIconButton, NSControlKeyMask);
  press(paneView().quorlenIconButton, NSAlternateKeyMask);
  const std::string computer = "https://demo.www.example.com/computers/48213";
  EXPECT_EQ(openedUrls(), (std::vector<std::string>{"mailto:support@example.com", computer, computer}));
}

TEST_F(AppKitPane, OnlyWebAndMailAddressesAreOpened) {
  openedUrls().clear();
  appkit::AppKitWorkspace workspace;
  for (const char* address : {"file:///etc/passwd", "x-run:me", "http://", "not an address", ""})
    EXPECT_FALSE(workspace.openUrl(address)) << address;
  EXPECT_TRUE(openedUrls().empty());
  EXPECT_TRUE(workspace.openUrl("HTTP://www.example.com/a"));
  EXPECT_EQ(openedUrls().size(), 1U);
}

TEST_F(AppKitPane, NoControlReachesBeyondThePageThatItStandsOn) {
  open();
  std::function<void(NSView*)> check = [&](NSView* outer) {
    for (NSView* inner in [outer subviews]) {
      if ([inner isKindOfClass:[NSControl class]] && ![outer isKindOfClass:[NSClipView class]]) {
        EXPECT_TRUE(NSContainsRect(NSInsetRect([outer bounds], -1, -1), [inner frame]))
            << textOf(inner) << " in " << [NSStringFromRect([inner frame]) UTF8String] << " of "
            << [NSStringFromRect([outer bounds]) UTF8String];
      }
      check(inner);
    }
  };
  for (const Control* control : std::initializer_list<const Control*>{
           &configuration().uninstallButton, &options().automountCheckbox, &plugins().pluginsLabel}) {
    check([view(*control) superview]);
  }
  check([host().prefPane() mainView]);
}

TEST_F(AppKitPane, TheLockOpensAndCloses) {
  open();
  auto* lock = view<CorvaneLockButton>(paneView().authView);
  EXPECT_FALSE([lock isOpen]);
  EXPECT_FALSE([view<NSButton>(configuration().runClientButton) isEnabled]);
  openTheLock();
  EXPECT_TRUE([lock isOpen]);
  EXPECT_TRUE([view<NSButton>(configuration().runClientButton) isEnabled]);
  picture(window(), "configuration");
  press(paneView().authView);
  EXPECT_FALSE([lock isOpen]);
}

class AppKitPaneWithLongRuns : public AppKitPaneTest {
 protected:
  AppKitPaneWithLongRuns() : AppKitPaneTest("1.5") {}
};

TEST_F(AppKitPaneWithLongRuns, ARunDisablesItsButtonUntilItHasEnded) {
  open();
  openTheLock();
  auto* run = view<NSButton>(configuration().runClientButton);
  const std::string before = textOf(view(configuration().lastRunClientField));
  press(configuration().runClientButton);
  EXPECT_FALSE([run isEnabled]);
  EXPECT_TRUE(eventually([&] { return [run isEnabled] == YES; }))
      << "the watcher has not told the end of the run";
  EXPECT_TRUE(eventually([&] { return textOf(view(configuration().lastRunClientField)) != before; }))
      << "the directory stream has not told that the file has changed";
}

TEST_F(AppKitPane, WhatIsTypedIsStoredWhenTheFieldIsLeft) {
  open();
  openTheLock();
  fill(configuration().runIntervalTextField, "9");
  EXPECT_EQ(typedText(window()), textOf(view(configuration().runIntervalTextField))) << "9 is not refused";
  fill(configuration().runIntervalTextField, "5");
  test::press(window(), kReturn);
  EXPECT_EQ(stored(demo.paths.clientSettings, "Run_Interval"), PropertyList::integer(5));
  fill(configuration().clientGroupTextField, "Nachtschicht ä");
  press(configuration().lastRunClientField);
  test::press(window(), kTab);
  EXPECT_EQ(stored(demo.paths.clientSettings, "ClientGroup"), PropertyList::string("Nachtschicht ä"));
}

TEST_F(AppKitPane, TheRemovalIsAskedAboutWithItsAccessory) {
  open();
  openTheLock();
  EXPECT_TRUE(answering([&] { press(configuration().uninstallButton); },
                        [&](NSWindow* sheet) {
                          const std::string texts = textsIn([sheet contentView]);
                          EXPECT_NE(texts.find("Please confirm removal."), std::string::npos) << texts;
                          EXPECT_NE(texts.find("Allow client to report removal."), std::string::npos)
                              << texts;
                          picture(sheet, "uninstall");
                          test::press(sheet, kReturn);
                        }));
  waitForSheets();
  EXPECT_TRUE(std::filesystem::exists(demo.paths.runClient)) << "Return has not cancelled";
}

TEST_F(AppKitPane, TheBoxOfTheVolumeLiesOverTheTableRightOfItsNames) {
  open();
  openTheLock();
  clickTab(1);
  ASSERT_EQ(shownTab(), 1);
  picture(window(), "options");
  auto* table = view<NSTableView>(options().volumesTable);
  const NSRect box = [view(options().volumeOptionsBox) frame];
  const NSRect around = [view(options().volumesScrollView) frame];
  EXPECT_EQ(NSMinX(box), NSMinX(around) + [[[table tableColumns] objectAtIndex:0] width] + 4);
  EXPECT_LE(NSMaxY(box), NSMaxY(around) - options().volumesTable.headerHeight());
  EXPECT_TRUE(NSContainsRect(around, box));
}

TEST_F(AppKitPane, AThresholdIsStoredWithEachKey) {
  open();
  openTheLock();
  clickTab(1);
  auto* table = view<NSTableView>(options().volumesTable);
  const auto rowOf = [&](const std::string& name) {
    for (int row = 0; row < options().volumesTable.numberOfRows(); ++row) {
      id value = [static_cast<id>([table dataSource]) tableView:table
                                      objectValueForTableColumn:[[table tableColumns] objectAtIndex:0]
                                                            row:row];
      if (appkit::fromNSString([value string]) == name) return row;
    }
    return -1;
  };
  const int row = rowOf("Backup");
  ASSERT_GE(row, 0);
  [table scrollRowToVisible:row];
  click(table, NSMakePoint(20, NSMidY([table rectOfRow:row])));
  EXPECT_EQ(options().volumesTable.selectedRow(), row);
  fill(options().monitorUsageThresholdTextField, "7");
  const auto threshold = [&] {
    const Array volumes = DemoClient::plist(demo.paths.volumesSettings).asArray();
    for (std::size_t i = 0; i < volumes.size(); ++i) {
      const Dictionary volume = volumes.at(i).asDictionary();
      if (volume.value("VolumeName") == PropertyList::string("Backup")) return volume.value("UsageThreshold");
    }
    return PropertyList();
  };
  EXPECT_EQ(threshold(), PropertyList::integer(7));
  type(window(), "77");
  EXPECT_EQ(typedText(window()), "77");
  EXPECT_EQ(threshold(), PropertyList::integer(77));
  picture(window(), "options changed");
}

TEST_F(AppKitPane, TheOptionsOfTimeMachineAreASheet) {
  open();
  openTheLock();
  clickTab(1);
  EXPECT_TRUE(answering([&] { press(options().advancedButton); },
                        [&](NSWindow* sheet) {
                          EXPECT_EQ([view(options().manuallyTriggerTextField) window], sheet);
                          picture(sheet, "time machine sheet");
                          fill(options().manuallyTriggerTextField, "12");
                          press(options().timeMachineRemovalWarning);
                          press(options().sheetOkButton);
                        }));
  waitForSheets();
  EXPECT_EQ(stored(demo.paths.timeMachineSettings, "Days_Until_Manual_Run"), PropertyList::integer(12));
  EXPECT_TRUE(answering([&] { press(options().advancedButton); },
                        [&](NSWindow*) {
                          fill(options().manuallyTriggerTextField, "9");
                          press(options().sheetCancelButton);
                        }));
  waitForSheets();
  EXPECT_EQ(stored(demo.paths.timeMachineSettings, "Days_Until_Manual_Run"), PropertyList::integer(12));
}

TEST_F(AppKitPane, TheGuardAsksBeforeThePluginsAreOpenedFirst) {
  open();
  EXPECT_TRUE(answering([&] { clickTab(2); }, "Cancel"));
  waitForSheets();
  EXPECT_EQ(shownTab(), 0);
  EXPECT_TRUE(answering([&] { clickTab(2); },
                        [&](NSWindow* sheet) {
                          picture(sheet, "caution");
                          [buttonTitled([sheet contentView], "Continue") performClick:nil];
                        }));
  waitForSheets();
  EXPECT_EQ(shownTab(), 2);
  picture(window(), "plugins");
  clickTab(0);
  clickTab(2);
  EXPECT_EQ(shownTab(), 2) << "it asks once";
}

TEST_F(AppKitPane, TheHostMayNotLeaveWhileASheetIsOpen) {
  open();
  EXPECT_EQ([host().prefPane() shouldUnselect], NSUnselectNow);
  EXPECT_TRUE(answering([&] { clickTab(2); },
                        [&](NSWindow* sheet) {
                          EXPECT_EQ([host().prefPane() shouldUnselect], NSUnselectCancel);
                          [buttonTitled([sheet contentView], "Cancel") performClick:nil];
                        }));
  waitForSheets();
}

TEST_F(AppKitPane, LeavingThePaneStoresWhatIsBeingTyped) {
  open();
  openTheLock();
  fill(configuration().runIntervalTextField, "3");
  closePane();
  EXPECT_EQ(stored(demo.paths.clientSettings, "Run_Interval"), PropertyList::integer(3));
}

TEST_F(AppKitPane, TheClientsRemovalIsTold) {
  open();
  openTheLock();
  EXPECT_TRUE(answering([&] { std::filesystem::remove_all(demo.root + "/Library/Corvane"); },
                        [&](NSWindow* sheet) {
                          const std::string texts = textsIn([sheet contentView]);
                          EXPECT_NE(texts.find("Monitoring Client Removed\n"), std::string::npos) << texts;
                          picture(sheet, "removed");
                          [buttonTitled([sheet contentView], "OK") performClick:nil];
                        }));
  waitForSheets();
  EXPECT_FALSE([view<CorvaneLockButton>(paneView().authView) isOpen]);
}

TEST_F(AppKitPane, AMissingClientIsToldBeforeThePaneIsShown) {
  std::filesystem::remove_all(demo.root + "/Library/Corvane");
  EXPECT_TRUE(answering([&] { open(); },
                        [](NSWindow* panel) {
                          const std::string texts = textsIn([panel contentView]);
                          EXPECT_NE(texts.find("Monitoring Client Error\n"), std::string::npos) << texts;
                          [buttonTitled([panel contentView], "OK") performClick:nil];
                        }));
}

}  // namespace
}  // namespace corvane::test
