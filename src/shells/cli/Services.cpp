#include "Services.h"

#include <filesystem>
#include <system_error>

#include <unistd.h>

#include "pane/Deployment.h"

namespace corvane::cli {

namespace fs = std::filesystem;

std::string CliBundle::name() { return deployment::kPaneName; }

std::string CliBundle::pathForResource(std::string_view name, std::string_view type) {
  return type.empty() ? pathForAuxiliaryExecutable(name) : std::string();  // what has no type is a tool
}

std::string CliBundle::pathForAuxiliaryExecutable(std::string_view name) {
  if (name.empty() || name.find('/') != std::string_view::npos) return {};
  std::error_code error;
  const fs::path own = fs::read_symlink("/proc/self/exe", error).parent_path();
  for (const fs::path& folder : {own, fs::path(CORVANE_LIBEXEC_DIR)}) {
    const fs::path candidate = folder / name;
    if (fs::is_regular_file(candidate, error) && ::access(candidate.c_str(), X_OK) == 0) return candidate;
  }
  return {};
}

void CliDialogs::beginSheet(const AlertDescription& alert, SheetWindow /*window*/,
                            std::function<void(const AlertResult&)> ended) {
  ended(answer(alert));
}

AlertResult CliDialogs::runModalAlert(const AlertDescription& alert) { return answer(alert); }

AlertResult CliDialogs::answer(const AlertDescription& alert) {
  AlertResult result{kAlertFirstButtonReturn, alert.accessory && alert.accessory->on};
  if (alert.buttons.size() <= 1) {
    if (isSilent) return result;
    told.push_back(alert);
    tell_(alert);
    return result;
  }
  if (!confirms) result.returnCode += static_cast<int>(alert.buttons.size()) - 1;
  if (checkBox) result.accessoryOn = *checkBox;
  return result;
}

std::vector<std::string> CliDialogs::runOpenPanel(const OpenPanelDescription& panel) {
  std::error_code error;
  const bool isFolder = fs::is_directory(chosenPath, error);
  const bool isOffered =
      isFolder ? panel.canChooseDirectories : panel.canChooseFiles && fs::exists(chosenPath, error);
  wasRefused = !isOffered;
  return isOffered ? std::vector{chosenPath} : std::vector<std::string>();
}

void CliLog::write(std::string_view line) {
  log_.write(line);
  lines_.emplace_back(line);
}

}  // namespace corvane::cli
