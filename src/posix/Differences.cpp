#include "posix/Differences.h"

#include <unistd.h>

#if defined(__APPLE__)
#include <cerrno>

#include <crt_externs.h>
#include <stdio.h>
#include <sys/event.h>
#include <sys/random.h>
#else
#include <algorithm>
#include <cstdio>

#include <sys/random.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <sys/un.h>
#endif

namespace corvane {

#if defined(__APPLE__)

timespec modificationTime(const struct stat& status) { return status.st_mtimespec; }

bool fillWithRandomBytes(void* bytes, std::size_t count) { return ::getentropy(bytes, count) == 0; }

FileDescriptor openFileWithoutName(int) { return {}; }

int linkFileWithoutName(int, int, const char*) {
  errno = ENOTSUP;
  return -1;
}

int renameWithoutReplacing(int folder, const char* from, const char* to) {
  return ::renameatx_np(folder, from, folder, to, RENAME_EXCL);
}

int reserveRoom(int, off_t) {
  errno = ENOTSUP;
  return -1;
}

FileDescriptor claimName(const std::string&) {
  errno = ENOTSUP;
  return {};
}

bool openPipe(int (&ends)[2]) {
  if (::pipe(ends) != 0) return false;
  for (const int end : ends) (void)::fcntl(end, F_SETFD, FD_CLOEXEC);
  return true;
}

FileDescriptor watchEndOf(pid_t child) {
  FileDescriptor queue(::kqueue());
  if (!queue) return {};
  (void)::fcntl(queue.get(), F_SETFD, FD_CLOEXEC);
  struct kevent ending {};
  EV_SET(&ending, static_cast<uintptr_t>(child), EVFILT_PROC, EV_ADD, NOTE_EXIT, 0, nullptr);
  // A child that has ended already can't be watched any more, and is told of at once.
  if (::kevent(queue.get(), &ending, 1, nullptr, 0, nullptr) == 0) return queue;
  EV_SET(&ending, 1, EVFILT_USER, EV_ADD, NOTE_TRIGGER, 0, nullptr);
  return ::kevent(queue.get(), &ending, 1, nullptr, 0, nullptr) == 0 ? std::move(queue) : FileDescriptor();
}

int keepStandardStreamsOnly(posix_spawn_file_actions_t& actions) {
  for (int stream = STDIN_FILENO; stream <= STDERR_FILENO; ++stream) {
    ::posix_spawn_file_actions_addinherit_np(&actions, stream);
  }
  return POSIX_SPAWN_CLOEXEC_DEFAULT;
}

char** ownEnvironment() { return *::_NSGetEnviron(); }

#else

timespec modificationTime(const struct stat& status) { return status.st_mtim; }

bool fillWithRandomBytes(void* bytes, std::size_t count) {
  return ::getrandom(bytes, count, 0) == static_cast<ssize_t>(count);
}

FileDescriptor openFileWithoutName(int folder) {
  // Such a file is given its name through this folder.
  if (::access("/proc/self/fd", X_OK) != 0) return {};
  return FileDescriptor(::openat(folder, ".", O_TMPFILE | O_RDWR | O_CLOEXEC, 0600));
}

int linkFileWithoutName(int descriptor, int folder, const char* name) {
  const std::string self = "/proc/self/fd/" + std::to_string(descriptor);
  return ::linkat(AT_FDCWD, self.c_str(), folder, name, AT_SYMLINK_FOLLOW);
}

int renameWithoutReplacing(int folder, const char* from, const char* to) {
  return ::renameat2(folder, from, folder, to, RENAME_NOREPLACE);
}

int reserveRoom(int descriptor, off_t size) { return ::fallocate(descriptor, FALLOC_FL_KEEP_SIZE, 0, size); }

FileDescriptor claimName(const std::string& name) {
  // The address of a socket that nobody connects to; with a NUL before it, it is no file.
  FileDescriptor socket(::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0));
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  const std::size_t length = std::min(name.size(), sizeof address.sun_path - 1);
  std::copy_n(name.begin(), length, &address.sun_path[1]);
  const auto size = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + 1 + length);
  if (socket && ::bind(socket.get(), reinterpret_cast<const sockaddr*>(&address), size) != 0) socket.reset();
  return socket;
}

bool openPipe(int (&ends)[2]) { return ::pipe2(ends, O_CLOEXEC) == 0; }

FileDescriptor watchEndOf(pid_t child) {
  return FileDescriptor(static_cast<int>(::syscall(SYS_pidfd_open, child, 0)));
}

int keepStandardStreamsOnly(posix_spawn_file_actions_t& actions) {
  ::posix_spawn_file_actions_addclosefrom_np(&actions, STDERR_FILENO + 1);
  return 0;
}

char** ownEnvironment() { return environ; }

#endif

}  // namespace corvane
