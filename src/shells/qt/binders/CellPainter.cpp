#include "binders/CellPainter.h"

#include <QApplication>
#include <QPainter>
#include <QStyle>
#include <QWidget>

#include "AttributedTextLayout.h"
#include "Fonts.h"
#include "Text.h"
#include "TextLine.h"
#include "appearance/FileTypeIcons.h"
#include "appearance/Shapes.h"
#include "binders/CellContents.h"

namespace corvane::qt {
namespace {

constexpr int kGap = 4;
constexpr int kInset = 2;  // of what is drawn from the edge of its cell, for a focus ring

/// The side of a check box with the room of its focus ring.
int boxSide() { return QApplication::style()->pixelMetric(QStyle::PM_IndicatorWidth); }
/// The side of a picture in a row.
int pictureSide() { return toPixels(16); }

}  // namespace

CellPainter::CellPainter(QPainter& painter, const QStyleOptionViewItem& option, const QRect& control,
                         State state)
    : painter_(painter),
      option_(option),
      control_(control),
      enabled_(state.enabled),
      pressed_(state.pressed && state.enabled),
      selected_(option.state.testFlag(QStyle::State_Selected)) {}

QColor CellPainter::textColor() const {
  if (selected_) return option_.palette.color(QPalette::HighlightedText);
  // What is stored is to be read also while it may not be changed: dimmed, but not as pale as a dead control.
  return option_.palette.color(QPalette::Active, enabled_ ? QPalette::Text : QPalette::PlaceholderText);
}

QColor CellPainter::readableColor() const {
  return option_.palette.color(QPalette::Active, selected_ ? QPalette::HighlightedText : QPalette::Text);
}

QStyle::State CellPainter::buttonState() const {
  QStyle::State state = enabled_ ? QStyle::State_Enabled : QStyle::State_None;
  if (pressed_) state |= QStyle::State_Sunken;
  return state;
}

QRect CellPainter::buttonRect(const ButtonCell& cell, const QRect& control, const QFont& font) {
  if (cell.kind == ButtonCell::Kind::MomentaryPushIn) return control;
  const bool isPicture = isPictureButton(cell);
  const int mark = isPicture ? pictureSide() + 2 : boxSide();
  if (isPicture && cell.imagePosition == ButtonCell::ImagePosition::Right) {
    return {control.right() - pictureSide() - kGap, control.top(), pictureSide() + kGap + 1,
            control.height()};
  }
  if (cell.title.text.empty() && !isPicture) {
    return {control.center().x() - boxSide() / 2, control.top(), boxSide(), control.height()};
  }
  const bool isChosen = !cell.title.text.empty();
  const QSizeF title =
      AttributedTextLayout(isChosen ? cell.title : AttributedText(fromQString(wordsOf(cell))), font, {}, {})
          .naturalSize();
  QRect rect = control;
  rect.setWidth(qMin(control.width(), mark + kGap + qCeil(title.width())));
  return rect;
}

void CellPainter::drawText(const AttributedText& text, const QRect& rect, const QColor& color) const {
  AttributedTextLayout(text, option_.font, option_.palette, color, selected_)
      .draw(painter_, rect, Qt::AlignLeft);
}

void CellPainter::drawStyledText(const AttributedText& text) const {
  drawText(text, control_, readableColor());  // also while the controls are disabled
}

void CellPainter::operator()(const EmptyCell& /*cell*/) const {}

void CellPainter::operator()(const ButtonCell& cell) const {
  if (cell.kind == ButtonCell::Kind::MomentaryPushIn) {
    if (cell.bordered) {
      drawPushButton(cell);
    } else {
      drawLink(cell);
    }
  } else if (isPictureButton(cell)) {
    drawPictureButton(cell);
  } else {
    drawSwitch(cell);
  }
}

void CellPainter::drawPushButton(const ButtonCell& cell) const {
  QStyleOptionButton button;
  button.QStyleOption::operator=(option_);
  button.rect = control_;
  button.text = withoutShortcuts(toQString(cell.title.text));
  button.state = buttonState();
  button.palette.setCurrentColorGroup(enabled_ ? QPalette::Active : QPalette::Disabled);
  option_.widget->style()->drawControl(QStyle::CE_PushButton, &button, &painter_, nullptr);
}

void CellPainter::drawLink(const ButtonCell& cell) const {
  const QRect place = control_.adjusted(kInset, 0, 0, 0);
  if (pressed_) painter_.setOpacity(0.5);
  if (enabled_) {
    drawText(cell.title, place, textColor());
  } else {
    drawText(AttributedText(cell.title.text), place, textColor());  // a link's own colour looks live
  }
  painter_.setOpacity(1);
}

void CellPainter::drawSwitch(const ButtonCell& cell) const {
  QStyleOptionButton box;
  box.QStyleOption::operator=(option_);
  box.rect = cell.title.text.empty() ? buttonRect(cell, control_, option_.font) : control_;
  box.rect.setWidth(boxSide());
  box.state = buttonState() | (cell.on ? QStyle::State_On : QStyle::State_Off);
  option_.widget->style()->drawPrimitive(QStyle::PE_IndicatorCheckBox, &box, &painter_, nullptr);
  drawText(cell.title, control_.adjusted(boxSide() + kGap, 0, 0, 0), readableColor());
}

void CellPainter::drawPictureButton(const ButtonCell& cell) const {
  const int top = control_.center().y() - pictureSide() / 2 + 1;
  QRect picture(control_.left() + 1, top, pictureSide(), pictureSide());
  // The blank that some titles begin with is to keep them off their picture; here the gap does.
  const bool bringsBlank = !cell.title.text.empty() && cell.title.text.front() == ' ';
  const int blank = bringsBlank ? option_.fontMetrics.horizontalAdvance(QLatin1Char(' ')) : 0;
  QRect title = control_.adjusted(pictureSide() + kGap + kInset - blank, 0, 0, 0);
  if (cell.imagePosition == ButtonCell::ImagePosition::Right) {
    title = control_.adjusted(kInset - blank, 0, -pictureSide() - 2 * kGap, 0);
    picture.moveRight(control_.right() - 1);
  }
  if (cell.title.text.empty()) {
    const auto hint = selected_ ? QPalette::HighlightedText : QPalette::PlaceholderText;
    drawText(AttributedText(fromQString(wordsOf(cell))), title,
             option_.palette.color(QPalette::Active, hint));
  } else {
    const QString path = shortenedPath(wordsOf(cell), option_.font, title.width());
    drawText(AttributedText(fromQString(path)), title, readableColor());
  }
  if (pressed_) painter_.setOpacity(0.5);
  drawFileTypeIcon(painter_, picture, cell.image, option_.palette, enabled_);
  painter_.setOpacity(1);
}

void CellPainter::operator()(const PopUpButtonCell& cell) const {
  const auto index = static_cast<std::size_t>(cell.selectedIndex);
  const bool chosen = cell.selectedIndex >= 0 && index < cell.items.size();
  drawComboBox(chosen ? cell.items[index] : std::string(), false);
}

void CellPainter::operator()(const ComboBoxCell& cell) const { drawComboBox(cell.text, true); }

void CellPainter::drawComboBox(const std::string& text, bool editable) const {
  QStyleOptionComboBox box;
  box.QStyleOption::operator=(option_);
  box.rect = control_;
  box.editable = editable;
  box.state = enabled_ ? QStyle::State_Enabled : QStyle::State_None;
  const QStyle* style = option_.widget->style();
  style->drawComplexControl(QStyle::CC_ComboBox, &box, &painter_, nullptr);
  const QRect field = style->subControlRect(QStyle::CC_ComboBox, &box, QStyle::SC_ComboBoxEditField, nullptr);
  drawText(AttributedText(text), field,
           enabled_ && !editable ? option_.palette.color(QPalette::ButtonText) : textColor());
}

void CellPainter::operator()(const TextFieldCell& cell) const {
  if (cell.editable) {
    drawField(cell.text, cell.placeholder);
  } else {
    drawText(AttributedText(cell.text), control_, textColor());
  }
}

void CellPainter::operator()(const SecureTextFieldCell& cell) const {
  const QString bullets(cell.echosBullets ? toQString(cell.text).size() : 0, QChar(0x2022));
  drawField(fromQString(bullets), cell.placeholder);
}

void CellPainter::drawField(const std::string& text, const std::string& placeholder) const {
  QColor base = option_.palette.color(QPalette::Base);
  if (!enabled_) base.setAlphaF(0.5F);
  drawRounded(painter_, QRectF(control_).adjusted(2.5, 1.5, -2.5, -1.5), 3.5, base,
              outlineColor(option_.palette));
  const QRect inside = control_.adjusted(7, 0, -7, 0);
  if (text.empty()) {
    drawText(AttributedText(placeholder), inside, option_.palette.color(QPalette::PlaceholderText));
  } else {
    drawText(AttributedText(text), inside, textColor());
  }
}

}  // namespace corvane::qt
