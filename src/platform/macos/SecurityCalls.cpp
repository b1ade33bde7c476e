#include "platform/macos/SecurityCalls.h"

#include <CoreFoundation/CoreFoundation.h>
#include <Security/Security.h>

namespace corvane {
namespace {

struct Rights final : Authorization {
  ~Rights() override {
    if (reference != nullptr) AuthorizationFree(reference, kAuthorizationFlagDestroyRights);
  }
  AuthorizationRef reference = nullptr;
};

/// What lasts from the question to its answer.
struct Question {
  std::string right;
  AuthorizationCalls::Asked asked;
  std::unique_ptr<Rights> rights = std::make_unique<Rights>();
};

/// From whatever thread the answer came on, to the main run loop.
void answer(const std::shared_ptr<Question>& question, OSStatus status) {
  CFRunLoopPerformBlock(CFRunLoopGetMain(), kCFRunLoopCommonModes, ^{
    question->asked(status, status == errAuthorizationSuccess ? std::move(question->rights) : nullptr);
  });
  CFRunLoopWakeUp(CFRunLoopGetMain());
}

}  // namespace

void SecurityCalls::copyRights(const std::string& right, Asked asked) {
  const auto question = std::make_shared<Question>();
  question->right = right;
  question->asked = std::move(asked);
  const OSStatus created = AuthorizationCreate(nullptr, kAuthorizationEmptyEnvironment,
                                               kAuthorizationFlagDefaults, &question->rights->reference);
  if (created != errAuthorizationSuccess) {
    answer(question, created);
    return;
  }
  AuthorizationItem item = {question->right.c_str(), 0, nullptr, 0};
  const AuthorizationRights rights = {1, &item};
  AuthorizationCopyRightsAsync(
      question->rights->reference, &rights, kAuthorizationEmptyEnvironment,
      kAuthorizationFlagInteractionAllowed | kAuthorizationFlagExtendRights | kAuthorizationFlagPreAuthorize,
      ^(OSStatus status, AuthorizationRights* granted) {
        if (granted != nullptr) AuthorizationFreeItemSet(granted);
        answer(question, status);
      });
}

#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wdeprecated-declarations"  // what followed it wants a signed daemon
std::int32_t SecurityCalls::execute(const Authorization& rights, const std::string& tool,
                                    char* const* arguments, std::FILE** output) {
  return AuthorizationExecuteWithPrivileges(static_cast<const Rights&>(rights).reference, tool.c_str(),
                                            kAuthorizationFlagDefaults, arguments, output);
}
#pragma clang diagnostic pop

}  // namespace corvane
