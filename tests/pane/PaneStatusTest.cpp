#include <gtest/gtest.h>

#include "pane/PaneStatus.h"

namespace corvane::test {
namespace {

class PaneStatusTest : public ::testing::Test {
 protected:
  PathTable paths_{"/demo"};
  TextField field_{TextField::Role::Label};
  PaneStatus status_{paths_, field_};
  const std::string settings_ = paths_.clientSettings;
  const std::string volumes_ = paths_.volumesSettings;
};

TEST_F(PaneStatusTest, AFailedWriteIsShownWithItsReasonUntilAWriteOfThatFileSucceeds) {
  status_.fileWasWritten(settings_, {"No space left on device (/demo/private/tmp)"});
  EXPECT_EQ(field_.stringValue(),
            "ClientSettings.plist was not saved: No space left on device (/demo/private/tmp)");
  EXPECT_EQ(field_.toolTip(),
            "/Library/Corvane/ClientSettings.plist was not saved: No space left on device "
            "(/demo/private/tmp)");
  EXPECT_FALSE(field_.hidden());
  status_.fileWasWritten(volumes_, {});
  EXPECT_FALSE(field_.hidden()) << "another file";
  status_.fileWasWritten(settings_, {});
  EXPECT_EQ(field_.stringValue(), "");
  EXPECT_EQ(field_.toolTip(), "");
  EXPECT_TRUE(field_.hidden());
}

TEST_F(PaneStatusTest, TheReasonIsShownWithoutThePathOfTheFileItself) {
  status_.fileWasWritten(settings_, {settings_ + ": No space left on device"});
  EXPECT_EQ(field_.stringValue(), "ClientSettings.plist was not saved: No space left on device");
  status_.fileWasWritten(settings_, {settings_ + ".d: No space left on device"});
  EXPECT_EQ(field_.stringValue(),
            "ClientSettings.plist was not saved: " + settings_ + ".d: No space left on device");
}

TEST_F(PaneStatusTest, OfSeveralFailuresTheNewestIsShownAndTheToolTipTellsAll) {
  status_.fileWasWritten(settings_, {"one"});
  status_.fileWasWritten(volumes_, {"two"});
  EXPECT_EQ(field_.stringValue(), "check_volumes_settings.plist was not saved (and 1 more): two");
  status_.scriptWasStarted(paths_.runClient, {"three"});
  EXPECT_EQ(field_.stringValue(), "RunClient was not started (and 2 more): three");
  EXPECT_EQ(field_.toolTip(),
            "/Library/Corvane/RunClient was not started: three\n"
            "/Library/Corvane/PluginSupport/check_volumes_settings.plist was not saved: two\n"
            "/Library/Corvane/ClientSettings.plist was not saved: one");
  status_.fileWasWritten(settings_, {"four"});
  EXPECT_EQ(field_.stringValue(), "ClientSettings.plist was not saved (and 2 more): four");
}

TEST_F(PaneStatusTest, WhatIsToBeBorneInMindIsSaidWhereNothingHasFailedAndInTheToolTipAlways) {
  status_.setCaution("take care");
  EXPECT_EQ(field_.stringValue(), "take care");
  EXPECT_EQ(field_.toolTip(), "take care");
  EXPECT_FALSE(field_.hidden());
  status_.fileWasWritten(settings_, {"one"});
  EXPECT_EQ(field_.stringValue(), "ClientSettings.plist was not saved: one");
  EXPECT_EQ(field_.toolTip(), "/Library/Corvane/ClientSettings.plist was not saved: one\ntake care");
  status_.fileWasWritten(settings_, {});
  EXPECT_EQ(field_.stringValue(), "take care");
  status_.setCaution("");
  EXPECT_EQ(field_.stringValue(), "");
  EXPECT_TRUE(field_.hidden());
}

TEST_F(PaneStatusTest, WhenTheNewestIsMendedTheOneBeforeItIsShownAgain) {
  status_.fileWasWritten(settings_, {"one"});
  status_.fileWasWritten(volumes_, {"two"});
  status_.fileWasWritten(volumes_, {});
  EXPECT_EQ(field_.stringValue(), "ClientSettings.plist was not saved: one");
}

TEST_F(PaneStatusTest, AScriptThatStartsAgainTakesItsFailureBackAndNoOther) {
  status_.scriptWasStarted(paths_.runUpdater, {"one"});
  status_.scriptWasStarted(paths_.runClient, {});
  EXPECT_EQ(field_.stringValue(), "RunUpdater was not started: one");
  status_.scriptWasStarted(paths_.runUpdater, {});
  EXPECT_TRUE(field_.hidden());
}

TEST_F(PaneStatusTest, FilesOfOneNameInTwoFoldersAreTwo) {
  status_.fileWasWritten(paths_.onDisk("/a/x.plist"), {"one"});
  status_.fileWasWritten(paths_.onDisk("/b/x.plist"), {});
  EXPECT_EQ(field_.stringValue(), "x.plist was not saved: one");
}

}  // namespace
}  // namespace corvane::test
