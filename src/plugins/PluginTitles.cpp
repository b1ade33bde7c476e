#include "plugins/PluginTitles.h"

#include "plugins/PluginKeys.h"
#include "values/Text.h"

namespace corvane {

AttributedText pluginTitle(const Dictionary& entry) {
  const std::string* name = entry.string(plugin_key::kName);
  TextAttributes bold;
  bold.font = Font{Font::Family::User, kSystemFontSize, true, false};
  return {formatText(" %@", {name != nullptr ? std::string_view(*name) : std::string_view()}), bold};
}

AttributedText optionTitle(const PluginOption& option) {
  AttributedText title(formatText("%@\n%@", {option.title(), option.hint()}));
  if (option.hint().empty()) return title;
  TextAttributes attributes;
  attributes.font = kHintFont;
  attributes.color = TextColor::DarkGray;
  title.runs.push_back({title.text.find(option.hint()), option.hint().size(), attributes});
  return title;
}

AttributedText linkTitle(const std::string& address) {
  TextAttributes attributes;
  attributes.font = Font{Font::Family::User, 13, false, false};
  attributes.color = TextColor::Blue;
  attributes.underlined = true;
  return {address, attributes};
}

}  // namespace corvane
