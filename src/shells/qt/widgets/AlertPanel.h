// The contents of an alert: icon, bold message, informative text, perhaps a check box, and buttons from the
// right. Return presses the button with that key; Escape presses the one that cancels, or the only one. A
// text that is too long for the window scrolls, also with the Page keys.
#pragma once

#include <QWidget>
#include <memory>
#include <vector>

#include "platform/Dialogs.h"

class QCheckBox;
namespace Ui {
class AlertPanel;
}

namespace corvane::qt {

class PushButton;

class AlertPanel final : public QWidget {
  Q_OBJECT

 public:
  /// `note`: what the window itself has to say about it, below the alert's own texts.
  explicit AlertPanel(const AlertDescription& alert, const QString& note = {}, QWidget* parent = nullptr);
  ~AlertPanel() override;

  /// Presses the button that leaves everything as it is, if there is one.
  void cancel();

 signals:
  /// A button was pressed. Sent once.
  void ended(const corvane::AlertResult& result);

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void addButtons(const AlertDescription& alert);
  void addAccessory(const AlertCheckBox& checkBox);
  void finish(int index);

  std::unique_ptr<Ui::AlertPanel> ui_;
  std::vector<PushButton*> buttons_;
  PushButton* default_ = nullptr;
  PushButton* cancel_ = nullptr;
  QCheckBox* accessory_ = nullptr;
  bool ended_ = false;
};

}  // namespace corvane::qt
