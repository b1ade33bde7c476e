// A client's tree for the tests of the file operations. When the tests run as root, the tree is root's and
// the staging files belong to another user, as on an installed machine.
#pragma once

#include <string>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "helper/RootTree.h"
#include "support/TemporaryFolder.h"

namespace corvane::helper::test {

inline constexpr uid_t kUser = 4711;
inline constexpr uid_t kStranger = 4712;

/// True when the test can be made only by root and is not; says so.
#define CORVANE_NEEDS_ROOT() \
  if (::geteuid() != 0) GTEST_SKIP() << "NOT TESTED: this needs root, to act as several users"

class TreeFixture : public testing::Test {
 protected:
  TreeFixture() {
    ::chmod(folder.path().c_str(), 0755);
    folder.makeFolder("private/tmp");
    ::chmod((folder / "private/tmp").c_str(), 01777);
    folder.makeFolder("Library/Corvane/PluginSupport");
  }

  /// A staging file of the user.
  std::string stage(const std::string& name, const std::string& contents) const {
    const auto path = folder.writeFile("private/tmp/" + name, contents);
    own(path, user);
    return path;
  }
  static void own(const std::string& path, uid_t owner, gid_t group = 0) {
    if (::geteuid() != 0) return;
    EXPECT_EQ(::lchown(path.c_str(), owner, group), 0);
  }
  [[nodiscard]] bool exists(const std::string& relative) const {
    struct stat attributes {};
    return ::lstat((folder / relative).c_str(), &attributes) == 0;
  }
  [[nodiscard]] struct stat attributesOf(const std::string& relative) const {
    struct stat attributes {};
    EXPECT_EQ(::lstat((folder / relative).c_str(), &attributes), 0) << relative;
    return attributes;
  }
  [[nodiscard]] RootTree tree() const { return RootTree(folder.path(), user, observers); }

  corvane::test::TemporaryFolder folder;
  TreeObservers observers;
  const uid_t user = ::geteuid() == 0 ? kUser : ::geteuid();
};

inline void expectDone(const Reply& reply) {
  EXPECT_EQ(reply.outcome, Outcome::Started) << reply.message;
  EXPECT_EQ(reply.exitStatus, 0) << reply.message;
  EXPECT_EQ(reply.message, "");
}
inline void expectDenied(const Reply& reply, const std::string& why) {
  EXPECT_EQ(reply.outcome, Outcome::Denied);
  EXPECT_NE(reply.message.find(why), std::string::npos) << reply.message;
}

}  // namespace corvane::helper::test
