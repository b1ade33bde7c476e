// What every binder does: it ties one control of the core to one view, shows the control after each change
// (enabled, hidden, tool tip, accessible name, and what its kind adds) and hands the user's acts back. The
// control and the view live longer than the binder, which holds no values and decides nothing.
#pragma once

#import "AppKit.h"
#include "controls/Control.h"

namespace corvane::appkit {

/// Who places the view. The core counts as AppKit does, in points from the lower left corner.
enum class Placement {
  Layout,      // the page
  Horizontal,  // x and width are the control's frame, the rest the page's
  Frame,       // the control's frame
};

[[nodiscard]] inline NSRect toNSRect(const Rect& frame) {
  return NSMakeRect(frame.x, frame.y, frame.width, frame.height);
}

class Binder {
 public:
  virtual ~Binder();
  Binder(const Binder&) = delete;
  Binder& operator=(const Binder&) = delete;
  [[nodiscard]] const Control& control() const { return control_; }
  [[nodiscard]] NSView* view() const { return view_; }
  /// Whether the Tab key stops at the view while that can be used.
  [[nodiscard]] virtual bool isTabStop() const { return [view_ isKindOfClass:[NSControl class]]; }

 protected:
  Binder(Control& control, NSView* view, Placement placement = Placement::Layout);
  /// Called by the constructor of each kind when everything is wired, then after each change.
  void refresh();
  /// Shows what the kind adds.
  virtual void show() {}
  /// Whether the view takes acts at all; a kind may take some while its control is disabled.
  [[nodiscard]] virtual bool takesActs() const { return control_.enabled(); }

 private:
  void place();
  [[nodiscard]] bool hasKeyboard() const;
  void takeKeyboardAway();

  Control& control_;
  NSView* view_;
  Placement placement_;
};

/// A view that shows no more than every control has: its place, and whether it is hidden.
class PlainBinder final : public Binder {
 public:
  PlainBinder(Control& control, NSView* view, Placement placement) : Binder(control, view, placement) {
    refresh();
  }
};

}  // namespace corvane::appkit
