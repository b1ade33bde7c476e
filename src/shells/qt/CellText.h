// Values of cells as styled texts, and the delegate that draws them in tables.
#pragma once

#include <QMetaType>
#include <QStyledItemDelegate>

#include "controls/ObjectValue.h"

namespace corvane::qt {

/// The model role under which a cell's styled text is found.
inline constexpr int kStyledTextRole = Qt::UserRole + 1;

[[nodiscard]] AttributedText textOf(const ObjectValue& value);

class StyledTextDelegate final : public QStyledItemDelegate {
  Q_OBJECT

 public:
  using QStyledItemDelegate::QStyledItemDelegate;
  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};

}  // namespace corvane::qt

Q_DECLARE_METATYPE(corvane::AttributedText)
