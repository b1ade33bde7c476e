#include "helper/FileContents.h"

#include <algorithm>
#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace corvane::helper {
namespace {

/// Writes everything at the offset: one call, and further ones only after a short write. Answers 0 or the
/// error.
int writeAt(int descriptor, std::string_view bytes, off_t offset) {
  while (!bytes.empty()) {
    const ssize_t written = ::pwrite(descriptor, bytes.data(), bytes.size(), offset);
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) return errno;
    if (written == 0) return EIO;
    bytes.remove_prefix(static_cast<std::size_t>(written));
    offset += written;
  }
  return 0;
}

/// Makes sure that `size` bytes find room, without changing what a reader of the old `oldSize` bytes
/// understands.
int reserve(int descriptor, std::size_t oldSize, std::size_t size) {
  if (::fallocate(descriptor, FALLOC_FL_KEEP_SIZE, 0, static_cast<off_t>(size)) == 0) return 0;
  if (errno != EOPNOTSUPP && errno != ENOSYS && errno != EINTR) return errno;
  if (size <= oldSize) return 0;
  // File systems without reservation (the Mac's among them): blanks after the end mean nothing to a property
  // list.
  return writeAt(descriptor, std::string(size - oldSize, ' '), static_cast<off_t>(oldSize));
}

void step(const StepObserver& before, std::string_view name) {
  if (before) before(name);
}

}  // namespace

std::optional<std::string> readAll(int descriptor, std::size_t limit) {
  std::string contents;
  char buffer[65536];
  for (;;) {
    const ssize_t count = ::read(descriptor, buffer, sizeof buffer);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return std::nullopt;
    if (count == 0) return contents;
    contents.append(buffer, static_cast<std::size_t>(count));
    if (contents.size() > limit) {
      errno = EFBIG;
      return std::nullopt;
    }
  }
}

int replaceContents(int descriptor, const std::string& contents, std::size_t limit,
                    const StepObserver& before) {
  if (::lseek(descriptor, 0, SEEK_SET) < 0) return errno;
  const auto old = readAll(descriptor, limit);
  if (!old) return errno;
  // The new contents are padded to the length of the old ones, so that the file is whole before it is cut,
  // too.
  std::string padded = contents;
  padded.resize(std::max(contents.size(), old->size()), ' ');

  step(before, "reserve");
  int error = reserve(descriptor, old->size(), padded.size());
  if (error == 0) {
    step(before, "write");
    error = writeAt(descriptor, padded, 0);
    if (error != 0) (void)writeAt(descriptor, *old, 0);
  }
  step(before, "cut");
  const auto size = error == 0 ? contents.size() : old->size();
  if (::ftruncate(descriptor, static_cast<off_t>(size)) != 0 && error == 0) error = errno;
  step(before, "flush");
  if (::fsync(descriptor) != 0 && error == 0) error = errno;
  return error;
}

int fillContents(int descriptor, const std::string& contents, const StepObserver& before) {
  step(before, "write");
  int error = writeAt(descriptor, contents, 0);
  step(before, "flush");
  if (error == 0 && ::fsync(descriptor) != 0) error = errno;
  return error;
}

}  // namespace corvane::helper
