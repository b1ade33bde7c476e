// Draws one kind of cell after the other; used by the delegate alone.
#pragma once

#include <QStyleOptionViewItem>

#include "controls/OutlineView.h"

class QPainter;

namespace corvane::qt {

class CellPainter {
 public:
  /// `control` is where the cell's control stands, `row` the whole cell.
  CellPainter(QPainter& painter, const QStyleOptionViewItem& option, const QRect& control, bool enabled);

  void drawStyledText(const AttributedText& text) const;
  void operator()(const EmptyCell& cell) const;
  void operator()(const ButtonCell& cell) const;
  void operator()(const PopUpButtonCell& cell) const;
  void operator()(const TextFieldCell& cell) const;
  void operator()(const SecureTextFieldCell& cell) const;
  void operator()(const ComboBoxCell& cell) const;

 private:
  [[nodiscard]] QColor textColor() const;
  void drawText(const AttributedText& text, const QRect& rect, const QColor& color) const;
  void drawField(const QString& text, const std::string& placeholder) const;
  void drawComboBox(const QString& text, bool editable) const;
  void drawPushButton(const ButtonCell& cell) const;
  void drawSwitch(const ButtonCell& cell) const;
  void drawPictureButton(const ButtonCell& cell) const;

  QPainter& painter_;
  const QStyleOptionViewItem& option_;
  QRect control_;
  bool enabled_;
  bool selected_;
};

}  // namespace corvane::qt
