// Entry fields. Every keystroke is offered to the control; what it refuses is taken out again before it is
// painted, and the caret stays where it was.
#pragma once

#include <QLineEdit>

#include "binders/Binder.h"
#include "controls/TextField.h"

namespace corvane::qt {

class TextFieldBinder final : public Binder {
  Q_OBJECT

 public:
  TextFieldBinder(TextField& field, QLineEdit& widget);

 private:
  void show() override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  void offer(const QString& proposed);
  void remember();

  /// What stood in the widget before the keystroke that is being offered.
  struct Editing {
    int caret = 0;
    int selectionStart = -1;
    int selectionLength = 0;
  };

  TextField& field_;
  QLineEdit& widget_;
  Editing before_;
};

}  // namespace corvane::qt
