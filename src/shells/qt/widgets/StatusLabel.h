// The line that says what could not be saved or started. For assistive technology it is a notification, which
// is spoken when it appears.
#pragma once

#include "widgets/FittedLabel.h"

namespace corvane::qt {

class StatusLabel final : public FittedLabel {
  Q_OBJECT

 public:
  explicit StatusLabel(QWidget* parent = nullptr);

 protected:
  [[nodiscard]] QColor color() const override;
};

}  // namespace corvane::qt
