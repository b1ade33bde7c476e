// Outlines: a model over the core's rows, expansion and selection as the core says, cells drawn by one
// delegate.
//
// A reload can close all rows, and one follows a second after each edit. The binder acts for its user then:
// it opens the rows of the top level again that were open, keeps the row that the keyboard is on and the
// place in the list.
#pragma once

#include <optional>
#include <set>
#include <string>

#include "binders/Binder.h"
#include "binders/OutlinePlace.h"
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
  /// Where the user is, to be found again after a reload.
  struct Whereabouts {
    OutlinePlace current;
    int column = 0;  // of the current cell
    OutlinePlace top;
    int aboveTop = 0;  // how much of the top row is scrolled out of sight, in points
    bool isScrolled = false;
  };
  [[nodiscard]] Whereabouts whereabouts() const;
  void willReload();
  void reload();
  void returnTo(const Whereabouts& before);
  void tellWhetherEmpty();
  void openAgain();
  /// Opens the rows below the index that the core says are open.
  void showExpansionBelow(const QModelIndex& parent);
  void showExpansionOf(const OutlineItem& item);
  void showSelection();
  void userSelected();
  /// Opens the editor of the cell; `press` is where the mouse was pressed in the viewport. False when the
  /// cell has none now.
  bool edit(const QModelIndex& index, std::optional<QPoint> press = std::nullopt);
  /// Uses the control of the row, in whatever column it stands.
  void activateRow(const QModelIndex& index);
  void editBeyond(const QModelIndex& index, bool forward);
  void holdRowsWhileBusy();

  OutlineView& outline_;
  OutlineTree& widget_;
  OutlineModel* model_;
  CellDelegate* delegate_;
  OutlineView::Hold rowsHeld_;         // while the user types or holds the mouse button
  std::set<std::string> openRows_;     // of the top level, by name
  std::optional<Whereabouts> before_;  // during a reload
  bool showing_ = false;               // the selection is being set by us
};

}  // namespace corvane::qt
