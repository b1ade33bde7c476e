#include "binders/SheetBinder.h"

#include "Text.h"

namespace corvane::qt {

SheetBinder::SheetBinder(Window& sheet, QWidget& contents, SheetHost& host)
    : QObject(&contents), sheet_(sheet), contents_(contents), host_(host) {
  contents_.hide();
  contents_.setParent(&host_);
  sheet_.onChange = [this] { refresh(); };
  refresh();
}

SheetBinder::~SheetBinder() { sheet_.onChange = nullptr; }

void SheetBinder::refresh() {
  contents_.setWindowTitle(toQString(sheet_.title()));
  if (sheet_.isSheet()) {
    host_.open(&contents_);
  } else {
    host_.close(&contents_);
  }
}

}  // namespace corvane::qt
