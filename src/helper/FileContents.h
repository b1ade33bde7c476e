// Whole files on open descriptors: read, and written in place in such an order that a full disk or a kill
// between any two steps leaves a readable file.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace corvane::helper {

/// Told the name of each step before it is taken; may be empty.
using StepObserver = std::function<void(std::string_view)>;

/// The rest of the file; nothing, with errno set, when it can't be read or is larger than `limit` bytes
/// (EFBIG).
[[nodiscard]] std::optional<std::string> readAll(int descriptor, std::size_t limit);

/// Replaces the contents of an open file (readable and writable), keeping the inode. Answers 0 or the error;
/// after an error the old contents are there again unless the disk itself fails.
[[nodiscard]] int replaceContents(int descriptor, const std::string& contents, std::size_t limit,
                                  const StepObserver& before);

/// Writes an empty, open file. Answers 0 or the error.
[[nodiscard]] int fillContents(int descriptor, const std::string& contents, const StepObserver& before);

}  // namespace corvane::helper
