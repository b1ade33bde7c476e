// The styled texts of the rows: a plug-in's name, an option's title with its hint, a link.
#pragma once

#include <string>

#include "plugins/PluginOption.h"
#include "values/AttributedText.h"

namespace corvane {

/// The italic font of hints, in which their widths are measured as well.
inline constexpr Font kHintFont{Font::Family::User, 11, false, true};

/// The plug-in's name after one blank, in bold; a blank alone for a plug-in without a name.
[[nodiscard]] AttributedText pluginTitle(const Dictionary& entry);
/// The title, and on a second line the hint in dark grey italics. The first occurrence of the hint's text is
/// what is styled, also where the title holds it. An option without a hint shows as one with an empty hint.
[[nodiscard]] AttributedText optionTitle(const PluginOption& option);
/// The address, blue and underlined.
[[nodiscard]] AttributedText linkTitle(const std::string& address);

}  // namespace corvane
