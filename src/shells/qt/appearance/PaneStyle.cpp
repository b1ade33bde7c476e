#include "appearance/PaneStyle.h"

#include <QComboBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QPainter>
#include <QPainterPath>
#include <QStyleFactory>
#include <QStyleOption>

#include "Fonts.h"
#include "TextLine.h"
#include "appearance/Appearance.h"
#include "appearance/Contrast.h"
#include "appearance/Shapes.h"

namespace corvane::qt {
namespace {

// In points.
constexpr double kControlHeight = 24;
constexpr double kCheckBox = 14;
constexpr double kHeaderSize = 11;

constexpr int kShortestSlider = 24;
constexpr int kRing = 2;  // the room of the focus ring around a control

/// The height of a control that holds one line of text with so much room around it.
int heightAround(const QFontMetrics& metrics, double room, double atLeast) {
  return alignedHeight(qMax(toPixels(atLeast), metrics.height() + toPixels(room)), metrics);
}

bool enabled(const QStyleOption* option) { return option->state.testFlag(QStyle::State_Enabled); }
bool pressed(const QStyleOption* option) { return option->state.testFlag(QStyle::State_Sunken); }
bool focused(const QStyleOption* option) {
  return option->state.testFlag(QStyle::State_HasFocus) && enabled(option);
}

/// The field of an editable combo box stands inside the box's own frame.
bool isFieldOfBox(const QWidget* widget) {
  return widget != nullptr && qobject_cast<const QComboBox*>(widget->parentWidget()) != nullptr;
}

/// The colour as it is seen over an opaque one.
QColor overlaid(const QColor& color, const QColor& ground) {
  const auto mix = [&](float below, float above) { return below + (above - below) * color.alphaF(); };
  return QColor::fromRgbF(mix(ground.redF(), color.redF()), mix(ground.greenF(), color.greenF()),
                          mix(ground.blueF(), color.blueF()));
}

void drawPushButton(const QStyleOptionButton& option, QPainter& painter) {
  const bool isDefault = option.features.testFlag(QStyleOptionButton::DefaultButton) && enabled(&option);
  const QRectF frame = QRectF(option.rect).adjusted(2.5, 2.5, -2.5, -2.5);
  QColor fill = option.palette.color(isDefault ? QPalette::Highlight : QPalette::Button);
  if (!enabled(&option)) fill.setAlphaF(0.5F);
  if (pressed(&option)) fill = isDark(option.palette) ? fill.lighter(120) : fill.darker(112);
  drawRounded(painter, frame, 5.5, fill, isDefault ? fill.darker(108) : outlineColor(option.palette));
  if (focused(&option)) (isDefault ? drawFocusRingApart : drawFocusRing)(painter, frame, 5.5, option.palette);
}

void drawCheckBox(const QStyleOption& option, QPainter& painter, const QRect& rect) {
  const bool on = option.state.testFlag(QStyle::State_On);
  const bool mixed = option.state.testFlag(QStyle::State_NoChange);
  const int side = toPixels(kCheckBox);
  const QRectF frame =
      QRectF(rect.left() + (rect.width() - side) / 2, rect.top() + (rect.height() - side) / 2, side, side);
  QColor fill = option.palette.color(on || mixed ? QPalette::Highlight : QPalette::Base);
  if (!enabled(&option)) {
    fill = on || mixed ? option.palette.color(QPalette::Disabled, QPalette::WindowText) : fill;
    fill.setAlphaF(0.6F);
  }
  if (pressed(&option)) fill = fill.darker(112);
  const QColor window = option.palette.color(QPalette::Window);
  const QColor seen = overlaid(fill, window);
  // All that is seen of an empty box.
  const QColor empty =
      readable(overlaid(outlineColor(option.palette), seen),
               option.palette.color(QPalette::Active, QPalette::Text), {seen, window}, kMarkContrast);
  drawRounded(painter, frame.adjusted(0.5, 0.5, -0.5, -0.5), 3.5, fill,
              on || mixed ? fill.darker(108) : empty);
  if (on || mixed)
    drawCheckMark(painter, frame, mixed, markOn(seen, option.palette.color(QPalette::HighlightedText)));
  if (focused(&option)) {
    (on || mixed ? drawFocusRingApart : drawFocusRing)(painter, frame.adjusted(0.5, 0.5, -0.5, -0.5), 3.5,
                                                       option.palette);
  }
}

void drawEntryFrame(const QStyleOption& option, QPainter& painter) {
  const QRectF frame = QRectF(option.rect).adjusted(2.5, 2.5, -2.5, -2.5);
  QColor base = option.palette.color(QPalette::Base);
  if (!enabled(&option)) base.setAlphaF(0.5F);
  drawRounded(painter, frame, 3.5, base, outlineColor(option.palette));
  if (focused(&option)) drawFocusRing(painter, frame, 3.5, option.palette);
}

bool isFirst(const QStyleOptionTab& tab) {
  return tab.position == QStyleOptionTab::Beginning || tab.position == QStyleOptionTab::OnlyOneTab;
}
bool isLast(const QStyleOptionTab& tab) {
  return tab.position == QStyleOptionTab::End || tab.position == QStyleOptionTab::OnlyOneTab;
}

/// The tab's piece of the bar, without the room around the bar for the focus ring.
QRectF pieceOfBar(const QStyleOptionTab& tab) {
  return QRectF(tab.rect).adjusted(isFirst(tab) ? 3.5 : 0, 3.5, isLast(tab) ? -3.5 : 0, -3.5);
}

void drawTab(const QStyleOptionTab& option, QPainter& painter) {
  const bool selected = option.state.testFlag(QStyle::State_Selected);
  const bool first = isFirst(option);
  const bool last = isLast(option);
  const QRectF whole = pieceOfBar(option);
  painter.save();
  painter.setClipRect(option.rect);
  // Every tab is a piece of one rounded bar: the ends are drawn too wide where they meet a neighbour.
  const QRectF bar = whole.adjusted(first ? 0 : -10, 0, last ? 0 : 10, 0);
  QColor fill = option.palette.color(selected ? QPalette::Highlight : QPalette::Button);
  if (pressed(&option) && !selected) fill = fill.darker(110);
  drawRounded(painter, bar, 5.5, fill, selected ? fill.darker(108) : outlineColor(option.palette));
  if (!last && !selected && option.selectedPosition != QStyleOptionTab::NextIsSelected) {
    painter.setPen(outlineColor(option.palette));
    painter.drawLine(QPointF(whole.right() - 0.5, whole.top() + 4),
                     QPointF(whole.right() - 0.5, whole.bottom() - 4));
  }
  painter.restore();
  if (focused(&option)) drawFocusRingApart(painter, whole, 5.5, option.palette);
}

/// The text without the marks of its keys; "&&" stands for "&".
QString withoutMarks(QString text) {
  for (qsizetype at = text.indexOf(QLatin1Char('&')); at >= 0; at = text.indexOf(QLatin1Char('&'), at + 1))
    text.remove(at, 1);
  return text;
}

void drawTabLabel(const QStyleOptionTab& option, QPainter& painter) {
  const bool selected = option.state.testFlag(QStyle::State_Selected);
  painter.setPen(option.palette.color(enabled(&option) ? QPalette::Active : QPalette::Disabled,
                                      selected ? QPalette::HighlightedText : QPalette::ButtonText));
  // In the middle of what is coloured: the ends of the bar leave room for a ring.
  QRect piece = pieceOfBar(option).toAlignedRect();
  piece.setTop(option.rect.top());
  piece.setBottom(option.rect.bottom());
  drawTextLine(painter, piece, Qt::AlignCenter, withoutMarks(option.text));
}

/// A line below, and one to the right where another section follows.
void drawHeaderSection(const QStyleOption& option, QPainter& painter) {
  const QRect& rect = option.rect;
  const QColor line = separatorColor(option.palette);
  painter.fillRect(rect, option.palette.color(QPalette::Base));
  painter.fillRect(QRect(rect.left(), rect.bottom(), rect.width(), 1), line);
  const auto* section = qstyleoption_cast<const QStyleOptionHeader*>(&option);
  if (section != nullptr && section->position != QStyleOptionHeader::End)
    painter.fillRect(QRect(rect.right(), rect.top() + 3, 1, rect.height() - 6), line);
}

void drawComboBox(const QStyleOptionComboBox& option, QPainter& painter) {
  const QRectF frame = QRectF(option.rect).adjusted(2.5, 2.5, -2.5, -2.5);
  QColor fill = option.palette.color(option.editable ? QPalette::Base : QPalette::Button);
  if (!enabled(&option)) fill.setAlphaF(0.5F);
  drawRounded(painter, frame, option.editable ? 3.5 : 5.5, fill, outlineColor(option.palette));
  QRectF arrows = frame;
  arrows.setLeft(frame.right() - toPixels(16));
  arrows.adjust(-1, 2, -2, -2);
  if (enabled(&option)) {
    drawRounded(painter, arrows, 4, option.palette.color(QPalette::Highlight), Qt::transparent);
  }
  const QColor ground = enabled(&option) ? option.palette.color(QPalette::Highlight)
                                         : overlaid(fill, option.palette.color(QPalette::Window));
  drawChevrons(painter, arrows, option.editable,
               markOn(ground, option.palette.color(enabled(&option) ? QPalette::HighlightedText
                                                                    : QPalette::PlaceholderText)));
  if (focused(&option)) drawFocusRing(painter, frame, option.editable ? 3.5 : 5.5, option.palette);
}

/// Scroll bars have no arrow buttons: the slider runs over their whole length.
QRect scrollBarPart(const QStyleOptionSlider& bar, QStyle::SubControl part) {
  const bool horizontal = bar.orientation == Qt::Horizontal;
  const int length = horizontal ? bar.rect.width() : bar.rect.height();
  const qint64 range = qint64{bar.maximum} - bar.minimum;
  int slider = length;
  if (range > 0) {
    slider = qBound(qMin(kShortestSlider, length),
                    static_cast<int>(length * qint64{bar.pageStep} / (range + bar.pageStep)), length);
  }
  const int start = QStyle::sliderPositionFromValue(bar.minimum, bar.maximum, bar.sliderPosition,
                                                    length - slider, bar.upsideDown);
  const auto piece = [&](int from, int size) {
    const QRect rect =
        horizontal ? QRect(from, 0, size, bar.rect.height()) : QRect(0, from, bar.rect.width(), size);
    return QStyle::visualRect(bar.direction, bar.rect, rect.translated(bar.rect.topLeft()));
  };
  switch (part) {
    case QStyle::SC_ScrollBarSlider:
      return piece(start, slider);
    case QStyle::SC_ScrollBarSubPage:
      return piece(0, start);
    case QStyle::SC_ScrollBarAddPage:
      return piece(start + slider, length - start - slider);
    case QStyle::SC_ScrollBarGroove:
      return bar.rect;
    default:
      return {};
  }
}

}  // namespace

PaneStyle::PaneStyle() : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion"))) {}

QPalette PaneStyle::standardPalette() const { return lightPalette(); }

// A desktop's own palette is mended in this one point.
void PaneStyle::polish(QPalette& palette) {
  QProxyStyle::polish(palette);
  keepReadable(palette);
}

void PaneStyle::polish(QWidget* widget) {
  QProxyStyle::polish(widget);
  if (auto* header = qobject_cast<QHeaderView*>(widget)) {
    QFont font = header->font();
    font.setPixelSize(toPixels(kHeaderSize));
    header->setFont(font);
  }
}

void PaneStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                              const QWidget* widget) const {
  switch (element) {
    case PE_IndicatorCheckBox:
    case PE_IndicatorItemViewItemCheck:
      drawCheckBox(*option, *painter, option->rect);
      return;
    case PE_PanelLineEdit:
      if (!isFieldOfBox(widget)) drawEntryFrame(*option, *painter);
      return;
    case PE_FrameTabBarBase:
    case PE_FrameFocusRect:
      return;  // the focus ring stands in its place
    case PE_IndicatorBranch:
      if (option->state.testFlag(State_Children)) {
        drawDisclosure(*painter, option->rect, option->state.testFlag(State_Open),
                       option->palette.color(QPalette::PlaceholderText));
      }
      return;
    case PE_PanelTipLabel: {
      QColor outline = option->palette.color(QPalette::ToolTipText);
      outline.setAlphaF(0.3F);
      painter->fillRect(option->rect, option->palette.color(QPalette::ToolTipBase));
      drawRounded(*painter, QRectF(option->rect).adjusted(0.5, 0.5, -0.5, -0.5), 0, Qt::transparent, outline);
      return;
    }
    case PE_Frame:
      drawRounded(*painter, QRectF(option->rect).adjusted(0.5, 0.5, -0.5, -0.5), 0, Qt::transparent,
                  outlineColor(option->palette));
      return;
    default:
      QProxyStyle::drawPrimitive(element, option, painter, widget);
  }
}

void PaneStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                            const QWidget* widget) const {
  switch (element) {
    case CE_PushButtonBevel:
      if (const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option)) {
        drawPushButton(*button, *painter);
      }
      return;
    case CE_PushButtonLabel:
      if (const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option)) {
        QStyleOptionButton label(*button);
        if (button->features.testFlag(QStyleOptionButton::DefaultButton) && enabled(button)) {
          label.palette.setColor(QPalette::ButtonText, label.palette.color(QPalette::HighlightedText));
        }
        QProxyStyle::drawControl(element, &label, painter, widget);
      }
      return;
    case CE_TabBarTabShape:
      if (const auto* tab = qstyleoption_cast<const QStyleOptionTab*>(option)) drawTab(*tab, *painter);
      return;
    case CE_TabBarTabLabel:
      if (const auto* tab = qstyleoption_cast<const QStyleOptionTab*>(option)) drawTabLabel(*tab, *painter);
      return;
    case CE_Header:
      if (const auto* header = qstyleoption_cast<const QStyleOptionHeader*>(option)) {
        drawHeaderSection(*header, *painter);
        QStyleOptionHeader label(*header);
        // Above the texts of a table's rows; the letters need the whole height.
        label.rect.adjust(6, 0, -2, -1);
        // The toolkit's list of files says only at which side its titles stand.
        if (!(label.textAlignment & Qt::AlignVertical_Mask)) label.textAlignment |= Qt::AlignVCenter;
        QProxyStyle::drawControl(CE_HeaderLabel, &label, painter, widget);
      }
      return;
    case CE_HeaderEmptyArea: {
      QStyleOption empty(*option);  // no section, whatever else it says
      empty.type = QStyleOption::SO_Default;
      drawHeaderSection(empty, *painter);
      return;
    }
    default:
      QProxyStyle::drawControl(element, option, painter, widget);
  }
}

void PaneStyle::drawItemText(QPainter* painter, const QRect& rect, int flags, const QPalette& palette,
                             bool isEnabled, const QString& text, QPalette::ColorRole role) const {
  const bool showsKeys = (flags & Qt::TextShowMnemonic) != 0 &&
                         styleHint(SH_UnderlineShortcut, nullptr, nullptr, nullptr) != 0 &&
                         text.contains(QLatin1Char('&')) && !text.contains(QLatin1String("&&"));
  if ((flags & Qt::TextWordWrap) != 0 || text.contains(QLatin1Char('\n')) || showsKeys) {
    QProxyStyle::drawItemText(painter, rect, flags, palette, isEnabled, text, role);
    return;
  }
  painter->save();
  if (role != QPalette::NoRole) painter->setPen(QPen(palette.brush(role), painter->pen().widthF()));
  const bool hasMarks = (flags & (Qt::TextShowMnemonic | Qt::TextHideMnemonic)) != 0;
  drawTextLine(*painter, rect, Qt::Alignment(flags & (Qt::AlignHorizontal_Mask | Qt::AlignVertical_Mask)),
               hasMarks ? withoutMarks(text) : text);
  painter->restore();
}

void PaneStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                   QPainter* painter, const QWidget* widget) const {
  if (control == CC_ComboBox) {
    if (const auto* box = qstyleoption_cast<const QStyleOptionComboBox*>(option))
      drawComboBox(*box, *painter);
    return;
  }
  if (control == CC_ScrollBar) {
    const QRect slider = subControlRect(control, option, SC_ScrollBarSlider, widget);
    painter->fillRect(option->rect, option->palette.color(QPalette::Base));
    QColor color = option->palette.color(QPalette::Active, QPalette::WindowText);
    color.setAlphaF(option->activeSubControls.testFlag(SC_ScrollBarSlider) ? 0.5F : 0.3F);
    if (enabled(option))
      drawRounded(*painter, QRectF(slider).adjusted(3, 3, -3, -3), 3.5, color, Qt::transparent);
    return;
  }
  QProxyStyle::drawComplexControl(control, option, painter, widget);
}

QRect PaneStyle::subElementRect(SubElement element, const QStyleOption* option, const QWidget* widget) const {
  const QRect rect = QProxyStyle::subElementRect(element, option, widget);
  if (element != SE_LineEditContents) return rect;
  // The text of a box stays where it is when the box opens its field; any other field leaves room between its
  // frame's rounded corner and the text.
  return isFieldOfBox(widget) ? rect.adjusted(-2, 0, 2, 0) : rect.adjusted(4, 0, -4, 0);
}

int PaneStyle::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const {
  switch (metric) {
    case PM_IndicatorWidth:
    case PM_IndicatorHeight:
      return toPixels(kCheckBox) + 2 * kRing;
    case PM_CheckBoxLabelSpacing:
      return toPixels(4);
    case PM_ButtonDefaultIndicator:
    case PM_ButtonShiftHorizontal:
    case PM_ButtonShiftVertical:
    case PM_TabBarTabOverlap:
    case PM_TabBarBaseOverlap:
    case PM_TabBarTabShiftHorizontal:
    case PM_TabBarTabShiftVertical:
      return 0;
    case PM_TabBarTabHSpace:
      return toPixels(32);
    case PM_TabBarTabVSpace:
      return toPixels(12);
    case PM_HeaderMargin:
      return 3;
    case PM_ToolTipLabelFrameWidth:
      return 4;
    default:
      return QProxyStyle::pixelMetric(metric, option, widget);
  }
}

int PaneStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                         QStyleHintReturn* result) const {
  switch (hint) {
    case SH_TabBar_Alignment:
      return Qt::AlignHCenter;
    case SH_ItemView_ShowDecorationSelected:
      return 1;
    case SH_LineEdit_PasswordCharacter:
      return 0x2022;  // as in the cells that show a password
    case SH_EtchDisabledText:
    case SH_DialogButtonBox_ButtonsHaveIcons:
      return 0;
    default:
      return QProxyStyle::styleHint(hint, option, widget, result);
  }
}

QSize PaneStyle::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                                  const QWidget* widget) const {
  switch (type) {
    case CT_PushButton: {
      const QFontMetrics metrics = option != nullptr ? option->fontMetrics : QFontMetrics(QFont());
      return {size.width() + toPixels(30), heightAround(metrics, 12, kControlHeight + 4)};
    }
    case CT_CheckBox: {
      const QSize base = QProxyStyle::sizeFromContents(type, option, size, widget);
      return {base.width(), alignedHeight(qMax(pixelMetric(PM_IndicatorHeight, option, widget),
                                               option->fontMetrics.height()),
                                          option->fontMetrics)};
    }
    case CT_LineEdit: {
      const QSize base = QProxyStyle::sizeFromContents(type, option, size, widget);
      return {base.width() + 4, heightAround(option->fontMetrics, 10, kControlHeight + 2)};
    }
    case CT_ComboBox: {
      const QSize base = QProxyStyle::sizeFromContents(type, option, size, widget);
      return {base.width() + toPixels(12), heightAround(option->fontMetrics, 12, kControlHeight + 4)};
    }
    default:
      return QProxyStyle::sizeFromContents(type, option, size, widget);
  }
}

QRect PaneStyle::subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                                const QWidget* widget) const {
  if (control == CC_ComboBox && part == SC_ComboBoxEditField) {
    return option->rect.adjusted(8, 3, -toPixels(24), -3);
  }
  if (control == CC_ScrollBar) {
    if (const auto* bar = qstyleoption_cast<const QStyleOptionSlider*>(option))
      return scrollBarPart(*bar, part);
  }
  return QProxyStyle::subControlRect(control, option, part, widget);
}

}  // namespace corvane::qt
