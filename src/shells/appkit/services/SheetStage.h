// Where the sheets of the pane come up, one after another as the core begins them. A sheet is never opened
// from inside the call that asks for it: the toolkits differ in whether opening one blocks, and a pane that
// is not shown has no window yet. What is asked for opens from the run loop, when the window is there and the
// sheet before it has gone.
#pragma once

#include <deque>
#include <functional>
#include <memory>

#import "AppKit.h"
#include "platform/LateCalls.h"

namespace corvane::appkit {

class SheetStage {
 public:
  /// One sheet. Whoever holds it may close it; it is dropped when it has ended.
  class Sheet {
   public:
    virtual ~Sheet() = default;
    /// Opens it; `SheetStage::ended` is to be called once it has ended, now or later.
    virtual void begin(NSWindow* parent) = 0;
  };

  /// `window` gives the window of the pane, nil while the pane is not shown.
  explicit SheetStage(std::function<NSWindow*()> window) : window_(std::move(window)) {}

  void add(std::shared_ptr<Sheet> sheet);
  void ended(const Sheet& sheet);
  /// Takes away a sheet that has not been opened yet; false when there is no such one.
  bool withdraw(const Sheet& sheet);
  /// To be called when the pane comes into a window.
  void resume();
  [[nodiscard]] bool isOpen() const { return open_ != nullptr; }
  /// Whether nothing is open and nothing waits.
  [[nodiscard]] bool isEmpty() const { return open_ == nullptr && waiting_.empty(); }

 private:
  void beginNext();

  std::function<NSWindow*()> window_;
  std::deque<std::shared_ptr<Sheet>> waiting_;
  std::shared_ptr<Sheet> open_;
  LateCalls calls_;
};

}  // namespace corvane::appkit
