// A window of the pane: the pane's own, or a sheet with controls that opens attached to it.
#pragma once

#include <string>

#include "controls/Control.h"

namespace corvane {

class Window final : public Control {
 public:
  explicit Window(std::string title = {}) : title_(std::move(title)) {}

  [[nodiscard]] const std::string& title() const { return title_; }
  void setTitle(std::string title);

  /// Opens the sheet on this window. One sheet at a time: beginning another while one is open is refused
  /// (false).
  bool beginSheet(Window& sheet);
  /// Takes the sheet off this window; nothing happens when it is not open here.
  void endSheet(Window& sheet);
  [[nodiscard]] Window* attachedSheet() const { return sheet_; }
  /// Whether this window is open as a sheet.
  [[nodiscard]] bool isSheet() const { return isSheet_; }

 private:
  std::string title_;
  Window* sheet_ = nullptr;
  bool isSheet_ = false;
};

}  // namespace corvane
