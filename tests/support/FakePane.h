// A pane as the tabs see it: the lock is a flag, root operations are recorded. Written property lists reach
// the real file at once, so that a refresh reads what was written.
#pragma once

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "pane/PaneServices.h"
#include "values/PropertyList.h"

namespace corvane::test {

class FakePane final : public PaneServices {
 public:
  struct Write {
    std::string path;
    PropertyList values;  // a copy, as it was at the time
  };
  struct HelperCall {
    std::string program;
    std::vector<std::string> arguments;
  };

  void setUnlocked(bool unlocked);
  /// For a test that ends a tab before its pane.
  void forgetUnlockedObservers() { observers_.clear(); }

  [[nodiscard]] bool unlocked() const override { return unlocked_; }
  void addUnlockedObserver(UnlockedObserver& observer) override;
  void setPlistFileValues(const std::string& path, const PropertyList& values) override;
  [[nodiscard]] Dictionary readRootFile(const std::string& path) override;
  void executeQLHelperArguments(const std::string& program,
                                const std::vector<std::string>& arguments) override;
  [[nodiscard]] std::optional<std::string> validatePluginWithArguments(
      const std::string& plugin, const std::vector<std::string>& arguments) override;

  bool writesReachTheFile = true;
  std::vector<Write> writes;
  std::vector<std::string> rootReads;
  Dictionary rootFile;  // what `readRootFile` answers
  std::vector<HelperCall> helperCalls;
  std::vector<HelperCall> validations;
  std::deque<std::optional<std::string>> replies;  // what the next validations answer
  std::function<void()> whileValidating;           // what goes on in the pane until they do

 private:
  bool unlocked_ = false;
  std::vector<UnlockedObserver*> observers_;
};

}  // namespace corvane::test
