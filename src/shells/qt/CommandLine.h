// What the command line of `corvane-pane` says.
#pragma once

#include <QString>
#include <QStringList>
#include <optional>
#include <string>

#include "appearance/Appearance.h"

namespace corvane::qt {

struct CommandLine {
  std::optional<std::string> root;  // of --root: canonical; empty for the system's own files
  QString folder;                   // to be opened if it holds a client; empty for none
  QString tab;                      // the label of the tab to show first; empty for the first one
  QString screenshots;              // the folder for pictures; empty for none
  Appearance appearance = Appearance::System;

  // Set when the pane is not to be opened: what to print and how to exit.
  QString output;
  QString error;
  [[nodiscard]] bool opensPane() const { return output.isEmpty() && error.isEmpty(); }
};

/// The first argument is the program's own name.
[[nodiscard]] CommandLine parseCommandLine(const QStringList& arguments);

}  // namespace corvane::qt
