// A pop-up menu, or a box with a list of numbers, that assistive technology calls by its name.
#pragma once

#include <QComboBox>

namespace corvane::qt {

class MenuBox : public QComboBox {
  Q_OBJECT

 public:
  using QComboBox::QComboBox;
};

}  // namespace corvane::qt
