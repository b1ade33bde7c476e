// Reader of the XML format. The tokens come from pugixml, which neither recurses nor expands entities; it is
// told to leave escapes and character data alone, and all that property lists are stricter about is checked
// here.
#include <optional>

#include <pugixml.hpp>

#include "values/Base64.h"
#include "values/Encodings.h"
#include "values/PropertyListDate.h"
#include "values/PropertyListReaders.h"
#include "values/XmlScalars.h"

namespace corvane {

namespace {

constexpr std::string_view blanks = " \t\r\n";

[[nodiscard]] bool isBlank(std::string_view text) noexcept {
  return text.find_first_not_of(blanks) == std::string_view::npos;
}

/// The encoding that the XML declaration names, in capitals; empty without one.
[[nodiscard]] std::string declaredEncoding(std::string_view bytes) {
  if (!bytes.starts_with("<?xml")) return {};
  const std::string_view declaration = bytes.substr(0, bytes.find('>'));
  constexpr std::string_view attribute = "encoding=";
  const std::size_t at = declaration.find(attribute);
  if (at == std::string_view::npos || at + attribute.size() == declaration.size()) return {};
  const char quote = declaration[at + attribute.size()];
  if (quote != '"' && quote != '\'') return {};
  const std::string_view rest = declaration.substr(at + attribute.size() + 1);
  const std::size_t end = rest.find(quote);
  if (end == std::string_view::npos) return {};
  std::string name(rest.substr(0, end));
  for (char& c : name) {
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
  }
  return name;
}

/// The bytes as UTF-8, either themselves without their mark, or converted into the buffer.
[[nodiscard]] std::optional<std::string_view> asUtf8(std::string_view bytes, std::string& buffer) {
  using namespace std::string_view_literals;
  const auto converted = [&buffer](std::optional<std::string> text) -> std::optional<std::string_view> {
    if (!text) return std::nullopt;
    buffer = std::move(*text);
    return buffer;
  };
  const auto order = [](bool big) { return big ? ByteOrder::BigEndian : ByteOrder::LittleEndian; };
  for (const bool big : {true, false}) {
    const auto mark32 = big ? "\0\0\xFE\xFF"sv : "\xFF\xFE\0\0"sv;
    if (bytes.starts_with(mark32)) return converted(utf8FromUtf32(bytes.substr(4), order(big)));
  }
  for (const bool big : {true, false}) {
    if (bytes.starts_with(big ? "\xFE\xFF"sv : "\xFF\xFE"sv)) {
      return converted(utf8FromUtf16(bytes.substr(2), order(big)));
    }
    if (bytes.starts_with(big ? "\0<"sv : "<\0"sv)) return converted(utf8FromUtf16(bytes, order(big)));
  }
  if (bytes.starts_with("\xEF\xBB\xBF")) return bytes.substr(3);
  const std::string encoding = declaredEncoding(bytes);
  if (encoding.empty() || encoding == "UTF-8" || encoding == "UTF8" || encoding == "US-ASCII" ||
      encoding == "ASCII") {
    return bytes;
  }
  if (encoding == "ISO-8859-1" || encoding == "LATIN1") return converted(utf8FromLatin1(bytes));
  return std::nullopt;
}

/// Where the first element of the text ends, or nothing. Only for files that do not parse as a whole.
[[nodiscard]] std::optional<std::size_t> endOfFirstElement(std::string_view text) noexcept {
  constexpr std::size_t npos = std::string_view::npos;
  std::size_t depth = 0;
  for (std::size_t at = text.find('<'); at != npos; at = text.find('<', at)) {
    const std::string_view rest = text.substr(at);
    const bool isComment = rest.starts_with("<!--");
    const bool isCharacterData = rest.starts_with("<![CDATA[");
    const std::string_view closing = isComment                ? "-->"
                                     : isCharacterData        ? "]]>"
                                     : rest.starts_with("<?") ? "?>"
                                                              : ">";
    const std::size_t end = rest.find(closing, isComment ? 4 : 1);
    if (end == npos) return std::nullopt;
    at += end + closing.size();
    if (rest[1] == '!' || rest[1] == '?') continue;
    if (rest[1] == '/') {
      if (depth == 0) return std::nullopt;
      --depth;
    } else if (rest[end - 1] != '/') {
      ++depth;
    }
    if (depth == 0) return at;
  }
  return std::nullopt;
}

enum class Tag { PropertyList, Dictionary, Array, Key, String, Integer, Real, True, False, Date, Data };

[[nodiscard]] std::optional<Tag> tagNamed(std::string_view name) noexcept {
  constexpr std::pair<std::string_view, Tag> tags[] = {
      {"key", Tag::Key},   {"string", Tag::String},      {"integer", Tag::Integer}, {"dict", Tag::Dictionary},
      {"true", Tag::True}, {"array", Tag::Array},        {"false", Tag::False},     {"real", Tag::Real},
      {"date", Tag::Date}, {"plist", Tag::PropertyList}, {"data", Tag::Data},
  };
  for (const auto& [candidate, tag] : tags) {
    if (candidate == name) return tag;
  }
  return std::nullopt;
}

/// The element's text as it stands in the file; nothing when there is more in the element than one run of
/// text.
[[nodiscard]] std::optional<std::string_view> plainText(const pugi::xml_node& element) noexcept {
  if (element.first_child()) return std::nullopt;
  return std::string_view(element.value());
}

/// The text of a string or key: runs of text and of character data, and nothing else.
[[nodiscard]] bool readText(const pugi::xml_node& element, std::string& text) {
  if (!appendUnescaped(text, element.value())) return false;
  bool lastWasText = *element.value() != '\0';
  for (const pugi::xml_node child : element.children()) {
    const std::string_view value = child.value();
    const bool isText = child.type() == pugi::node_pcdata;
    if (isText ? lastWasText || !appendUnescaped(text, value)
               : child.type() != pugi::node_cdata || !isUtf8(value)) {
      return false;
    }
    if (!isText) text += value;
    lastWasText = isText;
  }
  return true;
}

[[nodiscard]] PropertyList readScalar(Tag tag, const pugi::xml_node& element) {
  if (tag == Tag::String || tag == Tag::Key || tag == Tag::Real) {
    std::string text;
    if (!readText(element, text)) return {};
    return tag == Tag::Real ? realFromText(text) : PropertyList::string(std::move(text));
  }
  const auto text = plainText(element);
  if (!text) return {};
  switch (tag) {
    case Tag::Integer:
      return integerFromText(*text);
    case Tag::True:
    case Tag::False:
      return text->empty() ? PropertyList::boolean(tag == Tag::True) : PropertyList();
    case Tag::Date:
      if (const auto date = dateFromText(*text)) return PropertyList::date(*date);
      return {};
    case Tag::Data:
      if (auto bytes = dataFromBase64(*text)) return PropertyList::data(std::move(*bytes));
      return {};
    default:
      return {};
  }
}

/// Builds the tree. Elements that are being read stand on a stack of its own; their finished children stand
/// on two more, from which a container takes its own when it is complete.
class TreeBuilder {
 public:
  [[nodiscard]] PropertyList build(const pugi::xml_node& root) {
    if (!begin(root)) return {};
    while (!open_.empty()) {
      if (!step()) return {};
    }
    return std::move(finished_);
  }

 private:
  struct Container {
    Tag tag = Tag::PropertyList;
    pugi::xml_node next;
    std::size_t firstChild = 0;  // on the stack of children
    bool hasKey = false;         // a dictionary that waits for the value
    bool hasRoot = false;        // a document that has its one value
  };

  [[nodiscard]] bool begin(const pugi::xml_node& element) {
    const auto tag = tagNamed(element.name());
    if (!tag) return false;
    if (*tag == Tag::PropertyList || *tag == Tag::Dictionary || *tag == Tag::Array)
      return open(*tag, element);
    PropertyList value = readScalar(*tag, element);
    return value && finish(std::move(value));
  }

  [[nodiscard]] bool open(Tag tag, const pugi::xml_node& element) {
    // The outermost <plist> is the file, not a level of nesting.
    const bool insideFile = !open_.empty() && open_.front().tag == Tag::PropertyList;
    if (open_.size() == nestingLimit + (insideFile ? 1 : 0)) return false;
    if (!isBlank(element.value())) return false;
    Container container;
    container.tag = tag;
    container.next = element.first_child();
    container.firstChild = tag == Tag::Dictionary ? entries_.size() : elements_.size();
    open_.push_back(container);
    return true;
  }

  /// Reads the innermost container's next child, or closes it.
  [[nodiscard]] bool step() {
    Container& container = open_.back();
    const pugi::xml_node child = container.next;
    if (!child) return close();
    container.next = child.next_sibling();
    switch (child.type()) {
      case pugi::node_element:
        break;
      case pugi::node_comment:
      case pugi::node_pi:
        return true;
      case pugi::node_pcdata:
        return isBlank(child.value());
      default:
        return false;
    }
    if (container.tag != Tag::Dictionary || container.hasKey) return begin(child);
    if (std::string_view(child.name()) != "key") return false;
    std::string key;
    if (!readText(child, key)) return false;
    entries_.emplace_back(std::move(key), PropertyList());
    container.hasKey = true;
    return true;
  }

  [[nodiscard]] bool close() {
    const Container container = open_.back();
    open_.pop_back();
    switch (container.tag) {
      case Tag::Dictionary:
        return !container.hasKey && finish(take(entries_, container.firstChild, [](auto entries) {
          return Dictionary::fromEntries(std::move(entries), Dictionary::Duplicates::LastWins);
        }));
      case Tag::Array:
        return finish(take(elements_, container.firstChild, Array::fromElements));
      default:
        return container.hasRoot && finish(std::move(finished_));
    }
  }

  template <typename Child, typename Make>
  [[nodiscard]] static PropertyList take(std::vector<Child>& children, std::size_t first, Make make) {
    const auto begin = children.begin() + static_cast<std::ptrdiff_t>(first);
    PropertyList result =
        make(std::vector<Child>(std::make_move_iterator(begin), std::make_move_iterator(children.end())));
    children.erase(begin, children.end());
    return result;
  }

  /// Hands a complete value to the container that it stands in.
  [[nodiscard]] bool finish(PropertyList value) {
    Container* parent = open_.empty() ? nullptr : &open_.back();
    if (parent != nullptr && parent->tag == Tag::Dictionary) {
      entries_.back().second = std::move(value);
      parent->hasKey = false;
      return true;
    }
    if (parent != nullptr && parent->tag == Tag::Array) {
      elements_.push_back(std::move(value));
      return true;
    }
    if (parent != nullptr && std::exchange(parent->hasRoot, true)) return false;
    finished_ = std::move(value);
    return true;
  }

  std::vector<Container> open_;
  std::vector<PropertyList> elements_;
  std::vector<Dictionary::Entry> entries_;
  PropertyList finished_;
};

/// The document's first element, or nothing when something else than comments and the like stands before it.
[[nodiscard]] pugi::xml_node rootOf(const pugi::xml_document& document) noexcept {
  for (const pugi::xml_node child : document.children()) {
    if (child.type() == pugi::node_element) return child;
    if (child.type() == pugi::node_cdata || (child.type() == pugi::node_pcdata && !isBlank(child.value())))
      break;
  }
  return {};
}

[[nodiscard]] bool parse(pugi::xml_document& document, std::string_view text) {
  // Nodes are kept for all that is not allowed everywhere, so that it is noticed. Blanks matter only in
  // strings, and beside character data the parser cannot tell which ones do: then it keeps all.
  constexpr unsigned always = pugi::parse_cdata | pugi::parse_comments | pugi::parse_pi |
                              pugi::parse_embed_pcdata | pugi::parse_fragment;
  const bool hasCharacterData = text.find("<![CDATA[") != std::string_view::npos;
  const unsigned flags = always | (hasCharacterData ? pugi::parse_ws_pcdata : pugi::parse_ws_pcdata_single);
  return bool(document.load_buffer(text.data(), text.size(), flags, pugi::encoding_utf8));
}

}  // namespace

PropertyList readXmlPropertyList(std::string_view bytes) {
  std::string converted;
  const auto text = asUtf8(bytes, converted);
  if (!text || text->empty()) return {};
  pugi::xml_document document;
  if (!parse(document, *text)) {
    // Whatever follows the property list does not matter, as on a Mac.
    const auto end = endOfFirstElement(*text);
    if (!end || *end == text->size() || !parse(document, text->substr(0, *end))) return {};
  }
  const pugi::xml_node root = rootOf(document);
  return root ? TreeBuilder().build(root) : PropertyList();
}

}  // namespace corvane
