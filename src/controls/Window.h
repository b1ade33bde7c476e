// A window of the pane: the pane's own, or a sheet with controls that opens attached to it. Sheets of one
// window are open one after another, in the order in which they were begun.
#pragma once

#include <deque>
#include <string>

#include "controls/Control.h"

namespace corvane {

class Window final : public Control {
 public:
  explicit Window(std::string title = {}) : title_(std::move(title)) {}
  /// Takes itself off its window, and its sheets off itself; nobody is told, and no other sheet opens.
  ~Window() override;

  [[nodiscard]] const std::string& title() const { return title_; }
  void setTitle(std::string title);

  /// Opens the sheet on this window as soon as the sheets that were begun before it have ended. False for a
  /// window that is begun already or that this window hangs on.
  bool beginSheet(Window& sheet);
  /// Takes the sheet off this window, whether it is open or waits, and opens the next one; nothing happens
  /// when it was not begun here.
  void endSheet(Window& sheet);
  /// The open one.
  [[nodiscard]] Window* attachedSheet() const { return sheet_; }
  /// Whether this window is open as a sheet.
  [[nodiscard]] bool isSheet() const { return parent_ != nullptr && parent_->sheet_ == this; }

  /// For the queue of alerts: called last after another sheet was opened, or the only one ended.
  std::function<void()> onSheetChange;

 private:
  void openNext();

  std::string title_;
  Window* sheet_ = nullptr;
  std::deque<Window*> waiting_;
  Window* parent_ = nullptr;  // the window that this one is begun on
};

}  // namespace corvane
