// The outline as the pane needs it: triangles only where its owner wants them, cells as wide as their kind,
// the current row marked without hiding its controls, one click to type in a cell, everything in reach of the
// keyboard, and word of when the user is in the middle of an act.
#pragma once

#import "AppKit.h"

namespace corvane::appkit {

class OutlineTreeOwner {
 public:
  virtual ~OutlineTreeOwner() = default;
  [[nodiscard]] virtual bool showsTriangle(NSInteger row) = 0;
  /// Where the control of a cell stands in the cell's place.
  [[nodiscard]] virtual NSRect frameOfControl(NSInteger column, NSInteger row, NSRect cell) = 0;
  [[nodiscard]] virtual bool highlightsSelection() const = 0;
  /// What stands in the place of the rows; nil while there are some.
  [[nodiscard]] virtual NSAttributedString* placeholder() = 0;
  [[nodiscard]] virtual bool isTypedIn(NSInteger column, NSInteger row) = 0;
  /// Uses the control of the row, in whatever column it stands.
  virtual void activate(NSInteger row) = 0;
  /// Opens or closes the row; closing what is not open goes to the row above it.
  virtual void disclose(NSInteger row, bool open) = 0;
  virtual void setTracking(bool tracking) = 0;
  virtual void editingDidChange() = 0;
  /// The text in the editor is another one.
  virtual void didType(NSText* editor) = 0;
};

}  // namespace corvane::appkit

@interface CorvaneOutlineTree : CORVANE_OUTLINE_VIEW {
 @public
  corvane::appkit::OutlineTreeOwner* owner_;
}
/// Opens the editor of the cell with its whole text selected.
- (void)typeInColumn:(NSInteger)column row:(NSInteger)row;
@end
