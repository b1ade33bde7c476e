// A new file that nobody finds before it is whole: it has no name until it is given one, and where the file
// system does not know files without names, a name that nobody can predict. For whoever puts whole files into
// folders.
#pragma once

#include <string>
#include <string_view>

#include "posix/FileDescriptor.h"

namespace corvane {

class FreshFile {
 public:
  enum class Beginning { WithoutName, WithUnpredictableName };

  /// Makes a file in the open folder that only this process's user can read, whatever the umask; open for
  /// reading and writing. Errno says why there is none.
  [[nodiscard]] static FreshFile in(int folder);
  /// The same, in one of the two ways only.
  [[nodiscard]] static FreshFile in(int folder, Beginning beginning);

  FreshFile(FreshFile&& other) noexcept;
  FreshFile& operator=(FreshFile&& other) = delete;
  /// A file that was not given a name goes.
  ~FreshFile();

  explicit operator bool() const { return static_cast<bool>(file_); }
  [[nodiscard]] int descriptor() const { return file_.get(); }
  /// Writes the contents and flushes them. Answers 0 or the error.
  [[nodiscard]] int fill(std::string_view bytes);
  /// Gives the file the name, once. Answers 0 or the error: EEXIST when something bears it already.
  [[nodiscard]] int name(const std::string& name);
  /// Gives the file the name, once, in the place of what bears it; a link is not followed. Answers 0 or the
  /// error.
  [[nodiscard]] int nameInPlaceOf(const std::string& name);

 private:
  FreshFile(int folder, FileDescriptor file, std::string temporaryName);

  int folder_;
  FileDescriptor file_;
  std::string temporaryName_;  // empty while the file has none
};

/// Removes the files that processes of this user that were killed have left with unpredictable names in the
/// open folder: regular ones, more than an hour old.
void sweepFreshFiles(int folder);

}  // namespace corvane
