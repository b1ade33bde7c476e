// Outlines: a model over the core's rows, expansion and selection as the core says, cells drawn by one
// delegate.
#pragma once

#include <optional>

#include "binders/Binder.h"
#include "controls/OutlineView.h"
#include "widgets/OutlineTree.h"

namespace corvane::qt {

class CellDelegate;
class OutlineModel;
class SheetHost;

class OutlineViewBinder final : public Binder {
  Q_OBJECT

 public:
  /// Also tells the control the height of a standard row, which is the platform's to choose.
  OutlineViewBinder(OutlineView& outline, OutlineTree& widget);
  ~OutlineViewBinder() override;

  /// Rows stay as they are while a sheet stands before them: what it asks may be about one of them.
  void keepRowsBehind(const SheetHost& sheets);

 private:
  void show() override;
  /// Rows of a disabled outline are still opened and closed; the core ignores the rest.
  [[nodiscard]] bool takesActs() const override { return true; }
  void prepareWidget();
  void reload();
  void showExpansion(const QModelIndex& parent);
  void showExpansionOf(const OutlineItem& item);
  void showSelection();
  void userSelected();
  /// Opens the editor of the cell; `press` is where the mouse was pressed in the viewport. False when the
  /// cell has none now.
  bool edit(const QModelIndex& index, std::optional<QPoint> press = std::nullopt);
  /// Uses the control of the row, in whatever column it stands.
  void activateRow(const QModelIndex& index);
  void editBeyond(const QModelIndex& index, bool forward);
  /// Presses the button of the cell; false when it has none.
  bool press(const QModelIndex& index);
  [[nodiscard]] bool isBusy() const;
  void holdReloadsWhileBusy();

  OutlineView& outline_;
  OutlineTree& widget_;
  OutlineModel* model_;
  CellDelegate* delegate_;
  const SheetHost* sheets_ = nullptr;
  bool isPressing_ = false;  // a button acts, perhaps behind a panel of its own
  bool showing_ = false;     // the selection is being set by us
};

}  // namespace corvane::qt
