// The two kinds of rights that the Linux authorization services hand out, and the output of a plug-in run
// with either.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "helper/CommandRunner.h"
#include "platform/Authorization.h"

namespace corvane {

class LinuxRights : public Authorization {
 public:
  [[nodiscard]] virtual helper::Answer carryOut(const helper::Request& request) = 0;
};

/// The beginning of the log line that says why the lock stays closed.
inline constexpr std::string_view kNoRights = "Could not get administrator rights: ";
/// Why they were not had, or have ended: nothing came within the deadline.
inline constexpr std::string_view kHelperIsSilent = "the root helper does not answer";

/// Commands carried out in this process, with the user's own rights. What others than root and the user can
/// change is distrusted, as by the helper.
class DirectRights : public LinuxRights {
 public:
  explicit DirectRights(helper::Place place);
  [[nodiscard]] const helper::RootTree& tree() const { return runner_.tree(); }
  [[nodiscard]] helper::Answer carryOut(const helper::Request& request) override;

 private:
  helper::CommandRunner runner_;
};

/// The standard output of a run. Destroying it ends the run: at once when nothing was read, else after a
/// short grace.
class RunOutput : public OutputPipe {
 public:
  using Wait = std::function<bool(int descriptor)>;
  RunOutput(helper::SupervisedRun run, Wait wait);
  ~RunOutput() override;
  RunOutput(const RunOutput&) = delete;
  RunOutput& operator=(const RunOutput&) = delete;
  [[nodiscard]] ReadOutcome read(char* buffer, std::size_t capacity) override;

 private:
  helper::SupervisedRun run_;
  Wait wait_;
  bool gaveSomething_ = false;
};

}  // namespace corvane
