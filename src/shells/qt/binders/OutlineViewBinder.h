// Outlines: a model over the core's rows, expansion and selection as the core says, cells drawn by one
// delegate.
#pragma once

#include "binders/Binder.h"
#include "controls/OutlineView.h"
#include "widgets/OutlineTree.h"

namespace corvane::qt {

class CellDelegate;
class OutlineModel;

class OutlineViewBinder final : public Binder {
  Q_OBJECT

 public:
  /// Also tells the control the height of a standard row, which is the platform's to choose.
  OutlineViewBinder(OutlineView& outline, OutlineTree& widget);
  ~OutlineViewBinder() override;

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
  void edit(const QModelIndex& index);

  OutlineView& outline_;
  OutlineTree& widget_;
  OutlineModel* model_;
  CellDelegate* delegate_;
  bool showing_ = false;  // the selection is being set by us
};

}  // namespace corvane::qt
