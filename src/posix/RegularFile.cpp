#include "posix/RegularFile.h"

#include <algorithm>
#include <cerrno>
#include <functional>
#include <new>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "posix/Differences.h"
#include "posix/FreshFile.h"
#include "posix/SystemError.h"

namespace corvane {
namespace {

/// A path with a NUL inside would name another file to the system than to everybody else.
bool isUsable(const std::string& path) { return !path.empty() && path.find('\0') == std::string::npos; }

using Wanted = std::function<bool(const struct stat&)>;

/// The contents of a regular file that is wanted. `following` is 0, or O_NOFOLLOW where no link may lead to
/// it.
std::optional<std::string> readFile(const std::string& path, int following, std::size_t limit,
                                    const Wanted& isWanted) {
  struct stat status {};
  const auto isGood = [&] { return S_ISREG(status.st_mode) && isWanted(status); };
  const int look = following == O_NOFOLLOW ? AT_SYMLINK_NOFOLLOW : 0;
  // Looked at before opening: to open a FIFO or a device is already an act that others can notice.
  if (!isUsable(path) || ::fstatat(AT_FDCWD, path.c_str(), &status, look) != 0 || !isGood())
    return std::nullopt;
  // O_NONBLOCK in case something else has taken the place meanwhile.
  const FileDescriptor file(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY | following));
  if (!file || ::fstat(file.get(), &status) != 0 || !isGood()) return std::nullopt;
  return readToEnd(file.get(), limit);
}

/// On a disk, by its descriptor.
class OpenFile final : public WritableFile {
 public:
  explicit OpenFile(int descriptor) : descriptor_(descriptor) {}
  ssize_t write(std::string_view bytes, std::size_t offset) override {
    return ::pwrite(descriptor_, bytes.data(), bytes.size(), static_cast<off_t>(offset));
  }
  int reserve(std::size_t size) override {
    return errorOf(reserveRoom(descriptor_, static_cast<off_t>(size)));
  }
  int resize(std::size_t size) override {
    return errorOf(::ftruncate(descriptor_, static_cast<off_t>(size)));
  }
  int flush() override { return errorOf(::fsync(descriptor_)); }

 private:
  static int errorOf(int result) { return result == 0 ? 0 : errno; }
  int descriptor_;
};

}  // namespace

std::optional<std::string> readToEnd(int descriptor, std::size_t limit) try {
  struct stat status {};
  if (::fstat(descriptor, &status) != 0) return std::nullopt;
  std::string bytes;
  // One byte more than expected, so that the usual file is found to end without growing the buffer.
  bytes.resize(std::min(static_cast<std::size_t>(status.st_size), limit) + 1);
  std::size_t length = 0;
  for (;;) {
    if (length == bytes.size()) bytes.resize(std::min(limit + 1, bytes.size() * 2));
    const ssize_t count = ::read(descriptor, bytes.data() + length, bytes.size() - length);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return std::nullopt;
    if (count == 0) break;
    length += static_cast<std::size_t>(count);
    if (length <= limit) continue;
    errno = EFBIG;
    return std::nullopt;
  }
  bytes.resize(length);
  return bytes;
} catch (const std::bad_alloc&) {
  errno = ENOMEM;  // a large file must not end the program
  return std::nullopt;
}

std::optional<std::string> readRegularFile(const std::string& path, std::size_t limit) {
  return readFile(path, 0, limit, [](const struct stat&) { return true; });
}

std::function<std::optional<std::string>()> expectRegularFile(const std::string& path, std::size_t limit) {
  struct stat before {};
  const bool wasThere = isUsable(path) && ::lstat(path.c_str(), &before) == 0;
  const Wanted isExpected = [=](const struct stat& now) {
    const auto then = modificationTime(before);
    const auto changed = modificationTime(now);
    const bool isTheSame = wasThere && now.st_dev == before.st_dev && now.st_ino == before.st_ino &&
                           changed.tv_sec == then.tv_sec && changed.tv_nsec == then.tv_nsec;
    return !isTheSame && now.st_nlink == 1 && (now.st_uid == ::geteuid() || now.st_uid == 0);
  };
  return [=] { return readFile(path, O_NOFOLLOW, limit, isExpected); };
}

int replaceContents(int descriptor, const std::string& contents, std::size_t limit,
                    const StepObserver& before) {
  if (::lseek(descriptor, 0, SEEK_SET) < 0) return errno;
  const auto old = readToEnd(descriptor, limit);
  if (!old) return errno;
  OpenFile file(descriptor);
  return replaceContents(file, *old, contents, before);
}

Result replaceRegularFile(const std::string& path, std::string_view bytes) {
  if (!isUsable(path)) return {systemErrorText(EINVAL)};
  const std::size_t slash = path.rfind('/');
  const std::string folderPath = slash == std::string::npos ? "." : slash == 0 ? "/" : path.substr(0, slash);
  const std::string name = slash == std::string::npos ? path : path.substr(slash + 1);
  if (name.empty() || name == "." || name == "..") return {systemErrorText(EISDIR)};

  const FileDescriptor folder(::open(folderPath.c_str(), kFolderToWorkBelow));
  if (!folder) return {systemErrorText(errno)};
  FreshFile file = FreshFile::in(folder.get());
  if (!file) return {systemErrorText(errno)};
  int error = file.fill(bytes);
  if (error == 0) error = file.nameInPlaceOf(name);
  if (error != 0) return {systemErrorText(error)};
  // Makes the name itself last. A folder that can be written but not read can't be flushed; the file is in
  // place.
  const FileDescriptor readable(::openat(folder.get(), ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (readable) static_cast<void>(::fsync(readable.get()));
  return {};
}

}  // namespace corvane
