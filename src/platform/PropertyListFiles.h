// Property-list files: read whole, written whole as XML.
#pragma once

#include <string>

#include "values/PropertyList.h"
#include "values/Result.h"

namespace corvane {

class PropertyListFiles {
 public:
  virtual ~PropertyListFiles() = default;
  /// The file's value, fresh objects on every call; nothing when it is missing, not a regular file,
  /// unreadable or not a property list.
  [[nodiscard]] virtual PropertyList read(const std::string& path) = 0;
  /// Writes the value atomically: a new file in the same folder, flushed, put in the place of the old one. A
  /// link at the path is replaced, never followed. With a reason nothing was written.
  virtual Result write(const std::string& path, const PropertyList& value) = 0;
};

}  // namespace corvane
