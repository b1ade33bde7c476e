#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/linux/LinuxProcessListing.h"
#include "posix/Pipe.h"

namespace corvane {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

/// A process that lives until it is told to end.
class Child {
 public:
  Child() : pipe_(makePipe()), pid_(::fork()) {
    if (pid_ != 0) return;
    pipe_.writeEnd.reset();
    char byte = 0;
    static_cast<void>(::read(pipe_.readEnd.get(), &byte, 1));
    ::_exit(0);
  }
  Child(const Child&) = delete;
  Child& operator=(const Child&) = delete;
  ~Child() { end(); }
  void end() {
    pipe_.writeEnd.reset();
    if (pid_ > 0) ::waitpid(pid_, nullptr, 0);
    pid_ = -1;
  }
  [[nodiscard]] pid_t pid() const { return pid_; }

 private:
  Pipe pipe_;
  pid_t pid_;
};

std::string lineOf(pid_t process) {
  const std::string id = std::to_string(process);
  return "\n" + std::string(id.size() < 7 ? 7 - id.size() : 0, ' ') + id + "\n";
}

std::string listing() { return LinuxProcessListing().listProcesses().value_or("none"); }

TEST(LinuxProcessListing, IsAHeadingAndAnIdALineAllAtTheRightOfAColumn) {
  EXPECT_THAT(listing(), ::testing::MatchesRegex("    PID\n([ 0-9]{6}[0-9]\n)+"));
  EXPECT_THAT(listing(), HasSubstr(lineOf(::getpid())));
}

TEST(LinuxProcessListing, IsMadeAnewOnEachCallWithoutStartingAProgram) {
  Child child;
  const std::string pid = lineOf(child.pid());
  EXPECT_THAT(listing(), HasSubstr(pid));
  child.end();
  EXPECT_THAT(listing(), Not(HasSubstr(pid)));
  EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1) << "it left a child";
}

}  // namespace
}  // namespace corvane
