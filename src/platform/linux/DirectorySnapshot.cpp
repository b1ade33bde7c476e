#include "platform/linux/DirectorySnapshot.h"

#include <algorithm>
#include <functional>

#include <fcntl.h>
#include <sys/stat.h>

#include "platform/linux/FolderWatches.h"
#include "posix/FolderReader.h"

namespace corvane {
namespace {

std::uint64_t mixed(std::uint64_t seed, std::uint64_t value) {
  seed ^= value + 0x9E3779B97F4A7C15U + (seed << 6U) + (seed >> 2U);
  seed *= 0xFF51AFD7ED558CCDU;
  return seed ^ seed >> 33U;
}

/// Whatever is done to an entry changes its change time; the rest is for file systems with coarse times.
std::uint64_t fingerprint(std::string_view name, const struct stat& status) {
  std::uint64_t print = std::hash<std::string_view>()(name);
  for (const auto value :
       {static_cast<std::uint64_t>(status.st_ino), static_cast<std::uint64_t>(status.st_size),
        static_cast<std::uint64_t>(status.st_mode), static_cast<std::uint64_t>(status.st_nlink),
        static_cast<std::uint64_t>(status.st_mtim.tv_sec), static_cast<std::uint64_t>(status.st_mtim.tv_nsec),
        static_cast<std::uint64_t>(status.st_ctim.tv_sec),
        static_cast<std::uint64_t>(status.st_ctim.tv_nsec)}) {
    print = mixed(print, value);
  }
  return print;
}

}  // namespace

DirectorySnapshot::DirectorySnapshot(const std::vector<std::string>& roots) : roots_(roots) {
  for (const auto& root : roots_) take(root);
}

void DirectorySnapshot::take(const std::string& root) {
  std::vector<std::string> pending{root};
  while (!pending.empty()) {
    const std::string folder = std::move(pending.back());
    pending.pop_back();
    if (folders_.count(folder) != 0) continue;  // below another root
    FolderReader reader(FolderReader::open(AT_FDCWD, folder.c_str(), folder == root ? 0 : O_NOFOLLOW));
    if (!reader.isOpen()) continue;
    std::uint64_t print = 0;
    while (const auto entry = reader.next()) {
      struct stat status {};
      const std::string name(entry->name);
      if (::fstatat(reader.descriptor(), name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0) continue;
      // A folder is told by its own entries, so that a file made below it is not a change of its parent.
      if (entry->isFolder) {
        status.st_size = 0;
        status.st_nlink = 0;
        status.st_mtim = {};
        status.st_ctim = {};
        pending.push_back(entryPath(folder, name));
      }
      print += fingerprint(name, status);  // a sum: the entries come in no order
    }
    folders_.emplace(folder, print);
  }
}

std::vector<std::string> DirectorySnapshot::changesSince(const DirectorySnapshot& before) const {
  std::vector<std::string> changed;
  for (const auto& [folder, print] : folders_) {
    const auto old = before.folders_.find(folder);
    if (old == before.folders_.end() ? print != 0 : old->second != print) changed.push_back(folder);
  }
  for (const auto& root : roots_) {
    if (folders_.count(root) != before.folders_.count(root)) changed.push_back(root);
  }
  std::sort(changed.begin(), changed.end());
  changed.erase(std::unique(changed.begin(), changed.end()), changed.end());
  return changed;
}

}  // namespace corvane
