#include "posix/FreshFile.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <ctime>
#include <string_view>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "posix/Differences.h"
#include "posix/FolderReader.h"

namespace corvane {
namespace {

constexpr std::string_view kPrefix = ".corvane-";
constexpr std::string_view kDigits = "0123456789abcdef";
constexpr std::size_t kRandomBytes = 16;
/// No write takes as long.
constexpr std::time_t kOld = 3600;

/// Empty, with errno set, when there is no random number.
std::string unpredictableName() {
  std::array<std::uint8_t, kRandomBytes> random{};
  if (!fillWithRandomBytes(random.data(), random.size())) return {};
  std::string name(kPrefix);
  for (const std::uint8_t byte : random) {
    name += kDigits[byte >> 4U];
    name += kDigits[byte & 15U];
  }
  return name;
}

bool isUnpredictableName(std::string_view name) {
  return name.starts_with(kPrefix) && name.size() == kPrefix.size() + 2 * kRandomBytes &&
         std::ranges::all_of(name.substr(kPrefix.size()),
                             [](char c) { return kDigits.find(c) != std::string_view::npos; });
}

int errorOf(int result) { return result == 0 ? 0 : errno; }

/// Renames unless something bears the name. Where the file system can't do that in one step it is looked at
/// first.
int renameToFreeName(int folder, const std::string& from, const std::string& to) {
  const int error = errorOf(renameWithoutReplacing(folder, from.c_str(), to.c_str()));
  if (error != EINVAL && error != ENOSYS && error != ENOTSUP) return error;
  if (::faccessat(folder, to.c_str(), F_OK, AT_SYMLINK_NOFOLLOW) == 0) return EEXIST;
  return errorOf(::renameat(folder, from.c_str(), folder, to.c_str()));
}

}  // namespace

FreshFile::FreshFile(int folder, FileDescriptor file, std::string temporaryName)
    : folder_(folder), file_(std::move(file)), temporaryName_(std::move(temporaryName)) {}

FreshFile::FreshFile(FreshFile&& other) noexcept
    : folder_(other.folder_),
      file_(std::move(other.file_)),
      temporaryName_(std::exchange(other.temporaryName_, {})) {}

FreshFile FreshFile::in(int folder) {
  if (auto file = in(folder, Beginning::WithoutName)) return file;
  sweepFreshFiles(folder);
  return in(folder, Beginning::WithUnpredictableName);
}

FreshFile FreshFile::in(int folder, Beginning beginning) {
  FileDescriptor file;
  std::string temporaryName;
  if (beginning == Beginning::WithoutName) {
    file = openFileWithoutName(folder);
  } else if (temporaryName = unpredictableName(); !temporaryName.empty()) {
    file = FileDescriptor(
        ::openat(folder, temporaryName.c_str(), O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600));
  }
  if (!file) return FreshFile(folder, {}, {});
  FreshFile fresh(folder, std::move(file), std::move(temporaryName));
  if (::fchmod(fresh.descriptor(), 0600) != 0) fresh.file_.reset();
  return fresh;
}

FreshFile::~FreshFile() {
  if (!temporaryName_.empty()) ::unlinkat(folder_, temporaryName_.c_str(), 0);
}

int FreshFile::fill(std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t count = ::write(descriptor(), bytes.data(), bytes.size());
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return count == 0 ? EIO : errno;
    bytes.remove_prefix(static_cast<std::size_t>(count));
  }
  return errorOf(::fsync(descriptor()));
}

int FreshFile::name(const std::string& name) {
  if (temporaryName_.empty()) return errorOf(linkFileWithoutName(descriptor(), folder_, name.c_str()));
  const int error = renameToFreeName(folder_, temporaryName_, name);
  if (error == 0) temporaryName_.clear();
  return error;
}

int FreshFile::nameInPlaceOf(const std::string& name) {
  if (temporaryName_.empty()) {
    const int error = errorOf(linkFileWithoutName(descriptor(), folder_, name.c_str()));
    if (error != EEXIST) return error;
    // Only a rename replaces.
    std::string temporary = unpredictableName();
    if (temporary.empty()) return EIO;
    if (linkFileWithoutName(descriptor(), folder_, temporary.c_str()) != 0) return errno;
    temporaryName_ = std::move(temporary);
  }
  const int error = errorOf(::renameat(folder_, temporaryName_.c_str(), folder_, name.c_str()));
  if (error == 0) temporaryName_.clear();
  return error;
}

void sweepFreshFiles(int folder) {
  FolderReader reader(FolderReader::open(folder, "."));
  if (!reader.isOpen()) return;
  std::vector<std::string> left;
  while (const auto entry = reader.next()) {
    if (!isUnpredictableName(entry->name)) continue;
    struct stat status {};
    std::string name(entry->name);
    if (::fstatat(folder, name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0) continue;
    if (!S_ISREG(status.st_mode) || status.st_uid != ::geteuid() || status.st_nlink != 1) continue;
    if (std::time(nullptr) - modificationTime(status).tv_sec > kOld) left.push_back(std::move(name));
  }
  for (const std::string& name : left) ::unlinkat(folder, name.c_str(), 0);
}

}  // namespace corvane
