// What a person hears when the window can't be shown: the toolkit itself would abort, with advice about its
// own installation.
#pragma once

namespace corvane::qt {

/// While this lives, an error that the toolkit does not survive ends the program with one more line on
/// standard error and the exit status 1. For the time in which the application object is made.
class EndWithoutDisplay {
 public:
  EndWithoutDisplay();
  EndWithoutDisplay(const EndWithoutDisplay&) = delete;
  EndWithoutDisplay& operator=(const EndWithoutDisplay&) = delete;
  ~EndWithoutDisplay();
};

}  // namespace corvane::qt
