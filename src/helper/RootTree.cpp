#include "helper/RootTree.h"

#include <algorithm>
#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "helper/CommandShapes.h"
#include "platform/Housekeeping.h"
#include "posix/FolderReader.h"
#include "posix/FreshFile.h"
#include "posix/RegularFile.h"
#include "posix/SystemError.h"

namespace corvane::helper {
namespace {

/// How often a step is taken again when something moved under it.
constexpr int kAttempts = 8;
constexpr mode_t kReadableByAll = 0644;
constexpr mode_t kPrivate = 0600;

constexpr std::string_view kNotRegular = "what stands there is not a regular file";
constexpr std::string_view kOfAnotherUser = "the file belongs to another user";

Reply denied(std::string_view path, std::string_view why) {
  return {.outcome = Outcome::Denied, .message = std::string(path) + ": " + std::string(why)};
}
/// What a tool that was started would have answered: a message and an exit status.
Reply failed(std::string_view path, int error) {
  return {.exitStatus = 1, .message = std::string(path) + ": " + systemErrorText(error)};
}
/// The same where it counts as not having been started.
Reply notStarted(Reply reply) {
  if (reply.outcome == Outcome::Started && reply.exitStatus != 0) reply.outcome = Outcome::Failed;
  return reply;
}

bool sameFile(const struct stat& a, const struct stat& b) {
  return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

std::string selfPath(int descriptor) { return "/proc/self/fd/" + std::to_string(descriptor); }

/// Reopens what an O_PATH descriptor stands for; nothing can be swapped in between.
FileDescriptor reopen(int descriptor, int flags) {
  return FileDescriptor(::open(selfPath(descriptor).c_str(), flags | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
}

/// Whether nothing is in the way but what the system says.
bool isOfTheSystem(const Obstacle& obstacle) {
  return obstacle.kind == Obstacle::Kind::Missing || obstacle.kind == Obstacle::Kind::System;
}

/// Why an entry is not a file that may be written, read or removed under a predictable name; empty when it is
/// one.
std::string_view whyNotPlain(const struct stat& attributes) {
  if (S_ISLNK(attributes.st_mode)) return "a symbolic link stands in the way";
  if (!S_ISREG(attributes.st_mode)) return kNotRegular;
  if (attributes.st_nlink != 1) return "the file has further hard links";
  return {};
}

}  // namespace

RootTree::RootTree(const std::string& root, uid_t user, TreeObservers observers)
    : root_(root),
      user_(user),
      beforeStep_(std::move(observers.beforeStep)),
      walk_(root, std::move(observers.beforeLook)) {}

Reply RootTree::replyTo(const Obstacle& obstacle) const {
  if (isOfTheSystem(obstacle)) return failed(obstacle.path, obstacle.error);
  return {.outcome = Outcome::Denied, .message = walk_.textOf(obstacle)};
}

Reply RootTree::removeStaging(const std::string& name) const {
  const auto path = root_ + joined(std::string(kStagingFolder), name);
  const auto folder = walk_.find(std::string(kStagingFolder), Care::StickySuffices);
  if (folder.obstacle) return replyTo(folder.obstacle);
  const auto entry = TreeWalk::entryOf(folder.descriptor.get(), name);
  if (!entry.descriptor) return failed(path, errno);
  if (const auto why = whyNotPlain(entry.attributes); !why.empty()) return denied(path, why);
  if (entry.attributes.st_uid != user_ && entry.attributes.st_uid != 0) {
    return denied(path, kOfAnotherUser);
  }
  if (::unlinkat(folder.descriptor.get(), name.c_str(), 0) != 0) return failed(path, errno);
  return {};
}

namespace {

/// Gives a new file with these contents the name, which nothing may bear yet: it is found when it is whole.
/// Answers 0 or the error.
int createWhole(int folder, const std::string& name, const std::string& contents, mode_t mode, uid_t owner,
                const StepObserver& before) {
  FreshFile file = FreshFile::in(folder);
  if (!file) return errno;
  if (before) before("write");
  if (const int error = file.fill(contents); error != 0) return error;
  if (before) before("rights");
  if (owner != ::geteuid() && ::fchown(file.descriptor(), owner, ::getegid()) != 0) return errno;
  if (::fchmod(file.descriptor(), mode) != 0) return errno;
  if (before) before("name");
  return file.name(name);
}

/// Writes the folder's file, existing or new. A file that was put in the place of the open one meanwhile (the
/// client replaces its files) is written too.
Reply writeFile(int folder, const std::string& name, const std::string& path, const std::string& contents,
                const StepObserver& beforeStep) {
  for (int attempt = 0; attempt < kAttempts; ++attempt) {
    const auto entry = TreeWalk::entryOf(folder, name);
    if (!entry.descriptor && errno == ENOENT) {
      const int error = createWhole(folder, name, contents, kReadableByAll, ::geteuid(), beforeStep);
      if (error == EEXIST) continue;
      // The new name is to survive a power failure like the contents; nothing can be done when it does not.
      if (const auto flushed = reopen(folder, O_RDONLY | O_DIRECTORY); error == 0 && flushed)
        ::fsync(flushed.get());
      if (error == 0) return {};
      return failed(path, error);
    }
    if (!entry.descriptor) return failed(path, errno);
    if (const auto why = whyNotPlain(entry.attributes); !why.empty()) return denied(path, why);
    const auto file = reopen(entry.descriptor.get(), O_RDWR);
    if (!file) return failed(path, errno);
    if (const int error = replaceContents(file.get(), contents, kLargestFile, beforeStep); error != 0) {
      return failed(path, error);
    }
    struct stat now {};
    if (::fstatat(folder, name.c_str(), &now, AT_SYMLINK_NOFOLLOW) == 0 && sameFile(now, entry.attributes))
      return {};
  }
  return failed(path, EBUSY);
}

}  // namespace

Reply RootTree::writeTarget(const std::string& name, const std::string& folder) const {
  const auto stagingPath = root_ + joined(std::string(kStagingFolder), name);
  const auto staging = walk_.find(std::string(kStagingFolder), Care::StickySuffices);
  if (staging.obstacle) return replyTo(staging.obstacle);
  const auto source = TreeWalk::entryOf(staging.descriptor.get(), name);
  if (!source.descriptor) return failed(stagingPath, errno);
  if (const auto why = whyNotPlain(source.attributes); !why.empty()) return denied(stagingPath, why);
  if (source.attributes.st_uid != user_) return denied(stagingPath, kOfAnotherUser);
  const auto file = reopen(source.descriptor.get(), O_RDONLY);
  const auto contents = file ? readToEnd(file.get(), kLargestFile) : std::nullopt;
  if (!contents) return failed(stagingPath, errno);

  const auto target = walk_.find(folder, Care::Full);
  if (target.obstacle) return replyTo(target.obstacle);
  return writeFile(target.descriptor.get(), name, root_ + joined(folder, name), *contents, beforeStep_);
}

Reply RootTree::readSource(const std::string& folder, const std::string& name) const {
  // Who asked reads the copy only where this counts as started: after a failure an older one may stand there.
  return notStarted(copyForReading(folder, name));
}

Reply RootTree::copyForReading(const std::string& folder, const std::string& name) const {
  const auto copyName = std::string(kReadPrefix) + name;
  const auto copyPath = root_ + joined(std::string(kStagingFolder), copyName);
  const auto staging = walk_.find(std::string(kStagingFolder), Care::StickySuffices);
  if (staging.obstacle) return replyTo(staging.obstacle);
  // The copy of an earlier read goes first, so that a read that fails leaves nothing to be taken for its
  // outcome. It stays open, so that the new one is another file to whoever remembers it.
  const auto stale = TreeWalk::entryOf(staging.descriptor.get(), copyName);
  if (stale.descriptor) {
    if (auto removed = removeStaging(copyName);
        removed.outcome != Outcome::Started || removed.exitStatus != 0) {
      return removed;
    }
  }
  const auto path = root_ + joined(folder, name);
  // Others may be able to change the way there, which does no harm: what is found is only read.
  const auto sourceFolder = walk_.find(folder, Care::None);
  if (sourceFolder.obstacle.kind == Obstacle::Kind::Missing)
    return {.outcome = Outcome::Missing, .message = {}};
  if (sourceFolder.obstacle) return replyTo(sourceFolder.obstacle);
  const auto source = TreeWalk::entryOf(sourceFolder.descriptor.get(), name);
  if (!source.descriptor && errno == ENOENT) return {.outcome = Outcome::Missing, .message = {}};
  if (!source.descriptor) return failed(path, errno);
  if (!S_ISREG(source.attributes.st_mode)) return denied(path, kNotRegular);
  const auto file = reopen(source.descriptor.get(), O_RDONLY);
  const auto contents = file ? readToEnd(file.get(), kLargestFile) : std::nullopt;
  if (!contents) return failed(path, errno);
  const int error = createWhole(staging.descriptor.get(), copyName, *contents, kPrivate, user_, beforeStep_);
  if (error == EEXIST) return denied(copyPath, "something was planted there");
  return error == 0 ? Reply{} : failed(copyPath, error);
}

Reply RootTree::makeFolders(const std::string& folder) const {
  for (auto end = folder.find('/', 1);; end = folder.find('/', end + 1)) {
    const auto path = folder.substr(0, end);
    const auto here = walk_.find(path, Care::Full);
    if (here.obstacle.kind != Obstacle::Kind::Missing && here.obstacle) return replyTo(here.obstacle);
    if (here.obstacle) {
      const auto above = walk_.find(path.substr(0, std::max<std::size_t>(path.rfind('/'), 1)), Care::Full);
      if (above.obstacle) return replyTo(above.obstacle);
      if (::mkdirat(above.descriptor.get(), path.substr(path.rfind('/') + 1).c_str(), 0755) != 0) {
        return failed(root_ + path, errno);
      }
    }
    if (end == std::string::npos) return {};
  }
}

namespace {

Reply resetMode(int folder, const std::string& name, const std::string& path) {
  const auto entry = TreeWalk::entryOf(folder, name);
  if (!entry.descriptor) return errno == ENOENT ? Reply{} : failed(path, errno);
  if (const auto why = whyNotPlain(entry.attributes); !why.empty()) return denied(path, why);
  // To set the mode that it has would still wake everybody who watches the file.
  if ((entry.attributes.st_mode & 07777) == kReadableByAll) return {};
  // By way of the descriptor: its file need not be readable, and no other can take its place.
  const int done = ::chmod(selfPath(entry.descriptor.get()).c_str(), kReadableByAll);
  return done == 0 ? Reply{} : failed(path, errno);
}

Reply resetModesIn(int folder, std::string_view pattern, const std::string& path) {
  FolderReader reader(reopen(folder, O_RDONLY | O_DIRECTORY));
  if (!reader.isOpen()) return failed(path, errno);
  std::vector<std::string> names;
  while (const auto entry = reader.next()) {
    if (housekeeping::matches(entry->name, pattern)) names.emplace_back(entry->name);
  }
  std::ranges::sort(names);
  Reply first;
  for (const auto& name : names) {
    auto reply = resetMode(folder, name, joined(path, name));
    if (first.message.empty()) first = std::move(reply);
  }
  return first;
}

}  // namespace

Reply RootTree::resetModes() const {
  Reply first;
  for (const auto files : housekeeping::kFiles) {
    const auto slash = files.rfind('/');
    const std::string path(files.substr(0, slash));
    const auto folder = walk_.find(path, Care::Full);
    if (folder.obstacle.kind == Obstacle::Kind::Missing) continue;
    auto reply = folder.obstacle
                     ? replyTo(folder.obstacle)
                     : resetModesIn(folder.descriptor.get(), files.substr(slash + 1), root_ + path);
    if (first.message.empty()) first = std::move(reply);
  }
  return notStarted(std::move(first));
}

std::string RootTree::objection() const {
  // The staging file is written by path, and made before any command is asked for.
  const auto prefix = walk_.find("/", Care::StickySuffices);
  const auto staging =
      walk_.find(std::string(kStagingFolder), Care::StickySuffices, TreeWalk::Links::Refused);
  const auto client = walk_.find(std::string(kClientFolder), Care::Full);
  for (const auto* found : {&prefix, &staging, &client}) {
    auto obstacle = found->obstacle;
    if (obstacle.kind == Obstacle::Kind::Missing && found != &prefix) {
      // What is missing is no objection where nobody else can make it.
      if (!found->isInSharedFolder) continue;
      obstacle = {.kind = Obstacle::Kind::OpenToOthers, .path = found->path};
    }
    if (obstacle.kind == Obstacle::Kind::OpenToOthers) {
      const char* helps = ::geteuid() == 0 ? "run the pane as the owner of the tree, or " : "";
      return walk_.textOf(obstacle) + "; " + helps + "keep the tree where only " + walk_.trustedOne() +
             " can change it";
    }
    if (obstacle) return walk_.textOf(obstacle);
  }
  return {};
}

bool RootTree::belongsTo(uid_t owner) const {
  auto found = walk_.find(std::string(kClientFolder), Care::None, TreeWalk::Links::Refused);
  // Without a folder of the client there, whoever owns the prefix may make one.
  if (isOfTheSystem(found.obstacle)) found = walk_.find("/", Care::None);
  return !found.obstacle && found.attributes.st_uid == owner;
}

Reply RootTree::checkProgram(const std::string& folder, const std::string& name, bool executable) const {
  const auto path = root_ + joined(folder, name);
  auto base = walk_.find(folder, Care::Full);
  if (base.obstacle) return notStarted(replyTo(base.obstacle));
  // Links may lead about below the folder, and not out of it.
  const auto file = walk_.findBelow(std::move(base), name, Care::StickySuffices);
  if (file.obstacle) return notStarted(replyTo(file.obstacle));
  if (!S_ISREG(file.attributes.st_mode)) return denied(path, kNotRegular);
  // The program is started by its path, which must mean the same to the system as it does inside the prefix.
  struct stat plain {};
  if (::stat(path.c_str(), &plain) != 0 || !sameFile(plain, file.attributes)) {
    return denied(path, "a link on the way leads out of the root prefix");
  }
  if (file.isInSharedFolder || !walk_.isClosed(file.attributes)) {
    return denied(path, std::string("others than ") + walk_.trustedOne() + " can change the program");
  }
  if (executable && (file.attributes.st_mode & 0111) == 0) return notStarted(failed(path, EACCES));
  return {};
}

}  // namespace corvane::helper
