#include "binders/CellDelegate.h"

#include <QApplication>
#include <QComboBox>
#include <QFocusEvent>
#include <QLineEdit>
#include <QPainter>

#include "AttributedTextLayout.h"
#include "Fonts.h"
#include "Text.h"
#include "TextLine.h"
#include "accessibility/SpokenRow.h"
#include "binders/CellContents.h"
#include "binders/CellEditors.h"
#include "binders/CellPainter.h"
#include "binders/OutlineModel.h"

namespace corvane::qt {
namespace {

// In points.
constexpr double kFieldWidth = 320;
constexpr double kMenuWidth = 240;
constexpr double kNumberWidth = 110;
constexpr double kControlHeight = 28;
constexpr double kArrowWidth = 24;  // of a box that opens a list

/// How wide a cell's control is; 0 is the whole width.
struct ControlWidth {
  const QFontMetrics& metrics;
  int operator()(const EmptyCell& /*cell*/) const { return 0; }
  int operator()(const ButtonCell& cell) const {
    if (cell.kind != ButtonCell::Kind::MomentaryPushIn) return 0;
    const int title = metrics.horizontalAdvance(toQString(cell.title.text));
    return cell.bordered ? title + toPixels(40) : title + 4;
  }
  int operator()(const PopUpButtonCell& /*cell*/) const { return toPixels(kMenuWidth); }
  int operator()(const TextFieldCell& cell) const { return cell.editable ? toPixels(kFieldWidth) : 0; }
  int operator()(const SecureTextFieldCell& /*cell*/) const { return toPixels(kFieldWidth); }
  int operator()(const ComboBoxCell& /*cell*/) const { return toPixels(kNumberWidth); }
};

bool isHigherThanText(const Cell& cell) {
  const auto* button = std::get_if<ButtonCell>(&cell);
  return std::holds_alternative<PopUpButtonCell>(cell) || std::holds_alternative<ComboBoxCell>(cell) ||
         (button != nullptr && button->kind == ButtonCell::Kind::MomentaryPushIn && button->bordered);
}

bool isField(const Cell& cell) { return isTypedIn(cell) && !std::holds_alternative<ComboBoxCell>(cell); }

}  // namespace

CellDelegate::CellDelegate(OutlineView& outline, const OutlineModel& model, QObject* parent)
    : QStyledItemDelegate(parent), outline_(outline), model_(model) {
  connect(this, &QAbstractItemDelegate::closeEditor, this, [this] { openEditor_ = nullptr; });
}

PreparedCell CellDelegate::prepared(const QModelIndex& index) const {
  return outline_.preparedCell(model_.columnAt(index), model_.itemAt(index));
}

CellReference CellDelegate::bare(const QModelIndex& index) const {
  return outline_.bareCell(model_.columnAt(index), model_.itemAt(index));
}

QRect CellDelegate::controlRect(const Cell& cell, const QRect& row) const {
  QRect rect = row.adjusted(4, 0, -4, 0);
  const QFontMetrics metrics(QApplication::font());
  const int width = std::visit(ControlWidth{metrics}, cell);
  if (width > 0) rect.setWidth(qMin(width, rect.width()));
  const int height = alignedHeight(toPixels(kControlHeight), metrics);
  if (isHigherThanText(cell) && rect.height() > height) {
    rect.setTop(row.top() + (row.height() - height) / 2);
    rect.setHeight(height);
  }
  return rect;
}

QRect CellDelegate::hitRect(const Cell& cell, const QRect& row) const {
  const QRect control = controlRect(cell, row);
  const auto* button = std::get_if<ButtonCell>(&cell);
  return button != nullptr ? CellPainter::buttonRect(*button, control, QApplication::font()) : control;
}

void CellDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                         const QModelIndex& index) const {
  option.widget->style()->drawPrimitive(QStyle::PE_PanelItemViewItem, &option, painter, option.widget);
  const auto* tree = qobject_cast<const OutlineTree*>(option.widget);
  if (tree != nullptr && openEditor_ && tree->indexWidget(index) == openEditor_)
    return;  // it covers the cell
  const PreparedCell cell = prepared(index);
  const bool isPressed = tree != nullptr && tree->isPressed(index);
  painter->save();
  const CellPainter draw(*painter, option, controlRect(*cell.cell, option.rect),
                         {.enabled = outline_.enabled(), .pressed = isPressed});
  if (const auto text = styledTextOf(cell)) {
    draw.drawStyledText(*text);
  } else {
    std::visit(draw, *cell.cell);
  }
  painter->restore();
}

QSize CellDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
  return {option.rect.width(), toPixels(outline_.heightOfRow(model_.itemAt(index)))};
}

CellTarget CellDelegate::targetAt(const QModelIndex& index, const QRect& row, const QPoint& point) const {
  if (!outline_.enabled()) return {};
  CellReference cell = bare(index);
  const bool isButton = std::holds_alternative<ButtonCell>(*cell);
  if (isButton) cell = prepared(index).cell;  // as wide as its words
  const QRect place = hitRect(*cell, row);
  if (!place.contains(point)) return {};
  if (isButton) return {CellAct::Press, place};
  return mayEdit(index) ? CellTarget{CellAct::Edit, place} : CellTarget{};
}

Qt::CursorShape CellDelegate::shapeAt(const QModelIndex& index, const QRect& row, const QPoint& point) const {
  if (!outline_.enabled()) return Qt::ArrowCursor;
  const CellReference cell = bare(index);
  const auto* button = std::get_if<ButtonCell>(cell.get());
  if (button != nullptr && button->kind == ButtonCell::Kind::MomentaryPushIn && !button->bordered) {
    // A link is as wide as its words, which come with its value: that is its row's own.
    return hitRect(*prepared(index).cell, row).contains(point) ? Qt::PointingHandCursor : Qt::ArrowCursor;
  }
  if (!isTypedIn(*cell)) return Qt::ArrowCursor;
  QRect field = controlRect(*cell, row);
  if (!isField(*cell)) field.setWidth(field.width() - toPixels(kArrowWidth));
  return field.contains(point) ? Qt::IBeamCursor : Qt::ArrowCursor;
}

bool CellDelegate::press(const QModelIndex& index) {
  if (!std::holds_alternative<ButtonCell>(*bare(index))) return false;
  outline_.clickCell(model_.itemAt(index), model_.columnAt(index));
  return true;
}

bool CellDelegate::mayEdit(const QModelIndex& index) const {
  return isEditedInPlace(*bare(index)) && outline_.shouldEdit(model_.columnAt(index), model_.itemAt(index));
}

bool CellDelegate::mayType(const QModelIndex& index) const {
  return mayEdit(index) && isTypedIn(*bare(index));
}

QWidget* CellDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                                    const QModelIndex& index) const {
  if (!mayEdit(index)) return nullptr;
  QWidget* widget = makeCellEditor(prepared(index).cell, parent);
  widget->setObjectName(QStringLiteral("cellEditor"));
  widget->setFont(option.font);
  const QString name = titleOf(outline_, outline_.parentForItem(model_.itemAt(index)));
  widget->setAccessibleName(name);
  // The field of a box is what has the keyboard.
  if (const auto* box = qobject_cast<const QComboBox*>(widget); box != nullptr && box->isEditable())
    box->lineEdit()->setAccessibleName(name);
  auto* editor = dynamic_cast<CellEditor*>(widget);
  auto* self = const_cast<CellDelegate*>(this);  // the toolkit's signals are not const, its factory is
  editor->onChosen = [self, widget, editor] {
    if (self->openEditor_ != widget) return;  // a box notices its text once more on its way out
    editor->onDismissed = nullptr;
    emit self->commitData(widget);
    emit self->closeEditor(widget);
  };
  openEditor_ = widget;
  editor->onDismissed = [self, widget] {
    if (self->openEditor_ == widget) emit self->closeEditor(widget);
  };
  return widget;
}

void CellDelegate::dropEditor() {
  if (openEditor_) emit closeEditor(openEditor_, RevertModelCache);
}

void CellDelegate::leaveEditor() {
  if (openEditor_) emit commitData(openEditor_);
  if (openEditor_) emit closeEditor(openEditor_);
}

void CellDelegate::setEditorData(QWidget* /*editor*/, const QModelIndex& /*index*/) const {}

void CellDelegate::setModelData(QWidget* editor, QAbstractItemModel* /*model*/,
                                const QModelIndex& index) const {
  const auto* cell = dynamic_cast<const CellEditor*>(editor);
  const std::optional<PropertyList> value = cell != nullptr ? cell->newValue() : std::nullopt;
  if (!value) return;
  outline_.editCell(model_.itemAt(index), model_.columnAt(index), *value);
}

void CellDelegate::updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                                        const QModelIndex& index) const {
  const CellReference cell = bare(index);
  const QRect control = controlRect(*cell, option.rect);
  // A field has room for its focus ring above and below its frame; the frame stays where it was drawn.
  editor->setGeometry(isField(*cell) ? control.adjusted(0, -1, 0, 1) : control);
}

bool CellDelegate::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::FocusOut) {
    if (watched != openEditor_) return false;  // it is on its way out
    // Who looks something up in another window comes back to what he was typing.
    const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
    if (reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason) return false;
  }
  return QStyledItemDelegate::eventFilter(watched, event);
}

}  // namespace corvane::qt
