#include <gtest/gtest.h>

#include "privileged/RootFileOperations.h"
#include "support/TestPlatform.h"

namespace corvane::test {
namespace {

class RootFileOperationsTest : public ::testing::Test {
 protected:
  RootFileOperationsTest() {
    platform_.layOutFolders();
    lock_.click();
  }

  /// The commands so far, as tool and arguments with the root prefix taken off.
  std::vector<std::vector<std::string>> commands() const {
    std::vector<std::vector<std::string>> result;
    for (const RootCommand& command : platform_.authorization.commands) {
      std::vector<std::string> words{command.tool};
      for (const std::string& argument : command.arguments)
        words.push_back(platform_.paths.onClient(argument));
      result.push_back(words);
    }
    return result;
  }
  using Commands = std::vector<std::vector<std::string>>;

  TestPlatform platform_;
  AuthorizationView lock_{platform_.authorization};
  PrivilegedExecution execution_{platform_.platform, lock_};
  RootFileOperations operations_{platform_.platform, platform_.paths, execution_};
  const std::string target_ = platform_.paths.pluginSupport + "/check_x_settings.plist";
  const std::string staging_ = platform_.paths.writeStaging(target_);
  const Dictionary values_ = Dictionary::make({{"Plugin_Enabled", PropertyList::boolean(true)}});
};

TEST_F(RootFileOperationsTest, AWriteStagesCopiesAndRemovesTheStagingFile) {
  EXPECT_TRUE(operations_.setPlistFileValues(target_, values_));
  EXPECT_EQ(commands(), (Commands{{"/bin/cp", "/private/tmp/check_x_settings.plist",
                                   "/Library/Corvane/PluginSupport/check_x_settings.plist"},
                                  {"/bin/rm", "/private/tmp/check_x_settings.plist"}}));
  EXPECT_EQ(platform_.readPlist(target_), values_);
  EXPECT_FALSE(platform_.files.exists(staging_));
  EXPECT_TRUE(platform_.log.lines.empty());
}

TEST_F(RootFileOperationsTest, AnArrayIsWrittenLikeADictionary) {
  const Array list = Array::make({values_});
  EXPECT_TRUE(operations_.setPlistFileValues(platform_.paths.volumesSettings, list));
  EXPECT_EQ(platform_.readPlist(platform_.paths.volumesSettings), list);
}

TEST_F(RootFileOperationsTest, AStaleStagingFileIsRemovedFirst) {
  platform_.writeText(staging_, "stale");
  EXPECT_TRUE(operations_.setPlistFileValues(target_, values_));
  EXPECT_EQ(platform_.authorization.toolsStarted(),
            (std::vector<std::string>{"/bin/rm", "/bin/cp", "/bin/rm"}));
  EXPECT_EQ(platform_.readPlist(target_), values_);
}

TEST_F(RootFileOperationsTest, AStagingFileThatCannotBeWrittenStopsTheWrite) {
  platform_.writePlist(target_, Dictionary::make({{"Old", PropertyList::integer(1)}}));
  platform_.propertyLists.whyWritesFail = "No space left on device";
  EXPECT_EQ(operations_.setPlistFileValues(target_, values_).reason,
            "No space left on device (" + platform_.root.path() + "/private/tmp)");
  EXPECT_TRUE(platform_.authorization.commands.empty());
  EXPECT_EQ(platform_.log.lines, std::vector<std::string>{"Failed to write tmp file"});
  EXPECT_EQ(platform_.readPlist(target_), Dictionary::make({{"Old", PropertyList::integer(1)}}));
}

TEST_F(RootFileOperationsTest, TheStagingFolderIsHeldFromTheFirstActOfAWriteToItsLast) {
  platform_.writeText(staging_, "stale");
  std::vector<std::vector<std::string>> holds;
  platform_.authorization.onCommand = [&](const test::RootCommand&) {
    holds.push_back(platform_.files.holds);
  };
  EXPECT_TRUE(operations_.setPlistFileValues(target_, values_));
  const std::vector<std::string> held = {platform_.paths.onDisk("/private/tmp")};
  EXPECT_EQ(holds, (std::vector<std::vector<std::string>>{held, held, held})) << "rm, cp, rm";
  EXPECT_TRUE(platform_.files.holds.empty());
}

TEST_F(RootFileOperationsTest, AWriteThatAnotherPaneDoesNotLetBeginTouchesNothing) {
  platform_.writePlist(target_, Dictionary::make({{"Old", PropertyList::integer(1)}}));
  platform_.writeText(staging_, "of the other pane");
  platform_.files.isTaken = true;
  EXPECT_EQ(operations_.setPlistFileValues(target_, values_).reason, "another pane is writing");
  EXPECT_TRUE(platform_.authorization.commands.empty());
  EXPECT_EQ(platform_.readPlist(target_), Dictionary::make({{"Old", PropertyList::integer(1)}}));
  EXPECT_EQ(platform_.files.contents(staging_, 100), "of the other pane");
  EXPECT_EQ(platform_.log.lines,
            (std::vector<std::string>{"Not writing " + target_ + ": another pane is writing",
                                      "Failed to write tmp file"}));
}

TEST_F(RootFileOperationsTest, AFileInTheStagingFolderIsNotWrittenAndNotRemoved) {
  std::filesystem::create_directory_symlink("private/tmp", platform_.paths.onDisk("/tmp"));
  for (const char* path : {"/private/tmp/x.plist", "/tmp/x.plist"}) {
    const std::string target = platform_.paths.onDisk(path);
    platform_.log.lines.clear();
    platform_.writePlist(target, values_);
    EXPECT_EQ(operations_.setPlistFileValues(target, Dictionary::make()).reason,
              "files are staged in its folder");
    EXPECT_TRUE(platform_.authorization.commands.empty());
    EXPECT_EQ(platform_.readPlist(target), values_);
    EXPECT_EQ(platform_.log.lines,
              (std::vector<std::string>{"Not writing " + target + ": files are staged in its folder",
                                        "Failed to write tmp file"}));
  }
}

TEST_F(RootFileOperationsTest, AFileInRootsHomeGetsItsParentFolderFirst) {
  for (const char* path : {"/var/root/Library/a/x.plist", "/VAR/Root/Library/b/x.plist"}) {
    platform_.authorization.commands.clear();
    EXPECT_TRUE(operations_.setPlistFileValues(platform_.paths.onDisk(path), values_));
    const std::string folder = std::string(path).substr(0, std::string(path).rfind('/'));
    EXPECT_EQ(commands(), (Commands{{"/bin/mkdir", "-p", folder},
                                    {"/bin/cp", "/private/tmp/x.plist", path},
                                    {"/bin/rm", "/private/tmp/x.plist"}}));
    EXPECT_EQ(platform_.readPlist(platform_.paths.onDisk(path)), values_);
  }
}

TEST_F(RootFileOperationsTest, OnlyAPathThatBeginsWithRootsHomeGetsItsParentFolder) {
  platform_.authorization.carriesOut = false;
  for (const char* path : {"/Library/var/root/x.plist", "/var/rootless/x.plist", "/var/root"}) {
    platform_.authorization.commands.clear();
    EXPECT_TRUE(operations_.setPlistFileValues(platform_.paths.onDisk(path), values_));
    EXPECT_EQ(platform_.authorization.toolsStarted(), (std::vector<std::string>{"/bin/cp", "/bin/rm"}))
        << path;
    std::filesystem::remove(platform_.paths.writeStaging(path));  // which the play has left
  }
}

TEST_F(RootFileOperationsTest, AParentFolderThatCannotBeMadeStopsTheWriteAndLeavesTheStagingFile) {
  platform_.authorization.statusOfTool["/bin/mkdir"] = -60031;
  platform_.authorization.reasonOfTool["/bin/mkdir"] = "/var/root: it is too full";
  EXPECT_EQ(operations_.setPlistFileValues(platform_.paths.onDisk("/var/root/x.plist"), values_).reason,
            "/var/root: it is too full");
  EXPECT_EQ(platform_.authorization.toolsStarted(), std::vector<std::string>{"/bin/mkdir"});
  EXPECT_EQ(platform_.log.lines, std::vector<std::string>{"Error writing plist file in root home: 5505"});
  EXPECT_EQ(platform_.readPlist(platform_.root.path() + "/private/tmp/x.plist"), values_);
}

TEST_F(RootFileOperationsTest, ACopyThatCannotBeStartedIsLoggedAndTheStagingFileRemoved) {
  platform_.writePlist(target_, Dictionary::make({{"Old", PropertyList::integer(1)}}));
  platform_.authorization.statusOfTool["/bin/cp"] = -60031;
  EXPECT_EQ(operations_.setPlistFileValues(target_, values_).reason, "status 5505");
  EXPECT_EQ(platform_.log.lines, std::vector<std::string>{"Error writing plist file: 5505"});
  EXPECT_EQ(platform_.readPlist(target_), Dictionary::make({{"Old", PropertyList::integer(1)}}));
  EXPECT_FALSE(platform_.files.exists(staging_));
}

TEST_F(RootFileOperationsTest, ACopyThatFailsThoughItWasStartedIsAnsweredAndNotLogged) {
  platform_.authorization.reasonOfTool["/bin/cp"] = target_ + ": No space left on device";
  EXPECT_EQ(operations_.setPlistFileValues(target_, values_).reason, target_ + ": No space left on device");
  EXPECT_TRUE(platform_.log.lines.empty());
  EXPECT_FALSE(platform_.files.exists(staging_));
}

TEST_F(RootFileOperationsTest, AStagingFileThatStaysDoesNotMakeTheWriteFail) {
  platform_.authorization.statusOfTool["/bin/rm"] = -60031;
  EXPECT_TRUE(operations_.setPlistFileValues(target_, values_));
  EXPECT_EQ(platform_.readPlist(target_), values_);
  EXPECT_EQ(platform_.log.lines, std::vector<std::string>{"Error deleting file: 5505"});
}

TEST_F(RootFileOperationsTest, ARootFileIsReadThroughACopyThatStays) {
  const std::string source = platform_.paths.onDisk("/var/root/secret.plist");
  platform_.writePlist(source, values_);
  EXPECT_EQ(operations_.readRootFile(source), values_);
  EXPECT_EQ(commands(), (Commands{{"/bin/cp", "/var/root/secret.plist", "/private/tmp/read-secret.plist"}}));
  EXPECT_EQ(platform_.readPlist(platform_.root.path() + "/private/tmp/read-secret.plist"), values_);
}

TEST_F(RootFileOperationsTest, ARootFileThatDoesNotExistOrHoldsNoDictionaryGivesNothing) {
  EXPECT_FALSE(operations_.readRootFile(platform_.paths.onDisk("/var/root/missing.plist")));
  platform_.writePlist(platform_.paths.onDisk("/var/root/list.plist"), Array::make());
  EXPECT_FALSE(operations_.readRootFile(platform_.paths.onDisk("/var/root/list.plist")));
  EXPECT_TRUE(platform_.log.lines.empty());
}

TEST_F(RootFileOperationsTest, WhatStandsAtTheStagingPathOfAMissingFileIsNotRead) {
  platform_.writePlist(platform_.root.path() + "/private/tmp/read-missing.plist", values_);
  platform_.authorization.statusOfTool["/bin/cp"] = launch_status::kNothingToRead;
  EXPECT_FALSE(operations_.readRootFile(platform_.paths.onDisk("/var/root/missing.plist")));
  EXPECT_TRUE(platform_.log.lines.empty());
}

TEST_F(RootFileOperationsTest, WhatStandsAtTheStagingPathOfACopyThatFailedIsNotRead) {
  platform_.writePlist(platform_.root.path() + "/private/tmp/read-list.plist", values_);
  platform_.authorization.reasonOfTool["/bin/cp"] = "Permission denied";
  EXPECT_FALSE(operations_.readRootFile(platform_.paths.onDisk("/var/root/list.plist")));
}

TEST_F(RootFileOperationsTest, WhatTheCopyHasLeftAsItWasIsNotRead) {
  platform_.writePlist(platform_.root.path() + "/private/tmp/read-list.plist", values_);
  platform_.authorization.carriesOut =
      false;  // a copy that says it was started, and that nobody hears more of
  EXPECT_FALSE(operations_.readRootFile(platform_.paths.onDisk("/var/root/list.plist")));
}

TEST_F(RootFileOperationsTest, AReadWhoseCopyCannotBeStartedIsLogged) {
  platform_.authorization.statusOfTool["/bin/cp"] = 1;
  EXPECT_FALSE(operations_.readRootFile(platform_.paths.onDisk("/var/root/x.plist")));
  EXPECT_EQ(platform_.log.lines, std::vector<std::string>{"Error copying plist file to /private/tmp: 1"});
}

TEST_F(RootFileOperationsTest, DeletingAMissingFileStartsNothing) {
  operations_.deleteFile(staging_);
  EXPECT_TRUE(platform_.authorization.commands.empty());
}

TEST_F(RootFileOperationsTest, ARemovalThatCannotBeStartedIsLogged) {
  platform_.writeText(staging_, "x");
  platform_.authorization.statusOfTool["/bin/rm"] = -1;
  operations_.deleteFile(staging_);
  EXPECT_EQ(commands(), (Commands{{"/bin/rm", "/private/tmp/check_x_settings.plist"}}));
  EXPECT_EQ(platform_.log.lines, std::vector<std::string>{"Error deleting file: -1"});
}

TEST_F(RootFileOperationsTest, HousekeepingRunsTheFixedShellTexts) {
  const PathTable fixed;
  RootFileOperations onTheMac(platform_.platform, fixed, execution_);
  onTheMac.checkPermissions();
  onTheMac.convertBinaryFiles();
  ASSERT_EQ(platform_.authorization.commands.size(), 2U);
  EXPECT_EQ(
      platform_.authorization.commands[0],
      (RootCommand{
          "/bin/sh",
          {"-c",
           "/bin/chmod 644 /Library/Corvane/ClientSettings.plist /Library/Corvane/PluginSupport/*.plist "
           "/Library/Corvane/Utilities/UpdaterSupport/*.plist"},
          false}));
  EXPECT_EQ(
      platform_.authorization.commands[1],
      (RootCommand{
          "/bin/sh",
          {"-c",
           "/usr/bin/plutil /Library/Corvane/ClientSettings.plist /Library/Corvane/PluginSupport/*.plist "
           "/Library/Corvane/Utilities/UpdaterSupport/*.plist"},
          false}));
}

TEST_F(RootFileOperationsTest, HousekeepingBelowAPrefixQuotesThePrefix) {
  const PathTable odd("/mnt/it's a disk");
  RootFileOperations operations(platform_.platform, odd, execution_);
  operations.convertBinaryFiles();
  EXPECT_EQ(platform_.authorization.commands[0].arguments[1],
            "/usr/bin/plutil '/mnt/it'\\''s a disk'/Library/Corvane/ClientSettings.plist "
            "'/mnt/it'\\''s a disk'/Library/Corvane/PluginSupport/*.plist "
            "'/mnt/it'\\''s a disk'/Library/Corvane/Utilities/UpdaterSupport/*.plist");
}

TEST_F(RootFileOperationsTest, HousekeepingThatCannotBeStartedIsLogged) {
  platform_.authorization.statusOfTool["/bin/sh"] = -60031;
  operations_.checkPermissions();
  operations_.convertBinaryFiles();
  EXPECT_EQ(platform_.log.lines, (std::vector<std::string>{"Error modifying file permissions: 5505",
                                                           "Error converting plist format: 5505"}));
}

}  // namespace
}  // namespace corvane::test
