// What a toolkit gives to the other shells, for a program without a window: alerts are answered by what was
// asked for on the command line, an open panel chooses the path that stands there.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/Bundle.h"
#include "platform/Dialogs.h"
#include "platform/SystemLog.h"
#include "platform/Workspace.h"
#include "platform/linux/LinuxSystemLog.h"

namespace corvane::cli {

/// The helper beside the program or in the installed place.
class CliBundle final : public Bundle {
 public:
  [[nodiscard]] std::string name() override;
  [[nodiscard]] std::string pathForResource(std::string_view name, std::string_view type) override;
  [[nodiscard]] std::string pathForAuxiliaryExecutable(std::string_view name) override;
};

/// Nothing is drawn and nothing is opened.
class CliWorkspace final : public Workspace {
 public:
  [[nodiscard]] bool openUrl(const std::string& /*address*/) override { return false; }
  [[nodiscard]] std::uint32_t modifierFlags() override { return 0; }
  [[nodiscard]] double textWidth(std::string_view /*text*/, const Font& /*font*/) override { return 0; }
};

/// Every alert ends at once. One that only tells something is told; one that asks is answered with its first
/// button where that was asked for, else with its last.
class CliDialogs final : public Dialogs {
 public:
  using Tell = std::function<void(const AlertDescription&)>;
  explicit CliDialogs(Tell tell) : tell_(std::move(tell)) {}

  void beginSheet(const AlertDescription& alert, SheetWindow window,
                  std::function<void(const AlertResult&)> ended) override;
  AlertResult runModalAlert(const AlertDescription& alert) override;
  [[nodiscard]] std::vector<std::string> runOpenPanel(const OpenPanelDescription& panel) override;

  bool isSilent = false;               // nothing is told any more
  bool confirms = false;               // the next questions are answered with yes
  std::optional<bool> checkBox;        // the state of the check box in them; nothing: as it is
  std::string chosenPath;              // what the next panels choose, on this disk
  bool wasRefused = false;             // the last panel does not offer it
  std::vector<AlertDescription> told;  // alerts that only tell something, in order

 private:
  [[nodiscard]] AlertResult answer(const AlertDescription& alert);

  Tell tell_;
};

/// The system log, and the lines of the present act, which may be the reason why nothing came of it.
class CliLog final : public SystemLog {
 public:
  void write(std::string_view line) override;
  [[nodiscard]] const std::vector<std::string>& lines() const { return lines_; }
  void forget() { lines_.clear(); }

 private:
  LinuxSystemLog log_{-1};
  std::vector<std::string> lines_;
};

}  // namespace corvane::cli
