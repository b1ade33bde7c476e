// Whether helper and polkit action belong to this pane: helpers and actions of every kind but the right one,
// and the right ones.
#include <ostream>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "helper/Session.h"
#include "platform/linux/Installation.h"
#include "platform/linux/LinuxAuthorization.h"
#include "platform/linux/PollRunLoop.h"
#include "support/TemporaryFolder.h"
#include "support/TestPlatform.h"

namespace corvane {
namespace {

class Installation : public testing::Test {
 protected:
  std::string helperThat(const std::string& does) {
    const auto path = folder.writeFile("qlhelper", "#!/bin/sh\n" + does + "\n");
    ::chmod(path.c_str(), 0755);
    return path;
  }
  std::string rightHelper() { return helperThat("echo '" + std::string(helper::hello()) + "'"); }
  /// As polkit's own documentation has such files.
  std::string actionOf(const std::string& helper, const std::string& version) {
    return folder.writeFile("action.policy",
                            "<policyconfig><action id=\"org.example.corvane.pane.administer\">"
                            "<annotate key=\"org.freedesktop.policykit.exec.path\">" +
                                helper + "</annotate><annotate key=\"org.example.corvane.pane.version\">" +
                                version + "</annotate></action></policyconfig>");
  }
  std::string release() { return std::string(helper::release()); }
  std::string fault(const std::string& helper, const std::string& action) {
    return installationFault(helper, action);
  }
  test::TemporaryFolder folder;
};

TEST_F(Installation, HelperAndActionOfThisPaneBelongTogether) {
  const auto helper = rightHelper();
  EXPECT_EQ(fault(helper, actionOf(helper, release())), "");
}

TEST_F(Installation, TheRealHelperSaysThatItBelongsToThisPane) {
  EXPECT_EQ(fault(QLHELPER_PATH, actionOf(QLHELPER_PATH, release())), "");
}

TEST_F(Installation, AHelperThatIsMissingOrNoProgramIsMissing) {
  const auto action = actionOf(folder / "qlhelper", release());
  EXPECT_EQ(fault("", action), "the helper tool is missing");
  EXPECT_EQ(fault(folder / "qlhelper", action), "the helper tool is missing: " + folder / "qlhelper");
  const auto file = folder.writeFile("qlhelper", "text");
  ::chmod(file.c_str(), 0644);
  EXPECT_EQ(fault(file, action), "the helper tool is missing: " + file);
}

TEST_F(Installation, AHelperThatSaysAnythingElseIsOfAnotherVersion) {
  for (const std::string& does :
       std::vector<std::string>{"echo qlhelper 0.0.1 ready, packets 1", "exit 2", "yes",
                                "printf '%s' '" + std::string(helper::hello()) + "'"}) {
    const auto helper = helperThat(does);
    EXPECT_EQ(fault(helper, actionOf(helper, release())), "the helper tool is of another version: " + helper)
        << does;
  }
}

TEST_F(Installation, AnActionThatIsMissingOrOfSomethingElseIsSaid) {
  const auto helper = rightHelper();
  const auto action = folder / "action.policy";
  EXPECT_EQ(fault(helper, action), "the polkit action is missing: " + action);
  actionOf("/opt/old/qlhelper", release());
  EXPECT_EQ(fault(helper, action),
            "the polkit action is about another program than " + helper + ": " + action);
  actionOf(helper, "0.0.1");
  EXPECT_EQ(fault(helper, action), "the polkit action is of another version: " + action);
  actionOf(helper, release() + "1");
  EXPECT_EQ(fault(helper, action), "the polkit action is of another version: " + action);
}

TEST_F(Installation, WhoNeedsNoRightsNeedsNoInstallation) {
  test::RecordingLog log;
  PollRunLoop loop;
  LinuxAuthorization direct(loop, log,
                            {.root = folder.path(), .helper = "/nonexistent", .action = "/nonexistent"});
  ASSERT_TRUE(direct.isDirect());
  EXPECT_EQ(direct.installationFault(), "");
}

}  // namespace
}  // namespace corvane
