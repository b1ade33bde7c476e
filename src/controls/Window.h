// A window of the pane: the pane's own, or a sheet with controls that opens attached to it.
#pragma once

#include <string>

#include "controls/Control.h"

namespace corvane {

class Window final : public Control {
 public:
  explicit Window(std::string title = {}) : title_(std::move(title)) {}
  /// Takes an open sheet off its window.
  ~Window() override;

  [[nodiscard]] const std::string& title() const { return title_; }
  void setTitle(std::string title);

  /// Opens the sheet on this window. One sheet at a time: beginning another while one is open is refused
  /// (false), and so is a window that is a sheet already or that this window hangs on.
  bool beginSheet(Window& sheet);
  /// Takes the sheet off this window; nothing happens when it is not open here.
  void endSheet(Window& sheet);
  [[nodiscard]] Window* attachedSheet() const { return sheet_; }
  /// Whether this window is open as a sheet.
  [[nodiscard]] bool isSheet() const { return parent_ != nullptr; }

 private:
  std::string title_;
  Window* sheet_ = nullptr;
  Window* parent_ = nullptr;  // the window this one is open on as a sheet
};

}  // namespace corvane
