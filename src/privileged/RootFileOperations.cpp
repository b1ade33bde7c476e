#include "privileged/RootFileOperations.h"

#include "platform/Housekeeping.h"
#include "values/Text.h"

namespace corvane {
namespace {

constexpr const char* kNotStaged = "Failed to write tmp file";
/// How long another pane's write is waited for, in seconds; it takes some milliseconds.
constexpr double kPatience = 2.0;

}  // namespace

void RootFileOperations::setPlistFileValues(const std::string& target, const PropertyList& values) {
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
  if (!platform_.propertyLists.write(staging, values)) {
    platform_.log.write(kNotStaged);
    return;
  }
  if (hasPrefixIgnoringCase(paths_.onClient(target), kRootHomePrefix)) {
    const std::int16_t status =
        execution_.executeWithPrivilegesArguments(tool::kMkdir, {"-p", deletingLastPathComponent(target)});
    if (status != 0) {
      logStatus("Error writing plist file in root home: %d", status);
      return;  // the staging file stays
    }
  }
  const std::int16_t status = execution_.executeWithPrivilegesArguments(tool::kCp, {staging, target});
  if (status != 0) logStatus("Error writing plist file: %d", status);
  deleteFile(staging);
}

void RootFileOperations::refuse(const std::string& target, const char* reason) {
  platform_.log.write(formatText("Not writing %@: %@", {target, reason}));
  platform_.log.write(kNotStaged);
}

Dictionary RootFileOperations::readRootFile(const std::string& source) {
  const std::string staging = paths_.readStaging(source);
  const std::int16_t status = execution_.executeWithPrivilegesArguments(tool::kCp, {source, staging});
  if (status == launch_status::kNothingToRead) return {};  // what stands at the path is not of this read
  if (status != 0) {
    logStatus("Error copying plist file to /private/tmp: %d", status);
    return {};
  }
  // The copy stays, by intention; the next read of this name overwrites it.
  return platform_.propertyLists.read(staging).asDictionary();
}

void RootFileOperations::deleteFile(const std::string& path) {
  if (!platform_.files.exists(path)) return;
  const std::int16_t status = execution_.executeWithPrivilegesArguments(tool::kRm, {path});
  if (status != 0) logStatus("Error deleting file: %d", status);
}

void RootFileOperations::checkPermissions() {
  runShell(housekeeping::kResetModes, "Error modifying file permissions: %d");
}

void RootFileOperations::convertBinaryFiles() {
  runShell(housekeeping::kCheckSyntax, "Error converting plist format: %d");
}

void RootFileOperations::runShell(std::string_view command, std::string_view failureFormat) {
  const std::int16_t status = execution_.executeWithPrivilegesArguments(
      tool::kSh, {"-c", housekeeping::text(command, paths_.rootPrefix())});
  if (status != 0) logStatus(failureFormat, status);
}

void RootFileOperations::logStatus(std::string_view format, std::int16_t status) {
  platform_.log.write(formatText(format, {std::to_string(status)}));
}

}  // namespace corvane
