// Draws one kind of cell after the other; used by the delegate alone.
#pragma once

#include <QStyle>
#include <QStyleOptionViewItem>

#include "controls/OutlineView.h"

class QPainter;

namespace corvane::qt {

class CellPainter {
 public:
  struct State {
    bool enabled = true;
    bool pressed = false;
  };
  /// `control` is where the cell's control stands.
  CellPainter(QPainter& painter, const QStyleOptionViewItem& option, const QRect& control, State state);

  /// The part of the control that is the button: its picture or box with the title beside it; of a title with
  /// a picture at its right, the picture.
  [[nodiscard]] static QRect buttonRect(const ButtonCell& cell, const QRect& control, const QFont& font);

  void drawStyledText(const AttributedText& text) const;
  void operator()(const EmptyCell& cell) const;
  void operator()(const ButtonCell& cell) const;
  void operator()(const PopUpButtonCell& cell) const;
  void operator()(const TextFieldCell& cell) const;
  void operator()(const SecureTextFieldCell& cell) const;
  void operator()(const ComboBoxCell& cell) const;

 private:
  [[nodiscard]] QColor textColor() const;
  [[nodiscard]] QColor readableColor() const;
  [[nodiscard]] QStyle::State buttonState() const;
  void drawText(const AttributedText& text, const QRect& rect, const QColor& color) const;
  void drawField(const std::string& text, const std::string& placeholder) const;
  void drawComboBox(const std::string& text, bool editable) const;
  void drawPushButton(const ButtonCell& cell) const;
  void drawLink(const ButtonCell& cell) const;
  void drawSwitch(const ButtonCell& cell) const;
  void drawPictureButton(const ButtonCell& cell) const;

  QPainter& painter_;
  const QStyleOptionViewItem& option_;
  QRect control_;
  bool enabled_;
  bool pressed_;
  bool selected_;
};

}  // namespace corvane::qt
