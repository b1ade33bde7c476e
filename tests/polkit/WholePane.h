// The whole pane without a window: the assembly over the services of Linux, as the user's process of a test
// holds it. Sheets and open panels are answered by the test.
#pragma once

#include <optional>
#include <string>

#include "assembly/PaneAssembly.h"
#include "platform/linux/LinuxAuthorization.h"
#include "platform/linux/LinuxDirectoryEvents.h"
#include "platform/linux/LinuxFileEventQueues.h"
#include "platform/linux/LinuxProcessListing.h"
#include "platform/linux/LinuxTextComparison.h"
#include "platform/linux/PollRunLoop.h"
#include "posix/PosixFiles.h"
#include "posix/PosixPropertyListFiles.h"
#include "support/Patience.h"
#include "support/TestPlatform.h"

namespace corvane::test {

/// An installed pane, as far as the core asks for it: its helper tool.
class InstalledBundle final : public Bundle {
 public:
  explicit InstalledBundle(std::string helper) : helper_(std::move(helper)) {}
  std::string name() override { return "Monitoring Client"; }
  std::string pathForResource(std::string_view name, std::string_view /*type*/) override {
    return pathForAuxiliaryExecutable(name);
  }
  std::string pathForAuxiliaryExecutable(std::string_view name) override {
    return name == "qlhelper" ? helper_ : std::string();
  }

 private:
  std::string helper_;
};

struct WholePane {
  WholePane(const std::string& root, const std::string& helper)
      : bundle(helper),
        authorization(runLoop, log, {.root = root, .helper = helper}),
        assembly(platform, root) {
    assembly.load();
  }

  /// Clicks the lock and waits for the answer; whether it is open then.
  [[nodiscard]] bool openLock() {
    AuthorizationView& lock = assembly.view().authView;
    lock.click();
    return runLoop.runUntil([&] { return lock.state() != AuthorizationView::State::Asking; },
                            test::kHangSeconds) &&
           lock.state() == AuthorizationView::State::Open;
  }
  void closeLock() { assembly.view().authView.click(); }

  RecordingLog log;
  PosixFiles files;
  PosixPropertyListFiles propertyLists;
  LinuxProcessListing processes;
  LinuxTextComparison texts;
  PollRunLoop runLoop;
  ScriptedDialogs dialogs;
  FakeWorkspace workspace;
  InstalledBundle bundle;
  LinuxDirectoryEvents directoryEvents{runLoop, log};
  LinuxFileEventQueues fileEventQueues{runLoop};
  LinuxAuthorization authorization;
  Platform platform{log,           files,     propertyLists, runLoop, directoryEvents, fileEventQueues,
                    authorization, processes, texts,         dialogs, workspace,       bundle};
  PaneAssembly assembly;
};

}  // namespace corvane::test
