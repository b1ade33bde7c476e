// The windows of the program: one for each tree that is open, and a start page while there is none. `main`
// makes one of this. It owns the panes, gives every window its keys (Ctrl-O, Ctrl-W, Ctrl-Q, F1), and opens
// what is chosen, dropped or named on the command line.
#pragma once

#include <QObject>
#include <QStringList>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "trees/RecentTrees.h"

class QMimeData;

namespace corvane::qt {

class LinuxPane;
class StartPage;

class TreeWindows final : public QObject {
  Q_OBJECT

 public:
  struct Surroundings {
    RecentTrees recents;
    /// The mounted disks that hold a client; asked when a start page is shown.
    std::function<QStringList()> disks;
  };
  explicit TreeWindows(Surroundings surroundings);
  ~TreeWindows() override;

  /// Opens a window on the tree, which need not hold a client; one that is open already comes to the front.
  /// The start page goes. Null when the window was closed before the client was read.
  LinuxPane* openPane(const std::string& rootPrefix);
  /// The same for a folder that a person has chosen. Without a client in it, it is not opened, and its reason
  /// is said: on the start page, or in a panel before the window that it was chosen in.
  void open(const QString& folder, QWidget* chosenIn = nullptr);
  /// Shows the start page, with a reason why something was not opened if there is one.
  void showStart(const QString& refusal = {});

  [[nodiscard]] StartPage* startPage() const { return startPage_.get(); }
  [[nodiscard]] std::vector<LinuxPane*> panes() const;
  [[nodiscard]] bool isAnyOpen() const { return startPage_ != nullptr || !panes_.empty(); }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  /// Gives the window its keys, and lets folders be dropped on it.
  void attend(QWidget& window);
  void chooseFolder(QWidget& window);
  void showAbout(QWidget& window);
  void endStartPage();
  /// Destroys what belongs to windows that were closed.
  void forgetClosed();

  Surroundings surroundings_;
  std::vector<std::unique_ptr<LinuxPane>> panes_;
  const LinuxPane* opening_ = nullptr;
  std::unique_ptr<StartPage> startPage_;
};

/// Looks at the mount points of disks once, and at nothing below them but whether a client is there.
[[nodiscard]] QStringList mountedTrees();

}  // namespace corvane::qt
