// The sheet with the options of Time Machine: its panel, its page of controls, and when it is open.
#pragma once

#include "binders/SheetBinder.h"
#include "options/OptionsTabView.h"
#include "tabs/Page.h"

namespace corvane::appkit {

class TimeMachineSheet final : public Page {
 public:
  /// The controls and the stage must live longer than the sheet.
  TimeMachineSheet(OptionsTabView& view, SheetStage& sheets);
  ~TimeMachineSheet() override;
  [[nodiscard]] NSPanel* panel() const { return panel_; }

 private:
  NSPanel* panel_;
  std::unique_ptr<SheetBinder> binder_;
};

}  // namespace corvane::appkit
