// The mount points that this process sees, and word of their changes.
#pragma once

#include <set>
#include <string>
#include <vector>

#include "posix/FileDescriptor.h"

namespace corvane {

class MountTable {
 public:
  /// `file` is the kernel's own table unless a test has another.
  explicit MountTable(const char* file = "/proc/self/mountinfo");

  /// A descriptor that can be read once after each change; negative when the system does not tell.
  [[nodiscard]] int changes() const { return changes_.get(); }
  /// Takes up the change and reads the table anew.
  void read();
  /// What is mounted on the entries of the folder, a path without links; each mount by a text of its own, so
  /// that a volume that was replaced by another is told apart.
  [[nodiscard]] std::set<std::string> mountsIn(const std::string& folder) const;
  /// The mount points of disks: of what lies on a device of this computer, and not across a network where a
  /// look at it might hang. In the order of their paths, each once.
  [[nodiscard]] std::vector<std::string> disks() const;

 private:
  struct Mount {
    std::string number;
    std::string folder;  // that holds the mount point
    std::string point;
    bool isOnDevice = false;
    friend auto operator<=>(const Mount&, const Mount&) = default;
  };
  FileDescriptor table_;
  FileDescriptor changes_;
  std::set<Mount> mounts_;
};

}  // namespace corvane
