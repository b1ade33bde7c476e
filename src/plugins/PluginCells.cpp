#include "plugins/PluginCells.h"

#include <string>
#include <utility>
#include <vector>

#include "formatters/CustomTextFieldCellFormatter.h"
#include "formatters/MyNumberFormatter.h"
#include "plugins/FileFolderList.h"
#include "plugins/NumberRange.h"
#include "plugins/PluginKeys.h"
#include "plugins/PluginTitles.h"
#include "plugins/PluginsTabView.h"
#include "values/Conversions.h"
#include "values/Text.h"

namespace corvane {
namespace {

using Position = ButtonCell::ImagePosition;

const FileTypeIcon kFolderIcon{"fldr"};
const FileTypeIcon kDocumentIcon{"docu"};
const FileTypeIcon kTrashIcon{"trsh"};

CellReference cellOf(Cell cell) { return std::make_shared<Cell>(std::move(cell)); }

const std::string& textOf(const OutlineItem& item) {
  static const std::string none;
  const std::string* text = item.object().asString();
  return text != nullptr ? *text : none;
}

ButtonCell iconButton(Position position, const FileTypeIcon& image, const PluginCellActions::Action& action) {
  ButtonCell cell;
  cell.kind = ButtonCell::Kind::Switch;
  cell.imageScalesProportionallyDown = true;
  cell.imagePosition = position;
  cell.image = image;
  cell.action = action;
  return cell;
}

CellReference checkBoxCell(std::string title) {
  ButtonCell cell;
  cell.kind = ButtonCell::Kind::Switch;
  cell.title = AttributedText(std::move(title));
  return cellOf(cell);
}

CellReference validationCell(const PluginCellActions::Action& action) {
  ButtonCell cell;
  cell.kind = ButtonCell::Kind::MomentaryPushIn;
  cell.roundedBezel = true;
  cell.title = AttributedText("Test Settings");
  cell.action = action;
  return cellOf(cell);
}

CellReference linkCell(const PluginCellActions::Action& action) {
  ButtonCell cell;
  cell.kind = ButtonCell::Kind::MomentaryPushIn;
  cell.roundedBezel = true;
  cell.bordered = false;
  cell.alignment = TextAlignment::Left;
  cell.action = action;
  return cellOf(cell);
}

/// One item per element, so that the stored index means the same item whatever the others are.
CellReference popUpCell(const PluginOption& option) {
  PopUpButtonCell cell;
  for (const PropertyList& title : option.value().asArray().elements()) {
    cell.items.push_back(description(title));
  }
  cell.selectedIndex = cell.items.empty() ? -1 : 0;
  return cellOf(cell);
}

std::shared_ptr<Formatter> lengthLimit(std::int32_t length) {
  auto formatter = std::make_shared<CustomTextFieldCellFormatter>();
  formatter->setMaximumLength(length);
  return formatter;
}

CellReference textCell(const PluginOption& option, const char* placeholder) {
  TextFieldCell cell;
  cell.editable = true;
  cell.placeholder = placeholder;
  const std::int32_t length = intValue(option.value());
  if (length >= 1) cell.formatter = lengthLimit(length);
  return cellOf(cell);
}

CellReference passwordCell(const PluginOption& option) {
  SecureTextFieldCell cell;
  cell.placeholder = "Click to enter password";
  // Without the test for at least 1 that other texts have: a password option that gives no length takes no
  // typed character. This is intended.
  cell.formatter = lengthLimit(intValue(option.value()));
  return cellOf(cell);
}

}  // namespace

CellReference PluginCells::dataCell(const TableColumn* column, const OutlineItem& item) const {
  if (column == nullptr) return nullptr;
  if (column->title == kEnabledColumn) return PluginTree::isPlugin(item) ? nullptr : cellOf(EmptyCell{});
  if (column->title != kPluginColumn) return nullptr;
  if (const PluginOption option = tree_.optionOfValueRow(item)) return valueCell(option, item);
  if (PluginTree::isItemPluginOptionOfType(item, setting_type::kCheckbox)) return checkBoxCell({});
  if (PluginTree::isItemURL(item)) return linkCell(actions_.myOpenURL);
  return nullptr;
}

CellReference PluginCells::valueCell(const PluginOption& option, const OutlineItem& item) const {
  using Editor = SettingType::Editor;
  switch (option.settingType().editor) {
    case Editor::FolderPicker:
      return cellOf(iconButton(Position::Left, kFolderIcon, actions_.getNewDirectory));
    case Editor::FilePicker:
      return cellOf(iconButton(Position::Left, kDocumentIcon, actions_.getNewFile));
    case Editor::CheckBox:
      return checkBoxCell(textOf(item));
    case Editor::FolderEntry:
      return entryCell(textOf(item), kFolderIcon, actions_.addToFolderArray);
    case Editor::FileEntry:
      return entryCell(textOf(item), kDocumentIcon, actions_.addToFileArray);
    case Editor::Menu:
      return popUpCell(option);
    case Editor::Text:
      return textCell(option, "Click to enter text");
    case Editor::Username:
      return textCell(option, "Click to enter username");
    case Editor::Password:
      return passwordCell(option);
    case Editor::Button:
      return validationCell(actions_.runPluginValidation);
    case Editor::Number:
      return numberCell(option);
    case Editor::None:
      break;
  }
  return nullptr;
}

CellReference PluginCells::entryCell(const std::string& entry, const FileTypeIcon& addIcon,
                                     const PluginCellActions::Action& add) const {
  ButtonCell cell = isAddEntry(entry)
                        ? iconButton(Position::Left, addIcon, add)
                        : iconButton(Position::Right, kTrashIcon, actions_.removeFromFileFolderArray);
  cell.title = AttributedText(formatText(kEntryTitleFormat, {entry}));
  return cellOf(std::move(cell));
}

CellReference PluginCells::numberCell(const PluginOption& option) const {
  ComboBoxCell cell;
  cell.editable = true;
  const PropertyList value = option.value();
  const std::string* text = value.asString();
  const auto range = text != nullptr ? parseNumberRange(*text) : std::nullopt;
  if (!range) {
    log_.write("Need 2 components for Number Range");
    return cellOf(std::move(cell));
  }
  cell.items = numbersInRange(*range);
  cell.formatter = std::make_shared<MyNumberFormatter>(range->minimum, range->maximum, range->minimum);
  return cellOf(std::move(cell));
}

void PluginCells::willDisplayCell(Cell& cell, const TableColumn& column, const OutlineItem& item) const {
  if (column.title != kPluginColumn) return;
  if (const PluginOption option = tree_.optionOfValueRow(item)) {
    dressValueCell(cell, option, item);
    return;
  }
  auto* button = std::get_if<ButtonCell>(&cell);
  if (button == nullptr) return;
  if (PluginTree::isItemPluginOptionOfType(item, setting_type::kCheckbox)) {
    button->title = optionTitle(PluginTree::optionOfOptionRow(item));
  } else if (PluginTree::isItemURL(item)) {
    button->title = linkTitle(textOf(item));
  }
}

void PluginCells::dressValueCell(Cell& cell, const PluginOption& option, const OutlineItem& item) const {
  auto* button = std::get_if<ButtonCell>(&cell);
  auto* menu = std::get_if<PopUpButtonCell>(&cell);
  const SettingType::Editor editor = option.settingType().editor;
  const bool isPicker =
      editor == SettingType::Editor::FolderPicker || editor == SettingType::Editor::FilePicker;
  if (!(isPicker && button != nullptr) && menu == nullptr) return;
  const Dictionary contents = storage_.read(option);
  if (!contents) return;
  if (menu == nullptr) {
    const std::string* path = contents.string(textOf(item));
    button->title = AttributedText(path != nullptr ? *path : std::string());
  } else {
    const std::int32_t index = intValue(contents.value(textOf(item)));
    const bool isItem = index >= 0 && static_cast<std::size_t>(index) < menu->items.size();
    menu->selectedIndex = isItem ? index : -1;
  }
}

}  // namespace corvane
