// What Linux and macOS do not do alike, each as one function of the same meaning on both. Nothing else of
// this folder asks which system it is compiled for.
#pragma once

#include <cstddef>
#include <ctime>
#include <string>

#include <fcntl.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/types.h>

#include "posix/FileDescriptor.h"

namespace corvane {

/// Opens a folder to work below it. Where the system has descriptors that only name a file, the folder need
/// not be readable.
#if defined(__APPLE__)
inline constexpr int kFolderToWorkBelow = O_RDONLY | O_DIRECTORY | O_CLOEXEC;
#else
inline constexpr int kFolderToWorkBelow = O_PATH | O_DIRECTORY | O_CLOEXEC;
#endif

[[nodiscard]] timespec modificationTime(const struct stat& status);
/// Bytes that nobody can predict; false when none can be had.
[[nodiscard]] bool fillWithRandomBytes(void* bytes, std::size_t count);
/// A new file in the folder without a name, open for reading and writing; none where there are no such files.
[[nodiscard]] FileDescriptor openFileWithoutName(int folder);
// Like link(2) and rename(2): answer 0, or -1 with errno set. EEXIST when something bears the new name; a
// rename that can't be made dependent on that is EINVAL or ENOTSUP.
[[nodiscard]] int linkFileWithoutName(int descriptor, int folder, const char* name);
[[nodiscard]] int renameWithoutReplacing(int folder, const char* from, const char* to);
/// Like fallocate(2) without changing the file: makes sure that one of this size finds room.
[[nodiscard]] int reserveRoom(int descriptor, off_t size);
/// Takes a name that one process of the machine can have, until the descriptor is closed. None with errno
/// EADDRINUSE when another one has it; none where there are no such names.
[[nodiscard]] FileDescriptor claimName(const std::string& name);
/// Like pipe(2), both ends closed in programs that are started.
[[nodiscard]] bool openPipe(int (&ends)[2]);
/// A descriptor that becomes readable when the child has ended; none when it can't be watched.
[[nodiscard]] FileDescriptor watchEndOf(pid_t child);
/// Programs started with these are given no descriptor but the standard streams; answers the flag that does
/// it, or 0 where an action does.
[[nodiscard]] int keepStandardStreamsOnly(posix_spawn_file_actions_t& actions);
/// The environment of this process, for programs that it starts.
[[nodiscard]] char** ownEnvironment();

}  // namespace corvane
