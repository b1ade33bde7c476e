#include "privileged/RootFileOperations.h"

#include "platform/Housekeeping.h"
#include "values/Text.h"

namespace corvane {
namespace {

constexpr const char* kNotStaged = "Failed to write tmp file";
/// How long another pane's write is waited for, in seconds; it takes some milliseconds.
constexpr double kPatience = 2.0;

}  // namespace

Result RootFileOperations::setPlistFileValues(const std::string& target, const PropertyList& values) {
  const std::string staging = paths_.writeStaging(target);
  const std::string folder = deletingLastPathComponent(staging);
  // Such a file would be removed as a staging file, before and after the write.
  if (platform_.files.areSame(folder, deletingLastPathComponent(target))) {
    return refuse(target, "files are staged in its folder");
  }
  // Targets of one name have one staging file, also those of another pane. Writes of this one never overlap.
  const Files::Held held = platform_.files.holdFolder(folder, kPatience);
  if (held.isTaken) return refuse(target, "another pane is writing");
  deleteFile(staging);  // of an earlier write that did not end
  if (const Result staged = platform_.propertyLists.write(staging, values); !staged) {
    platform_.log.write(kNotStaged);
    return {formatText("%@ (%@)", {staged.reason, folder})};
  }
  if (hasPrefixIgnoringCase(paths_.onClient(target), kRootHomePrefix)) {
    const LaunchOutcome made = execute(tool::kMkdir, {"-p", deletingLastPathComponent(target)},
                                       "Error writing plist file in root home: %d");
    if (made.status != launch_status::kStarted) return made.result();  // the staging file stays
  }
  const LaunchOutcome copied = execute(tool::kCp, {staging, target}, "Error writing plist file: %d");
  deleteFile(staging);
  return copied.result();
}

Result RootFileOperations::refuse(const std::string& target, const char* reason) {
  platform_.log.write(formatText("Not writing %@: %@", {target, reason}));
  platform_.log.write(kNotStaged);
  return {reason};
}

Dictionary RootFileOperations::readRootFile(const std::string& source) {
  const std::string staging = paths_.readStaging(source);
  const auto copy = platform_.propertyLists.expectCopy(staging);
  const LaunchOutcome copied = execution_.executeWithPrivilegesArguments(tool::kCp, {source, staging});
  if (copied.status != launch_status::kStarted && copied.status != launch_status::kNothingToRead) {
    logStatus("Error copying plist file to /private/tmp: %d", copied);
  }
  if (!copied.result()) return {};  // what stands at the path is not of this read
  // The copy stays, by intention; the next read of this name overwrites it.
  return copy().asDictionary();
}

void RootFileOperations::deleteFile(const std::string& path) {
  if (platform_.files.exists(path)) (void)execute(tool::kRm, {path}, "Error deleting file: %d");
}

void RootFileOperations::checkPermissions() {
  runShell(housekeeping::kResetModes, "Error modifying file permissions: %d");
}

void RootFileOperations::convertBinaryFiles() {
  runShell(housekeeping::kCheckSyntax, "Error converting plist format: %d");
}

void RootFileOperations::runShell(std::string_view command, std::string_view failureFormat) {
  (void)execute(tool::kSh, {"-c", housekeeping::text(command, paths_.rootPrefix())}, failureFormat);
}

LaunchOutcome RootFileOperations::execute(const char* tool, const std::vector<std::string>& arguments,
                                          std::string_view failureFormat) {
  LaunchOutcome outcome = execution_.executeWithPrivilegesArguments(tool, arguments);
  if (outcome.status != launch_status::kStarted) logStatus(failureFormat, outcome);
  return outcome;
}

void RootFileOperations::logStatus(std::string_view format, const LaunchOutcome& outcome) {
  platform_.log.write(formatText(format, {std::to_string(outcome.status)}));
}

}  // namespace corvane
