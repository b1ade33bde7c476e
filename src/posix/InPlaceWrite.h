// Replaces the contents of a property-list file in place, in such an order that the file is a whole property
// list at every moment: the old one, then the new one. Knows bytes, not values.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

#include <sys/types.h>

namespace corvane {

/// Told the name of each step before it is taken; may be empty.
using StepObserver = std::function<void(std::string_view)>;

/// The open file that is written; tests put one in its place that fails, or is cut off, where they like.
class WritableFile {
 public:
  virtual ~WritableFile() = default;
  /// Writes at the offset, perhaps less than all (like pwrite). What stays within one page of 4096 bytes is
  /// written whole or not at all.
  virtual ssize_t write(std::string_view bytes, std::size_t offset) = 0;
  // Each answers 0 or the error.
  /// Makes sure that a file of this size finds room, without changing the file; EOPNOTSUPP where the file
  /// system can't.
  virtual int reserve(std::size_t size) = 0;
  virtual int resize(std::size_t size) = 0;
  virtual int flush() = 0;
};

/// Replaces the old contents, which the caller has read, by the fresh ones. Answers 0 or the error; after an
/// error the old contents are there again unless the disk itself fails.
///
/// Fresh contents that fit one page are written by one call. Larger ones are first written
/// behind the old one, which reads as before: what follows an XML list does not matter, and a binary list is
/// given a table of its objects at the new end. One short write at the front then opens a comment over the
/// old list, by which the file becomes the fresh one; below the comment the front is brought to its final
/// form, and another short write takes the comment away.
///
/// Where that is not possible (the fresh contents are no XML, the old ones are UTF-16 or hold both ends that
/// a hidden part could have) one call writes the whole; a kill inside that call can leave a mixture.
[[nodiscard]] int replaceContents(WritableFile& file, const std::string& old, const std::string& fresh,
                                  const StepObserver& before);

}  // namespace corvane
