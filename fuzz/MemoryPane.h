// The whole pane over a client whose files lie in memory, with rights for the asking. Whatever it writes must
// be a property list below the client's folders; a file that is staged must be gone after the write.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "FuzzPlatform.h"
#include "assembly/PaneAssembly.h"
#include "support/AsciiTexts.h"
#include "support/ScriptedFileEventQueues.h"
#include "support/VirtualRunLoop.h"
#include "values/PropertyListCodec.h"

namespace corvane::fuzz {

constexpr std::string_view kStaging = "/private/tmp/";

inline void require(bool holds) {
  if (!holds) std::abort();
}

/// The client's files in memory.
struct MemoryTree final : Files, PropertyListFiles {
  bool exists(const std::string& path) override {
    return files.contains(path) || (!missing.contains(path) && !path.ends_with(".plist"));
  }
  ModificationDate modificationDate(const std::string& path) override {
    if (files.count(path) == 0) return {std::nullopt, "missing"};
    return {Date{static_cast<double>(changes[path])}, {}};
  }
  std::optional<std::string> contents(const std::string& path, std::size_t limit) override {
    const auto file = files.find(path);
    if (file == files.end() || file->second.size() > limit) return std::nullopt;
    return file->second;
  }
  std::optional<std::vector<std::string>> walk(const std::string& folder) override {
    std::vector<std::string> names;
    for (const auto& [path, bytes] : files) {
      if (path.starts_with(folder + "/")) names.push_back(path.substr(folder.size() + 1));
    }
    return names;
  }
  PropertyList read(const std::string& path) override {
    const auto file = files.find(path);
    return file != files.end() ? readPropertyList(file->second) : PropertyList();
  }
  Result write(const std::string& path, const PropertyList& value) override {
    auto xml = writeXmlPropertyList(value);
    if (!xml) return {"no property list"};
    put(path, *std::move(xml));
    return {};
  }
  void put(const std::string& path, std::string bytes) {
    files[path] = std::move(bytes);
    ++changes[path];
  }

  std::map<std::string, std::string> files;
  std::map<std::string, int> changes;
  std::set<std::string> missing;  // of what is no file, which is there else
};

/// Rights without a question; the tools work on the files in memory.
struct MemoryRights final : AuthorizationServices {
  using Arguments = std::vector<std::string>;
  struct Reply final : OutputPipe {
    ReadOutcome read(char* buffer, std::size_t) override {
      constexpr std::string_view text = "0,fine\n";
      std::copy(text.begin(), text.end(), buffer);
      return {text.size(), false, false};
    }
  };

  explicit MemoryRights(MemoryTree& memory) : tree(memory) {}
  bool isDirect() const override { return true; }
  void requestRights(std::string_view, Done done) override {
    done({AuthorizationOutcome::Granted, std::make_unique<Authorization>(), {}});
  }
  LaunchOutcome executeWithPrivileges(Authorization* rights, const std::string& program,
                                      const Arguments& arguments) override {
    if (rights == nullptr) return {launch_status::kInvalidAuthorization, {}};
    if (program == tool::kRm) {
      require(arguments.front().starts_with(kStaging));
      tree.files.erase(arguments.front());
    } else if (program == tool::kCp) {
      copy(arguments.front(), arguments.back());
    }
    return {};
  }
  LaunchOutcome executeWithPrivileges(Authorization* rights, const std::string& program,
                                      const Arguments& arguments,
                                      std::unique_ptr<OutputPipe>& output) override {
    LaunchOutcome outcome = executeWithPrivileges(rights, program, arguments);
    if (outcome.status == launch_status::kStarted) output = std::make_unique<Reply>();
    return outcome;
  }
  void copy(const std::string& source, const std::string& target) {
    require(target.starts_with('/') && target.find("/../") == std::string::npos);
    const auto file = tree.files.find(source);
    if (file == tree.files.end()) return;
    const std::string bytes = file->second;
    if (source.starts_with(kStaging)) require(static_cast<bool>(readPropertyList(bytes)));
    tree.put(target, bytes);
  }
  MemoryTree& tree;
};

struct MemoryEvents final : DirectoryEvents {
  struct Stream final : DirectoryEventStream {
    void scheduleWithRunLoop() override {}
    void unscheduleFromRunLoop() override {}
    bool start() override { return true; }
    void stop() override {}
  };
  std::unique_ptr<DirectoryEventStream> createStream(std::vector<std::string> watched, double,
                                                     Callback callback) override {
    directories = std::move(watched);
    deliver = std::move(callback);
    return std::make_unique<Stream>();
  }
  std::vector<std::string> directories;
  Callback deliver;
};

/// The pane with everything around it.
struct MemoryPane {
  MemoryPane() {
    queues.exists = [this](const std::string& path) { return tree.exists(path); };
  }
  void requireEmptyStaging() const {
    for (const auto& [path, bytes] : tree.files) {
      require(!path.starts_with(kStaging) || path.starts_with("/private/tmp/read-"));
    }
  }

  PathTable paths;
  MemoryTree tree;
  MemoryLog log;
  test::VirtualRunLoop loop;
  MemoryEvents events;
  test::ScriptedFileEventQueues queues;
  MemoryRights rights{tree};
  struct : ProcessListing {
    std::optional<std::string> listProcesses() override { return "  PID COMMAND\n    1 diskjournald\n"; }
  } processes;
  test::AsciiTexts texts;
  WillingDialogs dialogs;
  PlainWorkspace workspace;
  PlainBundle bundle;
  Platform platform{log,    tree,      tree,  loop,    events,    queues,
                    rights, processes, texts, dialogs, workspace, bundle};
  PaneAssembly assembly{platform, ""};
};

}  // namespace corvane::fuzz
