// A window of the core that opens as a sheet of the pane's window while the core says that it is open.
#pragma once

#include <memory>

#include "controls/Window.h"
#include "services/SheetStage.h"

namespace corvane::appkit {

class SheetBinder {
 public:
  SheetBinder(Window& sheet, NSPanel* panel, SheetStage& queue);
  SheetBinder(const SheetBinder&) = delete;
  SheetBinder& operator=(const SheetBinder&) = delete;
  ~SheetBinder();

 private:
  class OpenSheet;
  void refresh();
  void close();

  Window& sheet_;
  NSPanel* panel_;
  SheetStage& queue_;
  std::shared_ptr<OpenSheet> shown_;
};

}  // namespace corvane::appkit
