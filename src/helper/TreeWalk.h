// The one way from "/" to something below the root prefix: step by step on open descriptors, where each
// folder is looked at before a name is looked up in it. It ends with the descriptor of what was found there
// or with the reason why not, and what was looked at is what is used. Of the root tree only.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include <sys/stat.h>

#include "posix/FileDescriptor.h"

namespace corvane::helper {

/// Why a way was not gone to its end.
struct Obstacle {
  enum class Kind : std::uint8_t {
    None,
    Missing,        // nothing stands at the path
    System,         // the system's error
    OpenToOthers,   // others can change the folder
    LinkOfOthers,   // others can turn the link
    Link,           // a link where none may stand
    Moved,          // the prefix is another folder than at the start
    OutsideFolder,  // the way leads out of the folder that it must stay in
  };
  Kind kind = Kind::None;
  std::string path;  // of what is in the way
  int error = 0;     // of the system
  explicit operator bool() const { return kind != Kind::None; }
};

/// How much it matters who can change the folders on a way.
enum class Care : std::uint8_t {
  None,            // nothing: what is found is only read
  StickySuffices,  // nobody else may change what stands in them
  Full,            // nor make anything new in the last one
};

/// The path of the folder's entry.
[[nodiscard]] std::string joined(const std::string& folder, std::string_view name);

class TreeWalk {
 public:
  /// Told the path of each folder before a name is looked up in it; may be empty. For tests that change
  /// something there.
  using Observer = std::function<void(const std::string& folder)>;

  /// `root` is a normalized prefix, in which no link may stand. Root and the process's own user are trusted
  /// with what they own, nobody else.
  TreeWalk(const std::string& root, Observer beforeLook);

  struct Found {
    FileDescriptor descriptor;  // names the file or folder, and opens nothing; none at an obstacle
    struct stat attributes {};
    std::string path = "/";         // from there on, without links
    bool isInSharedFolder = false;  // others can make something beside it; or in its place, if it is missing
    Obstacle obstacle;
  };
  enum class Links : std::uint8_t { Followed, Refused };
  /// The folder that the path leads to from the prefix. Links are followed as if the prefix were "/".
  [[nodiscard]] Found find(const std::string& path, Care care, Links links = Links::Followed) const;
  /// What the path leads to from a folder that was found, be it a file. The way must not lead out of that
  /// folder.
  [[nodiscard]] Found findBelow(Found folder, const std::string& path, Care care) const;

  /// The folder's entry itself, whatever it is; without a descriptor, and errno set, when there is none.
  [[nodiscard]] static Found entryOf(int folder, const std::string& name);
  /// Whether nobody else can change the file, or what the folder holds, with this owner and mode.
  [[nodiscard]] bool isClosed(const struct stat& attributes) const;
  [[nodiscard]] std::string textOf(const Obstacle& obstacle) const;
  /// Whose the trusted folders are, in words.
  [[nodiscard]] const char* trustedOne() const { return self_ == 0 ? "root" : "you"; }

 private:
  struct Way;
  [[nodiscard]] Found prefix(Care care) const;
  [[nodiscard]] Found go(Way way) const;
  [[nodiscard]] Obstacle objectionTo(const Found& folder, Care care) const;
  [[nodiscard]] Obstacle enter(Way& way, const std::string& name) const;
  [[nodiscard]] Obstacle follow(Way& way, const Found& link, const std::string& path) const;
  [[nodiscard]] static Obstacle climb(Way& way);
  [[nodiscard]] bool trusts(uid_t owner) const { return owner == 0 || owner == self_; }

  std::string root_;
  uid_t self_;
  Observer beforeLook_;
  Found top_;  // the prefix as it was at the start
};

}  // namespace corvane::helper
