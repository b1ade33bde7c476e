#include "binders/CellContents.h"

#include "Text.h"
#include "binders/CellText.h"

namespace corvane::qt {
namespace {

struct Words {
  QString operator()(const EmptyCell& /*cell*/) const { return {}; }
  QString operator()(const ButtonCell& cell) const { return wordsOf(cell).trimmed(); }
  QString operator()(const PopUpButtonCell& cell) const {
    const auto index = static_cast<std::size_t>(cell.selectedIndex);
    return cell.selectedIndex >= 0 && index < cell.items.size() ? toQString(cell.items[index]) : QString();
  }
  QString operator()(const TextFieldCell& cell) const {
    return toQString(cell.text.empty() ? cell.placeholder : cell.text);
  }
  QString operator()(const SecureTextFieldCell& cell) const {
    if (cell.text.empty()) return toQString(cell.placeholder);
    return QString(toQString(cell.text).size(), QChar(0x2022));  // the text itself is not for reading out
  }
  QString operator()(const ComboBoxCell& cell) const { return toQString(cell.text); }
};

}  // namespace

QString textOf(const PreparedCell& prepared) {
  if (const auto styled = styledTextOf(prepared)) return toQString(styled->text);
  return std::visit(Words{}, *prepared.cell);
}

std::optional<bool> checkStateOf(const PreparedCell& prepared) {
  const auto* button = std::get_if<ButtonCell>(prepared.cell.get());
  if (button == nullptr || button->kind != ButtonCell::Kind::Switch || isPictureButton(*button))
    return std::nullopt;
  return button->on;
}

std::optional<AttributedText> styledTextOf(const PreparedCell& prepared) {
  const auto* text = std::get_if<TextFieldCell>(prepared.cell.get());
  if (text == nullptr || text->editable) return std::nullopt;
  if (!std::holds_alternative<AttributedText>(prepared.value)) return AttributedText(text->text);
  return textOf(prepared.value);
}

QString wordsOf(const ButtonCell& cell) {
  if (cell.title.text.empty() && isPictureButton(cell)) {
    if (cell.image.typeCode == "docu") return QStringLiteral("Choose a file…");
    if (cell.image.typeCode == "fldr") return QStringLiteral("Choose a folder…");
  }
  return toQString(cell.title.text);
}

bool isPictureButton(const ButtonCell& cell) {
  return cell.kind == ButtonCell::Kind::Switch && !cell.image.typeCode.empty();
}

}  // namespace corvane::qt
