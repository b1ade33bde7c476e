// Values of cells as styled texts, the delegate that draws them in tables, and the headers of columns.
#pragma once

#include <QMetaType>
#include <QStyledItemDelegate>
#include <QVariant>

#include "controls/ObjectValue.h"
#include "controls/TableView.h"

class QHeaderView;

namespace corvane::qt {

/// The model role under which a cell's styled text is found.
inline constexpr int kStyledTextRole = Qt::UserRole + 1;

[[nodiscard]] AttributedText textOf(const ObjectValue& value);
/// Of tables whose control does not say another, in points.
inline constexpr double kHeaderHeight = 17;
/// What a model answers for the header of the column.
[[nodiscard]] QVariant headerOf(const TableColumn& column, int role);

/// As high as the core says, or as its letters need.
[[nodiscard]] int headerHeight(QHeaderView& header, double points = kHeaderHeight);

class StyledTextDelegate final : public QStyledItemDelegate {
  Q_OBJECT

 public:
  using QStyledItemDelegate::QStyledItemDelegate;
  /// Cells of a delegate that is not enabled look disabled.
  void setEnabled(bool enabled) { enabled_ = enabled; }
  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;

 private:
  bool enabled_ = true;
};

}  // namespace corvane::qt

Q_DECLARE_METATYPE(corvane::AttributedText)
