#include "platform/linux/InotifyFolderWatches.h"

#include <array>
#include <cerrno>
#include <climits>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "posix/FolderReader.h"

namespace corvane {

InotifyFolderWatches::InotifyFolderWatches(std::uint32_t mask)
    : instance_(::inotify_init1(IN_CLOEXEC | IN_NONBLOCK)), mask_(mask), error_(instance_ ? 0 : errno) {}

FolderWatches::AddOutcome InotifyFolderWatches::add(const std::string& folder, Links links) {
  const std::uint32_t mask = mask_ | IN_ONLYDIR | (links == Links::Refuse ? IN_DONT_FOLLOW : 0U);
  const int watch = ::inotify_add_watch(instance_.get(), folder.c_str(), mask);
  if (watch < 0) error_ = errno;
  return {watch, watch < 0 && (errno == ENOSPC || errno == ENOMEM)};
}

void InotifyFolderWatches::remove(int watch) { ::inotify_rm_watch(instance_.get(), watch); }

std::optional<FolderWatches::Listing> InotifyFolderWatches::list(const std::string& folder) {
  FolderReader reader(FolderReader::open(AT_FDCWD, folder.c_str()));
  if (!reader.isOpen()) return std::nullopt;
  Listing result;
  while (const auto entry = reader.next()) {
    result.empty = false;
    if (entry->isFolder) result.folders.emplace_back(entry->name);
  }
  return result;
}

FolderWatches::Entry InotifyFolderWatches::lookAt(const std::string& path) {
  struct stat status {};
  if (::lstat(path.c_str(), &status) != 0) return {};
  if (S_ISDIR(status.st_mode)) return {Entry::Kind::Folder, {}};
  if (!S_ISLNK(status.st_mode)) return {Entry::Kind::Other, {}};
  std::array<char, PATH_MAX> target{};
  const ssize_t length = ::readlink(path.c_str(), target.data(), target.size());
  if (length <= 0) return {};  // has gone meanwhile
  return {Entry::Kind::Link, std::string(target.data(), static_cast<std::size_t>(length))};
}

}  // namespace corvane
