#include "posix/PosixFiles.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <iterator>
#include <thread>

#include <fcntl.h>
#include <sys/file.h>
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

std::optional<struct stat> attributesOf(const std::string& path) {
  struct stat status {};
  return !holdsNul(path) && ::stat(path.c_str(), &status) == 0 ? std::optional(status) : std::nullopt;
}

/// A lock belongs to the open folder: a process that was started meanwhile may have it open, too, so that it
/// is not enough to close it.
struct FolderLock {
  explicit FolderLock(FileDescriptor locked) : folder(std::move(locked)) {}
  FolderLock(const FolderLock&) = delete;
  FolderLock& operator=(const FolderLock&) = delete;
  ~FolderLock() { ::flock(folder.get(), LOCK_UN); }
  FileDescriptor folder;
};

}  // namespace

bool PosixFiles::exists(const std::string& path) { return attributesOf(path).has_value(); }

bool PosixFiles::areSame(const std::string& one, const std::string& other) {
  if (one == other) return true;
  const auto first = attributesOf(one);
  const auto second = attributesOf(other);
  return first && second && first->st_dev == second->st_dev && first->st_ino == second->st_ino;
}

Files::Held PosixFiles::holdFolder(const std::string& folder, double patience) {
  if (holdsNul(folder)) return {};
  FileDescriptor opened = FolderReader::open(AT_FDCWD, folder.c_str());
  if (!opened) return {};
  using Clock = std::chrono::steady_clock;
  const auto deadline = Clock::now() + std::chrono::duration<double>(patience);
  // The others hold it for some milliseconds. Not a lock that waits: somebody could keep it for ever.
  while (::flock(opened.get(), LOCK_EX | LOCK_NB) != 0) {
    if (errno == EINTR) continue;
    if (errno != EWOULDBLOCK) return {};
    if (Clock::now() >= deadline) return {.hold = nullptr, .isTaken = true};
    std::this_thread::sleep_for(std::chrono::milliseconds(2));
  }
  return {.hold = std::make_shared<FolderLock>(std::move(opened))};
}

Files::Held PosixFiles::claimTree(const std::string& folder) {
  const auto status = attributesOf(folder);
  if (!status) return {};
  FileDescriptor name = claimName("org.example.corvane.pane/" + std::to_string(status->st_dev) + ":" +
                                  std::to_string(status->st_ino));
  if (!name) return {.hold = nullptr, .isTaken = errno == EADDRINUSE};
  return {.hold = std::make_shared<FileDescriptor>(std::move(name))};
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
