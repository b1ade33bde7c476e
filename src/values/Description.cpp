// The text of values in log lines.
#include <charconv>
#include <cstdio>

#include "values/Conversions.h"
#include "values/PropertyListDate.h"
#include "values/Reals.h"

namespace corvane {

namespace {

/// Writes values in the brace form, until the text is long enough for a log line.
class Describer {
 public:
  [[nodiscard]] std::string describe(const PropertyList& container) {
    write(container, 0);
    if (text_.size() > longest) {
      text_.resize(longest);
      text_ += "...";
    }
    return std::move(text_);
  }

 private:
  static constexpr std::size_t longest = 400;

  // Calls itself for what is nested. Every level writes its indentation, so the limit of length also is one
  // of depth.
  void write(const PropertyList& value, std::size_t level) {
    if (text_.size() > longest) return;
    switch (value.kind()) {
      case PropertyList::Kind::Dictionary:
        return writeDictionary(value.asDictionary(), level);
      case PropertyList::Kind::Array:
        return writeArray(value.asArray(), level);
      case PropertyList::Kind::String:
        return writeString(*value.asString());
      case PropertyList::Kind::Date:
        return writeString(description(value));
      default:
        text_ += description(value);
    }
  }

  void indent(std::size_t level) { text_.append(level * 4, ' '); }

  void writeDictionary(const Dictionary& dictionary, std::size_t level) {
    indent(level);
    text_ += "{\n";
    for (const auto& [key, value] : dictionary.entries()) {
      if (text_.size() > longest) return;
      indent(level + 1);
      writeString(key);
      text_ += " = ";
      write(value, level + 1);
      text_ += ";\n";
    }
    indent(level);
    text_ += '}';
  }

  void writeArray(const Array& array, std::size_t level) {
    indent(level);
    text_ += '(';
    const char* separator = "\n";
    for (const PropertyList& element : array.elements()) {
      if (text_.size() > longest) return;
      text_ += separator;
      separator = ",\n";
      indent(level + 1);
      write(element, level + 1);
    }
    text_ += '\n';
    indent(level);
    text_ += ')';
  }

  void writeString(std::string_view string) {
    const auto isPlain = [](char c) {
      return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
    };
    bool plain = !string.empty();
    for (const char c : string.substr(0, longest)) plain = plain && isPlain(c);
    if (!plain) text_ += '"';
    for (const char c : string.substr(0, longest)) {
      if (c == '"' || c == '\\') text_ += '\\';
      if (c == '\n') {
        text_ += "\\n";
      } else {
        text_ += c;
      }
    }
    if (!plain) text_ += '"';
  }

  std::string text_;
};

template <typename Integer>
[[nodiscard]] std::string decimal(Integer number) {
  char digits[32];
  const auto end = std::to_chars(std::begin(digits), std::end(digits), number).ptr;
  return {digits, end};
}

[[nodiscard]] std::string describeDate(Date date) {
  const auto parts = calendarDate(date);
  if (!parts) return shortestDecimalFromReal(date.secondsSince1970);
  char text[64];
  std::snprintf(text, sizeof text, "%04d-%02u-%02u %02u:%02u:%02u +0000", parts->year, parts->month,
                parts->day, parts->hour, parts->minute, parts->second);
  return text;
}

[[nodiscard]] std::string describeData(const PropertyList::Bytes& bytes) {
  constexpr std::size_t most = 64;
  constexpr char digits[] = "0123456789abcdef";
  std::string text = "<";
  for (std::size_t i = 0; i < bytes.size() && i < most; ++i) {
    text += digits[bytes[i] >> 4];
    text += digits[bytes[i] & 15];
  }
  return text + (bytes.size() > most ? "...>" : ">");
}

}  // namespace

std::string description(const PropertyList& value) {
  switch (value.kind()) {
    case PropertyList::Kind::Nothing:
      return "(null)";
    case PropertyList::Kind::String:
      return *value.asString();
    case PropertyList::Kind::Integer:
      if (const auto number = value.asInteger()) return decimal(*number);
      return decimal(*value.asUnsignedInteger());
    case PropertyList::Kind::Real:
      return shortestDecimalFromReal(*value.asReal());
    case PropertyList::Kind::Boolean:
      return *value.asBoolean() ? "1" : "0";
    case PropertyList::Kind::Date:
      return describeDate(*value.asDate());
    case PropertyList::Kind::Data:
      return describeData(*value.asData());
    case PropertyList::Kind::Dictionary:
    case PropertyList::Kind::Array:
      return Describer().describe(value);
  }
  return {};
}

}  // namespace corvane
