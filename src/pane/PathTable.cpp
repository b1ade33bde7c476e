#include "pane/PathTable.h"

#include "values/Text.h"

namespace corvane {
namespace {

std::string normalizedPrefix(std::string_view prefix) {
  std::string result = standardizingPath(prefix);
  return result == "/" ? std::string() : result;
}

}  // namespace

PathTable::PathTable(std::string_view rootPrefix) : rootPrefix_(normalizedPrefix(rootPrefix)) {}

std::string PathTable::onDisk(std::string_view clientPath) const {
  if (!clientPath.starts_with('/')) return {};
  // Without a prefix the path is the system's own and is used exactly as it stands.
  return rootPrefix_.empty() ? std::string(clientPath) : rootPrefix_ + standardizingPath(clientPath);
}

std::string PathTable::onClient(std::string_view diskPath) const {
  if (rootPrefix_.empty() || !diskPath.starts_with(rootPrefix_)) return std::string(diskPath);
  const std::string_view rest = diskPath.substr(rootPrefix_.size());
  if (rest.empty()) return "/";
  return std::string(rest.starts_with('/') ? rest : diskPath);
}

std::string PathTable::writeStaging(std::string_view target) const {
  return rootPrefix_ + formatText("/private/tmp/%@", {lastPathComponent(target)});
}

std::string PathTable::readStaging(std::string_view source) const {
  return rootPrefix_ + formatText("/private/tmp/read-%@", {lastPathComponent(source)});
}

}  // namespace corvane
