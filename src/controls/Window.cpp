#include "controls/Window.h"

#include <utility>

namespace corvane {

Window::~Window() {
  if (sheet_ != nullptr) sheet_->parent_ = nullptr;
  if (parent_ != nullptr) parent_->sheet_ = nullptr;
}

void Window::setTitle(std::string title) {
  if (title == title_) return;
  title_ = std::move(title);
  didChange();
}

bool Window::beginSheet(Window& sheet) {
  if (sheet_ != nullptr || sheet.isSheet()) return false;
  for (const Window* window = this; window != nullptr; window = window->parent_) {
    if (window == &sheet) return false;  // a window can't be a sheet of its own sheet
  }
  sheet_ = &sheet;
  sheet.parent_ = this;
  sheet.didChange();
  didChange();
  return true;
}

void Window::endSheet(Window& sheet) {
  if (sheet_ != &sheet) return;
  sheet_ = nullptr;
  sheet.parent_ = nullptr;
  sheet.didChange();
  didChange();
}

}  // namespace corvane
