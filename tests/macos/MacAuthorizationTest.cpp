#include <cstdio>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include "platform/macos/MacAuthorization.h"
#include "support/TestPlatform.h"

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* kHelper = "/bundle/Contents/MacOS/qlhelper";

struct GivenRights final : Authorization {};

/// Authorization services that answer what the test says.
class FakeCalls final : public AuthorizationCalls {
 public:
  struct Launch {
    std::string tool;
    std::vector<std::string> arguments;
    bool wantsOutput = false;
  };

  void copyRights(const std::string& right, Asked asked) override {
    asked_.emplace_back(right);
    answer = std::move(asked);
  }
  std::int32_t execute(const Authorization& /*rights*/, const std::string& tool, char* const* arguments,
                       std::FILE** output) override {
    launches.push_back({tool, {}, output != nullptr});
    for (; *arguments != nullptr; ++arguments) launches.back().arguments.emplace_back(*arguments);
    if (status == 0 && output != nullptr) *output = std::exchange(pipe, nullptr);
    return status;
  }

  std::vector<std::string> asked_;
  Asked answer;
  std::vector<Launch> launches;
  std::int32_t status = 0;
  std::FILE* pipe = nullptr;
};

class MacAuthorizationTest : public testing::Test {
 protected:
  ~MacAuthorizationTest() override {
    if (writeEnd >= 0) ::close(writeEnd);
  }
  void makePipe() {
    int ends[2];
    ASSERT_EQ(::pipe(ends), 0);
    calls.pipe = ::fdopen(ends[0], "r");
    writeEnd = ends[1];
  }
  void print(const std::string& text) {
    ASSERT_EQ(::write(writeEnd, text.data(), text.size()), static_cast<ssize_t>(text.size()));
  }
  void endOutput() { ::close(std::exchange(writeEnd, -1)); }

  FakeCalls calls;
  test::RecordingLog log;
  MacAuthorization authorization{calls, log, kHelper};
  GivenRights rights;
  int writeEnd = -1;
};

TEST_F(MacAuthorizationTest, EveryStatusIsOneOutcomeAndAllButTheUsersOwnAreLogged) {
  const struct {
    std::int32_t status;
    AuthorizationOutcome outcome;
    std::vector<std::string> lines;
  } cases[] = {
      {0, AuthorizationOutcome::Granted, {}},
      {-60006, AuthorizationOutcome::Cancelled, {}},
      {-60005,
       AuthorizationOutcome::Denied,
       {"Could not get administrator rights: the authorization services answered -60005"}},
      {-60007,
       AuthorizationOutcome::Unavailable,
       {"Could not get administrator rights: the authorization services answered -60007"}},
  };
  for (const auto& [status, outcome, lines] : cases) {
    log.lines.clear();
    std::vector<AuthorizationOutcome> heard;
    bool given = false;
    std::string reason;
    authorization.requestRights("system.privilege.admin", [&](const AuthorizationAnswer& answer) {
      heard.push_back(answer.outcome);
      given = answer.rights != nullptr;
      reason = answer.reason;
    });
    EXPECT_THAT(heard, IsEmpty()) << "nobody has answered yet";
    calls.answer(status, status == 0 ? std::make_unique<GivenRights>() : nullptr);
    EXPECT_THAT(heard, ElementsAre(outcome)) << status;
    EXPECT_EQ(given, status == 0);
    EXPECT_EQ(log.lines, lines);
    EXPECT_EQ(reason.empty(), lines.empty());
  }
  EXPECT_EQ(calls.asked_, std::vector<std::string>(4, "system.privilege.admin"));
}

TEST_F(MacAuthorizationTest, AClosedLockStartsNothing) {
  std::unique_ptr<OutputPipe> output;
  EXPECT_EQ(authorization.executeWithPrivileges(nullptr, "/bin/rm", {"/x"}).status, -60002);
  EXPECT_EQ(authorization.executeWithPrivileges(nullptr, kHelper, {"/x"}, output).status, -60002);
  EXPECT_EQ(output, nullptr);
  EXPECT_THAT(calls.launches, IsEmpty());
}

TEST_F(MacAuthorizationTest, ASystemToolIsReadToItsEnd) {
  makePipe();
  const int pipe = ::dup(::fileno(calls.pipe));
  print(std::string(2000, 'x'));
  endOutput();
  EXPECT_EQ(authorization.executeWithPrivileges(&rights, "/bin/cp", {"/a b", "/c"}).status, 0);
  ASSERT_EQ(calls.launches.size(), 1U);
  EXPECT_EQ(calls.launches[0].tool, "/bin/cp");
  EXPECT_THAT(calls.launches[0].arguments, ElementsAre("/a b", "/c"));
  EXPECT_TRUE(calls.launches[0].wantsOutput);
  char left = 0;
  EXPECT_EQ(::read(pipe, &left, 1), 0) << "something was left unread";
  ::close(pipe);
}

TEST_F(MacAuthorizationTest, TheHelperIsNotWaitedFor) {
  EXPECT_EQ(authorization.executeWithPrivileges(&rights, kHelper, {"/bin/bash", "/Library/Corvane/RunClient"})
                .status,
            0);
  ASSERT_EQ(calls.launches.size(), 1U);
  EXPECT_FALSE(calls.launches[0].wantsOutput);
}

TEST_F(MacAuthorizationTest, AToolThatDoesNotStartGivesItsStatusAndNoOutput) {
  calls.status = -60031;
  std::unique_ptr<OutputPipe> output;
  EXPECT_EQ(authorization.executeWithPrivileges(&rights, "/bin/cp", {}).status, -60031);
  EXPECT_EQ(authorization.executeWithPrivileges(&rights, kHelper, {}).status, -60031);
  EXPECT_EQ(authorization.executeWithPrivileges(&rights, kHelper, {}, output).status, -60031);
  EXPECT_EQ(output, nullptr);
}

TEST_F(MacAuthorizationTest, OneReadOfAReplyTakesWhatHasCome) {
  makePipe();
  std::unique_ptr<OutputPipe> output;
  ASSERT_EQ(authorization.executeWithPrivileges(&rights, kHelper, {"/plugin", "--test-mode"}, output).status,
            0);
  ASSERT_NE(output, nullptr);
  char buffer[1000];
  print("0,fi");
  OutputPipe::ReadOutcome read = output->read(buffer, sizeof buffer);
  EXPECT_EQ(std::string(buffer, read.bytes), "0,fi");
  print("ne\n");
  endOutput();
  read = output->read(buffer, sizeof buffer);
  EXPECT_EQ(std::string(buffer, read.bytes), "ne\n");
  EXPECT_FALSE(read.error || read.endOfFile);
  read = output->read(buffer, sizeof buffer);
  EXPECT_EQ(read.bytes, 0U);
  EXPECT_TRUE(read.endOfFile);
}

}  // namespace
}  // namespace corvane
