#include "helper/TreeWalk.h"

#include <array>
#include <cerrno>
#include <climits>
#include <deque>
#include <filesystem>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <unistd.h>

#include "posix/SystemError.h"

namespace corvane::helper {
namespace {

using Kind = Obstacle::Kind;
using Names = std::deque<std::string>;
constexpr int kMostLinks = 40;  // the kernel's own limit for one path

/// The parts of a path, without empty ones and ".".
Names partsOf(const std::string& path) {
  Names parts;
  for (const auto& part : std::filesystem::path(path).relative_path()) {
    if (!part.empty() && part != ".") parts.push_back(part.string());
  }
  return parts;
}

}  // namespace

std::string joined(const std::string& folder, std::string_view name) {
  return (folder == "/" ? folder : folder + "/") + std::string(name);
}

/// Where a walk stands, and what is ahead of it.
struct TreeWalk::Way {
  Found at;
  Names ahead;
  Care care = Care::None;
  Links links = Links::Followed;
  bool mayLeave = true;  // above the folder where it began is that folder itself, as above "/"
  /// The folders that it came through, by which it goes up again, wherever they are now.
  std::vector<Found> above = {};
  int followed = 0;  // links
};

TreeWalk::TreeWalk(const std::string& root, Observer beforeLook)
    : root_(root.empty() ? "/" : root), self_(::geteuid()), beforeLook_(std::move(beforeLook)) {
  top_ = prefix(Care::None);
}

TreeWalk::Found TreeWalk::prefix(Care care) const {
  return go({.at = entryOf(AT_FDCWD, "/"), .ahead = partsOf(root_), .care = care, .links = Links::Refused});
}

TreeWalk::Found TreeWalk::find(const std::string& path, Care care, Links links) const {
  Way way{.at = prefix(care == Care::Full ? Care::StickySuffices : care),
          .ahead = {},
          .care = care,
          .links = links};
  // Programs are started by path: the prefix must still be what was opened at the start.
  if (!way.at.obstacle && (way.at.attributes.st_dev != top_.attributes.st_dev ||
                           way.at.attributes.st_ino != top_.attributes.st_ino)) {
    way.at.obstacle = {.kind = Kind::Moved, .path = root_};
  }
  way.ahead = partsOf(path);
  return go(std::move(way));
}

TreeWalk::Found TreeWalk::findBelow(Found folder, const std::string& path, Care care) const {
  return go({.at = std::move(folder), .ahead = partsOf(path), .care = care, .mayLeave = false});
}

TreeWalk::Found TreeWalk::go(Way way) const {
  Found& at = way.at;
  const auto careOnTheWay = way.care == Care::Full ? Care::StickySuffices : way.care;
  while (!at.obstacle && !way.ahead.empty()) {
    at.obstacle = objectionTo(at, careOnTheWay);
    if (at.obstacle) break;
    if (beforeLook_) beforeLook_(at.path);
    const auto name = std::move(way.ahead.front());
    way.ahead.pop_front();
    at.obstacle = name == ".." ? climb(way) : enter(way, name);
  }
  if (!at.obstacle && (way.mayLeave || !at.descriptor || S_ISDIR(at.attributes.st_mode)))
    at.obstacle = objectionTo(at, way.care);
  if (at.obstacle) at.descriptor.reset();
  return std::move(at);
}

Obstacle TreeWalk::objectionTo(const Found& folder, Care care) const {
  if (!folder.descriptor) return {.kind = Kind::System, .path = folder.path, .error = errno};
  if (!S_ISDIR(folder.attributes.st_mode)) {
    return {.kind = Kind::System, .path = folder.path, .error = ENOTDIR};
  }
  // The sticky bit keeps others from the entries of whom the walk trusts.
  const bool isSticky = trusts(folder.attributes.st_uid) && (folder.attributes.st_mode & S_ISVTX) != 0;
  if (care == Care::None || isClosed(folder.attributes) || (care == Care::StickySuffices && isSticky))
    return {};
  return {.kind = Kind::OpenToOthers, .path = folder.path};
}

Obstacle TreeWalk::enter(Way& way, const std::string& name) const {
  Found& at = way.at;
  auto next = entryOf(at.descriptor.get(), name);
  next.isInSharedFolder = !isClosed(at.attributes);
  if (!next.descriptor) {
    at.isInSharedFolder = next.isInSharedFolder;
    return {.kind = errno == ENOENT ? Kind::Missing : Kind::System,
            .path = joined(at.path, name),
            .error = errno};
  }
  if (S_ISLNK(next.attributes.st_mode)) return follow(way, next, joined(at.path, name));
  next.path = joined(at.path, name);
  way.above.push_back(std::exchange(at, std::move(next)));
  return {};
}

Obstacle TreeWalk::follow(Way& way, const Found& link, const std::string& path) const {
  if (way.links == Links::Refused) return {.kind = Kind::Link, .path = path};
  // In a sticky folder anybody can make a link where there is none.
  if (way.care != Care::None && !trusts(link.attributes.st_uid))
    return {.kind = Kind::LinkOfOthers, .path = path};
  std::array<char, PATH_MAX> target{};
  const ssize_t length = ::readlinkat(link.descriptor.get(), "", target.data(), target.size());
  if (length <= 0) return {.kind = Kind::System, .path = path, .error = errno};
  if (++way.followed > kMostLinks) return {.kind = Kind::System, .path = path, .error = ELOOP};
  if (target.front() == '/') {
    if (!way.mayLeave) return {.kind = Kind::OutsideFolder, .path = path};
    way.at = entryOf(top_.descriptor.get(), ".");
    way.at.path = root_;
    way.above.clear();
  }
  const auto parts = partsOf({target.data(), static_cast<std::size_t>(length)});
  way.ahead.insert(way.ahead.begin(), parts.begin(), parts.end());
  return {};
}

Obstacle TreeWalk::climb(Way& way) {
  if (way.above.empty()) {
    return way.mayLeave ? Obstacle{}
                        : Obstacle{.kind = Kind::OutsideFolder, .path = joined(way.at.path, "..")};
  }
  way.at = std::move(way.above.back());
  way.above.pop_back();
  return {};
}

TreeWalk::Found TreeWalk::entryOf(int folder, const std::string& name) {
  Found found;
  // Opens nothing but the name: a FIFO or a device does not notice.
  found.descriptor = FileDescriptor(::openat(folder, name.c_str(), O_PATH | O_NOFOLLOW | O_CLOEXEC));
  if (found.descriptor && ::fstat(found.descriptor.get(), &found.attributes) != 0) found.descriptor.reset();
  return found;
}

bool TreeWalk::isClosed(const struct stat& attributes) const {
  return trusts(attributes.st_uid) && (attributes.st_mode & (S_IWGRP | S_IWOTH)) == 0;
}

std::string TreeWalk::textOf(const Obstacle& obstacle) const {
  const std::string others = std::string("others than ") + trustedOne();
  switch (obstacle.kind) {
    case Kind::OpenToOthers:
      return obstacle.path + ": " + others + " can change the folder";
    case Kind::LinkOfOthers:
      return obstacle.path + ": " + others + " can turn the symbolic link";
    case Kind::Link:
      return obstacle.path + ": a symbolic link stands in the way";
    case Kind::Moved:
      return obstacle.path + ": another folder has taken the place of the root prefix";
    case Kind::OutsideFolder:
      return obstacle.path + ": the program lies outside the folder";
    case Kind::None:
    case Kind::Missing:
    case Kind::System:
      break;
  }
  return obstacle.path + ": " + systemErrorText(obstacle.error);
}

}  // namespace corvane::helper
