// Reader of the XML format, behind an encoding that is made out by the file's first bytes.
#include <optional>

#include "values/Base64.h"
#include "values/Encodings.h"
#include "values/PropertyListChildren.h"
#include "values/PropertyListDate.h"
#include "values/PropertyListReaders.h"
#include "values/XmlScalars.h"
#include "values/XmlScanner.h"

namespace corvane {

namespace {

using Tag = XmlScanner::Tag;

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

/// Builds the tree. Elements that are being read stand on a stack of its own, so that a file cannot exhaust
/// the program's.
class TreeBuilder {
 public:
  explicit TreeBuilder(std::string_view text) : scanner_(text) {}

  [[nodiscard]] PropertyList build() {
    if (!scanner_.skipProlog() || !begin()) return {};
    while (!open_.empty()) {
      if (!step()) return {};
    }
    return std::move(finished_);
  }

 private:
  struct Container {
    Tag tag = Tag::File;
    bool hasKey = false;         // a dictionary that waits for the value
    bool hasRoot = false;        // a file that has its one value
    std::size_t firstChild = 0;  // on the stack of children
  };

  /// Reads the element that begins here as a value, or opens it as a container.
  [[nodiscard]] bool begin() {
    const auto opening = scanner_.takeOpeningTag();
    if (!opening) return false;
    switch (opening->tag) {
      case Tag::File:
        return !opening->isEmpty && open(Tag::File, 0);
      case Tag::Dictionary:
        return open(Tag::Dictionary, children_.entryCount()) && (!opening->isEmpty || close());
      case Tag::Array:
        return open(Tag::Array, children_.elementCount()) && (!opening->isEmpty || close());
      default: {
        PropertyList value = readScalar(*opening);
        return value && finish(std::move(value));
      }
    }
  }

  [[nodiscard]] bool open(Tag tag, std::size_t firstChild) {
    // The outermost <plist> is the file, not a level of nesting.
    const bool insideFile = !open_.empty() && open_.front().tag == Tag::File;
    if (open_.size() == nestingLimit + (insideFile ? 1 : 0)) return false;
    open_.push_back({tag, false, false, firstChild});
    return true;
  }

  /// Reads the innermost container's next child, or closes it.
  [[nodiscard]] bool step() {
    Container& container = open_.back();
    switch (scanner_.next()) {
      case XmlScanner::Next::Failed:
        return false;
      case XmlScanner::Next::Closing:
        return scanner_.takeClosingTag(container.tag) && close();
      case XmlScanner::Next::Opening:
        break;
    }
    if (container.tag != Tag::Dictionary || container.hasKey) return begin();
    const auto opening = scanner_.takeOpeningTag();
    std::string key;
    if (!opening || opening->tag != Tag::Key || !readText(*opening, key)) return false;
    children_.addKey(std::move(key));
    container.hasKey = true;
    return true;
  }

  [[nodiscard]] bool close() {
    const Container container = open_.back();
    open_.pop_back();
    switch (container.tag) {
      case Tag::Dictionary:
        return !container.hasKey &&
               finish(children_.takeDictionary(container.firstChild, Dictionary::Duplicates::LastWins));
      case Tag::Array:
        return finish(children_.takeArray(container.firstChild));
      default:
        return container.hasRoot && finish(std::move(finished_));
    }
  }

  /// Hands a complete value to the container that it stands in.
  [[nodiscard]] bool finish(PropertyList value) {
    if (open_.empty()) {
      finished_ = std::move(value);
      return true;
    }
    Container& parent = open_.back();
    switch (parent.tag) {
      case Tag::Dictionary:
        children_.setValueOfLastKey(std::move(value));
        parent.hasKey = false;
        return true;
      case Tag::Array:
        children_.addElement(std::move(value));
        return true;
      default:
        if (std::exchange(parent.hasRoot, true)) return false;
        finished_ = std::move(value);
        return true;
    }
  }

  [[nodiscard]] bool readText(XmlScanner::OpeningTag opening, std::string& text) {
    return opening.isEmpty || (scanner_.takeText(text) && scanner_.takeClosingTag(opening.tag));
  }

  [[nodiscard]] PropertyList readScalar(XmlScanner::OpeningTag opening) {
    switch (opening.tag) {
      case Tag::Key:  // in the place of a value it is a string, as on a Mac
      case Tag::String: {
        std::string text;
        return readText(opening, text) ? PropertyList::string(std::move(text)) : PropertyList();
      }
      case Tag::Real: {
        std::string text;
        return readText(opening, text) ? realFromText(text) : PropertyList();
      }
      case Tag::True:
      case Tag::False:
        if (!opening.isEmpty && !scanner_.takeClosingTag(opening.tag)) return {};
        return PropertyList::boolean(opening.tag == Tag::True);
      default:
        break;
    }
    if (opening.isEmpty) return {};
    const std::string_view text = scanner_.takeRawText().text;
    if (!scanner_.takeClosingTag(opening.tag)) return {};
    return valueOfRawText(opening.tag, text);
  }

  [[nodiscard]] static PropertyList valueOfRawText(Tag tag, std::string_view text) {
    if (tag == Tag::Integer) return integerFromText(text);
    if (tag == Tag::Date) {
      const auto date = dateFromText(text);
      return date ? PropertyList::date(*date) : PropertyList();
    }
    auto bytes = dataFromBase64(text);
    return bytes ? PropertyList::data(std::move(*bytes)) : PropertyList();
  }

  XmlScanner scanner_;
  std::vector<Container> open_;
  PropertyListChildren children_;
  PropertyList finished_;
};

}  // namespace

PropertyList readXmlPropertyList(std::string_view bytes) {
  std::string converted;
  const auto text = asUtf8(bytes, converted);
  return text ? TreeBuilder(*text).build() : PropertyList();
}

}  // namespace corvane
