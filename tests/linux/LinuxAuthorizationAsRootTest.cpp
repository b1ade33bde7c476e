// Commands without asking for rights in a process of root: nothing is done where others than root could lead
// it astray. The real command runner in this process, with a tree of which strangers own parts.
#include <filesystem>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "platform/Housekeeping.h"
#include "platform/linux/LinuxAuthorization.h"
#include "platform/linux/PollRunLoop.h"
#include "support/OtherUser.h"
#include "support/TemporaryFolder.h"
#include "support/TestPlatform.h"

namespace corvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr const char* kHelper = "/nonexistent/qlhelper";
constexpr uid_t kStranger = 4712;
const std::string kOpenToOthers = ": others than root can change the folder";
const std::string kWhatHelps =
    "; run the pane as the owner of the tree, or keep the tree where only root can change it";

struct AsRoot : testing::Test {
  void SetUp() override {
    if (!test::OtherUser::isPossible())
      GTEST_SKIP() << "NOT TESTED: this needs root, to act as several users";
    ::chmod(base.path().c_str(), 0755);
    for (const auto* folder : {"private/tmp", "Library/Corvane/Plugins", "Library/Corvane/PluginSupport"})
      base.makeFolder(std::string("tree/") + folder);
    ::chmod((root + "/private/tmp").c_str(), 01777);
  }
  void own(const std::string& relative, uid_t owner, mode_t mode) const {
    ASSERT_EQ(::lchown((root + relative).c_str(), owner, 0), 0);
    ASSERT_EQ(::chmod((root + relative).c_str(), mode), 0);
  }
  AuthorizationOutcome openLock(LinuxAuthorization& lock) {
    auto outcome = AuthorizationOutcome::Unavailable;
    lock.requestRights("system.privilege.admin", [&](AuthorizationAnswer answer) {
      outcome = answer.outcome;
      reason = std::move(answer.reason);
      authorization = std::move(answer.rights);
    });
    EXPECT_EQ(authorization != nullptr, outcome == AuthorizationOutcome::Granted);
    return outcome;
  }
  AuthorizationOutcome openLock() { return openLock(services); }
  LaunchStatus run(const std::string& tool, const std::vector<std::string>& arguments) {
    return services.executeWithPrivileges(authorization.get(), tool, arguments).status;
  }
  /// A program of root that leaves a file behind when it runs.
  void writeProgram(const std::string& relative) const {
    base.writeFile("tree" + relative, "#!/bin/sh\necho ran > '" + (base / "ran") + "'\n");
    own(relative, 0, 0755);
  }
  [[nodiscard]] bool hasRun() const { return std::filesystem::exists(base / "ran"); }

  test::TemporaryFolder base;
  const std::string root = base / "tree";
  test::RecordingLog log;
  PollRunLoop loop;
  LinuxAuthorization services{loop, log, {.root = root, .helper = kHelper}};
  std::unique_ptr<Authorization> authorization;
  std::string reason;  // of the last answer
};

/// One part of the tree, and whether the lock opens when it is like that.
struct Part {
  std::string name;
  std::string folder;  // below the root prefix; empty: the prefix
  uid_t owner;
  mode_t mode;
  const char* inTheWay = nullptr;  // what is said to be open to others; nothing: the lock opens
};
void PrintTo(const Part& part, std::ostream* stream) { *stream << part.name; }
struct StagingPath : AsRoot, testing::WithParamInterface<Part> {
  [[nodiscard]] std::string pathOf(const std::string& folder) const {
    return folder == "/.." ? base.path() : root + folder;
  }
};
TEST_F(AsRoot, NobodyIsAskedForRightsWhereTheUserCanStageNothing) {
  const auto openAsStranger = [this] {
    const test::OtherUser stranger(kStranger);
    return openLock();
  };
  ::chmod((root + "/private/tmp").c_str(), 0755);
  EXPECT_EQ(openAsStranger(), AuthorizationOutcome::Denied);
  EXPECT_EQ(reason, root + "/private/tmp: Permission denied");
  std::filesystem::remove(root + "/private/tmp");
  EXPECT_EQ(openAsStranger(), AuthorizationOutcome::Denied);
  EXPECT_EQ(reason, root + "/private/tmp: No such file or directory");
  base.makeFolder("tree/private/tmp");
  own("/private/tmp", 0, 01777);
  EXPECT_EQ(openAsStranger(), AuthorizationOutcome::Unavailable) << "no answer yet: somebody is asked";
}

TEST_P(StagingPath, DecidesWhetherTheLockOpens) {
  own(GetParam().folder, GetParam().owner, GetParam().mode);
  if (GetParam().inTheWay == nullptr) {
    EXPECT_EQ(openLock(), AuthorizationOutcome::Granted);
    EXPECT_THAT(log.lines, IsEmpty());
  } else {
    EXPECT_EQ(openLock(), AuthorizationOutcome::Denied);
    EXPECT_THAT(log.lines, ElementsAre("Could not get administrator rights: " + pathOf(GetParam().inTheWay) +
                                       kOpenToOthers + kWhatHelps));
    EXPECT_EQ(reason, pathOf(GetParam().inTheWay) + kOpenToOthers + kWhatHelps);
  }
}
INSTANTIATE_TEST_SUITE_P(
    Parts, StagingPath,
    testing::Values(Part{"PrefixOfRoot", "", 0, 0755}, Part{"PrefixOfAStranger", "", kStranger, 0755, ""},
                    Part{"PrefixWritableByTheGroup", "", 0, 0775, ""},
                    Part{"PrefixWritableByOthersButSticky", "", 0, 01777},
                    Part{"FolderAboveOfAStranger", "/..", kStranger, 0755, "/.."},
                    Part{"FolderOnTheWayOfAStranger", "/private", kStranger, 0755, "/private"},
                    Part{"FolderOnTheWayWritableByOthers", "/private", 0, 0777, "/private"},
                    Part{"StagingFolderOfAStranger", "/private/tmp", kStranger, 01777, "/private/tmp"},
                    Part{"StagingFolderThatIsNotSticky", "/private/tmp", 0, 0777, "/private/tmp"},
                    Part{"StagingFolderOfRootAlone", "/private/tmp", 0, 0700},
                    Part{"ClientFolderOfAStranger", "/Library/Corvane", kStranger, 0755, "/Library/Corvane"},
                    Part{"ClientFolderThatIsSticky", "/Library/Corvane", 0, 01777, "/Library/Corvane"},
                    Part{"FolderAboveTheClientsOfAStranger", "/Library", kStranger, 0755, "/Library"}),
    [](const testing::TestParamInfo<Part>& value) { return value.param.name; });

TEST_F(AsRoot, StagingFolderThatIsMissingMayNotBeMadeByOthersMeanwhile) {
  std::filesystem::remove(root + "/private/tmp");
  EXPECT_EQ(openLock(), AuthorizationOutcome::Denied);
  EXPECT_EQ(reason, root + "/private/tmp: No such file or directory");
  log.lines.clear();
  own("/private", 0, 01777);
  EXPECT_EQ(openLock(), AuthorizationOutcome::Denied);
  EXPECT_THAT(log.lines, ElementsAre("Could not get administrator rights: " + root + "/private" +
                                     kOpenToOthers + kWhatHelps));
}

TEST_F(AsRoot, LinkToTheStagingFolderKeepsTheLockClosed) {
  std::filesystem::remove(root + "/private/tmp");
  base.makeFolder("elsewhere");
  for (const auto& leadsTo : {base / "elsewhere", base / "missing"}) {
    std::filesystem::create_symlink(leadsTo, root + "/private/tmp");
    log.lines.clear();
    EXPECT_EQ(openLock(), AuthorizationOutcome::Denied);
    EXPECT_THAT(log.lines, ElementsAre("Could not get administrator rights: " + root + "/private/tmp" +
                                       ": a symbolic link stands in the way"));
    std::filesystem::remove(root + "/private/tmp");
  }
}

TEST_F(AsRoot, PrefixThatIsALinkOrMissingKeepsTheLockClosed) {
  std::filesystem::create_symlink(root, base / "link");
  LinuxAuthorization throughLink{loop, log, {.root = base / "link", .helper = kHelper}};
  EXPECT_EQ(openLock(throughLink), AuthorizationOutcome::Denied);
  LinuxAuthorization missing{loop, log, {.root = base / "missing", .helper = kHelper}};
  EXPECT_EQ(openLock(missing), AuthorizationOutcome::Denied);
  EXPECT_THAT(log.lines, ElementsAre("Could not get administrator rights: " + (base / "link") +
                                         ": a symbolic link stands in the way",
                                     "Could not get administrator rights: " + (base / "missing") +
                                         ": No such file or directory"));
}

TEST_F(AsRoot, TheSystemsOwnClientIsTrusted) {
  LinuxAuthorization own{loop, log, {.root = "", .helper = kHelper}};
  const bool canStage = std::filesystem::exists("/private/tmp");
  EXPECT_EQ(openLock(own), canStage ? AuthorizationOutcome::Granted : AuthorizationOutcome::Denied);
  EXPECT_EQ(reason, canStage ? "" : "/private/tmp: No such file or directory");
}

TEST_F(AsRoot, NothingIsWrittenIntoAFolderThatOthersCanChange) {
  ASSERT_EQ(openLock(), AuthorizationOutcome::Granted);
  const auto staging = base.writeFile("tree/private/tmp/a.plist", "new");
  const auto target = base.writeFile("tree/Library/Corvane/PluginSupport/a.plist", "old");
  own("/Library/Corvane/PluginSupport", kStranger, 0755);
  EXPECT_EQ(run("/bin/cp", {staging, target}), launch_status::kDenied);
  EXPECT_EQ(base.readFile("tree/Library/Corvane/PluginSupport/a.plist"), "old");
  EXPECT_THAT(log.lines, ElementsAre("Root command refused: /bin/cp: " + root +
                                     "/Library/Corvane/PluginSupport" + kOpenToOthers));
  own("/Library/Corvane/PluginSupport", 0, 0755);
  EXPECT_EQ(run("/bin/cp", {staging, target}), launch_status::kStarted);
  EXPECT_EQ(base.readFile("tree/Library/Corvane/PluginSupport/a.plist"), "new");
}

TEST_F(AsRoot, FileThatAStrangerStagedIsNeitherCopiedNorRemoved) {
  ASSERT_EQ(openLock(), AuthorizationOutcome::Granted);
  const auto staging = base.writeFile("tree/private/tmp/a.plist", "a stranger's");
  const auto target = base.writeFile("tree/Library/Corvane/a.plist", "old");
  own("/private/tmp/a.plist", kStranger, 0644);
  EXPECT_EQ(run("/bin/cp", {staging, target}), launch_status::kDenied);
  EXPECT_EQ(run("/bin/rm", {staging}), launch_status::kDenied);
  EXPECT_EQ(base.readFile("tree/Library/Corvane/a.plist"), "old");
  EXPECT_TRUE(std::filesystem::exists(staging));
}

TEST_F(AsRoot, HousekeepingLeavesFoldersOfOthersAlone) {
  ASSERT_EQ(openLock(), AuthorizationOutcome::Granted);
  base.writeFile("tree/Library/Corvane/ClientSettings.plist");
  own("/Library/Corvane/ClientSettings.plist", 0, 0600);
  own("/Library/Corvane", kStranger, 0755);
  EXPECT_EQ(run("/bin/sh", {"-c", housekeeping::text("/bin/chmod 644", root)}), launch_status::kDenied);
  struct stat attributes {};
  ASSERT_EQ(::stat((root + "/Library/Corvane/ClientSettings.plist").c_str(), &attributes), 0);
  EXPECT_EQ(attributes.st_mode & 07777, 0600U);
  EXPECT_THAT(log.lines,
              ElementsAre("Root command refused: /bin/chmod: " + root + "/Library/Corvane" + kOpenToOthers));
}

/// What a stranger may own of a program's path, and the line that says so.
struct Program {
  std::string name;
  std::string part;
  std::string line;
};
void PrintTo(const Program& program, std::ostream* stream) { *stream << program.name; }
struct ProgramsOfOthers : AsRoot, testing::WithParamInterface<Program> {
  LaunchStatus validate() {
    std::unique_ptr<OutputPipe> output;
    const auto status =
        services
            .executeWithPrivileges(authorization.get(), kHelper,
                                   {root + "/Library/Corvane/Plugins/check_x", "--test-mode"}, output)
            .status;
    char byte = 0;
    const bool ended = !output || output->read(&byte, 1).endOfFile;
    EXPECT_TRUE(ended);
    return status;
  }
};
TEST_P(ProgramsOfOthers, AreNotRun) {
  ASSERT_EQ(openLock(), AuthorizationOutcome::Granted);
  writeProgram("/Library/Corvane/Plugins/check_x");
  own(GetParam().part, kStranger, 0755);
  EXPECT_EQ(validate(), launch_status::kDenied);
  EXPECT_FALSE(hasRun());
  EXPECT_THAT(log.lines,
              ElementsAre(std::string("Root command refused: ") + kHelper + ": " + root + GetParam().line));
  own(GetParam().part, 0, 0755);
  EXPECT_EQ(validate(), launch_status::kStarted);
  EXPECT_TRUE(hasRun());
}
INSTANTIATE_TEST_SUITE_P(
    Parts, ProgramsOfOthers,
    testing::Values(Program{"ThePlugin", "/Library/Corvane/Plugins/check_x",
                            "/Library/Corvane/Plugins/check_x: others than root can change the program"},
                    Program{"TheirFolder", "/Library/Corvane/Plugins",
                            "/Library/Corvane/Plugins" + kOpenToOthers},
                    Program{"TheClientFolder", "/Library/Corvane", "/Library/Corvane" + kOpenToOthers}),
    [](const testing::TestParamInfo<Program>& value) { return value.param.name; });

TEST_F(AsRoot, ScriptOfAStrangerIsNotRun) {
  ASSERT_EQ(openLock(), AuthorizationOutcome::Granted);
  writeProgram("/Library/Corvane/RunClient");
  own("/Library/Corvane/RunClient", kStranger, 0755);
  EXPECT_EQ(run(kHelper, {"/bin/bash", root + "/Library/Corvane/RunClient", "--log-parent", "prefpane-client",
                          "--force"}),
            launch_status::kDenied);
  EXPECT_THAT(log.lines, ElementsAre(std::string("Root command refused: ") + kHelper + ": " + root +
                                     "/Library/Corvane/RunClient: others than root can change the program"));
}

/// A stranger's tree and an ordinary user, to whom a folder in it belongs.
struct AsUser : AsRoot {
  static constexpr uid_t kUser = 4711;
  void SetUp() override {
    AsRoot::SetUp();
    if (IsSkipped()) return;
    target = base.writeFile("tree/Library/Corvane/a.plist", "old");
    for (const auto* folder : {"", "/private", "/private/tmp", "/Library", "/Library/Corvane",
                               "/Library/Corvane/Plugins", "/Library/Corvane/PluginSupport"})
      own(folder, kUser, 0755);
    own("/Library/Corvane/a.plist", kUser, 0644);
  }
  std::string target;
};

TEST_F(AsUser, OwnTreeOpensDirectly) {
  const test::OtherUser user(kUser);
  EXPECT_TRUE(services.isDirect());
  EXPECT_EQ(openLock(), AuthorizationOutcome::Granted);
  const auto staging = base.writeFile("tree/private/tmp/a.plist", "new");
  EXPECT_EQ(run("/bin/cp", {staging, target}), launch_status::kStarted);
  EXPECT_EQ(base.readFile("tree/Library/Corvane/a.plist"), "new");
  EXPECT_THAT(log.lines, IsEmpty());
}

TEST_F(AsUser, OwnTreeThatOthersCanChangeStaysClosedAndSaysWhere) {
  for (const std::string folder : {"", "/private/tmp", "/Library", "/Library/Corvane"}) {
    own(folder, kUser, 0775);
    {
      const test::OtherUser user(kUser);
      EXPECT_EQ(openLock(), AuthorizationOutcome::Denied);
      EXPECT_THAT(log.lines,
                  ElementsAre("Could not get administrator rights: " + root + folder +
                              ": others than you can change the folder; keep the tree where only you "
                              "can change it"));
    }
    log.lines.clear();
    own(folder, kUser, 0755);
  }
}

/// The link leads to the user's folder while it is looked at, and elsewhere afterwards.
TEST_F(AsUser, StrangersTreeDoesNotOpenDirectlyThroughALinkToTheUsersFolder) {
  for (const auto* folder : {"", "/private", "/private/tmp", "/Library"}) own(folder, kStranger, 0755);
  std::filesystem::rename(root + "/Library/Corvane", base / "users");
  std::filesystem::create_directory_symlink(base / "users", root + "/Library/Corvane");
  ASSERT_EQ(::lchown((root + "/Library/Corvane").c_str(), kStranger, 0), 0);
  const test::OtherUser user(kUser);
  EXPECT_FALSE(services.isDirect());
}

TEST_F(AsUser, StrangersTreeAroundAFolderOfTheUsersStaysClosed) {
  for (const auto* folder : {"", "/private", "/private/tmp", "/Library"}) own(folder, kStranger, 0755);
  const test::OtherUser user(kUser);
  EXPECT_TRUE(services.isDirect());
  EXPECT_EQ(openLock(), AuthorizationOutcome::Denied);
  EXPECT_THAT(log.lines,
              ElementsAre("Could not get administrator rights: " + root +
                          ": others than you can change the folder; keep the tree where only you can "
                          "change it"));
}

TEST_F(AsUser, WhatBecomesAStrangersAfterTheLockWasOpenedIsNotChanged) {
  const auto staging = base.writeFile("tree/private/tmp/a.plist", "new");
  own("/private/tmp/a.plist", kUser, 0600);
  const auto mine = base.writeFile("mine/a.plist", "the user's");
  for (const auto* path : {"mine", "mine/a.plist"}) ASSERT_EQ(::chown((base / path).c_str(), kUser, 0), 0);
  {
    const test::OtherUser user(kUser);
    ASSERT_EQ(openLock(), AuthorizationOutcome::Granted);
  }
  std::filesystem::rename(root + "/Library", base / "old");
  std::filesystem::create_directory(root + "/Library");
  own("/Library", kStranger, 0755);
  std::filesystem::create_directory_symlink(base / "mine", root + "/Library/Corvane");
  ASSERT_EQ(::lchown((root + "/Library/Corvane").c_str(), kStranger, 0), 0);
  const test::OtherUser user(kUser);
  EXPECT_EQ(run("/bin/cp", {staging, target}), launch_status::kDenied);
  EXPECT_EQ(run("/bin/sh", {"-c", housekeeping::text("/bin/chmod 644", root)}), launch_status::kDenied);
  EXPECT_EQ(base.readFile("mine/a.plist"), "the user's");
}

}  // namespace
}  // namespace corvane
