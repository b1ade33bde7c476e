#include "controls/Window.h"

#include <utility>

namespace corvane {

Window::~Window() {
  for (Window* sheet : waiting_) sheet->parent_ = nullptr;
  if (sheet_ != nullptr) sheet_->parent_ = nullptr;
  if (parent_ == nullptr) return;
  if (parent_->sheet_ == this) parent_->sheet_ = nullptr;
  std::erase(parent_->waiting_, this);
}

void Window::setTitle(std::string title) {
  if (title == title_) return;
  title_ = std::move(title);
  didChange();
}

bool Window::beginSheet(Window& sheet) {
  if (sheet.parent_ != nullptr) return false;
  for (const Window* window = this; window != nullptr; window = window->parent_) {
    if (window == &sheet) return false;  // a window can't be a sheet of its own sheet
  }
  sheet.parent_ = this;
  waiting_.push_back(&sheet);
  if (sheet_ == nullptr) openNext();
  return true;
}

void Window::endSheet(Window& sheet) {
  if (sheet.parent_ != this) return;
  sheet.parent_ = nullptr;
  if (sheet_ != &sheet) {
    std::erase(waiting_, &sheet);
    return;
  }
  sheet_ = nullptr;
  sheet.didChange();
  if (sheet_ == nullptr) openNext();
}

void Window::openNext() {
  if (!waiting_.empty()) {
    sheet_ = waiting_.front();
    waiting_.pop_front();
    sheet_->didChange();
  }
  didChange();
  if (onSheetChange) onSheetChange();
}

}  // namespace corvane
