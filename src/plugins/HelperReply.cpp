#include "plugins/HelperReply.h"

#include <algorithm>
#include <array>

#include "values/Conversions.h"

namespace corvane {
namespace {

// The platform's blanks and line breaks, each as its UTF-8 text.
constexpr std::array<std::string_view, 7> kLineBreaks = {"\n",       "\v",           "\f",          "\r",
                                                         "\xC2\x85", "\xE2\x80\xA8", "\xE2\x80\xA9"};
constexpr std::array<std::string_view, 19> kBlanks = {" ",
                                                      "\t",
                                                      "\xC2\xA0",
                                                      "\xE1\x9A\x80",
                                                      "\xE2\x80\x80",
                                                      "\xE2\x80\x81",
                                                      "\xE2\x80\x82",
                                                      "\xE2\x80\x83",
                                                      "\xE2\x80\x84",
                                                      "\xE2\x80\x85",
                                                      "\xE2\x80\x86",
                                                      "\xE2\x80\x87",
                                                      "\xE2\x80\x88",
                                                      "\xE2\x80\x89",
                                                      "\xE2\x80\x8A",
                                                      "\xE2\x80\x8B",
                                                      "\xE2\x80\xAF",
                                                      "\xE2\x81\x9F",
                                                      "\xE3\x80\x80"};

/// The length of the character of the set with which the text begins; 0 when it begins with another one.
std::size_t leading(std::string_view text, const auto& characters) {
  const auto found =
      std::ranges::find_if(characters, [&](std::string_view one) { return text.starts_with(one); });
  return found != characters.end() ? found->size() : 0;
}

std::string_view withoutLeadingBlanks(std::string_view text) {
  while (const std::size_t length = std::max(leading(text, kBlanks), leading(text, kLineBreaks))) {
    text.remove_prefix(length);
  }
  return text;
}

std::string_view firstLine(std::string_view text) {
  std::size_t end = 0;
  while (end < text.size() && leading(text.substr(end), kLineBreaks) == 0) ++end;
  return text.substr(0, end);
}

}  // namespace

std::optional<HelperReply> parseHelperReply(std::string_view reply) {
  const auto comma = reply.find(',');
  if (comma == std::string_view::npos) return std::nullopt;
  const std::string_view message = firstLine(withoutLeadingBlanks(reply.substr(comma + 1)));
  if (message.empty()) return std::nullopt;
  return HelperReply{intValue(reply), std::string(message)};
}

}  // namespace corvane
