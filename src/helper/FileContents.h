// Whole files on open descriptors.
#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include <sys/types.h>

#include "helper/InPlaceWrite.h"

namespace corvane::helper {

/// The rest of the file; nothing, with errno set, when it can't be read or is larger than `limit` bytes
/// (EFBIG).
[[nodiscard]] std::optional<std::string> readAll(int descriptor, std::size_t limit);

/// Replaces the contents of an open file (readable and writable) in place.
[[nodiscard]] int replaceContents(int descriptor, const std::string& contents, std::size_t limit,
                                  const StepObserver& before);

/// Writes an empty, open file. Answers 0 or the error.
[[nodiscard]] int fillContents(int descriptor, const std::string& contents, const StepObserver& before);

struct Rights {
  mode_t mode;
  uid_t owner;
  gid_t group;
};
/// Gives a new file with these contents the name, which nothing may bear yet: it is found when it is whole.
/// Answers 0 or the error.
[[nodiscard]] int createWhole(int folder, const std::string& name, const std::string& contents,
                              const Rights& rights, const StepObserver& before);

}  // namespace corvane::helper
