// How failed expectations print the core's values. Included before anything else in every file that links
// the test library, so that a value is printed one way everywhere.
#pragma once

#include <ostream>
#include <string>

#include "controls/Control.h"
#include "helper/Request.h"
#include "plugins/HelperReply.h"
#include "values/AttributedText.h"
#include "values/PropertyListCodec.h"
#include "values/Result.h"

namespace corvane {

/// As XML, in which values of different kinds look different.
inline void PrintTo(const PropertyList& value, std::ostream* stream) {
  const std::string xml = writeXmlPropertyList(value).value_or(std::string());
  const auto begin = xml.find('\n', xml.find("<plist "));
  const auto end = xml.rfind("\n</plist>");
  *stream << (end != std::string::npos ? xml.substr(begin + 1, end - begin - 1) : "nothing");
}
inline void PrintTo(const Dictionary& value, std::ostream* stream) {
  PrintTo(static_cast<const PropertyList&>(value), stream);
}
inline void PrintTo(const Array& value, std::ostream* stream) {
  PrintTo(static_cast<const PropertyList&>(value), stream);
}
inline void PrintTo(const Date& date, std::ostream* stream) { *stream << date.secondsSince1970 << " s"; }
inline void PrintTo(const Rect& frame, std::ostream* stream) {
  *stream << frame.width << " x " << frame.height << " at " << frame.x << ", " << frame.y;
}
inline void PrintTo(const AttributedText& text, std::ostream* stream) {
  *stream << '"' << text.text << '"';
  for (const auto& [start, length, style] : text.runs) {
    *stream << ", from " << start << " for " << length << ':';
    if (style.font) {
      *stream << " font " << static_cast<int>(style.font->family) << " of " << style.font->size;
      if (style.font->bold) *stream << " bold";
      if (style.font->italic) *stream << " italic";
    }
    if (style.color) *stream << " colour " << static_cast<int>(*style.color);
    if (style.alignment) *stream << " aligned " << static_cast<int>(*style.alignment);
    if (style.underlined) *stream << " underlined";
  }
}
inline void PrintTo(const Result& result, std::ostream* stream) {
  *stream << (result ? "done" : result.reason);
}
inline void PrintTo(const HelperReply& reply, std::ostream* stream) {
  *stream << reply.code << ", \"" << reply.message << '"';
}

namespace helper {

inline void PrintTo(const Reply& reply, std::ostream* stream) {
  *stream << "outcome " << static_cast<int>(reply.outcome) << ", exit status " << reply.exitStatus << ", \""
          << reply.message << '"';
}

}  // namespace helper
}  // namespace corvane
