#include "values/XmlScanner.h"

#include <cstring>

#include "values/Encodings.h"
#include "values/XmlScalars.h"

namespace corvane {

namespace {

using Tag = XmlScanner::Tag;

constexpr std::string_view names[] = {"plist", "dict", "array", "key",  "string", "integer",
                                      "real",  "true", "false", "date", "data"};

[[nodiscard]] constexpr std::string_view nameOf(Tag tag) noexcept {
  return names[static_cast<std::size_t>(tag)];
}

[[nodiscard]] bool isBlank(char c) noexcept { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

template <Tag tag>
[[nodiscard]] bool isNamed(std::string_view name) noexcept {
  constexpr std::string_view expected = nameOf(tag);
  return name.size() == expected.size() && std::memcmp(name.data(), expected.data(), expected.size()) == 0;
}

template <Tag tag>
[[nodiscard]] std::optional<Tag> ifNamed(std::string_view name) noexcept {
  return isNamed<tag>(name) ? std::optional(tag) : std::nullopt;
}

[[nodiscard]] std::optional<Tag> tagNamed(std::string_view name) noexcept {
  switch (name.empty() ? '\0' : name.front()) {
    case 'a':
      return ifNamed<Tag::Array>(name);
    case 'd':
      if (isNamed<Tag::Dictionary>(name)) return Tag::Dictionary;
      return isNamed<Tag::Date>(name) ? Tag::Date : ifNamed<Tag::Data>(name);
    case 'f':
      return ifNamed<Tag::False>(name);
    case 'i':
      return ifNamed<Tag::Integer>(name);
    case 'k':
      return ifNamed<Tag::Key>(name);
    case 'p':
      return ifNamed<Tag::File>(name);
    case 'r':
      return ifNamed<Tag::Real>(name);
    case 's':
      return ifNamed<Tag::String>(name);
    case 't':
      return ifNamed<Tag::True>(name);
    default:
      return std::nullopt;
  }
}

constexpr std::string_view commentStart = "<!--";
constexpr std::string_view characterDataStart = "<![CDATA[";

}  // namespace

void XmlScanner::skipBlanks() noexcept {
  std::size_t count = 0;
  while (count < rest_.size() && isBlank(rest_[count])) ++count;
  rest_.remove_prefix(count);
}

bool XmlScanner::skipPast(std::string_view end) noexcept {
  const std::size_t at = rest_.find(end);
  if (at == std::string_view::npos) return false;
  rest_.remove_prefix(at + end.size());
  return true;
}

XmlScanner::Next XmlScanner::next() noexcept {
  while (true) {
    skipBlanks();
    if (rest_.size() < 2 || rest_.front() != '<') return Next::Failed;
    switch (rest_[1]) {
      case '/':
        return Next::Closing;
      case '?':
        if (!skipPast("?>")) return Next::Failed;
        break;
      case '!':
        if (!rest_.starts_with(commentStart)) return Next::Failed;
        rest_.remove_prefix(commentStart.size());
        if (!skipPast("-->")) return Next::Failed;
        break;
      default:
        return Next::Opening;
    }
  }
}

bool XmlScanner::skipProlog() noexcept {
  while (true) {
    switch (next()) {
      case Next::Opening:
        return true;
      case Next::Closing:
        return false;
      case Next::Failed:
        if (!skipDocumentType()) return false;
    }
  }
}

bool XmlScanner::skipDocumentType() noexcept {
  if (!rest_.starts_with("<!DOCTYPE")) return false;
  const std::size_t at = rest_.find_first_of("[>");
  // A file with declarations of its own is refused, as by a Mac; so no entity is ever declared.
  if (at == std::string_view::npos || rest_[at] == '[') return false;
  rest_.remove_prefix(at + 1);
  return true;
}

std::optional<XmlScanner::OpeningTag> XmlScanner::takeOpeningTag() noexcept {
  const char* const start = rest_.data() + 1;
  const char* const end = rest_.data() + rest_.size();
  const char* at = start;
  while (at != end && *at != '>' && !isBlank(*at)) ++at;
  const char* nameEnd = at;
  while (at != end && *at != '>') ++at;  // attributes are passed over
  if (at == end) return std::nullopt;
  const bool isEmpty = at[-1] == '/';
  if (isEmpty && nameEnd == at) --nameEnd;
  const auto tag = nameEnd > start ? tagNamed({start, nameEnd}) : std::nullopt;
  rest_ = {at + 1, end};
  return tag ? std::optional(OpeningTag{*tag, isEmpty}) : std::nullopt;
}

bool XmlScanner::takeClosingTag(Tag tag) noexcept {
  const std::string_view name = nameOf(tag);
  if (rest_.size() < 2 + name.size() || rest_[0] != '<' || rest_[1] != '/') return false;
  for (std::size_t i = 0; i < name.size(); ++i) {
    if (rest_[2 + i] != name[i]) return false;
  }
  rest_.remove_prefix(2 + name.size());
  skipBlanks();
  if (!rest_.starts_with('>')) return false;
  rest_.remove_prefix(1);
  return true;
}

XmlScanner::RawText XmlScanner::takeRawText() noexcept {
  std::size_t end = 0;
  unsigned allBits = 0;
  bool hasAmpersand = false;
  for (; end < rest_.size() && rest_[end] != '<'; ++end) {
    allBits |= static_cast<unsigned char>(rest_[end]);
    hasAmpersand |= rest_[end] == '&';
  }
  const std::string_view text = rest_.substr(0, end);
  rest_.remove_prefix(end);
  return {text, allBits < 0x80 && !hasAmpersand};
}

bool XmlScanner::takeText(std::string& text) {
  while (true) {
    const auto [raw, isPlain] = takeRawText();
    if (isPlain) {
      text += raw;
    } else if (!appendUnescaped(text, raw)) {
      return false;
    }
    if (!rest_.starts_with("<!")) return true;
    if (!rest_.starts_with(characterDataStart)) return false;
    rest_.remove_prefix(characterDataStart.size());
    const std::size_t end = rest_.find("]]>");
    if (end == std::string_view::npos || !isUtf8(rest_.substr(0, end))) return false;
    text += rest_.substr(0, end);
    rest_.remove_prefix(end + 3);
  }
}

}  // namespace corvane
