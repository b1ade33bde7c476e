#include "support/FakePane.h"

#include <filesystem>
#include <fstream>
#include <system_error>

#include "values/PropertyListCodec.h"

namespace corvane::test {

void FakePane::setUnlocked(bool unlocked) {
  unlocked_ = unlocked;
  const auto observers = observers_;
  for (UnlockedObserver* observer : observers) observer->unlockedDidChange();
}

void FakePane::addUnlockedObserver(UnlockedObserver& observer) {
  observers_.push_back(&observer);
  observer.unlockedDidChange();
}

void FakePane::setPlistFileValues(const std::string& path, const PropertyList& values) {
  writes.push_back({path, values.deepCopy()});
  if (!writesReachTheFile) return;
  // A new file: cutting the old one to nothing first has ext4 flush it to disk on closing.
  std::error_code ignored;
  std::filesystem::remove(path, ignored);
  std::ofstream(path, std::ios::binary | std::ios::trunc)
      << writeXmlPropertyList(values).value_or(std::string());
}

Dictionary FakePane::readRootFile(const std::string& path) {
  rootReads.push_back(path);
  return rootFile;
}

void FakePane::executeQLHelperArguments(const std::string& program,
                                        const std::vector<std::string>& arguments) {
  helperCalls.push_back({program, arguments});
}

std::optional<std::string> FakePane::validatePluginWithArguments(const std::string& plugin,
                                                                 const std::vector<std::string>& arguments) {
  validations.push_back({plugin, arguments});
  if (whileValidating) whileValidating();
  if (replies.empty()) return "0,OK";
  const auto reply = replies.front();
  replies.pop_front();
  return reply;
}

}  // namespace corvane::test
