// Reads the entries of one folder.
#pragma once

#include <memory>
#include <optional>
#include <string_view>

#include <dirent.h>

#include "posix/FileDescriptor.h"

namespace corvane {

class FolderReader {
 public:
  struct Entry {
    std::string_view name;  // until the next call
    bool isFolder = false;  // a link is none
  };

  /// The folder itself may be a link unless O_NOFOLLOW is among the flags.
  [[nodiscard]] static FileDescriptor open(int base, const char* path, int flags = 0);
  /// Takes a descriptor of an open folder; none gives a reader that is not open.
  explicit FolderReader(FileDescriptor folder);
  [[nodiscard]] bool isOpen() const { return stream_ != nullptr; }
  [[nodiscard]] int descriptor() const { return ::dirfd(stream_.get()); }
  /// The next entry, in no order, without "." and ".."; nothing at the end.
  [[nodiscard]] std::optional<Entry> next();

 private:
  struct Close {
    void operator()(DIR* folder) const noexcept { ::closedir(folder); }
  };
  std::unique_ptr<DIR, Close> stream_;
};

}  // namespace corvane
