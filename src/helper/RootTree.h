// The files below the root prefix, as root may touch them: the file operations of the pane, carried out on
// open descriptors so that nothing another user plants or swaps at a predictable path is ever followed, read
// or written. Used by the command runner only.
#pragma once

#include <string>
#include <string_view>

#include <sys/types.h>

#include "helper/Request.h"
#include "helper/TreeWalk.h"
#include "posix/InPlaceWrite.h"

namespace corvane::helper {

/// The largest file that is copied, in bytes.
inline constexpr std::size_t kLargestFile = std::size_t{64} << 20;

/// For tests that change something, or end the process, in the middle of an operation.
struct TreeObservers {
  StepObserver beforeStep = {};  // of a copy
  TreeWalk::Observer beforeLook = {};
};

class RootTree {
 public:
  /// `root` is a normalized root prefix; where there is no such folder every operation fails. `user` is whose
  /// settings these are, the owner of the staging files.
  RootTree(const std::string& root, uid_t user, TreeObservers observers = {});

  /// Removes a staging file: a regular file with one link, of the user or of root.
  [[nodiscard]] Reply removeStaging(const std::string& name) const;
  /// Copies the user's staging file into the file of that name in the folder. A file that exists is written
  /// in place and keeps its owner and mode; a new one has mode 644. When the copy fails, a file that existed
  /// has its old contents and the staging file stays.
  [[nodiscard]] Reply writeTarget(const std::string& name, const std::string& folder) const;
  /// Copies the folder's file into a fresh staging file "read-NAME" that only the user can read. That the
  /// file is missing is an outcome of its own; any other failure counts as not started.
  [[nodiscard]] Reply readSource(const std::string& folder, const std::string& name) const;
  /// Makes the folder and those above it that are missing, with mode 755.
  [[nodiscard]] Reply makeFolders(const std::string& folder) const;
  /// Gives the files of the housekeeping list the mode 644: regular ones with one link. What is missing is
  /// passed over. A file that can't be changed does not keep the others from it; the answer tells of the
  /// first.
  [[nodiscard]] Reply resetModes() const;
  /// Nothing (Started) when the program may be run: a regular file below the folder, reached through folders
  /// and links that nobody else can change, standing at the same place for a shell that resolves the path
  /// below the prefix.
  [[nodiscard]] Reply checkProgram(const std::string& folder, const std::string& name, bool executable) const;

  /// Why nothing should be changed here: others than root and the process's own user can change the prefix,
  /// the client's folder, the staging folder or a folder above these, or a link stands where the process
  /// itself uses a path. Empty where nothing speaks against it, and then it stays so.
  [[nodiscard]] std::string objection() const;
  /// Whether the client's folder, or the prefix where that is missing, is the user's own. A link on the way
  /// says nothing of whose the tree is.
  [[nodiscard]] bool belongsTo(uid_t owner) const;

 private:
  [[nodiscard]] Reply copyForReading(const std::string& folder, const std::string& name) const;
  [[nodiscard]] Reply replyTo(const Obstacle& obstacle) const;

  std::string root_;
  uid_t user_;
  StepObserver beforeStep_;
  TreeWalk walk_;
};

}  // namespace corvane::helper
