// Outlines: the core's rows as objects of the toolkit, expansion and selection as the core says, and in each
// place the control that the core describes. A reload can close all rows; those of the top level that the
// user had opened are opened again.
#pragma once

#include <set>
#include <string>
#include <unordered_map>

#include "binders/Binder.h"
#import "binders/OutlineRow.h"
#include "controls/OutlineView.h"
#include "platform/LateCalls.h"
#import "widgets/OutlineTree.h"

@interface CorvaneOutlineSource : NSObject
CORVANE_OUTLINE_DELEGATE {
 @public
  corvane::appkit::OutlineViewBinder* binder_;
}
@end

namespace corvane::appkit {

class OutlineViewBinder final : public Binder, private OutlineTreeOwner {
 public:
  /// Gives the view its columns, and tells the control the height of a standard row, which is the platform's.
  OutlineViewBinder(OutlineView& outline, CorvaneOutlineTree* view);
  ~OutlineViewBinder() override;

  // For the toolkit; the nil row is the root.
  [[nodiscard]] OutlineView& outline() { return outline_; }
  [[nodiscard]] CorvaneOutlineRow* rowFor(const OutlineItem& item);
  [[nodiscard]] NSCell* cellFor(NSTableColumn* column, CorvaneOutlineRow* row);
  [[nodiscard]] id objectValueFor(NSTableColumn* column, CorvaneOutlineRow* row);
  void setObjectValue(id value, NSTableColumn* column, CorvaneOutlineRow* row);
  [[nodiscard]] bool mayType(NSTableColumn* column, CorvaneOutlineRow* row);
  /// A cell's own control was used.
  void userActed(CorvaneOutlineRow* row, std::size_t column);
  void userDisclosed(CorvaneOutlineRow* row, bool open);
  void userSelected();

 private:
  // OutlineTreeOwner
  bool showsTriangle(NSInteger row) override;
  NSRect frameOfControl(NSInteger column, NSInteger row, NSRect cell) override;
  bool highlightsSelection() const override { return outline_.highlightsSelection(); }
  NSAttributedString* placeholder() override;
  bool isTypedIn(NSInteger column, NSInteger row) override;
  void activate(NSInteger row) override;
  void disclose(NSInteger row, bool open) override;
  void setTracking(bool tracking) override;
  void editingDidChange() override;
  void didType(NSText* editor) override;

  void show() override;
  /// Rows of a disabled outline are still opened and closed; the core ignores the rest.
  [[nodiscard]] bool takesActs() const override { return true; }
  void makeColumns();
  void willReload();
  void reload();
  void showExpansionBelow(const OutlineItem& parent);
  void showExpansionOf(const OutlineItem& item);
  void setOpen(const OutlineItem& item, bool open);
  void showSelection();
  void press(CorvaneOutlineRow* row, std::size_t column);
  void holdRowsWhileBusy();
  [[nodiscard]] std::size_t indexOf(NSTableColumn* column) const;
  [[nodiscard]] OutlineItem itemAt(NSInteger row) const { return outline_.itemAtRow(static_cast<int>(row)); }
  /// What the editor that is open edits; null when none is.
  [[nodiscard]] CellReference editedCell();

  OutlineView& outline_;
  CorvaneOutlineTree* widget_;
  CorvaneOutlineSource* source_;
  std::unordered_map<OutlineItem::Id, CorvaneOutlineRow*> rows_;  // retained
  std::set<std::string> openRows_;                                // of the top level, by name
  NSPoint scrolledTo_ = NSZeroPoint;                              // before a reload
  OutlineView::Hold rowsHeld_;  // while the user types or holds the mouse button
  std::string accepted_;        // what stood last in the editor
  bool isTracking_ = false;     // the mouse, or a menu is open
  bool isPressing_ = false;     // a button is about to act
  bool isShowing_ = false;      // what the toolkit tells now it was told by us
  LateCalls calls_;
};

}  // namespace corvane::appkit
