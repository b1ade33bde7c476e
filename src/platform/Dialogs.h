// Alerts and open panels. Sheets do not block: their end comes as a call. Modal panels block and run their
// own loop.
#pragma once

#include <algorithm>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace corvane {

enum class AlertStyle { Warning = 0, Informational = 1, Critical = 2 };

/// Return codes: 1000 for the first button, then one more for each further one.
inline constexpr int kAlertFirstButtonReturn = 1000;
/// The key equivalent of the Return key.
inline constexpr const char* kReturnKey = "\r";

struct AlertButton {
  std::string title;
  /// The platform's choice when not given; an empty text takes the key equivalent away.
  std::optional<std::string> keyEquivalent;
  bool cancels = false;  // leaves everything as it is; Escape presses it
  friend bool operator==(const AlertButton&, const AlertButton&) = default;
};

struct AlertCheckBox {
  std::string title;
  double width = 0;  // points
  double height = 0;
  bool on = false;
  bool refusesFirstResponder = false;  // never takes the keyboard focus
  friend bool operator==(const AlertCheckBox&, const AlertCheckBox&) = default;
};

struct AlertDescription {
  AlertStyle style = AlertStyle::Warning;
  std::string messageText;
  std::string informativeText;
  std::vector<AlertButton> buttons;  // from the right, the first one first
  std::string iconPath;              // empty: the style's own icon
  std::optional<AlertCheckBox> accessory;
  friend bool operator==(const AlertDescription&, const AlertDescription&) = default;
};

/// The button that Escape presses: the one that cancels, or the only one; null when there is none.
[[nodiscard]] inline const AlertButton* escapeButton(const AlertDescription& alert) {
  if (alert.buttons.size() == 1) return &alert.buttons.front();
  const auto found = std::ranges::find_if(alert.buttons, &AlertButton::cancels);
  return found != alert.buttons.end() ? &*found : nullptr;
}

struct AlertResult {
  int returnCode = 0;
  bool accessoryOn = false;
};

/// Which window a sheet belongs to.
enum class SheetWindow { ApplicationMainWindow, PaneWindow };

struct OpenPanelDescription {
  bool canChooseFiles = true;
  bool canChooseDirectories = false;
  bool allowsMultipleSelection = false;
  std::string directory;  // start folder; empty: the platform chooses
};

class Dialogs {
 public:
  virtual ~Dialogs() = default;
  /// Shows the alert as a sheet. `ended` is called once, when the sheet has gone; perhaps before this
  /// returns. A platform is asked for one sheet at a time: the pane lets further ones wait.
  virtual void beginSheet(const AlertDescription& alert, SheetWindow window,
                          std::function<void(const AlertResult&)> ended) = 0;
  /// Shows the alert as an application-modal panel titled with its message text; returns when it was
  /// answered.
  virtual AlertResult runModalAlert(const AlertDescription& alert) = 0;
  /// The chosen paths; empty when the panel was cancelled.
  [[nodiscard]] virtual std::vector<std::string> runOpenPanel(const OpenPanelDescription& panel) = 0;
};

}  // namespace corvane
