// Administrator rights on a Mac: one authorization from the opening of the lock to its closing, and tools
// started with it.
#pragma once

#include "platform/Authorization.h"
#include "platform/SystemLog.h"
#include "platform/macos/AuthorizationCalls.h"

namespace corvane {

class MacAuthorization final : public AuthorizationServices {
 public:
  /// `helper` is the absolute path of `qlhelper`.
  MacAuthorization(AuthorizationCalls& calls, SystemLog& log, std::string helper)
      : calls_(calls), log_(log), helper_(std::move(helper)) {}

  [[nodiscard]] bool isDirect() const override { return false; }
  void requestRights(std::string_view right, Done done) override;
  /// A system tool is awaited by the end of its standard output: which process it is, nobody says. The helper
  /// is not; its programs run for as long as they like.
  LaunchOutcome executeWithPrivileges(Authorization* authorization, const std::string& tool,
                                      const std::vector<std::string>& arguments) override;
  LaunchOutcome executeWithPrivileges(Authorization* authorization, const std::string& tool,
                                      const std::vector<std::string>& arguments,
                                      std::unique_ptr<OutputPipe>& output) override;

 private:
  LaunchOutcome launch(Authorization* authorization, const std::string& tool,
                       const std::vector<std::string>& arguments, std::FILE** output);

  AuthorizationCalls& calls_;
  SystemLog& log_;
  std::string helper_;
};

}  // namespace corvane
