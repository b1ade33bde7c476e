// Whole regular files: read without ever touching anything that is not one, replaced by another one or in
// place.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "posix/InPlaceWrite.h"
#include "values/Result.h"

namespace corvane {

/// The rest of an open file; nothing, with errno set, when it can't be read or is larger than `limit` bytes
/// (EFBIG).
[[nodiscard]] std::optional<std::string> readToEnd(int descriptor, std::size_t limit);

/// The contents of the regular file that the path leads to. Nothing when it is missing, unreadable, of
/// another kind (a FIFO or a device is not even opened) or larger than `limit` bytes. Never waits for another
/// process.
[[nodiscard]] std::optional<std::string> readRegularFile(const std::string& path, std::size_t limit);

/// Notes what stands at the path; the answer reads, by the same rules, what has been put there or written
/// since: a file of one name that is the user's or root's, and no link.
[[nodiscard]] std::function<std::optional<std::string>()> expectRegularFile(const std::string& path,
                                                                            std::size_t limit);

/// Puts a file with these bytes, which only the user can read (whatever the umask), at the path: a new file,
/// flushed, which only then is found under any name (see FreshFile). What stood at the path is replaced, a
/// link is never followed. With a reason when that is not possible (a folder stands there, the folder is
/// missing or may not be written, the disk is full, the file of somebody else in a sticky folder); then the
/// path is as it was and no temporary file stays.
Result replaceRegularFile(const std::string& path, std::string_view bytes);

/// Replaces the contents of an open property-list file (readable and writable, of at most `limit` bytes) in
/// place, whole at every moment (see InPlaceWrite). Answers 0 or the error.
[[nodiscard]] int replaceContents(int descriptor, const std::string& contents, std::size_t limit,
                                  const StepObserver& before);

}  // namespace corvane
