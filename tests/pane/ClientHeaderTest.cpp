#include <gmock/gmock.h>

#include "PaneFixture.h"
#include "pane/ClientHeader.h"

namespace corvane::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ClientHeaderTest : public PaneFixture {
 protected:
  void showSettings(std::initializer_list<Dictionary::Entry> entries) {
    writeSettings(Dictionary::make(entries));
    if (!pane_) load();
    pane_->refreshClientSettings();
  }
  void showBackup(std::initializer_list<Dictionary::Entry> entries) {
    platform_.remove(platform_.paths.clientSettings);
    platform_.writePlist(platform_.paths.clientSettingsBackup, Dictionary::make(entries));
    load();
  }
  static PropertyList text(const char* value) { return PropertyList::string(value); }

  Button& greeting_ = view_.greetingButton;
  Button& link_ = view_.urlButton;
  Button& version_ = view_.clientVersionButton;
  const std::string builtInGreeting_ = greeting_.title();
};

TEST_F(ClientHeaderTest, ShowsGreetingLinkAndVersionInTheirStyles) {
  showSettings({{"Branding_PrefPane_Greeting", text("Need help?")},
                {"Support_Address", text("mailto:help@example.com")},
                {"Client_Version", text("5.1")}});
  TextAttributes plain;
  plain.font = Font{Font::Family::Arial, 14};
  plain.alignment = TextAlignment::Left;
  TextAttributes link = plain;
  link.color = TextColor::Blue;
  link.underlined = true;
  EXPECT_EQ(greeting_.attributedTitle(), AttributedText("Need help?", plain));
  EXPECT_EQ(link_.attributedTitle(), AttributedText("help@example.com", link));
  EXPECT_EQ(version_.title(), "Version 5.1");
  EXPECT_FALSE(greeting_.hidden());
  EXPECT_FALSE(link_.hidden());
}

TEST_F(ClientHeaderTest, WithoutAGreetingTheBuiltInTextIsRestyled) {
  showSettings({{"Support_Address", text("help.example.com")}});
  EXPECT_EQ(greeting_.title(), builtInGreeting_);
  ASSERT_EQ(greeting_.attributedTitle().runs.size(), 1U);
  EXPECT_EQ(greeting_.attributedTitle().runs[0].attributes.font, (Font{Font::Family::Arial, 14}));
}

TEST_F(ClientHeaderTest, AnAbsentEmptyOrWronglyTypedSupportAddressHidesGreetingAndLink) {
  for (const PropertyList& address : {PropertyList(), text(""), PropertyList::integer(5)}) {
    showSettings({{"Support_Address", text("help.example.com")}, {"Client_Version", text("5")}});
    ASSERT_FALSE(link_.hidden());
    pane_.reset();  // a refresh would keep the key that the file has lost
    showSettings({{"Client_Version", text("5")}, {"Support_Address", address}});
    EXPECT_TRUE(link_.hidden());
    EXPECT_TRUE(greeting_.hidden());
    EXPECT_EQ(version_.title(), "Version 5");
    pane_.reset();
  }
}

TEST_F(ClientHeaderTest, AnAddressThatCannotBeOpenedIsLogged) {
  showSettings({{"Support_Address", text("http://[bad")}, {"Client_Version", text("5")}});
  platform_.workspace.opens = false;
  link_.click();
  EXPECT_THAT(platform_.workspace.openedUrls, ElementsAre("http://[bad"));
  EXPECT_THAT(platform_.log.lines, ElementsAre("Could not open the address \"http://[bad\""));
}

TEST_F(ClientHeaderTest, SettingsThatBecomeReadableAreShownAtTheNextRefresh) {
  platform_.writeText(platform_.paths.clientSettings, "no property list");
  platform_.writeText(platform_.paths.clientSettingsBackup, "no property list");
  load();
  EXPECT_EQ(version_.title(), "Error");
  writeSettings(Dictionary::make({{"Client_Version", text("5.3")}}));
  pane_->refreshClientSettings();
  EXPECT_EQ(version_.title(), "Version 5.3");
}

TEST_F(ClientHeaderTest, ABackupThatBecomesReadableIsShownAtTheNextRefresh) {
  platform_.writeText(platform_.paths.clientSettings, "no property list");
  platform_.writeText(platform_.paths.clientSettingsBackup, "no property list");
  load();
  platform_.writePlist(platform_.paths.clientSettingsBackup,
                       Dictionary::make({{"Client_Version", text("5.0")}}));
  pane_->refreshClientSettings();
  EXPECT_EQ(version_.title(), "Version 5.0");
}

TEST_F(ClientHeaderTest, AnAddressThatComesBackShowsGreetingAndLinkAgain) {
  showSettings({{"Support_Address", text("")}});
  showSettings({{"Support_Address", text("help.example.com")}});
  EXPECT_FALSE(link_.hidden());
  EXPECT_FALSE(greeting_.hidden());
}

TEST_F(ClientHeaderTest, TheLinkTitleLosesItsSchemeByLength) {
  const std::pair<const char*, const char*> cases[] = {
      {"mailto:help@example.com", "help@example.com"},
      {"http://help.example.com", "help.example.com"},
      {"https://help.example.com", "help.example.com"},
      {"help.example.com", "help.example.com"},
      {"see help http://x", "p http://x"},    // seven characters go, wherever the scheme stands
      {"x https://y", "//y"},                 // eight of them
      {"http://a?mailto:b", "a?mailto:b"},    // mailto: is looked for first; as long as http://
      {"https://a?http://b", "/a?http://b"},  // http:// is found first: seven of the eight go
      {"\xC3\xA9\xC3\xA9 http://x", "://x"},  // characters, not bytes
  };
  for (const auto& [address, title] : cases) {
    showSettings({{"Support_Address", text(address)}});
    EXPECT_EQ(link_.title(), title) << address;
  }
}

TEST_F(ClientHeaderTest, TheLinkOpensTheAddressAsItStandsOrWithHttpInFront) {
  const std::pair<const char*, const char*> cases[] = {
      {"mailto:help@example.com", "mailto:help@example.com"},
      {"http://help.example.com", "http://help.example.com"},
      {"https://help.example.com", "https://help.example.com"},
      {"help.example.com", "http://help.example.com"},
      {"ftp.example.com/x", "http://ftp.example.com/x"},
      {"desk:http://help.example.com", "desk:http://help.example.com"},  // wherever the scheme stands
      {"x-mailto:help@example.com", "x-mailto:help@example.com"},
  };
  for (const auto& [address, opened] : cases) {
    showSettings({{"Support_Address", text(address)}});
    link_.click();
    EXPECT_EQ(platform_.workspace.openedUrls.back(), opened);
  }
}

TEST_F(ClientHeaderTest, WithoutAnAddressTheLinkOpensNothing) {
  showSettings({{"Client_Version", text("5")}});
  link_.setHidden(false);
  link_.click();
  EXPECT_THAT(platform_.workspace.openedUrls, IsEmpty());
}

TEST_F(ClientHeaderTest, WithOnlyTheBackupTheVersionComesFromItAndTheGreetingKeepsItsText) {
  showBackup({{"Branding_PrefPane_Greeting", text("not shown")},
              {"Support_Address", text("https://help.example.com")},
              {"Client_Version", text("4.9")}});
  EXPECT_EQ(version_.title(), "Version 4.9");
  EXPECT_EQ(greeting_.title(), builtInGreeting_);
  EXPECT_EQ(link_.title(), "help.example.com");
}

TEST_F(ClientHeaderTest, TheBackupLeavesTheVisibilityOfTheButtonsAsItIs) {
  link_.setHidden(true);
  greeting_.setHidden(true);
  showBackup({{"Support_Address", text("help.example.com")}});
  EXPECT_TRUE(link_.hidden());
  EXPECT_TRUE(greeting_.hidden());
  EXPECT_EQ(link_.title(), "help.example.com");
}

TEST_F(ClientHeaderTest, ABackupWithoutAnAddressHidesBothButtons) {
  showBackup({{"Client_Version", text("4.9")}});
  EXPECT_TRUE(link_.hidden());
  EXPECT_TRUE(greeting_.hidden());
}

TEST_F(ClientHeaderTest, WithNeitherFileTheVersionReadsErrorAndTheRestIsLeft) {
  showBackup({});
  EXPECT_EQ(version_.title(), "Error");
  EXPECT_FALSE(link_.hidden());
  EXPECT_FALSE(greeting_.hidden());
  EXPECT_THAT(platform_.log.lines,
              ElementsAre("Neither the ClientSettings.plist nor the BackupClientSettings.plist exist"));
  link_.click();
  EXPECT_THAT(platform_.workspace.openedUrls, IsEmpty());
}

TEST_F(ClientHeaderTest, TheHeaderIsCentredOverTheTabs) {
  platform_.workspace.widths = {{"Need help?", 100.7}, {"help.example.com", 200.2}};
  view_.tabView.setFrame({17, 45, 635, 400});
  const Rect before = greeting_.frame();
  showSettings(
      {{"Branding_PrefPane_Greeting", text("Need help?")}, {"Support_Address", text("help.example.com")}});
  // Whole widths 105 and 205, whole centre 334: the pair, with a gap of 2, is 312 wide.
  EXPECT_EQ(greeting_.frame(), (Rect{334 - 156, before.y, 105, before.height}));
  EXPECT_EQ(link_.frame().x, 334 - 156 + 105 + 2);
  EXPECT_EQ(link_.frame().width, 205);
}

TEST_F(ClientHeaderTest, ARefreshFollowsTheEditedFile) {
  showSettings({{"Client_Version", text("5.1")}});
  showSettings({{"Client_Version", text("5.2")}});
  EXPECT_EQ(version_.title(), "Version 5.2");
}

TEST_F(ClientHeaderTest, ARefreshFollowsTheBackupUntilTheSettingsAreThere) {
  showBackup({{"Client_Version", text("4.8")}});
  platform_.writePlist(platform_.paths.clientSettingsBackup,
                       Dictionary::make({{"Client_Version", text("4.9")}}));
  pane_->refreshClientSettings();
  EXPECT_EQ(version_.title(), "Version 4.9");
  showSettings({{"Client_Version", text("5.1")}});
  EXPECT_EQ(version_.title(), "Version 5.1");
}

TEST_F(ClientHeaderTest, AVersionOfAWrongTypeCountsAsAbsent) {
  showSettings({{"Client_Version", PropertyList::real(5.1)}});
  EXPECT_EQ(version_.title(), "Version unknown");
}

class ClientIconTest : public ClientHeaderTest {
 protected:
  void clickWith(std::uint32_t flags) {
    platform_.workspace.flags = flags;
    view_.quorlenIconButton.click();
  }
  const std::vector<std::string>& opened_ = platform_.workspace.openedUrls;
};

TEST_F(ClientIconTest, APlainClickDoesNothing) {
  showSettings({{"Server_Address", text("s.example")}, {"QuorlenID", text("42")}});
  clickWith(0);
  clickWith(0x120000);  // Shift and Command
  EXPECT_THAT(opened_, IsEmpty());
}

TEST_F(ClientIconTest, WithControlOrOptionTheComputersPageIsOpened) {
  showSettings({{"Server_Address", text("s.example")}, {"QuorlenID", text("42")}, {"ClientID", text("old")}});
  clickWith(0x40000);
  clickWith(0x80000);
  EXPECT_THAT(opened_, ElementsAre("https://s.example/computers/42", "https://s.example/computers/42"));
}

TEST_F(ClientIconTest, WithoutTheIdentifierTheOlderOneIsUsed) {
  showSettings({{"Server_Address", text("s.example")}, {"ClientID", text("old")}});
  clickWith(kOptionKeyFlag);
  EXPECT_THAT(opened_, ElementsAre("https://s.example/computers/old"));
}

TEST_F(ClientIconTest, EveryFirstSuffixOfTheServerBecomesTheSecondOne) {
  showSettings(
      {{"Server_Address", text("a.reports.example.com.reports.example.com")}, {"QuorlenID", text("42")}});
  clickWith(kOptionKeyFlag);
  EXPECT_THAT(opened_, ElementsAre("https://a.www.example.com.www.example.com/computers/42"));
}

TEST_F(ClientIconTest, TheFileIsReadDirectlyAndNotThroughTheStore) {
  showSettings({{"Server_Address", text("s.example")}, {"QuorlenID", text("42")}});
  writeSettings(Dictionary::make({{"Server_Address", text("t.example")}, {"QuorlenID", text("43")}}));
  clickWith(kControlKeyFlag);
  EXPECT_THAT(opened_, ElementsAre("https://t.example/computers/43"));
}

TEST_F(ClientIconTest, AnUnreadableFileStopsSilently) {
  showSettings({{"Server_Address", text("s.example")}, {"QuorlenID", text("42")}});
  platform_.writeText(platform_.paths.clientSettings, "junk");
  clickWith(kControlKeyFlag);
  EXPECT_THAT(opened_, IsEmpty());
  EXPECT_THAT(platform_.log.lines, IsEmpty());
}

TEST_F(ClientIconTest, AMissingServerOrIdentifierIsLogged) {
  showSettings({{"Server_Address", text("s.example")}});
  clickWith(kControlKeyFlag);
  writeSettings(Dictionary::make({{"ClientID", text("old")}, {"Server_Address", PropertyList::integer(1)}}));
  clickWith(kControlKeyFlag);
  EXPECT_THAT(opened_, IsEmpty());
  EXPECT_THAT(platform_.log.lines,
              ElementsAre("Server Address (s.example) and/or QuorlenID ((null)) is/are nil.",
                          "Server Address ((null)) and/or QuorlenID (old) is/are nil."));
}

}  // namespace
}  // namespace corvane::test
