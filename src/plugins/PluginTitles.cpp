#include "plugins/PluginTitles.h"

#include <cstddef>
#include <vector>

#include "plugins/PluginKeys.h"
#include "values/Text.h"

namespace corvane {
namespace {

/// Where the words, which are not empty, first occur in the text, which holds them: in linear time, since
/// both come from a definition and may be as long as it likes.
std::size_t placeOf(const std::string& words, const std::string& text) {
  std::vector<std::size_t> fallback(words.size() + 1, 0);  // by how much of the words fits
  const auto fits = [&](std::size_t length, char next) {
    while (length > 0 && (length == words.size() || words[length] != next)) length = fallback[length];
    return words[length] == next ? length + 1 : 0;
  };
  for (std::size_t i = 1; i < words.size(); ++i) fallback[i + 1] = fits(fallback[i], words[i]);
  std::size_t end = 0;
  for (std::size_t length = 0; length < words.size() && end < text.size(); ++end)
    length = fits(length, text[end]);
  return end - words.size();
}

}  // namespace

AttributedText pluginTitle(const Dictionary& entry) {
  const std::string* name = entry.string(plugin_key::kName);
  TextAttributes bold;
  bold.font = Font{Font::Family::User, kSystemFontSize, true, false};
  return {formatText(" %@", {name != nullptr ? std::string_view(*name) : std::string_view()}), bold};
}

AttributedText optionTitle(const PluginOption& option) {
  const std::string& hint = option.hint();
  AttributedText title(formatText("%@\n%@", {option.title(), hint}));
  if (hint.empty()) return title;
  TextAttributes attributes;
  attributes.font = kHintFont;
  attributes.color = TextColor::DarkGray;
  title.runs.push_back({placeOf(hint, title.text), hint.size(), attributes});
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
