// The fixed words of the plug-in format, each defined once: keys of definition files and of the plug-ins' own
// settings files, the setting types, and the values that mean something.
#pragma once

#include <string_view>

namespace corvane {

namespace plugin_key {
// A definition file, and the catalogue's entry for it.
inline constexpr std::string_view kName = "PluginName";                    // string
inline constexpr std::string_view kOptions = "PluginOptions";              // array of dictionaries
inline constexpr std::string_view kProgramArguments = "ProgramArguments";  // array of strings
inline constexpr std::string_view kFileName = "PluginFileName";            // string; added by the catalogue

// An option.
inline constexpr std::string_view kTitle = "SettingTitle";              // string
inline constexpr std::string_view kTitleHint = "SettingTitleHint";      // string
inline constexpr std::string_view kSettingType = "SettingType";         // dictionary
inline constexpr std::string_view kStoragePath = "SettingStoragePath";  // string
inline constexpr std::string_view kStorageKey = "SettingStorageKey";    // string
inline constexpr std::string_view kDetailsUrl = "SettingDetailsURL";    // string
// What the catalogue adds to an option from its storage file; never taken from a definition.
inline constexpr std::string_view kCheckboxes = "CheckboxesDictionary";  // dictionary of booleans
inline constexpr std::string_view kFileFolderArray = "FileFolderArray";  // array, as it is stored
// The texts of that array, where it holds anything else as well.
inline constexpr std::string_view kFileFolderRows = "FileFolderRows";

// The dictionary of the setting type.
inline constexpr std::string_view kType = "Type";    // string
inline constexpr std::string_view kValue = "Value";  // depends on the type

// A plug-in's own settings file, beside `client_key::kPluginEnabled`.
inline constexpr std::string_view kVisible = "PrefPaneVisibility";  // boolean
}  // namespace plugin_key

namespace setting_type {
inline constexpr std::string_view kCheckbox = "Checkbox";
inline constexpr std::string_view kFolderPicker = "FolderPicker";
inline constexpr std::string_view kFilePicker = "FilePicker";
inline constexpr std::string_view kPopUpMenu = "PopUpMenu";
inline constexpr std::string_view kCheckboxes = "Checkboxes";
inline constexpr std::string_view kNumberPicker = "NumberPicker";
inline constexpr std::string_view kTextField = "TextField";
inline constexpr std::string_view kUsernameField = "UsernameField";
inline constexpr std::string_view kPasswordField = "PasswordField";
inline constexpr std::string_view kDisplayOnly = "DisplayOnly";
inline constexpr std::string_view kPluginValidation = "PluginValidation";
inline constexpr std::string_view kFileArray = "FileArray";
inline constexpr std::string_view kFolderArray = "FolderArray";
}  // namespace setting_type

/// The "Value" of a check box: whether the stored boolean is its state or the inverse.
namespace checkbox_value {
inline constexpr std::string_view kPositive = "Positive";
inline constexpr std::string_view kNegative = "Negative";
}  // namespace checkbox_value

/// What an address begins with, in any letter case; a row with such a text is a link.
inline constexpr std::string_view kAddressPrefix = "http";

}  // namespace corvane
