// Property-list files through the product's own codec. Stateless.
#pragma once

#include <cstddef>

#include "platform/PropertyListFiles.h"

namespace corvane {

class LinuxPropertyListFiles : public PropertyListFiles {
 public:
  /// A larger file counts as unreadable: settings are some kilobytes, and a file is held in memory whole.
  static constexpr std::size_t kSizeLimit = std::size_t{64} * 1024 * 1024;

  [[nodiscard]] PropertyList read(const std::string& path) override;
  /// The new file has mode 0644 whatever the umask, the mode in which the client keeps its settings. A copy
  /// as root that makes a new settings file takes that mode over; with a narrower one the pane could not read
  /// the file that it has just written, and the next edit would start from an empty one.
  [[nodiscard]] bool write(const std::string& path, const PropertyList& value) override;
};

}  // namespace corvane
