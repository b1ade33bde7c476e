// Entry fields. Every text is offered to the control before it stands in the field; the control may refuse or
// replace it.
#pragma once

#include <optional>

#include "binders/Binder.h"
#include "controls/TextField.h"
#include "widgets/EntryField.h"

namespace corvane::qt {

class TextFieldBinder final : public Binder {
  Q_OBJECT

 public:
  TextFieldBinder(TextField& field, EntryField& widget);

 private:
  void show() override;
  void endEditingFromAfar();
  void sayWhatIsTaken();
  bool eventFilter(QObject* watched, QEvent* event) override;
  /// What stands in the field once the text was offered; nothing when the offer changed nothing.
  [[nodiscard]] std::optional<QString> textAfter(const QString& proposed);

  TextField& field_;
  EntryField& widget_;
};

}  // namespace corvane::qt
