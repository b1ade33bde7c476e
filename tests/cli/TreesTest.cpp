// Wrong input of every kind, and several trees: each failure is one line and a status, and stops nothing
// else.
#include <string>

#include <gmock/gmock.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

#include "Ctl.h"
#include "support/Isolated.h"

namespace corvane::test {
namespace {

using ::testing::HasSubstr;

class CtlTrees : public CtlTest {};

TEST(CtlUsage, WhatIsNotUnderstoodIsToldInOneLine) {
  const std::vector<std::pair<Words, std::string>> cases = {
      {{}, "A subcommand is required"},
      {{"frobnicate"}, "there is no command \"frobnicate\""},
      {{"get", "--frob"}, "The following argument was not expected: --frob"},
      {{"set"}, "NAME VALUE is required"},
      {{"--root"}, "--root: 1 required FOLDER missing"},
      {{"plugins", "set", "x"}, "OPTION is required"},
      {{"volumes", "frob"}, "The following argument was not expected: frob"},
      {{"run", "--timeout", "soon"}, "--timeout: expected a number of seconds, found soon"},
      {{"help", "frob"}, "help: there is no command \"frob\""}};
  for (const auto& [words, line] : cases) {
    const Ended ended = ctl(words);
    EXPECT_EQ(ended.status, 64) << testing::PrintToString(words);
    EXPECT_EQ(ended.errors, "corvanectl: " + line + "\n") << testing::PrintToString(words);
    EXPECT_EQ(ended.output, "") << testing::PrintToString(words);
  }
}

TEST(CtlUsage, HelpAndVersionAreAnswers) {
  EXPECT_EQ(ctl({"--version"}).output, "corvanectl 0.1.0\n");
  const Ended help = ctl({"--help"});
  EXPECT_EQ(help.status, 0);
  EXPECT_THAT(help.output, HasSubstr("Usage: corvanectl [OPTIONS] SUBCOMMAND\n"));
  EXPECT_EQ(ctl({"help"}).output, help.output);
  EXPECT_THAT(ctl({"help", "help"}).output, HasSubstr("Usage: corvanectl help"));
  EXPECT_THAT(ctl({"help", "plugins", "set"}).output,
              HasSubstr("Usage: corvanectl plugins set [OPTIONS] PLUGIN OPTION VALUE..."));
  EXPECT_EQ(ctl({"plugins", "set", "--help"}).output, ctl({"help", "plugins", "set"}).output);
}

TEST_F(CtlTrees, ATreeWithoutAClientIsTold) {
  std::filesystem::remove_all(demo.paths.installFolder);
  const std::string line = "there is no client: " + demo.paths.installFolder + " does not exist";
  for (const Words& words :
       {Words{"get"}, {"set", "run-interval", "3"}, {"volumes"}, {"plugins"}, {"run"}, {"watch"}})
    refused(words, 66, line);
  refused({"check"}, 66, demo.paths.plugins + " cannot be read");
}

TEST(CtlUsage, ARootThatIsNoFolderIsTold) {
  const Ended ended = ctl({"--root", "/etc/passwd", "get"});
  EXPECT_EQ(ended.status, 66);
  EXPECT_EQ(ended.errors, "corvanectl: --root: \"/etc/passwd\" is not a folder\n");
  EXPECT_EQ(ctl({"--root", "/none", "get"}).errors, "corvanectl: --root: \"/none\" is not a folder\n");
}

TEST_F(CtlTrees, SeveralTreesAreDoneOneAfterAnotherAndOneThatFailsStopsNoOther) {
  const DemoClient other("0", "other");
  const Ended ended =
      ctl({"--root", demo.root, "--root", "/none", "--root", other.root, "set", "run-interval", "6"});
  EXPECT_EQ(ended.status, 66);
  EXPECT_EQ(ended.errors, "corvanectl: --root: \"/none\" is not a folder\n");
  for (const std::string& root : {demo.root, other.root})
    EXPECT_EQ(ctl({"--root", root, "get", "run-interval"}).output, "6\n");
  std::filesystem::remove_all(demo.paths.installFolder);
  const Ended half = ctl({"--root", demo.root, "--root", other.root, "--json", "get", "run-interval"});
  EXPECT_EQ(half.status, 66);
  EXPECT_EQ(half.errors, "corvanectl: " + demo.root + ": there is no client: " + demo.paths.installFolder +
                             " does not exist\n");
  EXPECT_EQ(Json::parse(half.output, nullptr, false),
            Json({{"root", other.root}, {"settings", {{"run-interval", 6}}}}));
}

TEST_F(CtlTrees, DocumentsOfSeveralTreesAreOneLineEach) {
  const DemoClient other("0", "other");
  const Ended ended = ctl({"--root", demo.root, "--root", other.root, "--json", "status"});
  EXPECT_EQ(ended.status, 0);
  std::istringstream lines(ended.output);
  std::vector<std::string> roots;
  for (std::string line; std::getline(lines, line);)
    roots.push_back(Json::parse(line, nullptr, false).at("root"));
  EXPECT_EQ(roots, (std::vector{demo.root, other.root}));
}

TEST_F(CtlTrees, ATreeThatOthersCanChangeIsNotChanged) {
  ASSERT_EQ(::chmod(demo.paths.installFolder.c_str(), 0777), 0);
  const auto before = files();
  const Ended ended = run({"set", "run-interval", "3"});
  EXPECT_EQ(ended.status, 77);
  EXPECT_THAT(ended.errors,
              testing::StartsWith("corvanectl: no rights to change anything: " + demo.paths.installFolder));
  EXPECT_EQ(files(), before);
  EXPECT_EQ(good({"get", "run-interval"}), "2\n");
}

TEST_F(CtlTrees, ADiskThatIsReadOnlyIsTold) {
  // Where an ordinary user may mount, "/" is nobody's whom they can trust.
  if (::geteuid() != 0) GTEST_SKIP() << "NOT TESTED: this needs root";
  const auto outcome = runIsolated(CLONE_NEWNS, [&] {
    ASSERT_EQ(::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr), 0);
    ASSERT_EQ(::mount(demo.root.c_str(), demo.root.c_str(), nullptr, MS_BIND, nullptr), 0);
    ASSERT_EQ(::mount(nullptr, demo.root.c_str(), nullptr, MS_BIND | MS_REMOUNT | MS_RDONLY, nullptr), 0);
    const Ended ended = run({"set", "run-interval", "3"});
    EXPECT_EQ(ended.status, 77);
    EXPECT_THAT(ended.errors, HasSubstr("Read-only file system"));
    EXPECT_EQ(good({"get", "run-interval"}), "2\n");
  });
  if (outcome == IsolatedOutcome::Impossible) GTEST_SKIP() << "NOT TESTED: no name spaces here";
  EXPECT_EQ(outcome, IsolatedOutcome::Passed);
}

TEST_F(CtlTrees, NamesThatCouldHarmATerminalAreWrittenOut) {
  Dictionary settings = DemoClient::plist(demo.paths.clientSettings).asDictionary();
  settings.set("ClientGroup", PropertyList::string("a\033[31m\nb"));
  std::ofstream(demo.paths.clientSettings) << *writeXmlPropertyList(settings);
  EXPECT_EQ(good({"get", "group"}), "a\\u{1B}[31m\\u{0A}b\n");
  EXPECT_EQ(json({"get", "group"}).at("settings").at("group"), "a\033[31m\nb");
}

TEST_F(CtlTrees, OnATerminalColumnsAreAlignedAndColouredUnlessThatIsNotWanted) {
  const Terminal terminal;
  const auto shown = [&](const char* colours) {
    ::setenv("TERM", "xterm", 1);
    ::setenv("NO_COLOR", colours, 1);
    RunningCtl writing(at({"get", "automount", "run-interval"}), {.output = terminal.program()});
    EXPECT_EQ(writing.end().status, 0);
    return terminal.shown();
  };
  EXPECT_EQ(shown(""), "\033[2mautomount\033[0m     off\r\n\033[2mrun-interval\033[0m  2\r\n");
  EXPECT_EQ(shown("1"), "automount     off\r\nrun-interval  2\r\n");
}

/// What a user who is not the tree's owner can do with it. The program is where every user finds it.
class CtlOtherUser : public CtlTest {
 protected:
  void SetUp() override {
    if (::geteuid() != 0) GTEST_SKIP() << "NOT TESTED: this needs root to act as two users";
    for (const char* program : {CORVANECTL_PATH, QLHELPER_PATH})
      std::filesystem::copy_file(program, folder_ / std::filesystem::path(program).filename().string());
    for (const std::string& folder :
         {folder_.path(), std::filesystem::path(demo.root).parent_path().string()})
      ASSERT_EQ(::chmod(folder.c_str(), 0755), 0);
  }
  [[nodiscard]] Ended runAsOther(const Words& arguments) const {
    return RunningCtl(at(arguments), {.user = 65534, .program = folder_ / "corvanectl"}).end();
  }
  void refusedAsOther(const Words& arguments, int status, const std::string& line) const {
    const Ended ended = runAsOther(arguments);
    EXPECT_EQ(ended.status, status) << testing::PrintToString(arguments);
    EXPECT_EQ(ended.errors, "corvanectl: " + line + "\n") << testing::PrintToString(arguments);
  }
  static void forbid(const std::string& path, mode_t mode = 0) { ASSERT_EQ(::chmod(path.c_str(), mode), 0); }

 private:
  TemporaryFolder folder_;
};

TEST_F(CtlOtherUser, ReadingNeedsNoRightsAndShowsTheSame) {
  for (const Words& words : {Words{"status"}, {"get"}, {"volumes"}, {"plugins"}, {"check"}}) {
    const Ended ended = runAsOther(words);
    EXPECT_EQ(ended.output, run(words).output) << words.front();
    EXPECT_EQ(ended.errors, "") << words.front();
  }
}

TEST_F(CtlOtherUser, SettingsThatMayNotBeReadAreToldAndTheOthersShown) {
  forbid(demo.paths.clientSettings);
  const std::string line = demo.paths.clientSettings + " cannot be read";
  refusedAsOther({"get", "run-interval"}, 66, line);
  refusedAsOther({"get"}, 66, line);
  EXPECT_THAT(runAsOther({"get"}).output, HasSubstr("startup-disk.percent\t90\n"));
  EXPECT_EQ(runAsOther({"get", "startup-disk.percent"}).status, 0) << "it stands in another file";
  EXPECT_THAT(runAsOther({"status"}).output,
              HasSubstr("Unreadable\t/Library/Corvane/ClientSettings.plist\n"));
}

TEST_F(CtlOtherUser, VolumesWhoseFilesMayNotBeReadAreTold) {
  forbid(demo.paths.volumesSettings);
  refusedAsOther({"volumes"}, 66, demo.paths.volumesSettings + " cannot be read");
  EXPECT_THAT(runAsOther({"volumes"}).output, HasSubstr("Backup\tpresent\toff\toff\t/Volumes/Backup\n"));
  forbid(demo.paths.volumesSettings, 0644);
  forbid(demo.paths.diskJournal);
  refusedAsOther({"volumes"}, 66, demo.paths.diskJournal + " cannot be read");
}

TEST_F(CtlOtherUser, ADefinitionThatMayNotBeReadIsLeftOutAndToldOfByTheCheck) {
  forbid(demo.paths.plugins + "/check_files.plist");
  EXPECT_THAT(runAsOther({"plugins"}).output, testing::Not(HasSubstr("check_files")));
  const Ended ended = runAsOther({"check", demo.paths.plugins + "/check_files.plist"});
  EXPECT_EQ(ended.status, 1);
  EXPECT_THAT(ended.output, HasSubstr("not shown"));
  EXPECT_THAT(ended.output,
              HasSubstr("expected a property list that is a dictionary; found none that can be read"));
}

TEST_F(CtlOtherUser, FoldersThatMayNotBeReadAreTold) {
  forbid(demo.paths.plugins, 0700);
  const std::string line = demo.paths.plugins + " cannot be read";
  refusedAsOther({"plugins"}, 66, line + ": Permission denied");
  refusedAsOther({"plugins", "enable", "check_printers"}, 66, line + ": Permission denied");
  refusedAsOther({"check"}, 66, line);
  forbid(demo.paths.installFolder, 0700);
  for (const Words& words : {Words{"get"}, {"set", "run-interval", "3"}, {"volumes"}, {"plugins"}, {"watch"}})
    refusedAsOther(words, 66, demo.paths.installFolder + " cannot be read: Permission denied");
}

TEST_F(CtlOtherUser, NothingIsChangedWithoutRights) {
  const auto before = files();
  for (const Words& words : {Words{"set", "run-interval", "3"},
                             {"volumes", "set", "Backup", "usage.warn", "on"},
                             {"plugins", "disable", "check_files"},
                             {"plugins", "set", "check_files", "Log_Folder", "/Users"}}) {
    // Nothing answers for polkit here.
    ::setenv("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nonexistent", 1);
    const Ended ended = runAsOther(words);
    EXPECT_EQ(ended.status, 77) << testing::PrintToString(words);
    EXPECT_THAT(ended.errors, testing::StartsWith("corvanectl: no rights to change anything: "));
    EXPECT_EQ(std::ranges::count(ended.errors, '\n'), 1) << ended.errors;
  }
  EXPECT_EQ(files(), before);
}

class CtlCheck : public CtlTest {};

TEST_F(CtlCheck, WhatIsShownOfTheDemoClientIsWhatTheWindowShows) {
  const Ended ended = run({"--json", "check"});
  EXPECT_EQ(ended.status, 1) << "the demo client has a broken definition for each rule";
  EXPECT_EQ(ended.errors, "");
  std::set<std::string> shown;
  const Json checked = Json::parse(ended.output, nullptr, false);
  for (const Json& each : checked.at("definitions")) {
    const std::string file = each.at("file");
    if (each.at("shown") == true) shown.insert(file.substr(std::string("/Library/Corvane/Plugins/").size()));
  }
  std::set<std::string> expected;
  const Json plugins = json({"plugins"}).at("plugins");
  for (const Json& plugin : plugins) expected.insert(plugin.at("plugin").get<std::string>() + ".plist");
  EXPECT_EQ(shown, expected);
}

TEST_F(CtlCheck, AGoodDefinitionAloneIsGood) {
  const std::string file = demo.paths.plugins + "/check_services.plist";
  EXPECT_EQ(good({"check", file}),
            "/Library/Corvane/Plugins/check_services.plist\tshown\tServices\n"
            "  #1 Services that must run\tshown\tCheckboxes\n"
            "  #2 How services are found\tshown\tDisplayOnly\n"
            "  #3 Further reading\tshown\tDisplayOnly\n");
}

TEST_F(CtlCheck, AFileAloneIsJudgedWithItsReasons) {
  const std::string file = demo.root + "/new.plist";
  std::filesystem::copy_file(demo.paths.plugins + "/broken/with_unknown_type.plist", file);
  const Ended ended = run({"check", file, demo.root + "/none.plist"});
  EXPECT_EQ(ended.status, 1);
  EXPECT_THAT(ended.output, HasSubstr("  SettingType.Type\tleft-out\texpected one of Checkbox, "));
  EXPECT_THAT(ended.output, HasSubstr("found \"checkbox\"\n"));
  EXPECT_THAT(ended.output,
              HasSubstr("/none.plist\tnot shown\t\n  -\tleft-out\texpected a property list that is a "
                        "dictionary; found no such file\n"));
}

TEST_F(CtlCheck, AWarningAloneIsNoFailure) {
  const std::string file = demo.paths.plugins + "/check_odd.plist";
  const Ended ended = run({"check", file});
  EXPECT_EQ(ended.status, 0);
  EXPECT_THAT(ended.output,
              HasSubstr("warning\texpected a range like \"min-max\" or \"min-max,step\"; found \"10\"\n"));
}

}  // namespace
}  // namespace corvane::test
