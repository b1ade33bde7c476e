#include "platform/linux/LinuxFiles.h"

#include <algorithm>
#include <cerrno>
#include <memory>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include "platform/linux/FileDescriptor.h"
#include "platform/linux/RegularFile.h"
#include "platform/linux/SystemError.h"
#include "values/Text.h"

namespace corvane {
namespace {

struct Entry {
  std::string path;  // relative to the folder that is walked
  bool isFolder = false;
};

struct CloseFolder {
  void operator()(DIR* folder) const noexcept { ::closedir(folder); }
};

bool isFolder(int folder, const dirent& entry) {
  if (entry.d_type != DT_UNKNOWN) return entry.d_type == DT_DIR;
  struct stat status {};  // a file system that does not tell kinds in its listings
  return ::fstatat(folder, entry.d_name, &status, AT_SYMLINK_NOFOLLOW) == 0 && S_ISDIR(status.st_mode);
}

/// The entries of an open folder, the last name first; nothing when it can't be listed.
std::optional<std::vector<Entry>> list(FileDescriptor folder, const std::string& prefix) {
  if (!folder) return std::nullopt;
  const std::unique_ptr<DIR, CloseFolder> listing(::fdopendir(folder.get()));
  if (!listing) return std::nullopt;
  const FileDescriptor taken = std::move(folder);
  const int descriptor = ::dirfd(listing.get());
  std::vector<Entry> entries;
  while (const dirent* entry =
             ::readdir(listing.get())) {  // NOLINT(concurrency-mt-unsafe): one stream, one thread
    const std::string_view name = entry->d_name;
    if (name == "." || name == ".." || !isValidUtf8(name)) continue;
    entries.push_back({prefix + std::string(name), isFolder(descriptor, *entry)});
  }
  std::sort(entries.begin(), entries.end(),
            [](const Entry& left, const Entry& right) { return left.path > right.path; });
  return entries;
}

bool holdsNul(const std::string& path) { return path.find('\0') != std::string::npos; }

}  // namespace

bool LinuxFiles::exists(const std::string& path) {
  struct stat status {};
  return !holdsNul(path) && ::stat(path.c_str(), &status) == 0;
}

Files::ModificationDate LinuxFiles::modificationDate(const std::string& path) {
  struct stat status {};
  if (holdsNul(path)) return {std::nullopt, systemErrorText(EINVAL)};
  if (::stat(path.c_str(), &status) != 0) return {std::nullopt, systemErrorText(errno)};
  const double seconds =
      static_cast<double>(status.st_mtim.tv_sec) + static_cast<double>(status.st_mtim.tv_nsec) / 1e9;
  return {Date{seconds}, {}};
}

std::optional<std::string> LinuxFiles::contents(const std::string& path, std::size_t limit) {
  return readRegularFile(path, limit);
}

std::optional<std::vector<std::string>> LinuxFiles::walk(const std::string& folder) {
  if (holdsNul(folder)) return std::nullopt;
  constexpr int kOpenFolder = O_RDONLY | O_DIRECTORY | O_CLOEXEC | O_NONBLOCK;
  const FileDescriptor root(::open(folder.c_str(), kOpenFolder));
  if (!root) return std::nullopt;
  // What is still to be visited lies on a stack of its own, and only one folder is open beside the root at
  // any time: a deep tree exhausts neither the stack nor the descriptors.
  std::optional<std::vector<Entry>> pending =
      list(FileDescriptor(::openat(root.get(), ".", kOpenFolder)), {});
  if (!pending) return std::nullopt;
  std::vector<std::string> paths;
  while (!pending->empty()) {
    const Entry entry = std::move(pending->back());
    pending->pop_back();
    paths.push_back(entry.path);
    if (!entry.isFolder) continue;
    auto below = list(FileDescriptor(::openat(root.get(), entry.path.c_str(), kOpenFolder | O_NOFOLLOW)),
                      entry.path + "/");
    if (!below) continue;
    pending->insert(pending->end(), std::make_move_iterator(below->begin()),
                    std::make_move_iterator(below->end()));
  }
  return paths;
}

}  // namespace corvane
