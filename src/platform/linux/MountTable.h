// The mount points that this process sees, and word of their changes.
#pragma once

#include <set>
#include <string>

#include "posix/FileDescriptor.h"

namespace corvane {

class MountTable {
 public:
  MountTable();

  /// A descriptor that can be read once after each change; negative when the system does not tell.
  [[nodiscard]] int changes() const { return changes_.get(); }
  /// Takes up the change and reads the table anew.
  void read();
  /// What is mounted on the entries of the folder, a path without links; each mount by a text of its own, so
  /// that a volume that was replaced by another is told apart.
  [[nodiscard]] std::set<std::string> mountsIn(const std::string& folder) const;

 private:
  struct Mount {
    std::string number;
    std::string folder;  // that holds the mount point
    friend auto operator<=>(const Mount&, const Mount&) = default;
  };
  FileDescriptor table_;
  FileDescriptor changes_;
  std::set<Mount> mounts_;
};

}  // namespace corvane
