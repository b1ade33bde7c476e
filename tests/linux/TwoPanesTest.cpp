// Two panes of one user on one tree, each writing a file of its own that has the other's name: both stage it
// at the same path.
#include <memory>
#include <string>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "controls/AuthorizationView.h"
#include "platform/linux/LinuxAuthorization.h"
#include "platform/linux/PollRunLoop.h"
#include "posix/PosixFiles.h"
#include "posix/PosixPropertyListFiles.h"
#include "privileged/RootFileOperations.h"
#include "support/TemporaryFolder.h"
#include "support/TestPlatform.h"

namespace corvane {
namespace {

const std::string kRefused = "Not writing ";
const std::string kWhy = ": another pane is writing";
constexpr int kWrites = 200;

/// Writes the file again and again; how often it did not hold what was written.
int writeOften(const test::TemporaryFolder& tree, const std::string& relative, const std::string& name) {
  test::TestPlatform others;
  PosixFiles files;
  PosixPropertyListFiles propertyLists;
  PollRunLoop loop;
  LinuxAuthorization authorization(loop, others.log, {.root = tree.path(), .helper = "/nonexistent"});
  Platform platform{others.log,
                    files,
                    propertyLists,
                    loop,
                    others.directoryEvents,
                    others.fileEventQueues,
                    authorization,
                    others.processes,
                    others.texts,
                    others.dialogs,
                    others.workspace,
                    others.bundle};
  const PathTable paths(tree.path());
  AuthorizationView lock(authorization);
  lock.setAuthorizationRights("system.privilege.admin");
  lock.click();
  PrivilegedExecution execution(platform, lock);
  RootFileOperations operations(platform, paths, execution);
  int wrong = 0;
  Dictionary stored;
  for (int i = 0; i < kWrites; ++i) {
    const Dictionary values = Dictionary::make(
        {{"Name", PropertyList::string(name)},
         {"Count", PropertyList::integer(i)},
         {"Text", PropertyList::string(std::string(static_cast<std::size_t>(i) * 40, 'x'))}});
    others.log.lines.clear();
    const Result written = operations.setPlistFileValues(tree / relative, values);
    // On a machine that is busy enough, the other one can be waited for in vain; then the file is as it was.
    const bool refused =
        !others.log.lines.empty() && others.log.lines.front() == kRefused + (tree / relative) + kWhy;
    if (!refused) stored = values;
    if (static_cast<bool>(written) == refused || propertyLists.read(tree / relative) != stored ||
        (!refused && !others.log.lines.empty())) {
      ++wrong;
    }
  }
  return wrong;
}

TEST(TwoPanes, EachWritesItsOwnFileAlsoWhereBothHaveOneName) {
  const test::TemporaryFolder tree(test::TemporaryFolder::inMemory());
  tree.makeFolder("private/tmp");
  tree.makeFolder("Library/Corvane/PluginSupport");
  tree.makeFolder("Library/Corvane/Utilities");
  const pid_t other = ::fork();
  if (other == 0) ::_exit(writeOften(tree, "Library/Corvane/Utilities/a.plist", "other"));
  EXPECT_EQ(writeOften(tree, "Library/Corvane/PluginSupport/a.plist", "one"), 0);
  int status = 0;
  ASSERT_EQ(::waitpid(other, &status, 0), other);
  EXPECT_EQ(status, 0);
  EXPECT_FALSE(PosixFiles().exists(tree / "private/tmp/a.plist"));
}

}  // namespace
}  // namespace corvane
