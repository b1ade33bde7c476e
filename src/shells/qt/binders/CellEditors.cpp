#include "binders/CellEditors.h"

#include <QComboBox>
#include <QLineEdit>
#include <type_traits>

#include "Text.h"
#include "widgets/KeystrokeGuard.h"

namespace corvane::qt {
namespace {

void guard(OutlineView& outline, const CellReference& cell, QLineEdit& edit) {
  new KeystrokeGuard(edit, [&outline, cell](const QString& proposed) -> std::optional<QString> {
    const PartialStringCheck check = outline.checkPartialString(*cell, fromQString(proposed));
    if (check.valid) return proposed;
    if (check.newEditingString) return toQString(*check.newEditingString);
    return std::nullopt;
  });
}

QWidget* createField(OutlineView& outline, const CellReference& cell, const std::string& placeholder,
                     QLineEdit::EchoMode echo, QWidget* parent) {
  auto* edit = new QLineEdit(parent);
  edit->setEchoMode(echo);
  edit->setPlaceholderText(toQString(placeholder));
  guard(outline, cell, *edit);
  return edit;
}

QWidget* createNumberBox(OutlineView& outline, const CellReference& cell, const ComboBoxCell& box,
                         QWidget* parent) {
  auto* editor = new QComboBox(parent);
  editor->setEditable(true);
  editor->setInsertPolicy(QComboBox::NoInsert);
  editor->setCompleter(nullptr);
  for (const std::int32_t item : box.items) editor->addItem(QString::number(item));
  guard(outline, cell, *editor->lineEdit());
  return editor;
}

QWidget* createMenu(const PopUpButtonCell& menu, QWidget* parent) {
  auto* editor = new QComboBox(parent);
  for (const std::string& item : menu.items) editor->addItem(toQString(item));
  return editor;
}

const QLineEdit* lineEditOf(const QWidget& editor) {
  if (const auto* box = qobject_cast<const QComboBox*>(&editor)) return box->lineEdit();
  return qobject_cast<const QLineEdit*>(&editor);
}

}  // namespace

bool hasEditor(const Cell& cell) {
  return std::visit(
      [](const auto& entry) {
        using Entry = std::decay_t<decltype(entry)>;
        if constexpr (std::is_same_v<Entry, PopUpButtonCell>) return true;
        if constexpr (std::is_same_v<Entry, TextFieldCell> || std::is_same_v<Entry, SecureTextFieldCell> ||
                      std::is_same_v<Entry, ComboBoxCell>) {
          return entry.editable;
        }
        return false;
      },
      cell);
}

QWidget* createCellEditor(OutlineView& outline, const CellReference& cell, QWidget* parent) {
  if (!hasEditor(*cell)) return nullptr;
  if (const auto* text = std::get_if<TextFieldCell>(cell.get())) {
    return createField(outline, cell, text->placeholder, QLineEdit::Normal, parent);
  }
  if (const auto* secret = std::get_if<SecureTextFieldCell>(cell.get())) {
    const auto echo = secret->echosBullets ? QLineEdit::Password : QLineEdit::NoEcho;
    return createField(outline, cell, secret->placeholder, echo, parent);
  }
  if (const auto* number = std::get_if<ComboBoxCell>(cell.get())) {
    return createNumberBox(outline, cell, *number, parent);
  }
  if (const auto* menu = std::get_if<PopUpButtonCell>(cell.get())) return createMenu(*menu, parent);
  return nullptr;
}

void showInEditor(const Cell& cell, QWidget& editor) {
  const QLineEdit* edit = lineEditOf(editor);
  if (edit != nullptr && edit->isModified()) return;
  if (const auto* menu = std::get_if<PopUpButtonCell>(&cell)) {
    static_cast<QComboBox&>(editor).setCurrentIndex(menu->selectedIndex);
  } else if (const auto* number = std::get_if<ComboBoxCell>(&cell)) {
    auto& box = static_cast<QComboBox&>(editor);
    const QString shown = toQString(number->text);
    box.setCurrentIndex(box.findText(shown));
    box.setEditText(shown);
  } else if (const auto* text = std::get_if<TextFieldCell>(&cell)) {
    static_cast<QLineEdit&>(editor).setText(toQString(text->text));
  } else if (const auto* secret = std::get_if<SecureTextFieldCell>(&cell)) {
    static_cast<QLineEdit&>(editor).setText(toQString(secret->text));
  }
}

std::optional<PropertyList> valueOfEditor(const Cell& cell, const QWidget& editor) {
  if (const auto* menu = std::get_if<PopUpButtonCell>(&cell)) {
    const int chosen = static_cast<const QComboBox&>(editor).currentIndex();
    if (chosen == menu->selectedIndex) return std::nullopt;
    return PropertyList::integer(chosen);
  }
  const QLineEdit* edit = lineEditOf(editor);
  if (edit == nullptr) return std::nullopt;
  const auto* number = std::get_if<ComboBoxCell>(&cell);
  const bool chosen = number != nullptr && toQString(number->text) != edit->text();
  if (!edit->isModified() && !chosen) return std::nullopt;
  return PropertyList::string(fromQString(edit->text()));
}

}  // namespace corvane::qt
