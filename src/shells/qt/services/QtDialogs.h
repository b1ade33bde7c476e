// Alerts as sheets of the pane's window, one modal alert panel, and the desktop's own panel for opening
// files.
#pragma once

#include <QPointer>
#include <QString>
#include <utility>

#include "platform/Dialogs.h"
#include "widgets/SheetHost.h"

namespace corvane::qt {

class QtDialogs final : public Dialogs {
 public:
  /// Every sheet belongs to the one window of the host.
  explicit QtDialogs(SheetHost& host) : host_(host) {}

  /// What the window alone knows about the next alert with this message, and says in words of its own below
  /// the alert's; other sheets may come before it. An empty note takes back the one before.
  void addNote(std::string message, QString note) { note_ = {std::move(message), std::move(note)}; }

  void beginSheet(const AlertDescription& alert, SheetWindow window,
                  std::function<void(const AlertResult&)> ended) override;
  AlertResult runModalAlert(const AlertDescription& alert) override;
  [[nodiscard]] std::vector<std::string> runOpenPanel(const OpenPanelDescription& panel) override;

 private:
  [[nodiscard]] QWidget* visibleWindow() const;

  SheetHost& host_;
  [[nodiscard]] QString takeNoteOf(const AlertDescription& alert);

  std::pair<std::string, QString> note_;  // by the message of its alert
};

}  // namespace corvane::qt
