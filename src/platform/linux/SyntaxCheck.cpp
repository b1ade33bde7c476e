#include "platform/linux/SyntaxCheck.h"

#include <algorithm>
#include <vector>

#include <fcntl.h>

#include "platform/Housekeeping.h"
#include "posix/FolderReader.h"
#include "posix/RegularFile.h"
#include "values/PropertyListCodec.h"

namespace corvane {
namespace {

std::vector<std::string> listedFiles(const std::string& root) {
  std::vector<std::string> paths;
  for (const auto files : housekeeping::kFiles) {
    const auto slash = files.rfind('/');
    const auto folder = root + std::string(files.substr(0, slash));
    FolderReader reader(FolderReader::open(AT_FDCWD, folder.c_str()));
    if (!reader.isOpen()) continue;
    const auto first = static_cast<std::ptrdiff_t>(paths.size());
    while (const auto entry = reader.next()) {
      if (housekeeping::matches(entry->name, files.substr(slash + 1)))
        paths.push_back(folder + "/" + std::string(entry->name));
    }
    std::sort(paths.begin() + first, paths.end());
  }
  return paths;
}

}  // namespace

std::string checkSyntax(const std::string& root) {
  std::string line;
  int further = 0;
  for (const auto& path : listedFiles(root)) {
    const auto bytes = readRegularFile(path, kLargestPropertyListFile);
    if (!bytes || readPropertyList(*bytes)) continue;
    if (line.empty()) {
      line = path + ": not a property list";
    } else {
      ++further;
    }
  }
  return further == 0 ? line : line + " (and " + std::to_string(further) + " more)";
}

}  // namespace corvane
