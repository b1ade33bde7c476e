#include "values/PropertyListCodec.h"

#include <new>

#include "values/PropertyListReaders.h"

namespace corvane {

// A file decides how much memory it takes, within its bounds. Where there is not as much, it is unreadable
// like any other file that can't be read; it must not end the program.

PropertyList readPropertyList(std::string_view bytes) {
  try {
    return looksLikeBinaryPropertyList(bytes) ? readBinaryPropertyList(bytes) : readXmlPropertyList(bytes);
  } catch (const std::bad_alloc&) {
    return {};
  }
}

std::optional<std::string> writeXmlPropertyList(const PropertyList& value) {
  try {
    return xmlOfPropertyList(value);
  } catch (const std::bad_alloc&) {
    return std::nullopt;
  }
}

}  // namespace corvane
