// The pane's window: greeting and support link above the tabs, the lock at the lower left, version and icon
// at the lower right. It is made empty, so that dialogs have a window while the pane is being built, and is
// then bound to the pane's controls, first the frame and, when that has been painted, what else is seen. The
// pages of the tabs are put in by whoever builds them.
#pragma once

#include <QKeySequence>
#include <QString>
#include <QWidget>
#include <chrono>
#include <memory>

#include "pane/PaneView.h"

namespace Ui {
class PaneWindow;
}

namespace corvane::qt {

class SheetHost;
class TabPane;

class PaneWindow final : public QWidget {
  Q_OBJECT

 public:
  explicit PaneWindow(QWidget* parent = nullptr);
  ~PaneWindow() override;

  /// Shows these controls' title, lock and tabs from now on: what is there before the client has been read.
  /// The controls must live longer than the window. Called once.
  void bindFrameTo(PaneView& view);
  /// Shows the greeting, the support link and the version as well. Called once.
  void bindHeaderTo(PaneView& view);
  /// Shows the product's icon, which takes as long to read as the frame to paint. Called once.
  void bindIconTo(PaneView& view);
  /// Says in the title and beside the lock which tree is open; without it, or with an empty text, nothing
  /// does. Called before the window is shown.
  void setTree(const QString& tree);
  /// The page of the tab; called after `bindFrameTo`. The window takes it over.
  void setTabPage(int index, QWidget* page);
  [[nodiscard]] TabPane& tabs() const;
  /// Shows the window and returns when it has painted itself anew, or after the longest wait when it is not
  /// to be seen so soon (opened minimised, for one). Clicks and keys wait until then. Whether it was seen.
  bool showPainted();
  std::chrono::milliseconds longestWaitForPaint{250};
  /// Sheets of this window.
  [[nodiscard]] SheetHost& sheets() const { return *sheets_; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 signals:
  void painted();

 private:
  /// These keys go to the next tab, wherever the keyboard is.
  void addTabKeys(const QList<QKeySequence>& keys, int step);

  std::unique_ptr<Ui::PaneWindow> ui_;
  QString tree_;
  Window* shown_ = nullptr;  // whose title the window has
  SheetHost* sheets_;
};

}  // namespace corvane::qt
