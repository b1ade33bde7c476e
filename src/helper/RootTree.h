// The files below the root prefix, as root may touch them: the four file operations of the pane, carried out
// on open descriptors so that nothing another user plants or swaps at a predictable path is ever followed,
// read or written. Used by the command runner only.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include <sys/types.h>

#include "helper/Request.h"
#include "posix/FileDescriptor.h"

namespace corvane::helper {

/// For whom, and how carefully, the tree is worked on.
struct Caution {
  uid_t user = 0;  // whose settings these are: the owner of staging files
  /// True when root does the work: a folder in which somebody else could plant or swap something is refused.
  bool distrust = true;
};

/// The largest file that is copied, in bytes.
inline constexpr std::size_t kLargestFile = std::size_t{64} << 20;

class RootTree {
 public:
  /// `root` is a normalized root prefix; a folder that is missing makes every operation fail.
  RootTree(const std::string& root, Caution caution);

  /// Removes a staging file: a regular file with one link, of the user or of root.
  [[nodiscard]] Reply removeStaging(const std::string& name) const;
  /// Copies the user's staging file into the file of that name in the folder. A file that exists is written
  /// in place and keeps its owner and mode; a new one has mode 644. When the copy fails, a file that existed
  /// has its old contents and the staging file stays.
  [[nodiscard]] Reply writeTarget(const std::string& name, const std::string& folder) const;
  /// Copies the folder's file into a fresh staging file "read-NAME" that only the user can read. A file that
  /// is missing is an exit status without a message: asking for one is no mistake.
  [[nodiscard]] Reply readSource(const std::string& folder, const std::string& name) const;
  /// Makes the folder and those above it that are missing, with mode 755.
  [[nodiscard]] Reply makeFolders(const std::string& folder) const;
  /// Nothing (Started) when the program may be run: a regular file below the folder, reached through folders
  /// and links that nobody else can change, standing at the same place for a shell that resolves the path
  /// below the prefix.
  [[nodiscard]] Reply checkProgram(const std::string& folder, const std::string& name, bool executable) const;
  /// Nothing (Started) when nobody else can change what the folder holds, or when there is no such folder.
  [[nodiscard]] Reply checkFolder(const std::string& folder) const;
  /// Nothing (Started) when the prefix and the staging folder, or what there is of the way to it, are what
  /// their paths say and stay so: no links, and nobody else can change them. Then a process of root may
  /// itself write staging files by path.
  [[nodiscard]] Reply checkStagingPath() const;

  /// Called with the name of each step of a copy before it is taken; for tests that end the process there.
  static std::function<void(std::string_view)> beforeStep;
  /// Called when a folder has been opened and the way to it is not yet looked at; for tests that change it
  /// there.
  static std::function<void()> beforeLook;

 private:
  enum class Sticky { Refused, Accepted };
  struct Folder {
    FileDescriptor descriptor;
    Reply problem;  // set when there is no descriptor
  };
  [[nodiscard]] Folder openFolder(const std::string& path, Sticky sticky) const;
  [[nodiscard]] bool isWayTrusted(const std::string& path, int found) const;
  [[nodiscard]] bool isPlaceTrusted(int folder, Sticky sticky) const;
  [[nodiscard]] FileDescriptor openAbove(int folder) const;
  [[nodiscard]] FileDescriptor open(const std::string& path, int flags) const;

  std::string root_;
  Caution caution_;
  FileDescriptor top_;
};

}  // namespace corvane::helper
