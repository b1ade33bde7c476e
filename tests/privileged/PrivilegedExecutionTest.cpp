#include <gtest/gtest.h>

#include "privileged/PrivilegedExecution.h"
#include "support/TestPlatform.h"

namespace corvane::test {
namespace {

using ::testing::Test;

class PrivilegedExecutionTest : public Test {
 protected:
  PrivilegedExecutionTest() { lock_.click(); }

  TestPlatform platform_;
  AuthorizationView lock_{platform_.authorization};
  PrivilegedExecution execution_{platform_.platform, lock_};

  std::optional<std::string> validate() {
    return execution_.validatePluginWithArguments("unused",
                                                  {"/Library/Corvane/Plugins/check_x", "-v", "--test-mode"});
  }
};

TEST_F(PrivilegedExecutionTest, ADirectCommandPassesToolAndArgumentsOn) {
  EXPECT_EQ(execution_.executeWithPrivilegesArguments("/bin/cp", {"a", "b c"}).status, 0);
  ASSERT_EQ(platform_.authorization.commands.size(), 1U);
  EXPECT_EQ(platform_.authorization.commands[0], (RootCommand{"/bin/cp", {"a", "b c"}, false}));
}

TEST_F(PrivilegedExecutionTest, ADirectCommandMayHaveNoArguments) {
  EXPECT_EQ(execution_.executeWithPrivilegesArguments("/bin/sh", {}).status, 0);
  EXPECT_EQ(platform_.authorization.commands[0], (RootCommand{"/bin/sh", {}, false}));
}

TEST_F(PrivilegedExecutionTest, TheStatusIsReducedToASignedShortNumberAndNotLogged) {
  platform_.authorization.statusOfTool["/bin/cp"] = -60031;
  EXPECT_EQ(execution_.executeWithPrivilegesArguments("/bin/cp", {"a", "b"}).status, 5505);  // -60031 + 65536
  platform_.authorization.statusOfTool["/bin/cp"] = 70000;
  EXPECT_EQ(execution_.executeWithPrivilegesArguments("/bin/cp", {"a", "b"}).status, 4464);  // 70000 - 65536
  platform_.authorization.statusOfTool["/bin/cp"] = -3;
  EXPECT_EQ(execution_.executeWithPrivilegesArguments("/bin/cp", {"a", "b"}).status, -3);
  EXPECT_TRUE(platform_.log.lines.empty());
}

TEST_F(PrivilegedExecutionTest, AHelperCommandPutsTheProgramBeforeItsArguments) {
  (void)execution_.executeQLHelperArguments(
      "/bin/bash", {"/Library/Corvane/RunClient", "--log-parent", "prefpane-client", "--force"});
  ASSERT_EQ(platform_.authorization.commands.size(), 1U);
  EXPECT_EQ(
      platform_.authorization.commands[0],
      (RootCommand{"/bundle/MacOS/qlhelper",
                   {"/bin/bash", "/Library/Corvane/RunClient", "--log-parent", "prefpane-client", "--force"},
                   false}));
  EXPECT_EQ(platform_.log.lines, std::vector<std::string>{"QLH: /bundle/MacOS/qlhelper"});
}

TEST_F(PrivilegedExecutionTest, TheHelperIsLoggedBeforeItIsStarted) {
  std::size_t linesAtTheStart = 0;
  platform_.authorization.onCommand = [&](const RootCommand&) {
    linesAtTheStart = platform_.log.lines.size();
  };
  (void)execution_.executeQLHelperArguments("/bin/bash", {});
  EXPECT_EQ(linesAtTheStart, 1U);
}

TEST_F(PrivilegedExecutionTest, AHelperCommandWithoutArgumentsHasOnlyTheProgram) {
  (void)execution_.executeQLHelperArguments("/bin/bash", {});
  EXPECT_EQ(platform_.authorization.commands[0].arguments, std::vector<std::string>{"/bin/bash"});
}

TEST_F(PrivilegedExecutionTest, AHelperCommandThatCannotBeStartedIsLogged) {
  platform_.authorization.statusOfTool["/bundle/MacOS/qlhelper"] = -60031;
  platform_.authorization.reasonOfTool["/bundle/MacOS/qlhelper"] = "it is not there";
  EXPECT_EQ(execution_.executeQLHelperArguments("/bin/bash", {}).reason, "it is not there");
  EXPECT_EQ(platform_.log.lines, (std::vector<std::string>{"QLH: /bundle/MacOS/qlhelper",
                                                           "Error executing qlhelper command: 5505"}));
}

TEST_F(PrivilegedExecutionTest, AFailureWithoutAReasonIsToldByItsStatus) {
  platform_.authorization.statusOfTool["/bundle/MacOS/qlhelper"] = -60031;
  EXPECT_EQ(execution_.executeQLHelperArguments("/bin/bash", {}).reason, "status 5505");
}

TEST_F(PrivilegedExecutionTest, AStatusWhoseLowSixteenBitsAreZeroCountsAsStarted) {
  platform_.authorization.statusOfTool["/bundle/MacOS/qlhelper"] = 0x10000;
  (void)execution_.executeQLHelperArguments("/bin/bash", {});
  EXPECT_EQ(platform_.log.lines, std::vector<std::string>{"QLH: /bundle/MacOS/qlhelper"});
}

TEST_F(PrivilegedExecutionTest, WithAClosedLockEveryLaunchFails) {
  lock_.close();
  EXPECT_EQ(execution_.executeWithPrivilegesArguments("/bin/cp", {"a", "b"}).status, 5534);  // -60002 + 65536
  (void)execution_.executeQLHelperArguments("/bin/bash", {});
  EXPECT_EQ(validate(), "-1,Error authorizing execution");
  EXPECT_EQ(platform_.log.lines,
            (std::vector<std::string>{"QLH: /bundle/MacOS/qlhelper", "Error executing qlhelper command: 5534",
                                      "Error authorizing execution: 5534"}));
}

TEST_F(PrivilegedExecutionTest, ValidationStartsTheHelperResourceWithAPipeAndDoesNotUseThePluginPath) {
  platform_.authorization.replies = {"0,OK\n"};
  EXPECT_EQ(validate(), "0,OK");
  EXPECT_EQ(
      platform_.authorization.commands[0],
      (RootCommand{
          "/bundle/Resources/qlhelper", {"/Library/Corvane/Plugins/check_x", "-v", "--test-mode"}, true}));
}

TEST_F(PrivilegedExecutionTest, TheReplyLosesItsLastByteWhateverThatIs) {
  struct Case {
    const char* printed;
    std::optional<std::string> reply;
  };
  const Case cases[] = {
      {"0,All settings valid\n", "0,All settings valid"},
      {"3,Server unreachable\nmore text\n", "3,Server unreachable\nmore text"},
      {"0,no newline", "0,no newlin"},
      {"\n", ""},
      {"\xC3\xA9\n", "\xC3\xA9"},
      {"0,\xC3\xA9", std::nullopt},  // the cut leaves half a character
      {"\xFF\xFE\n", std::nullopt},  // not UTF-8
  };
  for (const Case& given : cases) {
    platform_.authorization.replies = {given.printed};
    EXPECT_EQ(validate(), given.reply) << given.printed;
  }
  EXPECT_TRUE(platform_.log.lines.empty());
}

TEST_F(PrivilegedExecutionTest, ALongReplyIsCutToTheFirst999Bytes) {
  platform_.authorization.replies = {std::string(1500, 'x')};
  EXPECT_EQ(validate(), std::string(999, 'x'));
  platform_.authorization.replies = {std::string(1000, 'x')};
  EXPECT_EQ(validate(), std::string(999, 'x'));
}

TEST_F(PrivilegedExecutionTest, TheReplyIsReadOnceWhateverComes) {
  for (const std::string& printed : {std::string("0,fine\n"), std::string(1500, 'x'), std::string()}) {
    platform_.authorization.replies = {printed};
    platform_.authorization.pipeReads = 0;
    static_cast<void>(validate());
    EXPECT_EQ(platform_.authorization.pipeReads, 1) << printed;
  }
}

TEST_F(PrivilegedExecutionTest, APluginThatPrintsNothingIsReported) {
  EXPECT_EQ(validate(), "-2,Error running plugin");
  platform_.authorization.outcomeWithoutReply = {0, true, false};
  EXPECT_EQ(validate(), "-2,Error running plugin");
  EXPECT_EQ(
      platform_.log.lines,
      (std::vector<std::string>{"Error running plugin. Length of data returned: 0. ferror: 0. feof: 1",
                                "Error running plugin. Length of data returned: 0. ferror: 1. feof: 0"}));
}

TEST_F(PrivilegedExecutionTest, AValidationThatCannotBeStartedIsReported) {
  platform_.authorization.statusOfTool["/bundle/Resources/qlhelper"] = -60005;
  EXPECT_EQ(validate(), "-1,Error authorizing execution");
  EXPECT_EQ(platform_.log.lines, std::vector<std::string>{"Error authorizing execution: 5531"});
}

}  // namespace
}  // namespace corvane::test
