// The advanced sheet of Time Machine: time and period of a manually started backup, and the warning on
// removal. It shows the file's values when it opens and writes them only when it is accepted.
#pragma once

#include <cstdint>

#include "options/OptionsTabView.h"
#include "pane/SettingsFile.h"

namespace corvane {

class TimeMachineSheet {
 public:
  /// Both must outlive the sheet.
  TimeMachineSheet(OptionsTabView& view, SettingsFile& timeMachine)
      : view_(view), timeMachine_(timeMachine) {}

  /// Gives the number fields new formatters, which know nothing of an earlier edit.
  void attachFormatters();
  void detachFormatters();
  /// Fills the controls from the store, all of them: an hour that is being typed goes together with the half
  /// of the day, so that no hour is ever made up of one from the user and one from the file.
  void showSettings();
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
  SettingsFile& timeMachine_;
};

}  // namespace corvane
