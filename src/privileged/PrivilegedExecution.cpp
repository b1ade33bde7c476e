#include "privileged/PrivilegedExecution.h"

#include <array>
#include <memory>

#include "values/Encodings.h"
#include "values/Text.h"

namespace corvane {
namespace {

constexpr std::string_view kHelperTool = "qlhelper";
constexpr std::size_t kReplyCapacity = 1000;  // bytes

/// The same with the status reduced to the signed 16 bits in which the pane reports it.
LaunchOutcome shortened(LaunchOutcome outcome) {
  outcome.status = static_cast<std::int16_t>(static_cast<std::uint16_t>(outcome.status));
  return outcome;
}

}  // namespace

LaunchOutcome PrivilegedExecution::executeWithPrivilegesArguments(const std::string& tool,
                                                                  const std::vector<std::string>& arguments) {
  return shortened(platform_.authorization.executeWithPrivileges(authView_.authorization(), tool, arguments));
}

Result PrivilegedExecution::executeQLHelperArguments(const std::string& program,
                                                     const std::vector<std::string>& arguments) {
  std::vector<std::string> helperArguments{program};
  helperArguments.insert(helperArguments.end(), arguments.begin(), arguments.end());
  const std::string helper = platform_.bundle.pathForAuxiliaryExecutable(kHelperTool);
  platform_.log.write(formatText("QLH: %@", {helper}));
  const LaunchOutcome outcome = executeWithPrivilegesArguments(helper, helperArguments);
  if (outcome.status != launch_status::kStarted) {
    platform_.log.write(formatText("Error executing qlhelper command: %d", {std::to_string(outcome.status)}));
  }
  return outcome.result();
}

std::optional<std::string> PrivilegedExecution::validatePluginWithArguments(
    const std::string& /*plugin*/, const std::vector<std::string>& arguments) {
  std::unique_ptr<OutputPipe> pipe;
  const std::string helper = platform_.bundle.pathForResource(kHelperTool, "");
  const LaunchOutcome outcome = shortened(
      platform_.authorization.executeWithPrivileges(authView_.authorization(), helper, arguments, pipe));
  if (outcome.status != launch_status::kStarted || !pipe) {
    platform_.log.write(formatText("Error authorizing execution: %d", {std::to_string(outcome.status)}));
    return "-1,Error authorizing execution";
  }
  std::array<char, kReplyCapacity> buffer{};
  // One read, whatever comes: a longer reply is cut, a second piece is not waited for. This is intended.
  const OutputPipe::ReadOutcome read = pipe->read(buffer.data(), buffer.size());
  if (read.bytes == 0) {
    platform_.log.write(formatText("Error running plugin. Length of data returned: %d. ferror: %d. feof: %d",
                                   {"0", read.error ? "1" : "0", read.endOfFile ? "1" : "0"}));
    return "-2,Error running plugin";
  }
  // The last byte is the line's newline.
  std::string reply(buffer.data(), read.bytes - 1);
  if (!isUtf8(reply)) return std::nullopt;
  return reply;
}

}  // namespace corvane
