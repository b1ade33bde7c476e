// Property-list files through the product's own codec.
#pragma once

#include "platform/PropertyListFiles.h"

namespace corvane {

class PosixPropertyListFiles : public PropertyListFiles {
 public:
  [[nodiscard]] PropertyList read(const std::string& path) override;
  /// The new file has mode 0600 whatever the umask: what is written here is staged in a folder of all users,
  /// also settings that nobody but root can read, passwords among them. Its mode is not the target's: whoever
  /// copies it as root keeps that, and gives a new settings file the mode 0644.
  /// The first write into a folder also removes what killed processes of this user have left in it.
  Result write(const std::string& path, const PropertyList& value) override;
  [[nodiscard]] std::function<PropertyList()> expectCopy(const std::string& path) override;

 private:
  void sweepOnce(const std::string& folder);
  std::string swept_;  // the folder written to last
};

}  // namespace corvane
