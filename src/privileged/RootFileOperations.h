// Reading and writing of root-owned files through a staging folder, and the two housekeeping commands of
// every unlock. Part of the pane controller. Failures are logged and never raised; one operation at a time.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "pane/PathTable.h"
#include "platform/Platform.h"
#include "privileged/PrivilegedExecution.h"
#include "values/PropertyList.h"

namespace corvane {

class RootFileOperations {
 public:
  /// All must outlive this object.
  RootFileOperations(Platform& platform, const PathTable& paths, PrivilegedExecution& execution)
      : platform_(platform), paths_(paths), execution_(execution) {}

  /// Replaces the contents of the file by the value (a dictionary or an array), written as XML: staged as the
  /// user, then copied over the target as root. An existing target keeps its owner and mode. `target` is
  /// absolute, below the root prefix. When the staging file can't be written the target is left alone; so it
  /// is when it lies in the staging folder itself, or when another pane's write takes longer than two
  /// seconds. Answers why the file was not written.
  Result setPlistFileValues(const std::string& target, const PropertyList& values);
  /// The dictionary in a file that only root can read, through a staging copy that is left in place; nothing
  /// when it can't be copied or read.
  [[nodiscard]] Dictionary readRootFile(const std::string& source);
  /// Removes the file as root if it exists as the user sees it.
  void deleteFile(const std::string& path);
  /// Gives the client's property lists the mode 644.
  void checkPermissions();
  /// Checks the syntax of the client's property lists. Changes nothing, in spite of its name.
  void convertBinaryFiles();

 private:
  void runShell(std::string_view command, std::string_view failureFormat);
  /// Logs that the target is not written, and answers with the reason.
  Result refuse(const std::string& target, const char* reason);
  /// Runs the tool and logs, in the format, that it could not be started.
  LaunchOutcome execute(const char* tool, const std::vector<std::string>& arguments,
                        std::string_view failureFormat);
  void logStatus(std::string_view format, const LaunchOutcome& outcome);

  Platform& platform_;
  const PathTable& paths_;
  PrivilegedExecution& execution_;
};

}  // namespace corvane
