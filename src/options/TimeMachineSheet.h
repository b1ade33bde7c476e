// The advanced sheet of Time Machine: time and period of a manually started backup, and the warning on
// removal. It shows the file's values when it opens and writes them only when it is accepted.
#pragma once

#include <cstdint>

#include "options/OptionsStore.h"
#include "options/OptionsTabView.h"

namespace corvane {

class TimeMachineSheet {
 public:
  /// Both must outlive the sheet.
  TimeMachineSheet(OptionsTabView& view, OptionsStore& timeMachine)
      : view_(view), timeMachine_(timeMachine) {}

  /// Gives the number fields new formatters, which know nothing of an earlier edit.
  void attachFormatters();
  void detachFormatters();
  /// Fills the controls from the store.
  void showSettings();
  /// Drops what an earlier opening has left in the fields. To be called before the settings are shown.
  void forgetEdits();
  /// Opens the sheet on the tab's window.
  void begin();
  /// Writes the settings and closes the sheet.
  void acceptSheet();
  /// Closes the sheet.
  void cancelSheet();

 private:
  [[nodiscard]] std::int32_t enteredHour() const;
  void end();

  OptionsTabView& view_;
  OptionsStore& timeMachine_;
};

}  // namespace corvane
