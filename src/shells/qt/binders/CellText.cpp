#include "binders/CellText.h"

#include <QHeaderView>
#include <QPainter>
#include <algorithm>

#include "AttributedTextLayout.h"
#include "Fonts.h"
#include "Text.h"
#include "appearance/Shapes.h"
#include "values/Conversions.h"

namespace corvane::qt {

AttributedText textOf(const ObjectValue& value) {
  if (const auto* text = std::get_if<AttributedText>(&value)) return *text;
  if (const auto* plain = std::get_if<PropertyList>(&value)) return AttributedText(description(*plain));
  return {};
}

QVariant headerOf(const TableColumn& column, int role) {
  if (role == Qt::TextAlignmentRole) return QVariant(Qt::AlignLeft | Qt::AlignVCenter);
  return role == Qt::DisplayRole ? QVariant(toQString(column.title)) : QVariant();
}

int headerHeight(QHeaderView& header, double points) {
  header.ensurePolished();  // its font is the style's
  return std::max(toPixels(points), header.fontMetrics().height() + 1);
}

void StyledTextDelegate::paint(QPainter* painter, const QStyleOptionViewItem& viewOption,
                               const QModelIndex& index) const {
  QStyleOptionViewItem option = viewOption;
  option.state.setFlag(QStyle::State_Enabled, enabled_ && option.state.testFlag(QStyle::State_Enabled));
  const QStyle* style = option.widget->style();
  // The view has drawn the row as one in use already.
  if (!enabled_) painter->fillRect(option.rect, option.palette.base());
  // Given the widget, the style would go by that one's state instead of the option's.
  style->drawPrimitive(QStyle::PE_PanelItemViewItem, &option, painter, nullptr);
  const bool selected = option.state.testFlag(QStyle::State_Selected);
  const auto group = option.state.testFlag(QStyle::State_Enabled) ? QPalette::Active : QPalette::Disabled;
  const QColor color = option.palette.color(group, selected ? QPalette::HighlightedText : QPalette::Text);
  AttributedTextLayout(index.data(kStyledTextRole).value<AttributedText>(), option.font, option.palette,
                       color, selected)
      .draw(*painter, QRectF(option.rect).adjusted(6, 0, -4, 0), Qt::AlignLeft);
  const auto hasKeyboard = QStyle::State_HasFocus | QStyle::State_KeyboardFocusChange;
  if ((option.state & hasKeyboard) == hasKeyboard) drawFocusInside(*painter, option.rect, color);
}

}  // namespace corvane::qt
