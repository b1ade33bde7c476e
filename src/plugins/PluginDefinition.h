// The rules by which an option of a plug-in definition is accepted. Definitions are written by the plug-ins'
// authors, so nothing in them is taken for granted: what does not fit is left out silently, and the rest of
// the definition still counts.
#pragma once

#include <string_view>

#include "plugins/PluginOption.h"
#include "values/PropertyList.h"

namespace corvane {

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
