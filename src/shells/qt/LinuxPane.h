// The running pane on Linux: the services of the system and of the toolkit, the pane that is built over them,
// and its window. `main` makes one, a test of the whole window another.
#pragma once

#include <memory>
#include <string>

#include "PaneWindow.h"
#include "assembly/PaneAssembly.h"
#include "platform/linux/LinuxSystem.h"
#include "services/QtBundle.h"
#include "services/QtDialogs.h"
#include "services/QtRunLoop.h"
#include "services/QtWorkspace.h"

namespace corvane::qt {

class LinuxPane {
 public:
  /// `root` is the root prefix of the client's files, empty for the system's own.
  explicit LinuxPane(const std::string& root);
  LinuxPane(const LinuxPane&) = delete;
  LinuxPane& operator=(const LinuxPane&) = delete;
  ~LinuxPane();

  /// Shows the window, its frame first, and reads the client's files.
  void open();

  [[nodiscard]] PaneWindow& window() { return *window_; }
  [[nodiscard]] PaneAssembly& assembly() { return assembly_; }
  /// Whether the lock opens without asking for rights.
  [[nodiscard]] bool isDirect() const { return system_.isDirect(); }

 private:
  /// False when the user does not wait any longer.
  [[nodiscard]] bool waitForOutput(int descriptor);

  QtRunLoop runLoop_;
  QtBundle bundle_;
  QtWorkspace workspace_;
  std::unique_ptr<PaneWindow> window_;
  QtDialogs dialogs_;
  LinuxSystem system_;
  PaneAssembly assembly_;
};

}  // namespace corvane::qt
