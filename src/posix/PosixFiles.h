// Files and folders through POSIX calls. Stateless.
#pragma once

#include "platform/Files.h"

namespace corvane {

class PosixFiles : public Files {
 public:
  [[nodiscard]] bool exists(const std::string& path) override;
  [[nodiscard]] ModificationDate modificationDate(const std::string& path) override;
  [[nodiscard]] std::optional<std::string> contents(const std::string& path, std::size_t limit) override;
  /// Depth first, each folder before what it holds, the names of one folder in byte order. The folder itself
  /// may be a link. Names that are not UTF-8 are left out with everything below them: texts are UTF-8
  /// everywhere in the pane, so such a name could be neither shown nor stored. What vanishes during the walk
  /// is left out.
  [[nodiscard]] std::optional<std::vector<std::string>> walk(const std::string& folder) override;
  [[nodiscard]] bool areSame(const std::string& one, const std::string& other) override;
  /// By a lock on the open folder (flock), which ends with the process: whoever may read the folder can take
  /// it.
  [[nodiscard]] Held holdFolder(const std::string& folder, double patience) override;
  [[nodiscard]] Held claimTree(const std::string& folder) override;
};

}  // namespace corvane
