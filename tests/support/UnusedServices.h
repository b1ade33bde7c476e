// Services that the program which links them must never use: each call ends it. For benchmarks and fuzz
// targets, which run one tab of the pane.
#pragma once

#include <cstdlib>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Platform.h"
#include "support/AsciiTexts.h"

namespace corvane::test {

struct NoRunLoop final : RunLoop {
  std::unique_ptr<Source> scheduleTimer(double, bool, std::function<void()>) override { std::abort(); }
};
struct NoDirectoryEvents final : DirectoryEvents {
  std::unique_ptr<DirectoryEventStream> createStream(std::vector<std::string>, double, Callback) override {
    std::abort();
  }
};
struct NoFileEventQueues final : FileEventQueues {
  OpenedPath openForEvents(const std::string&) override { std::abort(); }
  CreatedQueue createQueue() override { std::abort(); }
};
/// Says that no rights are needed, and gives none.
struct NoAuthorization final : AuthorizationServices {
  using Arguments = std::vector<std::string>;
  bool isDirect() const override { return true; }
  void requestRights(std::string_view, Done) override { std::abort(); }
  LaunchOutcome executeWithPrivileges(Authorization*, const std::string&, const Arguments&) override {
    std::abort();
  }
  LaunchOutcome executeWithPrivileges(Authorization*, const std::string&, const Arguments&,
                                      std::unique_ptr<OutputPipe>&) override {
    std::abort();
  }
};

}  // namespace corvane::test
