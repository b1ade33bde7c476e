// Property-list files: read whole, written whole as XML.
#pragma once

#include <functional>
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
  /// Notes what stands at a path where all users may put files, before root makes a copy there for this one.
  /// The answer reads the copy: a regular file of one name that is the user's or root's and no link, and not
  /// what stood there before; nothing else.
  [[nodiscard]] virtual std::function<PropertyList()> expectCopy(const std::string& path) {
    return [this, path] { return read(path); };
  }
};

}  // namespace corvane
