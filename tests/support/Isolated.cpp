#include "support/Isolated.h"

#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <iterator>

#include <gtest/gtest.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace corvane::test {
namespace {

constexpr int kPassed = 0;
constexpr int kFailed = 1;
constexpr int kImpossible = 77;

bool write(const std::string& path, const std::string& text) {
  std::ofstream file(path);
  file << text << std::flush;
  return static_cast<bool>(file);
}

bool enter(int flags) {
  const auto user = std::to_string(::geteuid());
  const auto group = std::to_string(::getegid());
  if (::unshare(flags) != 0) return false;
  if ((flags & CLONE_NEWUSER) != 0) {
    if (!write("/proc/self/setgroups", "deny") || !write("/proc/self/uid_map", "0 " + user + " 1") ||
        !write("/proc/self/gid_map", "0 " + group + " 1")) {
      return false;
    }
  }
  return (flags & CLONE_NEWNS) == 0 || ::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
}

}  // namespace

IsolatedOutcome runIsolated(int flags, const std::function<void()>& body) {
  std::fflush(nullptr);
  const pid_t child = ::fork();
  if (child < 0) return IsolatedOutcome::Impossible;
  if (child == 0) {
    if (!enter(flags)) ::_exit(kImpossible);
    body();
    std::fflush(nullptr);
    ::_exit(::testing::Test::HasFailure() ? kFailed : ::testing::Test::IsSkipped() ? kImpossible : kPassed);
  }
  int status = 0;
  if (::waitpid(child, &status, 0) != child || !WIFEXITED(status)) return IsolatedOutcome::Failed;
  if (WEXITSTATUS(status) == kImpossible) return IsolatedOutcome::Impossible;
  return WEXITSTATUS(status) == kPassed ? IsolatedOutcome::Passed : IsolatedOutcome::Failed;
}

bool forgetSystemCall(int number) {
  sock_filter steps[] = {
      BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
      BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, static_cast<std::uint32_t>(number), 0, 1),
      BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | ENOSYS),
      BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
  };
  const sock_fprog filter{.len = std::size(steps), .filter = steps};
  return ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
         ::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &filter) == 0;
}

bool setUserLimit(const std::string& name, int value) {
  return write("/proc/sys/user/" + name, std::to_string(value));
}

}  // namespace corvane::test
