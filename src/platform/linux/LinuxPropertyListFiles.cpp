#include "platform/linux/LinuxPropertyListFiles.h"

#include "platform/linux/RegularFile.h"
#include "values/PropertyListCodec.h"

namespace corvane {

PropertyList LinuxPropertyListFiles::read(const std::string& path) {
  const auto bytes = readRegularFile(path, kSizeLimit);
  return bytes ? readPropertyList(*bytes) : PropertyList();
}

bool LinuxPropertyListFiles::write(const std::string& path, const PropertyList& value) {
  const auto bytes = writeXmlPropertyList(value);
  return bytes && replaceRegularFile(path, *bytes);
}

}  // namespace corvane
