#include "privileged/PrivilegedExecution.h"

#include <array>
#include <memory>

#include "values/Encodings.h"
#include "values/Text.h"

namespace corvane {
namespace {

constexpr std::string_view kHelperTool = "qlhelper";
constexpr std::size_t kReplyCapacity = 1000;  // bytes

/// The platform's status, reduced to the signed 16 bits in which the pane reports it.
std::int16_t shortStatus(LaunchStatus status) {
  return static_cast<std::int16_t>(static_cast<std::uint16_t>(status));
}

}  // namespace

std::int16_t PrivilegedExecution::executeWithPrivilegesArguments(const std::string& tool,
                                                                 const std::vector<std::string>& arguments) {
  return shortStatus(
      platform_.authorization.executeWithPrivileges(authView_.authorization(), tool, arguments));
}

void PrivilegedExecution::executeQLHelperArguments(const std::string& program,
                                                   const std::vector<std::string>& arguments) {
  std::vector<std::string> helperArguments{program};
  helperArguments.insert(helperArguments.end(), arguments.begin(), arguments.end());
  const std::string helper = platform_.bundle.pathForAuxiliaryExecutable(kHelperTool);
  platform_.log.write(formatText("QLH: %@", {helper}));
  const std::int16_t status = executeWithPrivilegesArguments(helper, helperArguments);
  if (status != 0) {
    platform_.log.write(formatText("Error executing qlhelper command: %d", {std::to_string(status)}));
  }
}

std::optional<std::string> PrivilegedExecution::validatePluginWithArguments(
    const std::string& /*plugin*/, const std::vector<std::string>& arguments) {
  std::unique_ptr<OutputPipe> pipe;
  const std::string helper = platform_.bundle.pathForResource(kHelperTool, "");
  const std::int16_t status = shortStatus(
      platform_.authorization.executeWithPrivileges(authView_.authorization(), helper, arguments, pipe));
  if (status != 0 || !pipe) {
    platform_.log.write(formatText("Error authorizing execution: %d", {std::to_string(status)}));
    return "-1,Error authorizing execution";
  }
  std::array<char, kReplyCapacity> buffer{};
  // One read, whatever comes: a longer reply is cut, a second piece is not waited for. This is intended.
  const OutputPipe::ReadOutcome outcome = pipe->read(buffer.data(), buffer.size());
  if (outcome.bytes == 0) {
    platform_.log.write(formatText("Error running plugin. Length of data returned: %d. ferror: %d. feof: %d",
                                   {"0", outcome.error ? "1" : "0", outcome.endOfFile ? "1" : "0"}));
    return "-2,Error running plugin";
  }
  // The last byte is the line's newline.
  std::string reply(buffer.data(), outcome.bytes - 1);
  if (!isUtf8(reply)) return std::nullopt;
  return reply;
}

}  // namespace corvane
