#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "TreeFixture.h"
#include "helper/CommandRunner.h"

namespace corvane::helper::test {
namespace {

class Housekeeping : public TreeFixture {
 protected:
  Housekeeping() {
    folder.makeFolder("Library/Corvane/Utilities/UpdaterSupport");
    for (const char* file :
         {"Library/Corvane/ClientSettings.plist", "Library/Corvane/PluginSupport/a b.plist",
          "Library/Corvane/Utilities/UpdaterSupport/x.plist"}) {
      ::chmod(folder.writeFile(file, "<plist/>").c_str(), 0600);
    }
  }
  Reply run(helper::Housekeeping::Kind kind, bool distrust = false) {
    CommandRunner runner({.root = folder.path(), .helper = "/usr/libexec/qlhelper"},
                         {.user = ::geteuid(), .distrust = distrust});
    return runner.carryOut({"/bin/sh", {"-c", housekeepingText(kind, folder.path())}}).reply;
  }
};

TEST_F(Housekeeping, ResetsTheModesOfTheListedFiles) {
  expectDone(run(helper::Housekeeping::Kind::ResetModes));
  EXPECT_EQ(attributesOf("Library/Corvane/ClientSettings.plist").st_mode & 07777U, 0644U);
  EXPECT_EQ(attributesOf("Library/Corvane/PluginSupport/a b.plist").st_mode & 07777U, 0644U);
  EXPECT_EQ(attributesOf("Library/Corvane/Utilities/UpdaterSupport/x.plist").st_mode & 07777U, 0644U);
}

TEST_F(Housekeeping, AFileThatIsMissingIsToldInOneLine) {
  ::unlink((folder / "Library/Corvane/ClientSettings.plist").c_str());
  const Reply reply = run(helper::Housekeeping::Kind::ResetModes);
  EXPECT_EQ(reply.outcome, Outcome::Started);
  EXPECT_EQ(reply.exitStatus, 1);
  EXPECT_NE(reply.message.find("ended with exit status 1"), std::string::npos) << reply.message;
}

TEST_F(Housekeeping, FolderThatOthersCanChangeIsLeftAloneByRoot) {
  CORVANE_NEEDS_ROOT();
  for (const char* open :
       {"Library/Corvane", "Library/Corvane/PluginSupport", "Library/Corvane/Utilities/UpdaterSupport"}) {
    ::chmod((folder / open).c_str(), 0777);
    expectDenied(run(helper::Housekeeping::Kind::ResetModes, true), "others than root");
    ::chmod((folder / open).c_str(), 0755);
  }
  EXPECT_EQ(attributesOf("Library/Corvane/ClientSettings.plist").st_mode & 07777U, 0600U);
  expectDone(run(helper::Housekeeping::Kind::ResetModes, true));
}

TEST_F(Housekeeping, ASystemWithoutTheSyntaxCheckerHasNothingToReport) {
  if (::access("/usr/bin/plutil", X_OK) == 0) GTEST_SKIP() << "NOT TESTED: this system has the checker";
  expectDone(run(helper::Housekeeping::Kind::CheckSyntax));
}

}  // namespace
}  // namespace corvane::helper::test
