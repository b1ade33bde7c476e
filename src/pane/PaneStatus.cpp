#include "pane/PaneStatus.h"

#include "values/Text.h"

namespace corvane {
namespace {

constexpr const char* kNotWritten = "%@ was not saved: %@";
constexpr const char* kNotStarted = "%@ was not started: %@";
constexpr const char* kAndMore = "%@ (and %d more)";

/// The reason without the path that it may begin with, which is said already.
std::string withoutPath(const std::string& reason, const std::string& path) {
  const std::string beginning = path + ": ";
  return reason.starts_with(beginning) ? reason.substr(beginning.size()) : reason;
}

}  // namespace

void PaneStatus::fileWasWritten(const std::string& path, const Result& result) {
  note({kNotWritten, path}, result);
}

void PaneStatus::scriptWasStarted(const std::string& path, const Result& result) {
  note({kNotStarted, path}, result);
}

void PaneStatus::note(const Attempt& attempt, const Result& result) {
  std::erase_if(failures_, [&](const Failure& failure) { return failure.attempt == attempt; });
  if (!result) failures_.insert(failures_.begin(), {attempt, withoutPath(result.reason, attempt.path)});
  show();
}

void PaneStatus::show() {
  std::string text;
  std::string all;
  for (const auto& [attempt, reason] : failures_) {
    if (text.empty()) text = formatText(attempt.failureFormat, {lastPathComponent(attempt.path), reason});
    all += (all.empty() ? "" : "\n") +
           formatText(attempt.failureFormat, {paths_.onClient(attempt.path), reason});
  }
  if (failures_.size() > 1) text = formatText(kAndMore, {text, std::to_string(failures_.size() - 1)});
  field_.setStringValue(text);
  field_.setToolTip(all);
  field_.setHidden(failures_.empty());
}

}  // namespace corvane
