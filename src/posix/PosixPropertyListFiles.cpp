#include "posix/PosixPropertyListFiles.h"

#include "posix/RegularFile.h"
#include "values/PropertyListCodec.h"

namespace corvane {

PropertyList PosixPropertyListFiles::read(const std::string& path) {
  const auto bytes = readRegularFile(path, kLargestPropertyListFile);
  return bytes ? readPropertyList(*bytes) : PropertyList();
}

bool PosixPropertyListFiles::write(const std::string& path, const PropertyList& value) {
  const auto bytes = writeXmlPropertyList(value);
  return bytes && replaceRegularFile(path, *bytes);
}

}  // namespace corvane
