#include "helper/FileContents.h"

#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "posix/FreshFile.h"

namespace corvane::helper {
namespace {

class OpenFile final : public WritableFile {
 public:
  explicit OpenFile(int descriptor) : descriptor_(descriptor) {}
  ssize_t write(std::string_view bytes, std::size_t offset) override {
    return ::pwrite(descriptor_, bytes.data(), bytes.size(), static_cast<off_t>(offset));
  }
  int reserve(std::size_t size) override {
    return errorOf(::fallocate(descriptor_, FALLOC_FL_KEEP_SIZE, 0, static_cast<off_t>(size)));
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
  OpenFile file(descriptor);
  return replaceContents(file, *old, contents, before);
}

int fillContents(int descriptor, const std::string& contents, const StepObserver& before) {
  OpenFile file(descriptor);
  if (before) before("write");
  if (const int error = writeAll(file, contents, 0); error != 0) return error;
  if (before) before("flush");
  return file.flush();
}

int createWhole(int folder, const std::string& name, const std::string& contents, const Rights& rights,
                const StepObserver& before) {
  FreshFile file = FreshFile::in(folder);
  if (!file) return errno;
  if (const int error = fillContents(file.descriptor(), contents, before); error != 0) return error;
  const bool isForeign = rights.owner != ::geteuid() || rights.group != ::getegid();
  if (isForeign && ::fchown(file.descriptor(), rights.owner, rights.group) != 0) return errno;
  if (::fchmod(file.descriptor(), rights.mode) != 0) return errno;
  if (before) before("name");
  return file.name(name);
}

}  // namespace corvane::helper
