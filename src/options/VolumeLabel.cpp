#include "options/VolumeLabel.h"

#include <string>

#include "options/VolumeKeys.h"
#include "values/Conversions.h"

namespace corvane {
namespace {

constexpr std::string_view kDuplicateMissing = " (Duplicate, Missing)";
constexpr std::string_view kDuplicate = " (Duplicate)";
constexpr std::string_view kMissing = " (Missing)";

AttributedText remark(std::string_view name, std::string_view suffix, TextColor color) {
  TextAttributes attributes;
  attributes.font = Font{.family = Font::Family::User, .size = kSystemFontSize, .italic = true};
  attributes.color = color;
  return {std::string(name) + std::string(suffix), attributes};
}

}  // namespace

AttributedText VolumeLabel::labelOf(const Dictionary& entry) const {
  const std::string_view name = volumeName(entry);
  const std::string_view path = volumePath(entry);
  const bool present = catalogue_.journal().isVolumePresentPath(name, path);
  if (catalogue_.isVolumeDuplicatePath(name, path)) {
    return remark(name, present ? kDuplicate : kDuplicateMissing, TextColor::Red);
  }
  if (!present) {
    const bool monitored = boolValue(entry.value(volume_key::kMonitorPresence));
    return remark(name, kMissing, monitored ? TextColor::Red : TextColor::DarkGray);
  }
  if (pane_.unlocked()) return AttributedText(std::string(name));
  TextAttributes locked;
  locked.color = TextColor::Gray;
  return {std::string(name), locked};
}

}  // namespace corvane
