// Alerts as sheets of the pane's window, one modal alert panel, and a panel for opening files: the
// desktop's own, or one that stays inside of the tree.
#pragma once

#include <QPointer>
#include <QString>
#include <memory>
#include <string>
#include <utility>

#include "platform/Dialogs.h"
#include "widgets/SheetHost.h"

class QFileDialog;

namespace corvane::qt {

class QtDialogs final : public Dialogs {
 public:
  /// Every sheet belongs to the one window of the host. Below its own texts every alert says of which tree it
  /// is, and panels choose inside of it, where the root prefix names one.
  explicit QtDialogs(SheetHost& host, std::string rootPrefix = {});

  /// What the window alone knows about the next alert with this message, and says in words of its own below
  /// the alert's; other sheets may come before it. An empty note takes back the one before.
  void addNote(std::string message, QString note) { note_ = {std::move(message), std::move(note)}; }

  void beginSheet(const AlertDescription& alert, SheetWindow window,
                  std::function<void(const AlertResult&)> ended) override;
  AlertResult runModalAlert(const AlertDescription& alert) override;
  [[nodiscard]] std::vector<std::string> runOpenPanel(const OpenPanelDescription& panel) override;

 private:
  [[nodiscard]] QWidget* visibleWindow() const;
  [[nodiscard]] std::unique_ptr<QFileDialog> panelFor(const OpenPanelDescription& description) const;
  /// What the window adds to the alert, and of which tree it is.
  [[nodiscard]] QString takeNoteOf(const AlertDescription& alert);

  SheetHost& host_;
  std::string rootPrefix_;
  QString tree_;                          // what alerts say of it
  QString lastPlace_;                     // where the last panel inside of the tree was left
  std::pair<std::string, QString> note_;  // by the message of its alert
};

}  // namespace corvane::qt
