#include "helper/RootTree.h"

#include <array>
#include <cerrno>
#include <climits>
#include <deque>
#include <filesystem>
#include <system_error>

#include <fcntl.h>
#include <linux/openat2.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include "helper/CommandShapes.h"
#include "helper/FileContents.h"

namespace corvane::helper {

std::function<void(std::string_view)> RootTree::beforeStep;
std::function<void()> RootTree::beforeLook;

namespace {

/// How often a step is taken again when something moved under it.
constexpr int kAttempts = 8;
constexpr int kMostLinks = 40;  // the kernel's own limit for one path
constexpr std::string_view kOpenToOthers = "others than root can change the folder or one above it";
/// What helps when that is said of the whole tree, to a pane that itself runs as root.
constexpr std::string_view kWhatHelps =
    "; run the pane as the owner of the tree, or keep the tree where only root can change it";

Reply denied(std::string_view path, std::string_view why) {
  return {.outcome = Outcome::Denied, .message = std::string(path) + ": " + std::string(why)};
}
/// What a tool that was started would have answered: a message and an exit status.
Reply failed(std::string_view path, int error) {
  return {.exitStatus = 1, .message = std::string(path) + ": " + std::generic_category().message(error)};
}

int openInside(int top, const std::string& path, int flags) {
  open_how how{};
  how.flags = static_cast<std::uint64_t>(flags | O_CLOEXEC);
  how.resolve = RESOLVE_IN_ROOT | RESOLVE_NO_MAGICLINKS;
  for (int attempt = 0;; ++attempt) {
    const long descriptor = ::syscall(SYS_openat2, top, path.c_str(), &how, sizeof how);
    if (descriptor >= 0 || errno != EAGAIN || attempt == kAttempts) return static_cast<int>(descriptor);
  }
}

bool sameFile(const struct stat& a, const struct stat& b) {
  return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

/// Whether others than root can change the folder's entries. The sticky bit keeps them from the entries of
/// root.
bool isOpenToOthers(const struct stat& folder, bool stickySuffices) {
  if (folder.st_uid != 0) return true;
  if ((folder.st_mode & (S_IWGRP | S_IWOTH)) == 0) return false;
  return !(stickySuffices && (folder.st_mode & S_ISVTX) != 0);
}

std::string selfPath(int descriptor) { return "/proc/self/fd/" + std::to_string(descriptor); }

/// Where the file really lies; empty when that cannot be told.
std::filesystem::path placeOf(int descriptor) {
  std::error_code error;
  return std::filesystem::read_symlink(selfPath(descriptor), error);
}

/// Reopens what an O_PATH descriptor stands for; nothing can be swapped in between.
FileDescriptor reopen(int descriptor, int flags) {
  return FileDescriptor(::open(selfPath(descriptor).c_str(), flags | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
}

/// The folder's entry itself, whatever it is, with its attributes.
struct Entry {
  FileDescriptor descriptor;
  struct stat attributes {};
};
Entry entryOf(int folder, const std::string& name) {
  Entry entry;
  entry.descriptor = FileDescriptor(::openat(folder, name.c_str(), O_PATH | O_NOFOLLOW | O_CLOEXEC));
  if (entry.descriptor && ::fstat(entry.descriptor.get(), &entry.attributes) != 0) entry.descriptor.reset();
  return entry;
}

/// Where the link leads; empty when that cannot be told.
std::string targetOf(const Entry& link) {
  std::array<char, PATH_MAX> target{};
  const ssize_t length = ::readlinkat(link.descriptor.get(), "", target.data(), target.size());
  return {target.data(), length > 0 ? static_cast<std::size_t>(length) : 0};
}

/// The parts of a path, without empty ones and ".".
std::deque<std::string> partsOf(const std::string& path) {
  std::deque<std::string> parts;
  for (const auto& part : std::filesystem::path(path).relative_path()) {
    if (!part.empty() && part != ".") parts.push_back(part.string());
  }
  return parts;
}

/// Why an entry is not a file that may be written, read or removed under a predictable name; empty when it is
/// one.
std::string_view whyNotPlain(const struct stat& attributes) {
  if (S_ISLNK(attributes.st_mode)) return "a symbolic link stands in the way";
  if (!S_ISREG(attributes.st_mode)) return "what stands there is not a regular file";
  if (attributes.st_nlink != 1) return "the file has further hard links";
  return {};
}

std::string joined(const std::string& folder, std::string_view name) {
  return (folder == "/" ? folder : folder + "/") + std::string(name);
}

}  // namespace

RootTree::RootTree(const std::string& root, Caution caution)
    : root_(root),
      caution_(caution),
      top_(::open(root.empty() ? "/" : root.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC)) {}

FileDescriptor RootTree::open(const std::string& path, int flags) const {
  return FileDescriptor(openInside(top_.get(), path, flags));
}

/// Whether the path leads to `found`, and nobody else can change a folder in which it is looked up, or a link
/// that it leads through: the kernel's walk below the prefix, made step by step. It must end at what was
/// opened before: a link that led there may be gone by now. With -1 nothing was found; then nobody else may
/// be able to make what is missing.
bool RootTree::isWayTrusted(const std::string& path, int found) const {
  if (!caution_.distrust) return true;
  struct stat wanted {};
  struct stat ended {};
  if (found >= 0 && ::fstat(found, &wanted) != 0) return false;
  // Programs are started by path: the prefix must still be what was opened at the start.
  if (placeOf(top_.get()) != (root_.empty() ? "/" : root_)) return false;
  std::deque<std::string> names = partsOf(path);
  FileDescriptor here = open("/", O_PATH | O_DIRECTORY);
  for (int links = 0; !names.empty();) {
    if (!here || !isPlaceTrusted(here.get(), Sticky::Accepted)) return false;
    const std::string name = std::move(names.front());
    names.pop_front();
    if (name == "..") {
      here = openAbove(here.get());
      continue;
    }
    auto entry = entryOf(here.get(), name);
    // Whoever may make entries here could make this one.
    if (!entry.descriptor) return found < 0 && isPlaceTrusted(here.get(), Sticky::Refused);
    if (S_ISLNK(entry.attributes.st_mode)) {
      // The sticky bit lets others make what is missing: a link of their own.
      const auto target = targetOf(entry);
      if (entry.attributes.st_uid != 0 || target.empty() || ++links > kMostLinks) return false;
      if (target.front() == '/') here = open("/", O_PATH | O_DIRECTORY);
      auto further = partsOf(target);
      names.insert(names.begin(), further.begin(), further.end());
    } else if (S_ISDIR(entry.attributes.st_mode)) {
      here = std::move(entry.descriptor);
    } else {
      return found >= 0 && names.empty() && sameFile(entry.attributes, wanted);
    }
  }
  return found >= 0 && here && ::fstat(here.get(), &ended) == 0 && sameFile(ended, wanted);
}

/// The folder above, which for the prefix is the prefix itself.
FileDescriptor RootTree::openAbove(int folder) const {
  struct stat here {};
  struct stat top {};
  if (::fstat(folder, &here) != 0 || ::fstat(top_.get(), &top) != 0) return {};
  return FileDescriptor(::openat(folder, sameFile(here, top) ? "." : "..", O_PATH | O_DIRECTORY | O_CLOEXEC));
}

/// Whether nobody else can change what stands in the folder or in one above it, up to the system's own root.
bool RootTree::isPlaceTrusted(int folder, Sticky sticky) const {
  if (!caution_.distrust) return true;
  FileDescriptor here(::openat(folder, ".", O_PATH | O_DIRECTORY | O_CLOEXEC));
  bool stickySuffices = sticky == Sticky::Accepted;
  for (;;) {
    FileDescriptor parent(::openat(here.get(), "..", O_PATH | O_DIRECTORY | O_CLOEXEC));
    struct stat attributes {};
    struct stat above {};
    if (!parent || ::fstat(here.get(), &attributes) != 0 || ::fstat(parent.get(), &above) != 0) return false;
    if (isOpenToOthers(attributes, stickySuffices)) return false;
    if (sameFile(attributes, above)) return true;
    here = std::move(parent);
    stickySuffices = true;
  }
}

RootTree::Folder RootTree::openFolder(const std::string& path, Sticky sticky) const {
  Folder folder;
  folder.descriptor = open(path, O_PATH | O_DIRECTORY);
  if (beforeLook) beforeLook();
  if (!folder.descriptor) {
    folder.problem = failed(root_ + path, errno);
  } else if (!isWayTrusted(path, folder.descriptor.get()) ||
             !isPlaceTrusted(folder.descriptor.get(), sticky)) {
    folder.descriptor.reset();
    folder.problem = denied(root_ + path, kOpenToOthers);
  }
  return folder;
}

Reply RootTree::removeStaging(const std::string& name) const {
  const auto path = root_ + joined(std::string(kStagingFolder), name);
  const auto folder = openFolder(std::string(kStagingFolder), Sticky::Accepted);
  if (!folder.descriptor) return folder.problem;
  const auto entry = entryOf(folder.descriptor.get(), name);
  if (!entry.descriptor) return failed(path, errno);
  if (const auto why = whyNotPlain(entry.attributes); !why.empty()) return denied(path, why);
  if (entry.attributes.st_uid != caution_.user && entry.attributes.st_uid != 0) {
    return denied(path, "the file belongs to another user");
  }
  if (::unlinkat(folder.descriptor.get(), name.c_str(), 0) != 0) return failed(path, errno);
  return {};
}

namespace {

/// Gives a new, whole file the name, which nothing may bear yet. Answers 0 or the error.
int createWhole(int folder, const std::string& name, const std::string& contents, mode_t mode, uid_t owner,
                gid_t group) {
  const auto finish = [&](int descriptor) {
    int error = fillContents(descriptor, contents, RootTree::beforeStep);
    if (error == 0 && (owner != ::geteuid() || group != ::getegid()) &&
        ::fchown(descriptor, owner, group) != 0) {
      error = errno;
    }
    if (error == 0 && ::fchmod(descriptor, mode) != 0) error = errno;
    return error;
  };
  if (const FileDescriptor unnamed(::openat(folder, ".", O_TMPFILE | O_RDWR | O_CLOEXEC, 0600)); unnamed) {
    if (const int error = finish(unnamed.get()); error != 0) return error;
    if (RootTree::beforeStep) RootTree::beforeStep("name");
    return ::linkat(AT_FDCWD, selfPath(unnamed.get()).c_str(), folder, name.c_str(), AT_SYMLINK_FOLLOW) == 0
               ? 0
               : errno;
  }
  // Not every file system knows unnamed files.
  const FileDescriptor file(
      ::openat(folder, name.c_str(), O_CREAT | O_EXCL | O_RDWR | O_CLOEXEC | O_NOFOLLOW, 0600));
  if (!file) return errno;
  const int error = finish(file.get());
  if (error != 0) ::unlinkat(folder, name.c_str(), 0);
  return error;
}

/// Writes the folder's file, existing or new. A file that was put in the place of the open one meanwhile (the
/// client replaces its files) is written too.
Reply writeFile(int folder, const std::string& name, const std::string& path, const std::string& contents) {
  for (int attempt = 0; attempt < kAttempts; ++attempt) {
    const auto entry = entryOf(folder, name);
    if (!entry.descriptor && errno == ENOENT) {
      const int error = createWhole(folder, name, contents, 0644, ::geteuid(), ::getegid());
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
    if (const int error = replaceContents(file.get(), contents, kLargestFile, RootTree::beforeStep);
        error != 0) {
      return failed(path, error);
    }
    const auto now = entryOf(folder, name);
    if (now.descriptor && sameFile(now.attributes, entry.attributes)) return {};
  }
  return failed(path, EBUSY);
}

}  // namespace

Reply RootTree::writeTarget(const std::string& name, const std::string& folder) const {
  const auto stagingPath = root_ + joined(std::string(kStagingFolder), name);
  const auto staging = openFolder(std::string(kStagingFolder), Sticky::Accepted);
  if (!staging.descriptor) return staging.problem;
  const auto source = entryOf(staging.descriptor.get(), name);
  if (!source.descriptor) return failed(stagingPath, errno);
  if (const auto why = whyNotPlain(source.attributes); !why.empty()) return denied(stagingPath, why);
  if (source.attributes.st_uid != caution_.user)
    return denied(stagingPath, "the file belongs to another user");
  const auto file = reopen(source.descriptor.get(), O_RDONLY);
  const auto contents = file ? readAll(file.get(), kLargestFile) : std::nullopt;
  if (!contents) return failed(stagingPath, errno);

  const auto target = openFolder(folder, Sticky::Refused);
  if (!target.descriptor) return target.problem;
  return writeFile(target.descriptor.get(), name, root_ + joined(folder, name), *contents);
}

Reply RootTree::readSource(const std::string& folder, const std::string& name) const {
  const auto copyName = std::string(kReadPrefix) + name;
  const auto copyPath = root_ + joined(std::string(kStagingFolder), copyName);
  const auto staging = openFolder(std::string(kStagingFolder), Sticky::Accepted);
  if (!staging.descriptor) return staging.problem;
  // The copy of an earlier read goes first, so that a read that fails leaves nothing to be taken for its
  // outcome.
  if (const auto stale = entryOf(staging.descriptor.get(), copyName); stale.descriptor) {
    if (auto removed = removeStaging(copyName);
        removed.outcome != Outcome::Started || removed.exitStatus != 0) {
      return removed;
    }
  }
  const auto path = root_ + joined(folder, name);
  const FileDescriptor sourceFolder = open(folder, O_PATH | O_DIRECTORY);
  const auto source = sourceFolder ? entryOf(sourceFolder.get(), name) : Entry{};
  if (!source.descriptor) {
    const int error = errno;
    return error == ENOENT ? Reply{.exitStatus = 1, .message = {}} : failed(path, error);
  }
  if (!S_ISREG(source.attributes.st_mode)) return denied(path, "what stands there is not a regular file");
  const auto file = reopen(source.descriptor.get(), O_RDONLY);
  const auto contents = file ? readAll(file.get(), kLargestFile) : std::nullopt;
  if (!contents) return failed(path, errno);
  const int error =
      createWhole(staging.descriptor.get(), copyName, *contents, 0600, caution_.user, ::getegid());
  if (error == EEXIST) return denied(copyPath, "something was planted there");
  return error == 0 ? Reply{} : failed(copyPath, error);
}

Reply RootTree::makeFolders(const std::string& folder) const {
  for (auto end = folder.find('/', 1);; end = folder.find('/', end + 1)) {
    const auto path = folder.substr(0, end);
    auto here = openFolder(path, Sticky::Refused);
    if (!here.descriptor && here.problem.outcome == Outcome::Denied) return here.problem;
    if (!here.descriptor) {
      const auto slash = path.rfind('/');
      const auto above = openFolder(slash == 0 ? "/" : path.substr(0, slash), Sticky::Refused);
      if (!above.descriptor) return above.problem;
      if (::mkdirat(above.descriptor.get(), path.substr(slash + 1).c_str(), 0755) != 0) {
        return failed(root_ + path, errno);
      }
    }
    if (end == std::string::npos) return {};
  }
}

Reply RootTree::checkFolder(const std::string& path) const {
  auto folder = openFolder(path, Sticky::Refused);
  if (folder.descriptor) return {};
  if (folder.problem.outcome == Outcome::Denied) return std::move(folder.problem);
  return isWayTrusted(path, -1) ? Reply{} : denied(root_ + path, kOpenToOthers);
}

Reply RootTree::checkStagingPath() const {
  if (!caution_.distrust) return {};
  std::string path = root_.empty() ? "/" : root_;
  if (!top_) return failed(path, ENOENT);
  if (placeOf(top_.get()) != path) return denied(path, "the path leads through a symbolic link");
  FileDescriptor here = open("/", O_PATH | O_DIRECTORY);
  auto sticky = Sticky::Accepted;
  for (const auto& name : std::filesystem::path(kStagingFolder).relative_path()) {
    auto below = entryOf(here.get(), name);
    if (!below.descriptor) {
      // Whoever may make entries here could make this one.
      sticky = Sticky::Refused;
      break;
    }
    path = joined(path, name.string());
    if (!S_ISDIR(below.attributes.st_mode)) return denied(path, "what stands there is not a folder");
    here = std::move(below.descriptor);
  }
  if (isPlaceTrusted(here.get(), sticky)) return {};
  return denied(path, std::string(kOpenToOthers) + std::string(kWhatHelps));
}

Reply RootTree::checkProgram(const std::string& folder, const std::string& name, bool executable) const {
  const auto relative = joined(folder, name);
  const auto path = root_ + relative;
  const auto base = openFolder(folder, Sticky::Refused);
  if (!base.descriptor) {
    return base.problem.outcome == Outcome::Denied
               ? base.problem
               : Reply{.outcome = Outcome::Failed, .message = base.problem.message};
  }
  // Links may lead about below the folder, and not out of it.
  open_how how{};
  how.flags = O_PATH | O_CLOEXEC;
  how.resolve = RESOLVE_BENEATH | RESOLVE_NO_MAGICLINKS;
  const FileDescriptor file(
      static_cast<int>(::syscall(SYS_openat2, base.descriptor.get(), name.c_str(), &how, sizeof how)));
  if (!file && errno == EXDEV) return denied(path, "the program lies outside the folder");
  if (!file) return {.outcome = Outcome::Failed, .message = failed(path, errno).message};
  struct stat attributes {};
  struct stat plain {};
  if (::fstat(file.get(), &attributes) != 0 || !S_ISREG(attributes.st_mode))
    return denied(path, "not a regular file");
  // The program is started by its path, which must mean the same to the system as it does inside the prefix.
  if (::stat(path.c_str(), &plain) != 0 || !sameFile(plain, attributes)) {
    return denied(path, "a link on the way leads out of the root prefix");
  }
  if (caution_.distrust && (attributes.st_uid != 0 || (attributes.st_mode & (S_IWGRP | S_IWOTH)) != 0)) {
    return denied(path, "others than root can change the program");
  }
  // The folders on the way to the file, and where it really lies.
  const auto named = openFolder(relative.substr(0, relative.rfind('/')), Sticky::Refused);
  if (!named.descriptor) return named.problem;
  if (caution_.distrust) {
    const auto real = placeOf(file.get()).parent_path();
    const FileDescriptor last(::open(real.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    if (!isWayTrusted(relative, file.get()) || !last || !isPlaceTrusted(last.get(), Sticky::Refused)) {
      return denied(path, kOpenToOthers);
    }
  }
  if (executable && (attributes.st_mode & 0111) == 0) {
    return {.outcome = Outcome::Failed, .message = failed(path, EACCES).message};
  }
  return {};
}

}  // namespace corvane::helper
