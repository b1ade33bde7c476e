// Descriptions of the cells of an outline, made afresh by its delegate on every request. A shell draws and
// edits each with the toolkit's own control of that kind.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <variant>
#include <vector>

#include "formatters/Formatter.h"
#include "platform/Workspace.h"
#include "values/AttributedText.h"
#include "values/PropertyList.h"

namespace corvane {

class OutlineView;

/// A cell that shows nothing and takes no acts.
struct EmptyCell {};

struct ButtonCell {
  enum class Kind { Switch = 3, MomentaryPushIn = 7 };
  enum class ImagePosition { None, Left = 2, Right = 3 };

  Kind kind = Kind::Switch;
  bool roundedBezel = false;
  bool bordered = true;
  bool imageScalesProportionallyDown = false;
  ImagePosition imagePosition = ImagePosition::None;
  FileTypeIcon image;
  TextAlignment alignment = TextAlignment::Left;
  AttributedText title;
  bool on = false;
  /// Called with the outline when the button was pressed; a cell without an action changes its value instead.
  std::function<void(OutlineView&)> action;
};

struct PopUpButtonCell {
  bool pullsDown = false;
  std::vector<std::string> items;
  int selectedIndex = -1;  // -1: none
};

struct TextFieldCell {
  bool editable = false;
  std::string placeholder;
  std::shared_ptr<Formatter> formatter;
  std::string text;
};

struct SecureTextFieldCell {
  bool editable = true;
  bool echosBullets = true;
  std::string placeholder;
  std::shared_ptr<Formatter> formatter;
  std::string text;
};

struct ComboBoxCell {
  bool editable = false;
  std::vector<std::int32_t> items;
  std::shared_ptr<Formatter> formatter;
  std::string text;
};

using Cell =
    std::variant<EmptyCell, ButtonCell, PopUpButtonCell, TextFieldCell, SecureTextFieldCell, ComboBoxCell>;
/// Null stands for the column's default cell.
using CellReference = std::shared_ptr<Cell>;

}  // namespace corvane
