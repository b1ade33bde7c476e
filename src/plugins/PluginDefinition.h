// The rules by which definitions and their options are accepted. Definitions are written by the plug-ins'
// authors, so nothing in them is taken for granted: what does not fit is left out, and the rest still counts.
// Each rule answers with its reason. The pane makes a yes or no of it and leaves out silently; whoever looks
// at definitions for their authors (`PluginReview`) tells it.
#pragma once

#include <string_view>

#include "plugins/PluginOption.h"
#include "values/PropertyList.h"

namespace corvane {

/// Why something is left out; none when it is shown.
struct [[nodiscard]] Omission {
  std::string_view key;       // where the rule looked, like "SettingType.Type"; empty: at the thing itself
  std::string_view expected;  // what should have stood there, in words for a person
  /// Whether there is a reason.
  [[nodiscard]] explicit operator bool() const { return !expected.empty(); }
  friend bool operator==(const Omission&, const Omission&) = default;
};

/// The file of a path has the extension of definitions, exactly.
Omission omissionByExtension(std::string_view path);
/// The file reads as a dictionary with options of which at least one is accepted.
Omission omissionOfDefinition(const PropertyList& contents);
/// The element of the definition's options is a dictionary with the required keys and one of the types.
Omission omissionOfOption(const PropertyList& element);
/// The plug-in's own settings ask for it to be shown.
Omission omissionBySettings(const Dictionary& settings);

/// Whether the option has its storage key, storage path, title and setting type, and that a type; whatever
/// they are. The storage is also required of types that never use it.
[[nodiscard]] bool pluginHasRequiredKeys(const Dictionary& option);
/// Whether the type is one of the thirteen, exactly.
[[nodiscard]] bool pluginIsValidType(std::string_view type);

/// The accepted options of a definition, in its order: the definition's own dictionaries, rid of the keys
/// that only the catalogue adds. Empty when there are none.
[[nodiscard]] Array acceptedOptions(const Dictionary& definition);

/// How the plug-in is run: "ProgramArguments", or a new empty array when it is absent or holds anything but
/// texts. (A command line from which a part was left out is not the one that was meant.)
[[nodiscard]] Array programArguments(const Dictionary& definition);

}  // namespace corvane
