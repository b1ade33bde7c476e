#include "accessibility/SpokenRow.h"

#include <algorithm>

#include "Text.h"
#include "binders/CellContents.h"
#include "binders/CellEditors.h"

namespace corvane::qt {
namespace {

/// The lines below the first one, as one.
QString restOf(const QString& text) {
  return text.section(QLatin1Char('\n'), 1).trimmed().replace(QLatin1Char('\n'), QLatin1Char(' '));
}

QString firstLineOf(const QString& text) { return text.section(QLatin1Char('\n'), 0, 0).trimmed(); }

/// What a press of a button does whose picture says so to those who see it.
QString actOf(const ButtonCell& button) {
  const std::string& picture = button.image.typeCode;
  if (picture == "trsh") return QStringLiteral("Removes the entry");
  return picture == "fldr" ? QStringLiteral("Chooses a folder") : QStringLiteral("Chooses a file");
}

/// Fills in what a cell of each kind is, in a row below one with this title.
struct Describe {
  SpokenRow& row;
  const QString& words;  // of the cell
  const QString& title;  // of the row above

  void operator()(const EmptyCell& /*cell*/) const {}
  void operator()(const ButtonCell& cell) const {
    if (isPictureButton(cell)) {
      row.role = QAccessible::Button;
      row.name = words.isEmpty() ? title : QStringLiteral("%1: %2").arg(title, words);
      row.description = actOf(cell);
    } else if (cell.kind == ButtonCell::Kind::Switch) {
      row.role = QAccessible::CheckBox;
      row.name = firstLineOf(words);
      row.description = restOf(words);
      row.isOn = cell.on;
    } else {
      row.role = cell.bordered ? QAccessible::Button : QAccessible::Link;
      row.name = words;
      row.description = title;
    }
  }
  void operator()(const PopUpButtonCell& /*cell*/) const { call(QAccessible::ComboBox); }
  void operator()(const ComboBoxCell& /*cell*/) const { call(QAccessible::ComboBox); }
  void operator()(const SecureTextFieldCell& cell) const { describeField(cell); }
  void operator()(const TextFieldCell& cell) const {
    if (cell.editable) {
      describeField(cell);
    } else {
      row.name = firstLineOf(words);
      row.description = restOf(words);
      row.column = nullptr;
    }
  }

  void call(QAccessible::Role role) const {
    row.role = role;
    row.name = title;
    row.value = words;
  }
  template <typename Field>
  void describeField(const Field& cell) const {
    call(QAccessible::EditableText);
    if (!cell.text.empty()) return;
    row.value.clear();
    row.description = toQString(cell.placeholder);
  }
};

}  // namespace

QString titleOf(OutlineView& outline, const OutlineItem& item) {
  const auto& columns = outline.columns();
  const auto column =
      std::find_if(columns.begin(), columns.end(), [](const auto& each) { return !each.checkBox; });
  return item && column != columns.end() ? firstLineOf(textOf(outline.preparedCell(*column, item)))
                                         : QString();
}

SpokenRow spokenRow(OutlineView& outline, const OutlineItem& item) {
  SpokenRow row;
  for (const OutlineView::Column& column : outline.columns()) {
    const PreparedCell cell = outline.preparedCell(column, item);
    const auto* button = std::get_if<ButtonCell>(cell.cell.get());
    if (column.checkBox && button != nullptr) {
      // The row's own text says what this is the check box of.
      row.isOn = button->on;
      row.column = &column;
      row.cell = cell.cell;
    } else if (!column.checkBox) {
      const QString title = titleOf(outline, outline.parentForItem(item));
      const SpokenRow tick = row;
      row.column = &column;
      row.cell = cell.cell;
      std::visit(Describe{row, textOf(cell).trimmed(), title}, *cell.cell);
      if (row.column == nullptr) {
        row.column = tick.column;
        row.cell = tick.cell;
      }
      break;
    }
  }
  return row;
}

}  // namespace corvane::qt
