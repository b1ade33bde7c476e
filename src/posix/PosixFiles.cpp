#include "posix/PosixFiles.h"

#include <algorithm>
#include <cerrno>
#include <iterator>

#include <fcntl.h>
#include <sys/stat.h>

#include "posix/Differences.h"
#include "posix/FolderReader.h"
#include "posix/RegularFile.h"
#include "posix/SystemError.h"
#include "values/Encodings.h"

namespace corvane {
namespace {

struct Entry {
  std::string path;  // relative to the folder that is walked
  bool isFolder = false;
};

/// The entries of an open folder, the last name first; nothing when it can't be listed.
std::optional<std::vector<Entry>> list(FileDescriptor folder, const std::string& prefix) {
  FolderReader reader(std::move(folder));
  if (!reader.isOpen()) return std::nullopt;
  std::vector<Entry> entries;
  while (const auto entry = reader.next()) {
    if (isUtf8(entry->name)) entries.push_back({prefix + std::string(entry->name), entry->isFolder});
  }
  std::sort(entries.begin(), entries.end(),
            [](const Entry& left, const Entry& right) { return left.path > right.path; });
  return entries;
}

bool holdsNul(const std::string& path) { return path.find('\0') != std::string::npos; }

}  // namespace

bool PosixFiles::exists(const std::string& path) {
  struct stat status {};
  return !holdsNul(path) && ::stat(path.c_str(), &status) == 0;
}

Files::ModificationDate PosixFiles::modificationDate(const std::string& path) {
  struct stat status {};
  if (holdsNul(path)) return {std::nullopt, systemErrorText(EINVAL)};
  if (::stat(path.c_str(), &status) != 0) return {std::nullopt, systemErrorText(errno)};
  const auto time = modificationTime(status);
  return {Date{static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9}, {}};
}

std::optional<std::string> PosixFiles::contents(const std::string& path, std::size_t limit) {
  return readRegularFile(path, limit);
}

std::optional<std::vector<std::string>> PosixFiles::walk(const std::string& folder) {
  if (holdsNul(folder)) return std::nullopt;
  const FileDescriptor root = FolderReader::open(AT_FDCWD, folder.c_str());
  if (!root) return std::nullopt;
  // What is still to be visited lies on a stack of its own, and only one folder is open beside the root at
  // any time: a deep tree exhausts neither the stack nor the descriptors.
  auto pending = list(FolderReader::open(root.get(), "."), {});
  if (!pending) return std::nullopt;
  std::vector<std::string> paths;
  while (!pending->empty()) {
    const Entry entry = std::move(pending->back());
    pending->pop_back();
    paths.push_back(entry.path);
    if (!entry.isFolder) continue;
    auto below = list(FolderReader::open(root.get(), entry.path.c_str(), O_NOFOLLOW), entry.path + "/");
    if (!below) continue;
    pending->insert(pending->end(), std::make_move_iterator(below->begin()),
                    std::make_move_iterator(below->end()));
  }
  return paths;
}

}  // namespace corvane
