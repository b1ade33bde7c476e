// One client: the services of Linux and the pane over the files below one root, driven without a window. The
// lock opens at most once, so that the user is asked at most once for each tree.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "Services.h"
#include "Session.h"
#include "assembly/PaneAssembly.h"
#include "platform/linux/LinuxSystem.h"

namespace corvane::cli {

class Tree {
 public:
  /// `root` is the root prefix, empty for the running system. `about` stands before what is said of the tree.
  Tree(const Session& session, const std::string& root, std::string about);
  Tree(const Tree&) = delete;
  Tree& operator=(const Tree&) = delete;
  ~Tree();

  /// "/" for the running system.
  [[nodiscard]] std::string root() const { return root_.empty() ? "/" : root_; }
  [[nodiscard]] const PathTable& paths() const { return paths_; }
  [[nodiscard]] Platform& platform() { return platform_; }

  struct Needs {
    bool client = true;    // a tree without one is complained of
    bool plugins = false;  // else they are not read, since that takes long where there are many
  };
  /// Loads the pane, or what of it is needed.
  [[nodiscard]] bool load(Needs needs);
  /// The loaded pane.
  [[nodiscard]] PaneAssembly& pane() { return *pane_; }
  [[nodiscard]] CliDialogs& dialogs() { return dialogs_; }
  /// Opens the lock of the loaded pane and waits for the answer. Complains when it stays closed.
  [[nodiscard]] int openLock();

  /// Begins an act: what was told and logged until now is not about it.
  void beginAct();
  /// How the act has ended so far: complains of everything that the pane could not save or start.
  [[nodiscard]] int endAct();
  /// An act of which nothing came, for the reason that the pane has logged or the given one.
  [[nodiscard]] int nothingCame(std::string_view what, std::string_view reason);

  int complain(std::string_view text, int status);
  /// Complains of those of the files that the pane could not read.
  [[nodiscard]] int complainOfUnreadable(const std::vector<std::string>& files);
  /// Those of the loaded pane, on this disk.
  [[nodiscard]] std::vector<std::string> unreadableFiles();

 private:
  [[nodiscard]] bool isReadable(const std::string& folder);

  std::string root_;
  std::string about_;
  const Session& session_;
  PathTable paths_;
  CliBundle bundle_;
  CliWorkspace workspace_;
  CliDialogs dialogs_;
  CliLog log_;
  LinuxSystem system_;
  Platform platform_;
  OutlineView::Hold pluginsHeld_;  // the tab waits with reading them
  std::unique_ptr<PaneAssembly> pane_;
};

}  // namespace corvane::cli
