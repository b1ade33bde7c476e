// Lays out a small real tree from the bytes (folders, files and links of several owners and modes), walks
// through it and compares the answer with a plain model of the rules. Then it walks again while a stranger
// does something at one of the steps: what is found on a way that only trusted ones can change must be the
// same. As root with several users; as another user all belongs to that one.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <sys/stat.h>
#include <unistd.h>

#include "TakeByte.h"
#include "helper/TreeWalk.h"

namespace {

namespace fs = std::filesystem;
using namespace corvane::helper;
using Kind = Obstacle::Kind;
using Names = std::vector<std::string>;

constexpr uid_t kUser = 4711;
constexpr uid_t kStranger = 4712;
const bool kIsRoot = ::geteuid() == 0;

class Bytes {
 public:
  Bytes(const std::uint8_t* data, std::size_t size) : left_(reinterpret_cast<const char*>(data), size) {}
  unsigned below(unsigned limit) { return corvane::fuzz::takeByte(left_) % limit; }

 private:
  std::string_view left_;
};

std::string nameFrom(Bytes& bytes) { return std::string(1, static_cast<char>('a' + bytes.below(3))); }

/// "a/../b", at times absolute.
std::string pathFrom(Bytes& bytes, bool mayBeAbsolute) {
  std::string path = mayBeAbsolute && bytes.below(2) == 1 ? "/" : "";
  for (unsigned count = 1 + bytes.below(4); count > 0; --count) {
    path += (bytes.below(4) == 0 ? ".." : nameFrom(bytes)) + (count > 1 ? "/" : "");
  }
  return path;
}

struct Node {
  enum class Type { Folder, File, Link } type = Type::Folder;
  std::string name;
  int parent = -1;  // the prefix has none
  uid_t owner = 0;
  mode_t mode = 0755;
  std::string target;
  ino_t inode = 0;
};
using World = std::vector<Node>;

int childOf(const World& world, int folder, const std::string& name) {
  for (std::size_t i = 1; i < world.size(); ++i) {
    if (world[i].parent == folder && world[i].name == name) return static_cast<int>(i);
  }
  return -1;
}

World worldFrom(Bytes& bytes) {
  constexpr mode_t kModes[] = {0755, 0775, 0757, 01777};
  const uid_t owners[] = {0, kUser, kStranger};
  const auto setRights = [&](Node& node) {
    node.owner = kIsRoot ? owners[bytes.below(3)] : ::geteuid();
    node.mode = kModes[bytes.below(4)];
  };
  World world(1);
  setRights(world[0]);
  for (unsigned count = bytes.below(12); count > 0; --count) {
    Node node;
    node.parent = static_cast<int>(bytes.below(static_cast<unsigned>(world.size())));
    node.name = nameFrom(bytes);
    node.type = static_cast<Node::Type>(bytes.below(3));
    setRights(node);
    if (node.type == Node::Type::Link) node.target = pathFrom(bytes, true);
    const bool fits = world[static_cast<std::size_t>(node.parent)].type == Node::Type::Folder &&
                      childOf(world, node.parent, node.name) < 0;
    if (fits) world.push_back(std::move(node));
  }
  return world;
}

std::string placeOf(const World& world, int node) {
  if (node <= 0) return "";
  const auto& it = world[static_cast<std::size_t>(node)];
  return placeOf(world, it.parent) + "/" + it.name;
}

void layOut(World& world, const std::string& root) {
  for (std::size_t i = 0; i < world.size(); ++i) {
    auto& node = world[i];
    const auto path = root + placeOf(world, static_cast<int>(i));
    if (node.type == Node::Type::Folder) (void)::mkdir(path.c_str(), 0700);
    if (node.type == Node::Type::File) std::ofstream(path) << "x";
    if (node.type == Node::Type::Link) fs::create_symlink(node.target, path);
    if (kIsRoot && ::lchown(path.c_str(), node.owner, 0) != 0) std::abort();
    if (node.type != Node::Type::Link) ::chmod(path.c_str(), node.mode);
    struct stat status {};
    if (::lstat(path.c_str(), &status) != 0) std::abort();
    node.inode = status.st_ino;
  }
}

/// What a walk should answer: a node, or what is in the way and where.
struct Answer {
  Kind kind = Kind::None;
  int node = -1;
};

/// The rules, as docs/security.md has them, on the tree in memory.
struct Model {
  const World& world;
  uid_t self;
  Care care;
  TreeWalk::Links links;

  [[nodiscard]] const Node& at(int node) const { return world[static_cast<std::size_t>(node)]; }
  [[nodiscard]] bool trusts(uid_t owner) const { return owner == 0 || owner == self; }
  [[nodiscard]] bool isFine(const Node& folder, bool stickySuffices) const {
    if (care == Care::None) return true;
    if (!trusts(folder.owner)) return false;
    return (folder.mode & 022) == 0 || (stickySuffices && (folder.mode & 01000) != 0);
  }
  static Names split(const std::string& path) {
    Names parts;
    std::string part;
    for (const char c : path + "/") {
      if (c != '/') {
        part += c;
      } else if (!part.empty()) {
        parts.push_back(std::exchange(part, {}));
      }
    }
    return parts;
  }

  /// `floor` is the folder that must not be left, or -1 where the prefix stands for "/".
  [[nodiscard]] Answer walk(int from, const std::string& path, int floor) const {
    Names ahead = split(path);
    int here = from;
    int followed = 0;
    while (!ahead.empty()) {
      if (at(here).type != Node::Type::Folder) return {.kind = Kind::System};
      if (!isFine(at(here), true)) return {.kind = Kind::OpenToOthers, .node = here};
      const std::string name = ahead.front();
      ahead.erase(ahead.begin());
      if (name == "..") {
        if (here == floor) return {.kind = Kind::OutsideFolder};
        if (here != 0) here = at(here).parent;
        continue;
      }
      const int next = childOf(world, here, name);
      if (next < 0) return {.kind = Kind::Missing};
      if (at(next).type != Node::Type::Link) {
        here = next;
        continue;
      }
      if (links == TreeWalk::Links::Refused) return {.kind = Kind::Link};
      if (care != Care::None && !trusts(at(next).owner)) return {.kind = Kind::LinkOfOthers};
      if (++followed > 40) return {.kind = Kind::System};
      if (at(next).target.starts_with('/')) {
        if (floor >= 0) return {.kind = Kind::OutsideFolder};
        here = 0;
      }
      const Names further = split(at(next).target);
      ahead.insert(ahead.begin(), further.begin(), further.end());
    }
    if (at(here).type != Node::Type::Folder)
      return {.kind = floor < 0 ? Kind::System : Kind::None, .node = here};
    const bool isOpen = !isFine(at(here), care == Care::StickySuffices);
    return {.kind = isOpen ? Kind::OpenToOthers : Kind::None, .node = here};
  }
};

[[noreturn]] void differ(const char* what, const std::string& path, Kind expected, Kind found) {
  std::fprintf(stderr, "%s: %s: expected %d, found %d\n", what, path.c_str(), static_cast<int>(expected),
               static_cast<int>(found));
  std::abort();
}

void compare(const World& world, const std::string& root, const std::string& path, const Answer& expected,
             const TreeWalk::Found& found) {
  if (found.obstacle.kind != expected.kind) differ("kind", path, expected.kind, found.obstacle.kind);
  if ((expected.kind == Kind::None) != static_cast<bool>(found.descriptor)) {
    differ("descriptor", path, expected.kind, found.obstacle.kind);
  }
  if (expected.node < 0) return;
  const auto place = root + placeOf(world, expected.node);
  if (expected.kind == Kind::OpenToOthers && found.obstacle.path != place) {
    differ("names another folder", path, expected.kind, found.obstacle.kind);
  }
  if (expected.kind != Kind::None) return;
  if (found.attributes.st_ino != world[static_cast<std::size_t>(expected.node)].inode ||
      found.path != place) {
    differ("another file", path, expected.kind, found.obstacle.kind);
  }
}

/// A stranger makes, removes or swaps something, wherever they may.
void disturb(Bytes bytes, const World& world, const std::string& root) {
  if (::seteuid(kStranger) != 0) return;
  std::error_code ignored;
  for (unsigned count = 1 + bytes.below(3); count > 0; --count) {
    const auto folder =
        root + placeOf(world, static_cast<int>(bytes.below(static_cast<unsigned>(world.size()))));
    const auto path = folder + "/" + nameFrom(bytes);
    const auto other =
        root + placeOf(world, static_cast<int>(bytes.below(static_cast<unsigned>(world.size()))));
    switch (bytes.below(4)) {
      case 0:
        fs::remove(path, ignored);
        fs::create_symlink(pathFrom(bytes, true), path, ignored);
        break;
      case 1:
        fs::create_directory(path, ignored);
        break;
      case 2:
        fs::rename(path, folder + "/" + nameFrom(bytes), ignored);
        break;
      default:
        if (other != root) fs::rename(other, path, ignored);
    }
  }
  if (::seteuid(0) != 0) std::abort();
}

/// What was found lies where the walk says, and nobody else can change that.
void requireTrustedWay(const std::string& root, const TreeWalk::Found& found) {
  struct stat status {};
  for (std::string place = found.path, folder = place; folder != root;) {
    folder = fs::path(folder).parent_path();
    if (::lstat(folder.c_str(), &status) != 0 || !S_ISDIR(status.st_mode) || status.st_uid != 0 ||
        ((status.st_mode & 022) != 0 && (status.st_mode & 01000) == 0) ||
        ::lstat(place.c_str(), &status) != 0 || status.st_ino != found.attributes.st_ino) {
      differ("found where a stranger can change it", place, Kind::OpenToOthers, Kind::None);
    }
  }
}

/// A folder for all trees of this process; removed at its end.
struct Ground {
  Ground() {
    const bool hasMemory = fs::is_directory("/dev/shm");
    std::string name = (hasMemory ? fs::path("/dev/shm") : fs::temp_directory_path()) / "corvane-walk-XXXXXX";
    if (::mkdtemp(name.data()) == nullptr || ::chmod(name.c_str(), 0755) != 0) std::abort();
    path = fs::canonical(name);
  }
  Ground(const Ground&) = delete;
  Ground& operator=(const Ground&) = delete;
  ~Ground() {
    std::error_code ignored;
    fs::remove_all(path, ignored);
  }
  std::string path;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const Ground ground;
  const std::string root = ground.path + "/p";
  ::umask(022);
  fs::remove_all(root);
  Bytes bytes(data, size);
  const auto care = static_cast<Care>(bytes.below(3));
  const auto links = static_cast<TreeWalk::Links>(bytes.below(2));
  const bool asUser = kIsRoot && bytes.below(4) == 3;
  auto world = worldFrom(bytes);
  layOut(world, root);
  const auto path = pathFrom(bytes, false);
  const auto below = pathFrom(bytes, false);
  const unsigned step = bytes.below(16);

  if (asUser && ::seteuid(kUser) != 0) std::abort();
  const uid_t self = ::geteuid();
  const Model model{world, self, care, links};
  const TreeWalk walk(root, {});
  const auto expected = model.walk(0, path, -1);
  auto found = walk.find(path, care, links);
  compare(world, root, path, expected, found);
  if (expected.kind == Kind::None) {
    const Model free{world, self, care, TreeWalk::Links::Followed};
    compare(world, root, below, free.walk(expected.node, below, expected.node),
            walk.findBelow(std::move(found), below, care));
  }
  if (asUser && ::seteuid(0) != 0) std::abort();
  if (!kIsRoot || asUser || care == Care::None) return 0;

  unsigned looks = 0;
  const TreeWalk disturbed(root, [&](const std::string&) {
    if (looks++ == step) disturb(bytes, world, root);
  });
  looks = 0;
  const auto result = disturbed.find(path, care, links);
  if (expected.kind == Kind::None && world[static_cast<std::size_t>(expected.node)].owner == 0) {
    compare(world, root, path, expected, result);
  } else if (result.descriptor && result.attributes.st_uid == 0) {
    requireTrustedWay(root, result);
  }
  return 0;
}
