// A directory stream under long sequences of arbitrary acts: whatever happened, afterwards each of its
// folders is followed where it is then, and nothing else is.
#include <algorithm>
#include <array>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

#include <fcntl.h>
#include <gtest/gtest.h>

#include "linux/StreamUnderTest.h"
#include "posix/FileDescriptor.h"

namespace corvane {
namespace {

namespace fs = std::filesystem;
using Names = test::StreamUnderTest::Names;

class Storm : public ::testing::TestWithParam<unsigned>, protected test::StreamUnderTest {
 protected:
  void act() {
    const std::string one = path();
    const std::string two = path();
    std::error_code ignored;  // many of the acts are impossible just now
    switch (pick(7)) {
      case 0:
        fs::create_directories(one, ignored);
        break;
      case 1:
        fs::remove_all(one, ignored);
        break;
      case 2:
        fs::rename(one, two, ignored);
        break;
      case 3:
        static_cast<void>(::renameat2(AT_FDCWD, one.c_str(), AT_FDCWD, two.c_str(), RENAME_EXCHANGE));
        break;
      case 4:
        fs::create_directory_symlink(two, one, ignored);
        break;
      case 5:  // removed while it is open, a folder leaves no word of its own
        held_.reset(::open(one.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
        break;
      default:
        std::ofstream(one + "/file") << "text";
    }
  }
  unsigned pick(unsigned choices) { return std::uniform_int_distribution<unsigned>(0, choices - 1)(random_); }

  /// Some path in the root or outside of it, up to three levels deep; few names, so that they meet.
  std::string path() {
    std::string result = folder / (pick(4) == 0 ? "outside" : "root");
    for (unsigned level = pick(4); level > 0; --level)
      result += "/" + std::string(1, static_cast<char>('a' + pick(3)));
    return result;
  }

  /// Whether the path leads to a folder, and not to one of the stream's.
  [[nodiscard]] bool isOfNoConcern(const fs::path& path) const {
    return std::ranges::none_of(kFolders, [&](const char* one) {
      std::error_code missing;
      return fs::equivalent(path, folder / one, missing);
    });
  }
  /// Writes into every folder that the stream does not watch.
  void changeTheOthers() {
    std::vector<fs::path> others;
    for (const char* top : {"root", "outside"}) {
      std::error_code none;
      for (const auto& entry : fs::recursive_directory_iterator(folder / top, none)) {
        if (fs::is_directory(entry.symlink_status()) && isOfNoConcern(entry)) others.push_back(entry);
      }
    }
    for (const auto& other : others) std::ofstream(other / "mark") << "mark";
  }
  /// Writes into the folders of the stream that are there; answers with them.
  Names changeTheFolders() {
    Names changed;
    for (const char* name : kFolders) {
      std::error_code circle;
      if (!fs::is_directory(fs::status(folder / name, circle))) continue;
      folder.writeFile(std::string(name) + "/mark", "mark");
      changed.insert(name);
    }
    return changed;
  }

  static constexpr std::array kFolders{"root", "root/a", "root/a/b", "root/c/a", "outside/b"};

 private:
  std::mt19937 random_{GetParam()};
  FileDescriptor held_;
};

TEST_P(Storm, LeavesEveryFolderFollowedWhereItIsThen) {
  folder.makeFolder("root/a/b");
  folder.makeFolder("outside/a");
  start({kFolders.begin(), kFolders.end()});
  for (int round = 0; round < 20; ++round) {
    for (int step = 0; step < 30; ++step) {
      act();
      if (pick(5) == 0) takeUpEvents();
    }
    changes();
    changeTheOthers();
    ASSERT_EQ(changes(), Names{}) << "round " << round;
    const Names followed = changeTheFolders();
    ASSERT_EQ(changes(), followed) << "round " << round;
  }
}

INSTANTIATE_TEST_SUITE_P(Seeds, Storm, ::testing::Range(1U, 21U));

}  // namespace
}  // namespace corvane
