// A page of controls: makes the views, and ties each to its control for as long as the page lives. Frames are
// in points from the lower left corner of the view that the new one is put in: the page's own, or another one
// of the page.
#pragma once

#include <memory>
#include <vector>

#import "AppKit.h"
#include "binders/Binder.h"
#include "controls/Button.h"
#include "controls/PopUpButton.h"
#include "controls/TextField.h"

namespace corvane::appkit {

class Page {
 public:
  explicit Page(NSSize size);
  Page(const Page&) = delete;
  Page& operator=(const Page&) = delete;
  virtual ~Page();

  [[nodiscard]] NSView* view() const { return view_; }
  /// Nil when it is none of the page's.
  [[nodiscard]] NSView* viewOf(const Control& control) const;
  /// Has the Tab key go through the page's controls, in the order in which they were made, and then on.
  void setKeysAfter(NSView* before, NSView* next) const;

 protected:
  /// Puts what follows into this view of the page; nil for the page itself.
  void putInto(NSView* view) { into_ = view; }

  NSTextField* label(TextField& field, NSRect frame, NSTextAlignment alignment = kLeftAligned);
  /// A line of small print.
  NSTextField* hint(TextField& field, NSRect frame);
  NSTextField* entry(TextField& field, NSRect frame, Placement placement = Placement::Layout);
  /// As wide as its title.
  NSButton* pushButton(Button& button, NSPoint origin);
  NSButton* checkBox(Button& button, NSRect frame);
  NSButton* labelButton(Button& button, NSRect frame, NSTextAlignment alignment = kLeftAligned,
                        Placement placement = Placement::Layout);
  NSPopUpButton* popUp(PopUpButton& button, NSRect frame);
  /// A frame that scrolls the view up and down.
  NSScrollView* scrollView(NSRect frame, NSView* document);

  void add(std::unique_ptr<Binder> binder) { binders_.push_back(std::move(binder)); }
  void put(NSView* view);

 private:
  NSView* view_;
  NSView* into_ = nil;
  std::vector<std::unique_ptr<Binder>> binders_;
};

/// A text that stands on the page without a frame; also for binders of other kinds.
[[nodiscard]] NSTextField* makeLabel(NSRect frame, NSTextAlignment alignment, NSFont* font);

}  // namespace corvane::appkit
