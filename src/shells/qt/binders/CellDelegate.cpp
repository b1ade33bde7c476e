#include "binders/CellDelegate.h"

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPainter>

#include "Text.h"
#include "appearance/Shapes.h"
#include "binders/CellContents.h"
#include "binders/CellEditors.h"
#include "binders/CellPainter.h"
#include "binders/OutlineModel.h"

namespace corvane::qt {
namespace {

constexpr int kFieldWidth = 320;
constexpr int kMenuWidth = 240;
constexpr int kNumberWidth = 110;
constexpr int kControlHeight = 28;

/// How wide a cell's control is; 0 is the whole width.
struct ControlWidth {
  const QFontMetrics& metrics;
  int operator()(const EmptyCell& /*cell*/) const { return 0; }
  int operator()(const ButtonCell& cell) const {
    if (cell.kind != ButtonCell::Kind::MomentaryPushIn) return 0;
    const int title = metrics.horizontalAdvance(toQString(cell.title.text));
    return cell.bordered ? title + 40 : title + 4;
  }
  int operator()(const PopUpButtonCell& /*cell*/) const { return kMenuWidth; }
  int operator()(const TextFieldCell& cell) const { return cell.editable ? kFieldWidth : 0; }
  int operator()(const SecureTextFieldCell& /*cell*/) const { return kFieldWidth; }
  int operator()(const ComboBoxCell& /*cell*/) const { return kNumberWidth; }
};

bool isHigherThanText(const Cell& cell) {
  const auto* button = std::get_if<ButtonCell>(&cell);
  return std::holds_alternative<PopUpButtonCell>(cell) || std::holds_alternative<ComboBoxCell>(cell) ||
         (button != nullptr && button->kind == ButtonCell::Kind::MomentaryPushIn && button->bordered);
}

}  // namespace

CellDelegate::CellDelegate(OutlineView& outline, const OutlineModel& model, QObject* parent)
    : QStyledItemDelegate(parent), outline_(outline), model_(model) {}

PreparedCell CellDelegate::prepared(const QModelIndex& index) const {
  return outline_.preparedCell(model_.columnAt(index), model_.itemAt(index));
}

QRect CellDelegate::controlRect(const Cell& cell, const QRect& row) const {
  QRect rect = row.adjusted(4, 0, -4, 0);
  const QFontMetrics metrics(QApplication::font());
  const int width = std::visit(ControlWidth{metrics}, cell);
  if (width > 0) rect.setWidth(qMin(width, rect.width()));
  if (isHigherThanText(cell) && rect.height() > kControlHeight) {
    rect.setTop(row.top() + (row.height() - kControlHeight) / 2);
    rect.setHeight(kControlHeight);
  }
  return rect;
}

void CellDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                         const QModelIndex& index) const {
  option.widget->style()->drawPrimitive(QStyle::PE_PanelItemViewItem, &option, painter, option.widget);
  const PreparedCell cell = prepared(index);
  painter->save();
  const CellPainter draw(*painter, option, controlRect(*cell.cell, option.rect), outline_.enabled());
  if (const auto text = styledTextOf(cell)) {
    draw.drawStyledText(*text);
  } else {
    std::visit(draw, *cell.cell);
  }
  if (option.state.testFlag(QStyle::State_HasFocus)) {
    drawFocusRing(*painter, QRectF(option.rect).adjusted(2, 2, -2, -2), 4, option.palette);
  }
  painter->restore();
}

QSize CellDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
  return {option.rect.width(), qRound(outline_.heightOfRow(model_.itemAt(index)))};
}

bool CellDelegate::editorEvent(QEvent* event, QAbstractItemModel* model, const QStyleOptionViewItem& option,
                               const QModelIndex& index) {
  if (event->type() == QEvent::MouseButtonRelease) {
    const auto* mouse = static_cast<QMouseEvent*>(event);
    const PreparedCell cell = prepared(index);
    const QRect control = controlRect(*cell.cell, option.rect);
    if (mouse->button() == Qt::LeftButton && control.contains(mouse->position().toPoint())) {
      if (press(index)) return true;
      if (canEdit(index)) {
        emit editRequested(QPersistentModelIndex(index));
        return true;
      }
    }
  }
  return QStyledItemDelegate::editorEvent(event, model, option, index);
}

bool CellDelegate::canEdit(const QModelIndex& index) const {
  const Cell cell = *prepared(index).cell;
  if (!hasEditor(cell) || !outline_.enabled()) return false;
  // A menu is a control of its own; only texts are edited in place.
  return std::holds_alternative<PopUpButtonCell>(cell) ||
         outline_.shouldEdit(model_.columnAt(index), model_.itemAt(index));
}

QWidget* CellDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem& /*option*/,
                                    const QModelIndex& index) const {
  if (!canEdit(index)) return nullptr;
  QWidget* editor = createCellEditor(outline_, prepared(index).cell, parent);
  editor->setObjectName(QStringLiteral("cellEditor"));
  // Called by what stands in the row above it.
  editor->setAccessibleName(
      index.parent().siblingAtColumn(index.column()).data().toString().section(QLatin1Char('\n'), 0, 0));
  if (auto* box = qobject_cast<QComboBox*>(editor)) {
    auto* self = const_cast<CellDelegate*>(this);  // to send the toolkit's signals about the editor
    connect(box, &QComboBox::activated, self, [self, box] { self->commitChoice(box); });
  }
  return editor;
}

void CellDelegate::commitChoice(QWidget* editor) {
  emit commitData(editor);
  emit closeEditor(editor);
}

void CellDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const {
  showInEditor(*prepared(index).cell, *editor);
}

void CellDelegate::setModelData(QWidget* editor, QAbstractItemModel* /*model*/,
                                const QModelIndex& index) const {
  const auto value = valueOfEditor(*prepared(index).cell, *editor);
  if (!value) return;
  // The column is copied: the edit may change the rows.
  const OutlineView::Column column = model_.columnAt(index);
  outline_.editCell(model_.rowInOutline(index), column, *value);
}

void CellDelegate::updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                                        const QModelIndex& index) const {
  const QRect control = controlRect(*prepared(index).cell, option.rect);
  // The style leaves room for the focus ring around a field; the drawn cell has none.
  editor->setGeometry(qobject_cast<QLineEdit*>(editor) != nullptr ? control.adjusted(-2, -1, 2, 1) : control);
}

bool CellDelegate::press(const QModelIndex& index) {
  if (!std::holds_alternative<ButtonCell>(*prepared(index).cell)) return false;
  // The column is copied: the press may change the rows.
  const OutlineView::Column column = model_.columnAt(index);
  outline_.clickCell(model_.rowInOutline(index), column);
  return true;
}

}  // namespace corvane::qt
