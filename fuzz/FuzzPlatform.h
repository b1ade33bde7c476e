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
#include "support/UnusedServices.h"

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
  bool openUrl(const std::string&) override { return true; }
  std::uint32_t modifierFlags() override { return 0; }
  double textWidth(std::string_view text, const Font&) override { return static_cast<double>(text.size()); }
};

struct PlainBundle final : Bundle {
  std::string name() override { return "Client"; }
  std::string pathForResource(std::string_view, std::string_view) override { return {}; }
  std::string pathForAuxiliaryExecutable(std::string_view) override { return {}; }
};

// Never called by a tab.
using test::AsciiTexts;
using test::NoAuthorization;
using test::NoDirectoryEvents;
using test::NoFileEventQueues;
using test::NoRunLoop;
struct NoProcessListing final : ProcessListing {
  std::optional<std::string> listProcesses() override { std::abort(); }
};

}  // namespace corvane::fuzz
