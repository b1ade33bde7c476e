// What the pane has tried and not done, for as long as that is so: files whose last write failed, and scripts
// of the client whose last start from here failed. Part of the pane controller.
//
// The field shows the newest of these failures and how many more there are, or what is to be borne in mind
// otherwise; its tool tip lists them all, the newest first. It is hidden while there is nothing to say.
#pragma once

#include <string>
#include <vector>

#include "controls/TextField.h"
#include "pane/PathTable.h"
#include "values/Result.h"

namespace corvane {

class PaneStatus {
 public:
  /// Both must outlive this.
  PaneStatus(const PathTable& paths, TextField& field) : paths_(paths), field_(field) {}

  /// What became of a write of the file, or of a start of the script. Paths are absolute, below the root
  /// prefix.
  void fileWasWritten(const std::string& path, const Result& result);
  void scriptWasStarted(const std::string& path, const Result& result);
  [[nodiscard]] bool hasFailures() const { return !failures_.empty(); }
  /// What holds besides, until it is said again; empty for nothing. Failures are shown before it.
  void setCaution(std::string caution);

 private:
  /// One thing that was tried; its last outcome counts.
  struct Attempt {
    const char* failureFormat;
    std::string path;
    friend bool operator==(const Attempt&, const Attempt&) = default;
  };
  struct Failure {
    Attempt attempt;
    std::string reason;
  };
  void note(const Attempt& attempt, const Result& result);
  void show();

  const PathTable& paths_;
  TextField& field_;
  std::vector<Failure> failures_;  // the newest first
  std::string caution_;
};

}  // namespace corvane
