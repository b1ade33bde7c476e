// A window of the core that opens as a sheet: its contents slide from the top of the pane while the core says
// that it is open.
#pragma once

#include "binders/Binder.h"
#include "controls/Window.h"
#include "widgets/SheetHost.h"

namespace corvane::qt {

class SheetBinder final : public QObject {
  Q_OBJECT

 public:
  /// The contents belong to the host from now on.
  SheetBinder(Window& sheet, QWidget& contents, SheetHost& host);
  ~SheetBinder() override;

 private:
  void refresh();

  Window& sheet_;
  QWidget& contents_;
  SheetHost& host_;
};

}  // namespace corvane::qt
