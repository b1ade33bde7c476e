#include "platform/linux/Installation.h"

#include <fstream>
#include <iterator>
#include <string_view>

#include <unistd.h>

#include "helper/Session.h"
#include "posix/ProgramOutput.h"

namespace corvane {
namespace {

constexpr OutputLimits kVersionLimits{.seconds = 2, .bytes = 1000};

/// As the template of the action has it.
std::string annotation(std::string_view key, std::string_view value) {
  return "<annotate key=\"" + std::string(key) + "\">" + std::string(value) + "</annotate>";
}

std::string actionFault(const std::string& helper, const std::string& action) {
  std::ifstream file(action);
  if (!file) return "the polkit action is missing: " + action;
  const std::string text(std::istreambuf_iterator<char>(file), {});
  const auto says = [&](std::string_view key, std::string_view value) {
    return text.find(annotation(key, value)) != std::string::npos;
  };
  if (!says("org.freedesktop.policykit.exec.path", helper))
    return "the polkit action is about another program than " + helper + ": " + action;
  if (!says("org.example.corvane.pane.version", helper::release()))
    return "the polkit action is of another version: " + action;
  return {};
}

}  // namespace

std::string missingHelper(const std::string& helper) {
  if (helper.empty()) return "the helper tool is missing";
  return ::access(helper.c_str(), X_OK) == 0 ? std::string() : "the helper tool is missing: " + helper;
}

std::string foreignHelper(const std::string& helper) {
  return "the helper tool is of another version: " + helper;
}

std::string installationFault(const std::string& helper, const std::string& action) {
  if (auto missing = missingHelper(helper); !missing.empty()) return missing;
  if (outputOf(helper, {"--version"}, kVersionLimits) != std::string(helper::hello()) + "\n")
    return foreignHelper(helper);
  return actionFault(helper, action);
}

}  // namespace corvane
