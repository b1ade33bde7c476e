// What the bookkeeping of a directory stream needs of the system: watches on folders and a look at what is in
// them. Apart, so that the bookkeeping can be tested without a kernel.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

class FolderWatches {
 public:
  enum class Links { Follow, Refuse };
  struct AddOutcome {
    int watch = -1;          // negative when there is none
    bool exhausted = false;  // since the system has no watches left
  };
  struct Listing {
    bool empty = true;
    std::vector<std::string> folders;  // names; links are not folders
  };
  struct Entry {
    enum class Kind : std::uint8_t { Nothing, Folder, Link, Other };
    Kind kind = Kind::Nothing;
    std::string target;  // of a link
  };

  virtual ~FolderWatches() = default;
  /// Watches the folder. The same folder gets the same watch for as long as it lasts, whatever its path.
  [[nodiscard]] virtual AddOutcome add(const std::string& folder, Links links) = 0;
  virtual void remove(int watch) = 0;
  /// Nothing when the folder can't be read (any more).
  [[nodiscard]] virtual std::optional<Listing> list(const std::string& folder) = 0;
  [[nodiscard]] virtual Entry lookAt(const std::string& path) = 0;
};

/// The path of an entry of the folder.
[[nodiscard]] inline std::string entryPath(const std::string& folder, std::string_view name) {
  std::string path = folder == "/" ? std::string() : folder;
  path += '/';
  path += name;
  return path;
}

}  // namespace corvane
