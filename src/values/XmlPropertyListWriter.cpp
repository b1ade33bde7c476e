// Writer of the XML format, byte for byte as a Mac writes it.
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>

#include "values/Base64.h"
#include "values/Encodings.h"
#include "values/PropertyListCodec.h"
#include "values/PropertyListDate.h"
#include "values/PropertyListReaders.h"
#include "values/Reals.h"

namespace corvane {

namespace {

using namespace std::string_view_literals;

constexpr std::string_view header =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
    "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
    "<plist version=\"1.0\">\n";
constexpr std::string_view footer = "</plist>\n";

[[nodiscard]] std::string_view escapeOf(char c) noexcept {
  switch (c) {
    case '<':
      return "&lt;";
    case '>':
      return "&gt;";
    case '&':
      return "&amp;";
    default:
      return {};
  }
}

[[nodiscard]] std::string textOfReal(double value) {
  if (std::isnan(value)) return "nan";
  if (std::isinf(value)) return value > 0 ? "+infinity" : "-infinity";
  if (value == 0) return "0.0";
  return decimalFromReal(value, std::numeric_limits<double>::max_digits10);
}

template <typename Integer>
[[nodiscard]] std::string_view textOfInteger(Integer value, char (&buffer)[32]) noexcept {
  return {buffer, std::to_chars(std::begin(buffer), std::end(buffer), value).ptr};
}

/// Two digits, or with the hundreds four.
char* putDigits(char* at, unsigned value, int count) noexcept {
  for (int i = count; i-- > 0; value /= 10) at[i] = static_cast<char>('0' + value % 10);
  return at + count;
}

[[nodiscard]] std::string_view textOfDate(const CalendarDate& date, char (&buffer)[32]) noexcept {
  char* at = putDigits(buffer, static_cast<unsigned>(date.year), 4);
  *at++ = '-';
  at = putDigits(at, date.month, 2);
  *at++ = '-';
  at = putDigits(at, date.day, 2);
  *at++ = 'T';
  at = putDigits(at, date.hour, 2);
  *at++ = ':';
  at = putDigits(at, date.minute, 2);
  *at++ = ':';
  at = putDigits(at, date.second, 2);
  *at++ = 'Z';
  return {buffer, at};
}

class Writer {
 public:
  [[nodiscard]] std::optional<std::string> write(const PropertyList& root) {
    text_ = header;
    if (!begin(root)) return std::nullopt;
    while (!open_.empty()) {
      // Nodes may stand in several places, so that few of them can stand for an endless text.
      if (!step() || text_.size() > kLargestPropertyListFile) return std::nullopt;
    }
    text_ += footer;
    if (text_.size() > kLargestPropertyListFile) return std::nullopt;
    return std::move(text_);
  }

 private:
  /// A container whose children are being written. The tree that is written holds on to it.
  struct Container {
    const std::vector<Dictionary::Entry>* entries = nullptr;
    const std::vector<PropertyList>* elements = nullptr;
    std::size_t next = 0;
  };

  void indent() { text_.append(open_.size(), '\t'); }

  [[nodiscard]] bool begin(const PropertyList& value) {
    switch (value.kind()) {
      case PropertyList::Kind::Dictionary: {
        const auto& entries = value.asDictionary().entries();
        return open({&entries, nullptr, 0}, entries.empty() ? "<dict/>\n"sv : "<dict>\n"sv, entries.empty());
      }
      case PropertyList::Kind::Array: {
        const auto& elements = value.asArray().elements();
        return open({nullptr, &elements, 0}, elements.empty() ? "<array/>\n"sv : "<array>\n"sv,
                    elements.empty());
      }
      default:
        indent();
        return writeScalar(value);
    }
  }

  [[nodiscard]] bool open(Container container, std::string_view tag, bool isEmpty) {
    if (open_.size() == nestingLimit) return false;
    indent();
    text_ += tag;
    if (!isEmpty) open_.push_back(container);
    return true;
  }

  /// Writes the innermost container's next child, or its end.
  [[nodiscard]] bool step() {
    Container& container = open_.back();
    const std::size_t index = container.next++;
    if (container.elements != nullptr) {
      if (index == container.elements->size()) return close("</array>\n");
      return begin((*container.elements)[index]);
    }
    if (index == container.entries->size()) return close("</dict>\n");
    const auto& [key, value] = (*container.entries)[index];
    indent();
    return writeText("<key>", key, "</key>\n") && begin(value);
  }

  [[nodiscard]] bool close(std::string_view tag) {
    open_.pop_back();
    indent();
    text_ += tag;
    return true;
  }

  [[nodiscard]] bool writeScalar(const PropertyList& value) {
    char buffer[32];
    switch (value.kind()) {
      case PropertyList::Kind::String:
        return writeText("<string>", *value.asString(), "</string>\n");
      case PropertyList::Kind::Integer:
        if (const auto number = value.asInteger()) {
          return put("<integer>", textOfInteger(*number, buffer), "</integer>\n");
        }
        return put("<integer>", textOfInteger(*value.asUnsignedInteger(), buffer), "</integer>\n");
      case PropertyList::Kind::Real:
        return put("<real>", textOfReal(*value.asReal()), "</real>\n");
      case PropertyList::Kind::Boolean:
        text_ += *value.asBoolean() ? "<true/>\n"sv : "<false/>\n"sv;
        return true;
      case PropertyList::Kind::Date: {
        const auto date = calendarDate(*value.asDate());
        return date && put("<date>", textOfDate(*date, buffer), "</date>\n");
      }
      case PropertyList::Kind::Data:
        text_ += "<data>\n";
        appendBase64Lines(text_, *value.asData(), open_.size());
        indent();
        text_ += "</data>\n";
        return true;
      default:
        return false;
    }
  }

  bool put(std::string_view openingTag, std::string_view content, std::string_view closingTag) {
    text_ += openingTag;
    text_ += content;
    text_ += closingTag;
    return true;
  }

  [[nodiscard]] bool writeText(std::string_view openingTag, std::string_view content,
                               std::string_view closingTag) {
    if (!isUtf8(content)) return false;
    text_ += openingTag;
    for (std::size_t at = 0; at < content.size();) {
      const std::string_view escape = escapeOf(content[at]);
      if (escape.empty()) {
        ++at;
        continue;
      }
      text_ += content.substr(0, at);
      text_ += escape;
      content.remove_prefix(at + 1);
      at = 0;
    }
    text_ += content;
    text_ += closingTag;
    return true;
  }

  std::string text_;
  std::vector<Container> open_;
};

}  // namespace

std::optional<std::string> xmlOfPropertyList(const PropertyList& value) { return Writer().write(value); }

}  // namespace corvane
