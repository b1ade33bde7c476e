// The setting types of the format, a line for each: which rows stand for its value, which control such a row
// gets and what becomes of an edit. Whatever differs from type to type is asked here.
#pragma once

#include <algorithm>
#include <array>
#include <string_view>

#include "plugins/PluginKeys.h"

namespace corvane {

struct SettingType {
  /// What stands below an option for its value.
  enum class Rows { None, One, Names, Entries };
  /// What a value row is edited with.
  enum class Editor {
    None,
    CheckBox,
    FolderPicker,
    FilePicker,
    FolderEntry,
    FileEntry,
    Menu,
    Number,
    Text,
    Username,
    Password,
    Button
  };
  /// What an edit of a value row stores.
  enum class Edit {
    Rewrite,   // nothing: the file is written as it is
    ByButton,  // nothing: its button does
    InSet,
    Integer,
    AsItIs
  };

  std::string_view name;
  Rows rows = Rows::One;
  Editor editor = Editor::None;
  Edit edit = Edit::Rewrite;
  bool showsValue = false;  // what is stored stands in the value row
  bool isBordered = false;  // half a row higher than a text
};

namespace setting_type {

inline constexpr std::array<SettingType, 13> kTable = [] {
  using enum SettingType::Rows;
  using Editor = SettingType::Editor;
  using enum SettingType::Edit;
  return std::array<SettingType, 13>{{
      {kCheckbox, None, Editor::None, Rewrite},  // its box stands in the row of the option
      {kFolderPicker, One, Editor::FolderPicker, ByButton, true},
      {kFilePicker, One, Editor::FilePicker, ByButton, true},
      {kPopUpMenu, One, Editor::Menu, AsItIs, true, true},
      {kCheckboxes, Names, Editor::CheckBox, InSet, true},
      {kNumberPicker, One, Editor::Number, Integer, true, true},
      {kTextField, One, Editor::Text, AsItIs, true},
      {kUsernameField, One, Editor::Username, AsItIs, true},
      {kPasswordField, One, Editor::Password, AsItIs, true},
      {kDisplayOnly, None, Editor::None, Rewrite},
      {kPluginValidation, One, Editor::Button, ByButton, false, true},
      {kFileArray, Entries, Editor::FileEntry, ByButton, true},
      {kFolderArray, Entries, Editor::FolderEntry, ByButton, true},
  }};
}();

/// Their names alone.
inline constexpr std::array<std::string_view, kTable.size()> kAll = [] {
  std::array<std::string_view, kTable.size()> names;
  std::ranges::transform(kTable, names.begin(), &SettingType::name);
  return names;
}();

/// For what is of none of the thirteen types.
inline constexpr SettingType kNone{};

/// The type of exactly that name, or `kNone`.
[[nodiscard]] constexpr const SettingType& named(std::string_view name) {
  const auto found = std::ranges::find(kTable, name, &SettingType::name);
  return found != kTable.end() ? *found : kNone;
}

}  // namespace setting_type
}  // namespace corvane
