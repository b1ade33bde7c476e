#include "posix/PosixPropertyListFiles.h"

#include <fcntl.h>

#include "posix/Differences.h"
#include "posix/FreshFile.h"
#include "posix/RegularFile.h"
#include "values/PropertyListCodec.h"
#include "values/Text.h"

namespace corvane {

namespace {

PropertyList valueOf(const std::optional<std::string>& bytes) {
  return bytes ? readPropertyList(*bytes) : PropertyList();
}

}  // namespace

PropertyList PosixPropertyListFiles::read(const std::string& path) {
  return valueOf(readRegularFile(path, kLargestPropertyListFile));
}

std::function<PropertyList()> PosixPropertyListFiles::expectCopy(const std::string& path) {
  return [copy = expectRegularFile(path, kLargestPropertyListFile)] { return valueOf(copy()); };
}

Result PosixPropertyListFiles::write(const std::string& path, const PropertyList& value) {
  const auto bytes = writeXmlPropertyList(value);
  if (!bytes) return {"the settings can't be put into a property list"};
  sweepOnce(deletingLastPathComponent(path));
  return replaceRegularFile(path, *bytes);
}

void PosixPropertyListFiles::sweepOnce(const std::string& folder) {
  if (folder == swept_) return;
  swept_ = folder;
  const FileDescriptor opened(::open(folder.c_str(), kFolderToWorkBelow));
  if (opened) sweepFreshFiles(opened.get());
}

}  // namespace corvane
