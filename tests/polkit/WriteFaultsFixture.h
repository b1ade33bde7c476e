// A small Mac volume of root's with one settings file, and the words to write it through the whole pane while
// something goes wrong.
#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/mount.h>
#include <unistd.h>

#include "MacVolume.h"
#include "PolkitMachine.h"
#include "WholePane.h"
#include "posix/Pipe.h"
#include "values/PropertyListCodec.h"

namespace corvane::test {

inline constexpr const char* kTarget = "/Library/Corvane/PluginSupport/a.plist";
inline constexpr const char* kRootHomeTarget = "/var/root/Library/a.plist";
inline constexpr const char* kStaging = "/private/tmp/a.plist";
inline constexpr const char* kSecret = "/Library/secret";

inline Dictionary settings(const std::string& value, std::size_t length = 0) {
  return Dictionary::make({{"Setting", PropertyList::string(value)},
                           {"Padding", PropertyList::string(std::string(length, 'x'))}});
}
inline std::string text(const Dictionary& values) { return writeXmlPropertyList(values).value_or(""); }

inline const Dictionary kOld = settings("old", 3000);
inline const Dictionary kNew = settings("new", 5000);

/// What root does to the machine while a process of the user goes on, and when that process says so.
class Interruption {
 public:
  explicit Interruption(std::function<void()> act)
      : root_([this, act = std::move(act)] {
          char byte = 0;
          if (::read(begun_.readEnd.get(), &byte, 1) != 1) return;
          act();
          (void)!::write(done_.writeEnd.get(), "!", 1);
        }) {}
  Interruption(const Interruption&) = delete;
  Interruption& operator=(const Interruption&) = delete;
  ~Interruption() {
    begun_.writeEnd.reset();
    root_.join();
  }
  /// Returns when it is done.
  void letHappen() const {
    char byte = 0;
    ASSERT_EQ(::write(begun_.writeEnd.get(), "!", 1), 1);
    ASSERT_EQ(::read(done_.readEnd.get(), &byte, 1), 1);
  }

 private:
  Pipe begun_ = makePipe();
  Pipe done_ = makePipe();
  std::thread root_;
};

class WriteFaults : public testing::Test {
 protected:
  [[nodiscard]] std::optional<std::string> start() {
    auto missing = machine.start(PolkitMachine::Rule::Allow);
    if (missing) return missing;
    volume.emplace(machine.base() / "volume");
    volume->file("/Library/Corvane/ClientSettings.plist", text(Dictionary::make()));
    volume->file(kSecret, "secret", 0600);
    volume->file(kTarget, text(kOld), 0644, MacVolume::kAdministrators);
    return std::nullopt;
  }
  /// Mounts a file system over the folder; what has to stand there is put in by the test.
  void mountOver(const char* folder, const char* options, unsigned long flags = 0) {
    ASSERT_EQ(::mount("tmpfs", (*volume / folder).c_str(), "tmpfs", flags, options), 0);
    mounts_.push_back(*volume / folder);
  }
  void remountReadOnly(const char* folder, const char* options) {
    ASSERT_EQ(::mount("tmpfs", (*volume / folder).c_str(), "tmpfs", MS_REMOUNT | MS_RDONLY, options), 0);
  }
  void TearDown() override {
    for (const std::string& path : mounts_) ::umount2(path.c_str(), MNT_DETACH);
  }
  /// What the log says about one write by the user, with the lock open.
  static std::vector<std::string> write(WholePane& pane, const std::string& target,
                                        const Dictionary& values) {
    pane.log.lines.clear();
    pane.assembly.pane().setPlistFileValues(target, values);
    return pane.log.lines;
  }
  std::vector<std::string> staged() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(*volume / "/private/tmp"))
      names.push_back(entry.path().filename());
    return names;
  }
  void expectOldTarget() const {
    EXPECT_EQ(volume->contents(kTarget), text(kOld));
    EXPECT_EQ(volume->rights(kTarget), "0:80 644");
  }

  PolkitMachine machine;
  std::optional<MacVolume> volume;

 private:
  std::vector<std::string> mounts_;
};

#define CORVANE_START()                                                            \
  if (const auto missing = start()) {                                              \
    GTEST_SKIP() << "NOT TESTED: the real polkit does not run here: " << *missing; \
  }

}  // namespace corvane::test
