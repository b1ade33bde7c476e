// The visible part of a sheet: a panel with a shadow that hangs from the window's top. The Tab key stays
// inside; Return presses the default button of the contents, Escape the one whose property `escapes` is set.
#pragma once

#include <QWidget>

class QVBoxLayout;

namespace corvane::qt {

class SheetPanel final : public QWidget {
  Q_OBJECT

 public:
  explicit SheetPanel(QWidget* parent);
  void setContents(QWidget* contents);
  /// Null while no sheet is open.
  [[nodiscard]] QWidget* contents() const;
  /// Gives the keyboard focus to the contents' focus proxy or, without one, to the first control.
  void takeFocus();

 protected:
  void paintEvent(QPaintEvent* event) override;
  bool focusNextPrevChild(bool next) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  [[nodiscard]] QWidget* nextFocus(QWidget* from, bool next) const;
  QVBoxLayout* layout_;
};

}  // namespace corvane::qt
