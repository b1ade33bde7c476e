// The rows of one outline for assistive technology: finds the interface of each, tells what changes in those
// that were looked at, and carries out what is done to them. Belongs to the tree widget; its binder makes it.
//
// The toolkit's own interface to a tree is a flat table of cells: most of ours would have no name there, none
// an act. Here a row stands below the row that it belongs to, and is the one control that it shows.
#pragma once

#include <QAccessibleInterface>
#include <QObject>
#include <functional>
#include <map>

#include "accessibility/SpokenRow.h"
#include "binders/OutlineModel.h"
#include "widgets/OutlineTree.h"

namespace corvane::qt {

class AccessibleRows final : public QObject {
  Q_OBJECT

 public:
  /// What only the binder can do.
  struct Acts {
    std::function<bool()> areInReach;
    std::function<void(const QModelIndex&)> openEditor;
    std::function<void(const QModelIndex&)> dropEditor;  // of this row only
  };
  AccessibleRows(OutlineView& outline, OutlineTree& tree, OutlineModel& model, Acts acts);
  ~AccessibleRows() override;

  /// The one of this tree; null before it is bound.
  [[nodiscard]] static AccessibleRows* of(const OutlineTree& tree);

  /// The same one for a row as long as it can be seen or comes back; null for the root and for a row that has
  /// gone.
  [[nodiscard]] QAccessibleInterface* interfaceOf(const OutlineItem& item);
  [[nodiscard]] OutlineItem itemOf(const QModelIndex& index) const { return model_.itemAt(index); }
  /// Of the column with the tree's rows.
  [[nodiscard]] QModelIndex indexOf(const OutlineItem& item) const;
  [[nodiscard]] OutlineView& outline() const { return outline_; }
  [[nodiscard]] OutlineTree& tree() const { return tree_; }

  /// To be called when the outline may have been enabled or disabled: tells it of the rows that are for
  /// changes. The toolkit does so for widgets.
  void tellWhetherEnabled();
  /// Whether anything may be done to the rows now.
  [[nodiscard]] bool areInReach() const { return acts_.areInReach(); }
  /// Presses the button of the row, later: what it does may take as long as a panel is open.
  void press(const OutlineItem& item);
  /// Switches the check box of the row.
  void toggle(const OutlineItem& item);
  /// Opens or closes the row.
  void turn(const OutlineItem& item);
  /// Gives the row a new value, as if it had been typed or chosen there.
  void edit(const OutlineItem& item, const PropertyList& value);
  void openEditor(const OutlineItem& item);
  /// Puts the keyboard on the row.
  void goTo(const OutlineItem& item);

 private:
  struct Known {
    OutlineItem item;
    QAccessible::Id id = 0;
    SpokenRow told;
  };
  void tellChangesOf(const OutlineItem& item);
  void tellExpansionOf(const OutlineItem& item);
  void forgetLater();
  void forgetRowsThatAreGone();

  OutlineView& outline_;
  OutlineTree& tree_;
  OutlineModel& model_;
  Acts acts_;
  bool toldEnabled_;
  std::map<OutlineItem::Id, Known> rows_;  // those that were asked for
};

}  // namespace corvane::qt
