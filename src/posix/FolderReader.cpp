#include "posix/FolderReader.h"

#include <fcntl.h>
#include <sys/stat.h>

namespace corvane {

FileDescriptor FolderReader::open(int base, const char* path, int flags) {
  return FileDescriptor(::openat(base, path, O_RDONLY | O_DIRECTORY | O_CLOEXEC | O_NONBLOCK | flags));
}

FolderReader::FolderReader(FileDescriptor folder) : stream_(folder ? ::fdopendir(folder.get()) : nullptr) {
  if (stream_) static_cast<void>(folder.release());
}

std::optional<FolderReader::Entry> FolderReader::next() {
  // NOLINTNEXTLINE(concurrency-mt-unsafe): one stream, one thread
  while (const dirent* entry = ::readdir(stream_.get())) {
    const std::string_view name = entry->d_name;
    if (name == "." || name == "..") continue;
    if (entry->d_type != DT_UNKNOWN) return Entry{name, entry->d_type == DT_DIR};
    struct stat status {};  // a file system that does not tell kinds in its listings
    const bool known = ::fstatat(descriptor(), entry->d_name, &status, AT_SYMLINK_NOFOLLOW) == 0;
    return Entry{name, known && S_ISDIR(status.st_mode)};
  }
  return std::nullopt;
}

}  // namespace corvane
