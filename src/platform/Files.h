// Files and folders as the user who runs the pane sees them. Nothing here writes.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "values/PropertyList.h"

namespace corvane {

class Files {
 public:
  struct ModificationDate {
    std::optional<Date> date;  // nothing when the attributes can't be read
    std::string error;         // the system's text for that failure
  };

  virtual ~Files() = default;
  /// Whether something exists at the path; links are followed, a dangling one does not exist.
  [[nodiscard]] virtual bool exists(const std::string& path) = 0;
  [[nodiscard]] virtual ModificationDate modificationDate(const std::string& path) = 0;
  /// The contents of a regular file; nothing when it can't be read, is of another kind or is larger than
  /// `limit` bytes.
  [[nodiscard]] virtual std::optional<std::string> contents(const std::string& path, std::size_t limit) = 0;
  /// The paths, relative to the folder, of everything below it at any depth (links are not entered,
  /// unreadable folders are passed over), in a fixed order; nothing when the folder itself can't be walked.
  [[nodiscard]] virtual std::optional<std::vector<std::string>> walk(const std::string& folder) = 0;

  /// Whether both paths lead to the same file or folder.
  [[nodiscard]] virtual bool areSame(const std::string& one, const std::string& other) {
    return one == other;
  }
  /// What this process holds, until the hold goes.
  struct Held {
    std::shared_ptr<void> hold;  // nothing where it is taken, or where it can't be held by anybody
    bool isTaken = false;        // another process holds it
  };
  /// Keeps away every other process that asks for the same folder. Waits for one that holds it, but no longer
  /// than `patience`, in seconds.
  [[nodiscard]] virtual Held holdFolder(const std::string& /*folder*/, double /*patience*/) { return {}; }
  /// Tells other panes that one is open on the tree with this folder, which can be unmounted all the same.
  /// Does not wait.
  [[nodiscard]] virtual Held claimTree(const std::string& /*folder*/) { return {}; }
};

}  // namespace corvane
