// The demo client's scripts, daemon and plug-ins, run as the pane runs them.
#include <chrono>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "support/DemoClient.h"

namespace corvane {
namespace {

namespace fs = std::filesystem;
using test::DemoClient;
using test::runToEnd;
using test::Started;
using test::waitUntil;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

const std::vector<std::string> kRunNow = {"--log-parent", "prefpane-client", "--force"};
const std::vector<std::string> kUpdateNow = {"--log-parent", "prefpane-updater", "--force"};
const std::vector<std::string> kRemove = {"--log-parent", "prefpane-remove", "--remove"};
const std::vector<std::string> kRemoveQuietly = {"--log-parent", "prefpane-remove", "--remove", "--quiet"};

double secondsSince1970() {
  return std::chrono::duration<double>(std::chrono::system_clock::now().time_since_epoch()).count();
}
double dateIn(const std::string& path, const char* key) {
  const auto date = DemoClient::plist(path).asDictionary().value(key).asDate();
  return date ? date->secondsSince1970 : 0;
}
ino_t inodeOf(const std::string& path) {
  struct stat attributes {};
  EXPECT_EQ(::stat(path.c_str(), &attributes), 0) << path;
  return attributes.st_ino;
}

TEST(DemoRunClient, SetsTheDateInPlaceAndKeepsEveryOtherSetting) {
  const DemoClient demo;
  Dictionary before = DemoClient::plist(demo.paths.clientSettings).asDictionary();
  const ino_t inode = inodeOf(demo.paths.clientSettings);
  EXPECT_EQ(runToEnd(DemoClient::bash(demo.paths.runClient, kRunNow)), 0);
  EXPECT_NEAR(dateIn(demo.paths.clientSettings, "Date_Client_Run"), secondsSince1970(), test::kHangSeconds);
  EXPECT_EQ(inodeOf(demo.paths.clientSettings), inode) << "a file that is replaced counts as gone";
  Dictionary after = DemoClient::plist(demo.paths.clientSettings).asDictionary();
  EXPECT_EQ(DemoClient::plist(demo.paths.clientSettingsBackup), after);
  for (Dictionary* settings : {&before, &after}) settings->remove("Date_Client_Run");
  EXPECT_EQ(after, before);
  EXPECT_FALSE(fs::exists(demo.paths.errorLoggerPid));
  EXPECT_THAT(demo.log(), HasSubstr("RunClient for prefpane-client: started"));
}

TEST(DemoRunClient, AddsTheDateToSettingsWithoutOne) {
  const DemoClient demo;
  std::ofstream(demo.paths.clientSettings, std::ios::trunc) << *writeXmlPropertyList(
      Dictionary::make({{"A", Dictionary::make({{"B", PropertyList::integer(1)}})}}));
  EXPECT_EQ(runToEnd(DemoClient::bash(demo.paths.runClient, kRunNow)), 0);
  Dictionary settings = DemoClient::plist(demo.paths.clientSettings).asDictionary();
  EXPECT_TRUE(settings.value("Date_Client_Run").asDate().has_value());
  settings.remove("Date_Client_Run");
  EXPECT_EQ(settings, Dictionary::make({{"A", Dictionary::make({{"B", PropertyList::integer(1)}})}}));
}

TEST(DemoRunClient, LeavesSettingsAloneThatAreNoPropertyList) {
  const DemoClient demo;
  std::ofstream(demo.paths.clientSettings, std::ios::trunc) << "broken";
  EXPECT_EQ(runToEnd(DemoClient::bash(demo.paths.runClient, kRunNow)), 0);
  EXPECT_EQ(DemoClient::contents(demo.paths.clientSettings), "broken");
}

TEST(DemoRunClient, HoldsTheMarkerWhileItRunsAndRefusesASecondRunMeanwhile) {
  const DemoClient demo("600");
  Started run(DemoClient::bash(demo.paths.runClient, kRunNow));
  ASSERT_TRUE(waitUntil([&] { return !DemoClient::contents(demo.paths.errorLoggerPid).empty(); }));
  EXPECT_EQ(DemoClient::contents(demo.paths.errorLoggerPid), std::to_string(run.pid()) + "\n");
  EXPECT_EQ(runToEnd(DemoClient::bash(demo.paths.runClient, kRunNow)), 1);
  EXPECT_TRUE(fs::exists(demo.paths.errorLoggerPid));
  EXPECT_LT(dateIn(demo.paths.clientSettings, "Date_Client_Run"), secondsSince1970() - 60)
      << "the date is set at the end of a run";
}

TEST(DemoRunClient, GivesTheMarkerBackWhenItIsEnded) {
  const DemoClient demo("600");
  Started run(DemoClient::bash(demo.paths.runClient, kRunNow));
  ASSERT_TRUE(waitUntil([&] { return !DemoClient::contents(demo.paths.errorLoggerPid).empty(); }));
  ASSERT_EQ(::kill(run.pid(), SIGTERM), 0);
  EXPECT_THAT(run.output(), IsEmpty()) << "and nothing holds its output open any longer";
  EXPECT_EQ(run.exitCode(), 143);
  EXPECT_FALSE(fs::exists(demo.paths.errorLoggerPid));
}

TEST(DemoRunClient, TakesOverTheMarkerOfARunThatWasKilled) {
  const DemoClient demo;
  std::ofstream(demo.paths.errorLoggerPid) << ::getpid() << "\n";  // a process, but no run of this client
  EXPECT_EQ(runToEnd(DemoClient::bash(demo.paths.runClient, kRunNow)), 0);
  EXPECT_FALSE(fs::exists(demo.paths.errorLoggerPid));
}

TEST(DemoRunClient, EndsWithAnErrorWhereTheMarkerIsAFolder) {
  const DemoClient demo;
  fs::create_directory(demo.paths.errorLoggerPid);
  EXPECT_EQ(runToEnd(DemoClient::bash(demo.paths.runClient, kRunNow)), 1);
  EXPECT_TRUE(fs::is_directory(demo.paths.errorLoggerPid));
}

TEST(DemoRunClient, RefusesArgumentsThatItDoesNotKnow) {
  const DemoClient demo;
  for (const std::string& script : {demo.paths.runClient, demo.paths.runUpdater}) {
    EXPECT_EQ(runToEnd(DemoClient::bash(script, {"--erase"})), 64);
    EXPECT_EQ(runToEnd(DemoClient::bash(script, {"--log-parent"})), 64);
  }
  EXPECT_EQ(runToEnd(DemoClient::bash(demo.paths.runUpdater, {"--remove"})), 64);
  EXPECT_TRUE(fs::exists(demo.paths.installFolder));
}

TEST(DemoRunUpdater, SetsTheDateOfTheLastCheckInPlace) {
  const DemoClient demo;
  const ino_t inode = inodeOf(demo.paths.updateStatus);
  EXPECT_EQ(runToEnd(DemoClient::bash(demo.paths.runUpdater, kUpdateNow)), 0);
  EXPECT_NEAR(dateIn(demo.paths.updateStatus, "Date_Last_Checked"), secondsSince1970(), test::kHangSeconds);
  EXPECT_EQ(inodeOf(demo.paths.updateStatus), inode);
  EXPECT_THAT(demo.log(), HasSubstr("RunUpdater for prefpane-updater: ended"));
}

struct Removal {
  std::vector<std::string> arguments;
  const char* reported;
};
class DemoRemoval : public ::testing::TestWithParam<Removal> {};

TEST_P(DemoRemoval, TakesTheInstallFolderAwayEndsTheDaemonAndLeavesTheRest) {
  DemoClient demo;
  const int daemon = demo.daemonPid();
  ASSERT_TRUE(DemoClient::isAlive(daemon));
  EXPECT_EQ(runToEnd(DemoClient::bash(demo.paths.runClient, GetParam().arguments)), 0);
  EXPECT_FALSE(fs::exists(demo.paths.installFolder));
  EXPECT_TRUE(fs::exists(demo.paths.systemConfiguration));
  EXPECT_THAT(demo.log(), HasSubstr(GetParam().reported));
  EXPECT_TRUE(waitUntil([&] { return !DemoClient::isAlive(daemon); }));

  EXPECT_EQ(demo.make(), 0);
  EXPECT_TRUE(DemoClient::plist(demo.paths.clientSettings)) << "a new client is laid out";
  EXPECT_TRUE(DemoClient::isAlive(demo.daemonPid()));
}

INSTANTIATE_TEST_SUITE_P(Removals, DemoRemoval,
                         ::testing::Values(Removal{kRemove, "removed, reported to demo.reports.example.com"},
                                           Removal{kRemoveQuietly, "removed without a report"}));

TEST(DemoRemovalOfSomethingElse, IsRefused) {
  const DemoClient demo;
  fs::rename(demo.root + "/demo-settings", demo.root + "/other-settings");
  EXPECT_EQ(runToEnd(DemoClient::bash(demo.paths.runClient, kRemove)), 64);
  EXPECT_TRUE(fs::exists(demo.paths.clientSettings));
}

TEST(DemoDaemon, IsAmongTheProcessesThatThePaneLists) {
  const DemoClient demo;
  EXPECT_THAT(Started({"/bin/ps", "axco", "pid"}).output(), HasSubstr(std::to_string(demo.daemonPid())));
}

TEST(DemoDaemon, IsStartedOnceAndAgainWhenItHasEnded) {
  DemoClient demo;
  const int first = demo.daemonPid();
  EXPECT_EQ(demo.make(), 0);
  EXPECT_EQ(demo.daemonPid(), first);
  ASSERT_EQ(::kill(first, SIGTERM), 0);
  ASSERT_TRUE(waitUntil([&] { return !DemoClient::isAlive(first); }));
  EXPECT_EQ(demo.make(), 0);
  EXPECT_NE(demo.daemonPid(), first);
  EXPECT_TRUE(DemoClient::isAlive(demo.daemonPid()));
}

TEST(DemoDaemon, EndsWhenThePidFileNoLongerNamesIt) {
  const DemoClient demo;
  const int daemon = demo.daemonPid();
  fs::remove(demo.paths.diskJournalPid);
  EXPECT_TRUE(waitUntil([&] { return !DemoClient::isAlive(daemon); }));
}

TEST(DemoDaemon, EndsWhenTheTreeIsRemoved) {
  const DemoClient demo;
  const int daemon = demo.daemonPid();
  fs::remove_all(demo.root);
  EXPECT_TRUE(waitUntil([&] { return !DemoClient::isAlive(daemon); }));
}

/// What the plug-in "Test Mode" prints for one choice of its menu.
struct Outcome {
  int choice;
  std::string output;
};
void PrintTo(const Outcome& outcome, std::ostream* stream) { *stream << "choice " << outcome.choice; }

class DemoTestMode : public ::testing::TestWithParam<Outcome> {};

TEST_P(DemoTestMode, AnswersAsItsSettingSays) {
  const DemoClient demo;
  const std::string settings = demo.paths.pluginSupport + "/check_test_mode_settings.plist";
  std::ofstream(settings, std::ios::trunc)
      << *writeXmlPropertyList(Dictionary::make({{"Outcome", PropertyList::integer(GetParam().choice)}}));
  Started plugin({demo.paths.plugins + "/check_test_mode", "--outcome-from-settings", "--test-mode"});
  EXPECT_EQ(plugin.output(), GetParam().output);
}

using std::string_literals::operator""s;  // NOLINT(misc-unused-using-decls): used in the next lines
INSTANTIATE_TEST_SUITE_P(
    Choices, DemoTestMode,
    ::testing::Values(Outcome{0, "0,All settings valid\n"}, Outcome{1, "3,Server unreachable\n"},
                      Outcome{2, "4,The first line is shown\nThe second is not\nNor is the third\n"},
                      Outcome{3, ""}, Outcome{4, "0,That took a while\n"},
                      Outcome{5, "0,The first piece and the second\n"},
                      Outcome{6, "0,\xff\xfe\x01\0\x80garbage\n"s}, Outcome{8, "all is well\n"},
                      Outcome{9, "0," + std::string(1200, '0') + "\n"},
                      Outcome{77, "0,All settings valid\n"}));

TEST(DemoTestModeInTwoPieces, GivesTheFirstPieceAlone) {
  const DemoClient demo;
  std::ofstream(demo.paths.pluginSupport + "/check_test_mode_settings.plist", std::ios::trunc)
      << *writeXmlPropertyList(Dictionary::make({{"Outcome", PropertyList::integer(5)}}));
  Started plugin({demo.paths.plugins + "/check_test_mode", "--test-mode"});
  EXPECT_EQ(plugin.firstPiece(), "0,The first piece");
}

TEST(DemoTestModeThatHangs, PrintsNothingAndEndsWithItsClient) {
  const DemoClient demo;
  std::ofstream(demo.paths.pluginSupport + "/check_test_mode_settings.plist", std::ios::trunc)
      << *writeXmlPropertyList(Dictionary::make({{"Outcome", PropertyList::integer(7)}}));
  Started plugin({demo.paths.plugins + "/check_test_mode", "--test-mode"});
  ASSERT_TRUE(waitUntil([&] { return demo.log().ends_with("check_test_mode hangs\n"); }));
  fs::remove_all(demo.root);
  EXPECT_THAT(plugin.output(), IsEmpty());
  EXPECT_EQ(plugin.exitCode(), 0);
}

TEST(DemoPlugins, TestTheSettingsAsTheyStand) {
  const DemoClient demo;
  const std::string plugin = demo.paths.plugins + "/check_file_server";
  EXPECT_THAT(Started({plugin, "--test-mode"}).output(), StartsWith("3,"));
  const std::string folder = demo.root + "/var/root/Library/Preferences";
  fs::create_directories(folder);
  std::ofstream(folder + "/com.example.file_server_check.plist") << *writeXmlPropertyList(Dictionary::make(
      {{"User", PropertyList::string("ada")}, {"Password", PropertyList::string("secret")}}));
  EXPECT_EQ(Started({plugin, "--test-mode"}).output(), "0,ada is signed in\n");
}

TEST(DemoPlugins, RunInAFolderOfTheirOwnAndAreToldTheirArguments) {
  const DemoClient demo;
  EXPECT_THAT(Started({demo.paths.plugins + "/extra/check_certificates", "-v", "--test-mode"}).output(),
              HasSubstr("Warns 30 days before the end; arguments: -v --test-mode"));
}

// The pane reads an answer once.
TEST(DemoPlugins, AnswerInOneWrite) {
  const DemoClient demo;
  const auto writesOf = [&](const std::string& plugin) {
    return Started({demo.paths.plugins + "/" + plugin, "-v", "--test-mode"}, Started::Output::WriteByWrite)
        .writes();
  };
  for (const char* plugin : {"check_web_sites", "check_file_server", "extra/check_certificates"}) {
    EXPECT_EQ(writesOf(plugin), 1) << plugin;
  }
  constexpr int kNothing = 3, kTwoPieces = 5, kHangs = 7;
  for (int choice = 0; choice <= 9; ++choice) {
    if (choice == kHangs) continue;
    std::ofstream(demo.paths.pluginSupport + "/check_test_mode_settings.plist", std::ios::trunc)
        << *writeXmlPropertyList(Dictionary::make({{"Outcome", PropertyList::integer(choice)}}));
    EXPECT_EQ(writesOf("check_test_mode"), choice == kNothing ? 0 : choice == kTwoPieces ? 2 : 1) << choice;
  }
}

TEST(DemoPlugins, PrintNothingOutsideTestMode) {
  const DemoClient demo;
  for (const char* name :
       {"check_web_sites", "check_file_server", "check_test_mode", "extra/check_certificates"}) {
    EXPECT_THAT(Started({demo.paths.plugins + "/" + name, "--check"}).output(), IsEmpty()) << name;
  }
}

}  // namespace
}  // namespace corvane
