// The root helper of a Mac, started as the authorization services start it: with root as the effective user
// only.
#include <csignal>
#include <cstdlib>
#include <string>
#include <vector>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace corvane {
namespace {

constexpr uid_t kNobody = 65534;

struct Ended {
  std::string output;
  int status = -1;
};

/// Runs the helper with these arguments. `prepare` makes the process what it is to be started from.
template <typename Prepare>
Ended runHelper(const std::vector<std::string>& arguments, Prepare prepare) {
  int ends[2];
  EXPECT_EQ(::pipe(ends), 0);
  std::vector<char*> vector{const_cast<char*>("qlhelper")};
  for (const std::string& argument : arguments) vector.push_back(const_cast<char*>(argument.c_str()));
  vector.push_back(nullptr);
  const pid_t child = ::fork();
  if (child == 0) {
    ::dup2(ends[1], 1);
    ::dup2(ends[1], 2);
    prepare();
    ::execv(MAC_QLHELPER_PATH, vector.data());
    ::_exit(99);
  }
  ::close(ends[1]);
  Ended ended;
  char buffer[512];
  ssize_t count = 0;
  while ((count = ::read(ends[0], buffer, sizeof buffer)) > 0)
    ended.output.append(buffer, static_cast<std::size_t>(count));
  ::close(ends[0]);
  int status = 0;
  ::waitpid(child, &status, 0);
  ended.status = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  return ended;
}

void becomeUser() {
  if (::setgid(kNobody) != 0 || ::setresuid(kNobody, 0, 0) != 0) ::_exit(98);
}

class Qlhelper : public testing::Test {
 protected:
  void SetUp() override {
    if (::geteuid() != 0) GTEST_SKIP() << "NOT TESTED: needs root";
  }
};

TEST_F(Qlhelper, TheProgramIsRootInEveryWay) {
  const Ended ended = runHelper({"/bin/sh", "-c", "id -u; id -ru; id -g; id -G"}, becomeUser);
  EXPECT_EQ(ended.output, "0\n0\n0\n0\n");
  EXPECT_EQ(ended.status, 0);
}

TEST_F(Qlhelper, TheProgramGetsTheRestOfTheArgumentsAndItsOutputAndStatusPass) {
  const Ended ended = runHelper(
      {"/bin/sh", "-c", "printf '%s|' \"$@\"; exit 7", "name", "a b", "", "--test-mode"}, becomeUser);
  EXPECT_EQ(ended.output, "a b||--test-mode|");
  EXPECT_EQ(ended.status, 7);
}

TEST_F(Qlhelper, NothingOfTheUsersSessionIsLeft) {
  const Ended ended = runHelper(
      {"/bin/sh", "-c",
       "env -u PWD -u SHLVL -u _ | sort; pwd; umask; test -e /dev/fd/9 && echo open; kill -PIPE $$"},
      [] {
        ::setenv("BASH_ENV", "/tmp/evil", 1);
        ::umask(0);
        ::signal(SIGPIPE, SIG_IGN);
        ::dup2(::open("/dev/null", O_RDONLY), 9);
        becomeUser();
      });
  EXPECT_EQ(ended.output, "PATH=/usr/bin:/bin:/usr/sbin:/sbin\n/\n0022\n");
  EXPECT_EQ(ended.status, 128 + SIGPIPE) << "signals are not ignored any more";
}

TEST_F(Qlhelper, WithoutRootNothingRuns) {
  const Ended ended = runHelper({"/bin/echo", "ran"}, [] {
    if (::setresuid(kNobody, kNobody, kNobody) != 0) ::_exit(98);
  });
  EXPECT_EQ(ended.output, "");
  EXPECT_EQ(ended.status, 77);
}

TEST_F(Qlhelper, AProgramIsNamedByItsAbsolutePath) {
  EXPECT_EQ(runHelper({}, becomeUser).status, 64);
  EXPECT_EQ(runHelper({"echo", "ran"}, becomeUser).status, 64);
  EXPECT_EQ(runHelper({""}, becomeUser).status, 64);
}

TEST_F(Qlhelper, AProgramThatIsNotThereIsNamed) {
  const Ended ended = runHelper({"/no/such/program"}, becomeUser);
  EXPECT_EQ(ended.output, "/no/such/program: No such file or directory\n");
  EXPECT_EQ(ended.status, 127);
}

}  // namespace
}  // namespace corvane
