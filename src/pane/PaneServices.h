// The view of the pane controller that a tab is given: whether the lock is open, and every operation that
// reaches root.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "values/PropertyList.h"

namespace corvane {

/// Who owns the privileged write of a settings store.
class PlistWriter {
 public:
  virtual ~PlistWriter() = default;
  /// Replaces the contents of the property-list file by the value (a dictionary or an array), as root.
  /// Failures are logged and shown, nothing is raised. `path` is absolute and below the root prefix.
  virtual void setPlistFileValues(const std::string& path, const PropertyList& values) = 0;
};

/// Who wants to hear of changes of the lock state.
class UnlockedObserver {
 public:
  virtual ~UnlockedObserver() = default;
  virtual void unlockedDidChange() = 0;
};

class PaneServices : public PlistWriter {
 public:
  /// The lock is open and the client is installed; a tab lets the user edit only then.
  [[nodiscard]] virtual bool unlocked() const = 0;
  /// Adds one more notification for every change of `unlocked`, and gives the first one at once. An observer
  /// that is added twice is told twice. It must live as long as the pane.
  virtual void addUnlockedObserver(UnlockedObserver& observer) = 0;

  /// The dictionary in a file that only root can read; nothing when it can't be read.
  [[nodiscard]] virtual Dictionary readRootFile(const std::string& path) = 0;
  /// Starts the program, which is told a script by its first argument, as root through the helper tool.
  /// Failures are logged and shown.
  virtual void executeQLHelperArguments(const std::string& program,
                                        const std::vector<std::string>& arguments) = 0;
  /// Runs a plug-in in its test mode; the reply is a code, a comma and a message, or nothing when it is not
  /// UTF-8. The first argument is the executable's path. Blocks until the plug-in has printed something.
  [[nodiscard]] virtual std::optional<std::string> validatePluginWithArguments(
      const std::string& plugin, const std::vector<std::string>& arguments) = 0;
};

}  // namespace corvane
