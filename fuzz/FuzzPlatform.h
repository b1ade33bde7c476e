// The services that a fuzzed tab does not depend on: they answer the least that is possible, and abort where
// the tab must not go at all. A target brings the files that it fuzzes, and the pane that checks what reaches
// root.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Platform.h"

namespace corvane::fuzz {

struct MemoryLog final : SystemLog {
  void write(std::string_view line) override { length += line.size(); }
  std::size_t length = 0;
};

struct WillingDialogs final : Dialogs {
  void beginSheet(const AlertDescription&, SheetWindow,
                  std::function<void(const AlertResult&)> ended) override {
    if (depth > 3) return;
    ++depth;
    ended({kAlertFirstButtonReturn, false});
    --depth;
  }
  AlertResult runModalAlert(const AlertDescription&) override { return {}; }
  std::vector<std::string> runOpenPanel(const OpenPanelDescription&) override { return {"/chosen"}; }
  int depth = 0;
};

struct PlainWorkspace final : Workspace {
  void openUrl(const std::string&) override {}
  std::uint32_t modifierFlags() override { return 0; }
  double textWidth(std::string_view text, const Font&) override { return static_cast<double>(text.size()); }
};

struct PlainBundle final : Bundle {
  std::string name() override { return "Client"; }
  std::string pathForResource(std::string_view, std::string_view) override { return {}; }
  std::string pathForAuxiliaryExecutable(std::string_view) override { return {}; }
};

// Never called by a tab.
struct NoRunLoop final : RunLoop {
  std::unique_ptr<Source> scheduleTimer(double, bool, std::function<void()>) override { std::abort(); }
  std::unique_ptr<Source> watchDescriptor(int, std::function<void()>) override { std::abort(); }
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
struct NoAuthorization final : AuthorizationServices {
  using Arguments = std::vector<std::string>;
  bool isDirect() const override { return true; }
  void requestRights(std::string_view, Done) override { std::abort(); }
  LaunchStatus executeWithPrivileges(Authorization*, const std::string&, const Arguments&) override {
    std::abort();
  }
  LaunchStatus executeWithPrivileges(Authorization*, const std::string&, const Arguments&,
                                     std::unique_ptr<OutputPipe>&) override {
    std::abort();
  }
};
struct NoProcessOutput final : ProcessOutput {
  std::optional<std::string> outputOf(const std::string&, const std::vector<std::string>&) override {
    std::abort();
  }
};

}  // namespace corvane::fuzz
