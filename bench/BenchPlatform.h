// The platform of the benchmarks that run a tab: real files of Linux below a temporary root, a process
// listing that costs nothing, and services that a benchmark never calls.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "pane/PaneServices.h"
#include "pane/PathTable.h"
#include "platform/Platform.h"
#include "posix/PosixFiles.h"
#include "posix/PosixPropertyListFiles.h"
#include "support/UnusedServices.h"

namespace corvane::bench {

struct SilentLog final : SystemLog {
  void write(std::string_view /*line*/) override {}
};
struct FixedListing final : ProcessListing {
  std::optional<std::string> listProcesses() override { return "  PID\n    1\n"; }
};
struct EvenWidths final : Workspace {
  bool openUrl(const std::string& /*address*/) override { return true; }
  std::uint32_t modifierFlags() override { return 0; }
  double textWidth(std::string_view text, const Font& font) override {
    return static_cast<double>(text.size()) * font.size / 2;
  }
};

// Never called.
struct NoDialogs final : Dialogs {
  void beginSheet(const AlertDescription&, SheetWindow, std::function<void(const AlertResult&)>) override {
    std::abort();
  }
  AlertResult runModalAlert(const AlertDescription&) override { std::abort(); }
  std::vector<std::string> runOpenPanel(const OpenPanelDescription&) override { std::abort(); }
};
struct NoBundle final : Bundle {
  std::string name() override { std::abort(); }
  std::string pathForResource(std::string_view, std::string_view) override { std::abort(); }
  std::string pathForAuxiliaryExecutable(std::string_view) override { std::abort(); }
};

/// An open pane that drops what it is given to write.
struct OpenPane : PaneServices {
  bool unlocked() const override { return true; }
  void addUnlockedObserver(UnlockedObserver& observer) override { observer.unlockedDidChange(); }
  void setPlistFileValues(const std::string&, const PropertyList&) override {}
  Dictionary readRootFile(const std::string&) override { return {}; }
  void executeQLHelperArguments(const std::string&, const std::vector<std::string>&) override {}
  std::optional<std::string> validatePluginWithArguments(const std::string&,
                                                         const std::vector<std::string>&) override {
    return {};
  }
};

class TemporaryRoot {
 public:
  TemporaryRoot() {
    std::string name = (std::filesystem::temp_directory_path() / "corvane-bench-XXXXXX").string();
    if (::mkdtemp(name.data()) == nullptr) std::abort();
    path_ = name;
  }
  TemporaryRoot(const TemporaryRoot&) = delete;
  TemporaryRoot& operator=(const TemporaryRoot&) = delete;
  ~TemporaryRoot() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  [[nodiscard]] const std::string& path() const { return path_; }

 private:
  std::string path_;
};

struct BenchPlatform {
  /// Writes a file with its folders.
  static void writeText(const std::string& path, std::string_view text) {
    std::filesystem::create_directories(std::filesystem::path(path).parent_path());
    std::ofstream(path, std::ios::binary) << text;
  }

  TemporaryRoot root;
  PathTable paths{root.path()};
  SilentLog log;
  PosixFiles files;
  PosixPropertyListFiles propertyLists;
  test::NoRunLoop runLoop;
  test::NoDirectoryEvents directoryEvents;
  test::NoFileEventQueues fileEventQueues;
  test::NoAuthorization authorization;
  FixedListing processes;
  test::AsciiTexts texts;
  NoDialogs dialogs;
  EvenWidths workspace;
  NoBundle bundle;
  Platform platform{log,           files,     propertyLists, runLoop, directoryEvents, fileEventQueues,
                    authorization, processes, texts,         dialogs, workspace,       bundle};
};

}  // namespace corvane::bench
