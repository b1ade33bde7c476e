// The pane's window: greeting and support link above the tabs, the lock at the lower left, version and icon
// at the lower right. It is made empty, so that dialogs have a window while the pane is being built, and is
// then bound to the pane's controls. The pages of the tabs are put in by whoever builds them.
#pragma once

#include <QWidget>
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

  /// Shows these controls from now on; they must live longer than the window. Called once.
  void bindTo(PaneView& view);
  /// The page of the tab; called after `bindTo`. The window takes it over.
  void setTabPage(int index, QWidget* page);
  [[nodiscard]] TabPane& tabs() const;
  /// Sheets of this window.
  [[nodiscard]] SheetHost& sheets() const { return *sheets_; }

 private:
  std::unique_ptr<Ui::PaneWindow> ui_;
  SheetHost* sheets_;
};

}  // namespace corvane::qt
