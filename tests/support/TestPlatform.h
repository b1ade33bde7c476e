// The platform of the tests: real files below a temporary root, everything else recorded or played from a
// script, time on a virtual clock.
#pragma once

#include <deque>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "pane/PathTable.h"
#include "platform/Platform.h"
#include "support/AsciiTexts.h"
#include "support/ScriptedFileEventQueues.h"
#include "support/TemporaryFolder.h"
#include "support/VirtualRunLoop.h"

namespace corvane::test {

class RecordingLog final : public SystemLog {
 public:
  void write(std::string_view line) override { lines.emplace_back(line); }
  std::vector<std::string> lines;
};

/// Real files.
class RealFiles final : public Files {
 public:
  bool exists(const std::string& path) override;
  ModificationDate modificationDate(const std::string& path) override;
  std::optional<std::string> contents(const std::string& path, std::size_t limit) override;
  std::optional<std::vector<std::string>> walk(const std::string& folder) override;
  bool areSame(const std::string& one, const std::string& other) override;
  Held holdFolder(const std::string& folder, double patience) override;
  Held claimTree(const std::string& folder) override;
  /// Played instead of the real date of a path.
  std::map<std::string, ModificationDate> dates;
  std::vector<std::string> holds;  // the folders that are held now
  bool isTaken = false;            // by another process: every folder and tree
};

/// Real property-list files; reads are counted, writes can be made to fail.
class RealPropertyListFiles final : public PropertyListFiles {
 public:
  PropertyList read(const std::string& path) override;
  Result write(const std::string& path, const PropertyList& value) override;
  std::function<PropertyList()> expectCopy(const std::string& path) override;
  std::function<std::size_t(const std::string& path)> copiesTo;  // that root has made so far
  std::vector<std::string> reads;
  std::string whyWritesFail;  // empty: they succeed
};

/// One program that the pane started as root.
struct RootCommand {
  std::string tool;
  std::vector<std::string> arguments;
  bool wantsOutput = false;
  friend bool operator==(const RootCommand&, const RootCommand&) = default;
};
void PrintTo(const RootCommand& command, std::ostream* stream);

/// Records what is started as root; carries out cp, rm and mkdir on the real files unless told otherwise.
class RecordingAuthorization final : public AuthorizationServices {
 public:
  bool isDirect() const override { return direct; }
  void requestRights(std::string_view right, Done done) override;
  LaunchOutcome executeWithPrivileges(Authorization* authorization, const std::string& tool,
                                      const std::vector<std::string>& arguments) override;
  LaunchOutcome executeWithPrivileges(Authorization* authorization, const std::string& tool,
                                      const std::vector<std::string>& arguments,
                                      std::unique_ptr<OutputPipe>& output) override;

  /// Answers the request for rights that waits.
  void answer(AuthorizationOutcome outcome, std::string reason = {});
  [[nodiscard]] std::vector<std::string> toolsStarted() const;

  bool direct = false;
  bool answersAtOnce = true;  // with `outcome`; otherwise the test calls `answer`
  AuthorizationOutcome outcome = AuthorizationOutcome::Granted;
  bool carriesOut = true;
  std::map<std::string, LaunchStatus> statusOfTool;  // 0 for tools that are not named
  std::map<std::string, std::string> reasonOfTool;   // the tool fails for this reason, with its status
  std::deque<std::string> replies;  // what the next programs with a pipe print, one read each
  OutputPipe::ReadOutcome outcomeWithoutReply{0, false, true};
  int pipeReads = 0;
  std::vector<std::string> requestedRights;
  std::vector<RootCommand> commands;
  std::function<void(const RootCommand&)> onCommand;  // hears of each before it is carried out
  Authorization* granted = nullptr;                   // the one that was handed out last, while it lives

 private:
  Done waiting_;
};

class ScriptedProcessListing final : public ProcessListing {
 public:
  std::optional<std::string> listProcesses() override {
    ++made;
    return text;
  }
  std::optional<std::string> text = std::string();
  std::size_t made = 0;
};

/// Keeps the sheets that were begun until the test ends them.
class ScriptedDialogs final : public Dialogs {
 public:
  struct Sheet {
    AlertDescription alert;
    SheetWindow window;
    std::function<void(const AlertResult&)> ended;
  };
  void beginSheet(const AlertDescription& alert, SheetWindow window,
                  std::function<void(const AlertResult&)> ended) override;
  AlertResult runModalAlert(const AlertDescription& alert) override;
  std::vector<std::string> runOpenPanel(const OpenPanelDescription& panel) override;

  /// Ends the oldest open sheet.
  void endSheet(int returnCode, bool accessoryOn = false);

  std::vector<Sheet> sheets;                             // all that were begun, in order
  std::function<void(const AlertDescription&)> onSheet;  // hears of each as it is begun
  std::size_t endedSheets = 0;                           // how many of them have ended
  std::vector<AlertDescription> modalAlerts;
  std::vector<OpenPanelDescription> openPanels;
  std::vector<std::string> chosenPaths;  // what the next open panels answer
};

class FakeWorkspace final : public Workspace {
 public:
  bool openUrl(const std::string& address) override {
    openedUrls.push_back(address);
    return opens;
  }
  std::uint32_t modifierFlags() override { return flags; }
  /// Half the font size for each UTF-16 code unit, unless a width is given for the text.
  double textWidth(std::string_view text, const Font& font) override;
  std::vector<std::string> openedUrls;
  bool opens = true;
  std::uint32_t flags = 0;
  std::map<std::string, double> widths;
  std::vector<std::pair<std::string, Font>> measured;
};

class FakeBundle final : public Bundle {
 public:
  std::string name() override { return "Monitoring Client"; }
  std::string pathForResource(std::string_view name, std::string_view type) override;
  std::string pathForAuxiliaryExecutable(std::string_view name) override;
};

/// Streams whose batches are delivered by the test.
class ScriptedDirectoryEvents final : public DirectoryEvents {
 public:
  struct State {
    std::vector<std::string> directories;
    double latency = 0;
    Callback callback;
    std::vector<std::string> calls;  // "schedule", "start", "stop", "unschedule", "release"
  };
  std::unique_ptr<DirectoryEventStream> createStream(std::vector<std::string> directories, double latency,
                                                     Callback callback) override;
  void deliver(const std::vector<std::string>& directories) { streams.back()->callback(directories); }
  std::vector<std::shared_ptr<State>> streams;
};

/// All of it, over a path table whose root is a temporary folder.
struct TestPlatform {
  TestPlatform();

  TemporaryFolder root;
  PathTable paths;
  RecordingLog log;
  RealFiles files;
  RealPropertyListFiles propertyLists;
  VirtualRunLoop runLoop;
  ScriptedDirectoryEvents directoryEvents;
  ScriptedFileEventQueues fileEventQueues;
  RecordingAuthorization authorization;
  ScriptedProcessListing processes;
  AsciiTexts texts;
  ScriptedDialogs dialogs;
  FakeWorkspace workspace;
  FakeBundle bundle;
  Platform platform;

  /// Makes the folders of an installed client and the system folders, without any file.
  void layOutFolders();
  /// Writes a property-list file (its folder is made); the path is one of `paths` or any other absolute one.
  void writePlist(const std::string& path, const PropertyList& value);
  void writeText(const std::string& path, std::string_view text);
  [[nodiscard]] PropertyList readPlist(const std::string& path);
  void remove(const std::string& path);
};

}  // namespace corvane::test
