#include "platform/macos/MacAuthorization.h"

#include <array>
#include <cerrno>

#include <unistd.h>

namespace corvane {
namespace {

constexpr std::int32_t kCancelled = -60006;  // the services' own number for it

AuthorizationOutcome outcomeOf(std::int32_t status) {
  switch (status) {
    case launch_status::kStarted:
      return AuthorizationOutcome::Granted;
    case kCancelled:
      return AuthorizationOutcome::Cancelled;
    case launch_status::kDenied:
      return AuthorizationOutcome::Denied;
    default:
      return AuthorizationOutcome::Unavailable;
  }
}

class StreamPipe final : public OutputPipe {
 public:
  explicit StreamPipe(std::FILE* stream) : stream_(stream) {}
  StreamPipe(const StreamPipe&) = delete;
  StreamPipe& operator=(const StreamPipe&) = delete;
  ~StreamPipe() override { std::fclose(stream_); }

  // Past the stream's buffer: one read of the pipe, where `fread` would wait for more.
  ReadOutcome read(char* buffer, std::size_t capacity) override {
    ssize_t count = 0;
    do {
      count = ::read(::fileno(stream_), buffer, capacity);
    } while (count < 0 && errno == EINTR);
    return {count > 0 ? static_cast<std::size_t>(count) : 0, count < 0, count == 0};
  }

 private:
  std::FILE* stream_;
};

}  // namespace

void MacAuthorization::requestRights(std::string_view right, Done done) {
  calls_.copyRights(std::string(right), [&log = log_, done = std::move(done)](
                                            std::int32_t status, std::unique_ptr<Authorization> rights) {
    const AuthorizationOutcome outcome = outcomeOf(status);
    std::string reason;
    if (outcome == AuthorizationOutcome::Denied || outcome == AuthorizationOutcome::Unavailable) {
      reason = "the authorization services answered " + std::to_string(status);
      log.write("Could not get administrator rights: " + reason);
    }
    done({outcome, std::move(rights), std::move(reason)});
  });
}

LaunchOutcome MacAuthorization::executeWithPrivileges(Authorization* authorization, const std::string& tool,
                                                      const std::vector<std::string>& arguments) {
  if (tool == helper_) return launch(authorization, tool, arguments, nullptr);
  std::unique_ptr<OutputPipe> output;
  LaunchOutcome outcome = executeWithPrivileges(authorization, tool, arguments, output);
  std::array<char, 512> unread{};
  while (output && output->read(unread.data(), unread.size()).bytes > 0) {
  }
  return outcome;
}

LaunchOutcome MacAuthorization::executeWithPrivileges(Authorization* authorization, const std::string& tool,
                                                      const std::vector<std::string>& arguments,
                                                      std::unique_ptr<OutputPipe>& output) {
  std::FILE* stream = nullptr;
  LaunchOutcome outcome = launch(authorization, tool, arguments, &stream);
  if (stream != nullptr) output = std::make_unique<StreamPipe>(stream);
  return outcome;
}

LaunchOutcome MacAuthorization::launch(Authorization* authorization, const std::string& tool,
                                       const std::vector<std::string>& arguments, std::FILE** output) {
  if (authorization == nullptr) return {launch_status::kInvalidAuthorization, "the lock is closed"};
  std::vector<char*> vector;
  for (const std::string& argument : arguments) vector.push_back(const_cast<char*>(argument.c_str()));
  vector.push_back(nullptr);
  return {calls_.execute(*authorization, tool, vector.data(), output), {}};
}

}  // namespace corvane
