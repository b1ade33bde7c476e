// Entry fields. Every keystroke is offered to the control, which may refuse or replace it.
#pragma once

#include <QLineEdit>
#include <optional>

#include "binders/Binder.h"
#include "controls/TextField.h"

namespace corvane::qt {

class KeystrokeGuard;

class TextFieldBinder final : public Binder {
  Q_OBJECT

 public:
  TextFieldBinder(TextField& field, QLineEdit& widget);

 private:
  void show() override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  /// What stands in the field once the text was offered; nothing when the offer changed nothing.
  [[nodiscard]] std::optional<QString> textAfter(const QString& proposed);

  TextField& field_;
  QLineEdit& widget_;
  KeystrokeGuard* guard_;
};

}  // namespace corvane::qt
