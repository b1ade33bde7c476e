#include "pane/PaneStatus.h"

#include <utility>

#include "values/Text.h"

namespace corvane {
namespace {

// Of what, how many others, and why.
constexpr const char* kNotWritten = "%@ was not saved%@: %@";
constexpr const char* kNotStarted = "%@ was not started%@: %@";
constexpr const char* kAndMore = " (and %d more)";

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

void PaneStatus::setCaution(std::string caution) {
  caution_ = std::move(caution);
  show();
}

void PaneStatus::show() {
  std::string text = caution_;
  std::string all;
  for (const auto& [attempt, reason] : failures_) {
    all += (all.empty() ? "" : "\n") +
           formatText(attempt.failureFormat, {paths_.onClient(attempt.path), "", reason});
  }
  if (!failures_.empty()) {
    const auto& [newest, reason] = failures_.front();
    const std::size_t others = failures_.size() - 1;
    // Before the reason, which may be long and is then shortened.
    const std::string more = others > 0 ? formatText(kAndMore, {std::to_string(others)}) : std::string();
    text = formatText(newest.failureFormat, {lastPathComponent(newest.path), more, reason});
  }
  if (!caution_.empty()) all += (all.empty() ? "" : "\n") + caution_;
  field_.setHidden(text.empty());
  field_.setToolTip(all);
  field_.setStringValue(std::move(text));
}

}  // namespace corvane
