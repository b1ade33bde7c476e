// Settings files on every kind of file system that this machine mounts, which differ in whether they can
// reserve room and know files without names: a process that is killed at any step of a write leaves a whole
// list.
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "posix/FileDescriptor.h"
#include "posix/FreshFile.h"
#include "posix/RegularFile.h"
#include "support/BinaryFile.h"
#include "support/TemporaryFolder.h"
#include "values/PropertyListCodec.h"

namespace corvane {
namespace {

namespace fs = std::filesystem;
using corvane::test::BinaryWriter;

constexpr std::size_t kLimit = std::size_t{1} << 20;
constexpr const char* kName = "a.plist";

Dictionary settings(const std::string& name, std::size_t size) {
  return Dictionary::make(
      {{"Name", PropertyList::string(name)}, {"Text", PropertyList::string(std::string(size, 'x'))}});
}
std::string xml(const Dictionary& values) { return writeXmlPropertyList(values).value_or(""); }

/// How the child ends that kills itself before the step; 0 when there is no such step any more.
int endingOf(int step, const std::function<int(const StepObserver&)>& write) {
  std::cout.flush();
  const pid_t child = ::fork();
  if (child == 0) {
    ::_exit(write([step](std::string_view) mutable {
      if (step-- == 0) (void)::raise(SIGKILL);
    }));
  }
  int status = 0;
  EXPECT_EQ(::waitpid(child, &status, 0), child);
  return status;
}
bool isKilled(int status) { return WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL; }

class FileSystems : public testing::TestWithParam<const char*> {
 protected:
  /// Why the kind can't be mounted here; empty when it is, over the folder of the test, for the rest of this
  /// process's life.
  std::string mount() {
    const std::string kind = GetParam();
    if (::unshare(CLONE_NEWNS) != 0 || ::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0)
      return "nothing can be mounted";
    if (kind == "tmpfs" || kind == "ramfs") {
      const char* size = kind == "tmpfs" ? "size=16m" : nullptr;
      return ::mount(kind.c_str(), place().c_str(), kind.c_str(), 0, size) == 0 ? "" : "no " + kind;
    }
    const std::string image = base_.writeFile("image");
    fs::resize_file(image, 16 << 20);
    const std::string quiet = " >/dev/null 2>&1";
    const std::string format = (kind.starts_with("ext") ? "mkfs." + kind + " -F -q " : "mkfs." + kind + " ");
    // NOLINTNEXTLINE(cert-env33-c): the shell finds the tools
    if (std::system((format + image + quiet).c_str()) != 0) return "no mkfs." + kind;
    const std::string command = "mount -t " + kind + " -o loop " + image + " " + place() + quiet;
    // NOLINTNEXTLINE(cert-env33-c)
    return std::system(command.c_str()) == 0 ? "" : "the kernel mounts no " + kind;
  }
  void TearDown() override { ::umount2(place().c_str(), 0); }

  [[nodiscard]] std::string place() const { return base_ / "place"; }
  [[nodiscard]] std::string file() const { return place() + "/" + kName; }
  void writeFile(const std::string& bytes) const { std::ofstream(file()) << bytes; }
  [[nodiscard]] std::string contents() const {
    std::ifstream stream(file());
    return {std::istreambuf_iterator<char>(stream), {}};
  }
  [[nodiscard]] int replace(const std::string& fresh, const StepObserver& before) const {
    const FileDescriptor opened(::open(file().c_str(), O_RDWR | O_CLOEXEC));
    return replaceContents(opened.get(), fresh, kLimit, before);
  }

  corvane::test::TemporaryFolder base_;
  const std::string made_ = base_.makeFolder("place");
};
INSTANTIATE_TEST_SUITE_P(Kinds, FileSystems,
                         testing::Values("tmpfs", "ramfs", "ext2", "ext4", "vfat", "hfsplus"),
                         [](const testing::TestParamInfo<const char*>& value) { return value.param; });

TEST_P(FileSystems, KillAtAnyStepOfAWriteLeavesAWholeListOfEitherFormat) {
  if (const auto missing = mount(); !missing.empty()) GTEST_SKIP() << "NOT TESTED: " << missing;
  for (const std::size_t oldSize : {100U, 9000U}) {
    for (const std::size_t freshSize : {100U, 9000U}) {
      const Dictionary old = settings("old", oldSize);
      const std::string fresh = xml(settings("fresh", freshSize));
      for (const std::string& bytes : {xml(old), BinaryWriter::bytesOf(old)}) {
        int steps = 0;
        for (bool killed = true; killed; ++steps) {
          ASSERT_LT(steps, 12);
          writeFile(bytes);
          const int status =
              endingOf(steps, [&](const StepObserver& before) { return replace(fresh, before); });
          killed = isKilled(status);
          ASSERT_TRUE(killed || status == 0) << status;
          const auto found = readPropertyList(contents());
          EXPECT_TRUE(found == old || found == settings("fresh", freshSize))
              << oldSize << " by " << freshSize << ", step " << steps;
          EXPECT_EQ(replace(fresh, {}), 0);
          EXPECT_TRUE(contents() == fresh);
        }
        EXPECT_GE(steps, 4);
      }
    }
  }
}

TEST_P(FileSystems, KillAtAnyStepLeavesNoPieceOfANewFileUnderItsName) {
  if (const auto missing = mount(); !missing.empty()) GTEST_SKIP() << "NOT TESTED: " << missing;
  const std::string fresh = xml(settings("fresh", 6000));
  const FileDescriptor folder(::open(place().c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
  int steps = 0;
  for (bool killed = true; killed; ++steps) {
    ASSERT_LT(steps, 12);
    fs::remove(file());
    const int status = endingOf(steps, [&](const StepObserver& before) {
      FreshFile made = FreshFile::in(folder.get());
      before("fill");
      if (const int error = made.fill(fresh); error != 0) return error;
      before("name");
      return made.name(kName);
    });
    killed = isKilled(status);
    ASSERT_TRUE(killed || status == 0) << status;
    EXPECT_EQ(fs::exists(file()), !killed) << "step " << steps;
  }
  EXPECT_TRUE(contents() == fresh);
  EXPECT_GE(steps, 3);
}

/// The kinds that can be full; ramfs takes what there is of memory.
class FullFileSystems : public FileSystems {};
INSTANTIATE_TEST_SUITE_P(Kinds, FullFileSystems, testing::Values("tmpfs", "ext2", "ext4", "vfat", "hfsplus"),
                         [](const testing::TestParamInfo<const char*>& value) { return value.param; });

TEST_P(FullFileSystems, LeaveTheOldListByteForByte) {
  if (const auto missing = mount(); !missing.empty()) GTEST_SKIP() << "NOT TESTED: " << missing;
  for (const std::string& old : {xml(settings("old", 9000)), BinaryWriter::bytesOf(settings("old", 9000))}) {
    writeFile(old);
    std::ofstream filling(place() + "/filling");
    const std::string block(1024, 'x');
    while (filling.write(block.data(), static_cast<std::streamsize>(block.size())).flush()) {
    }
    EXPECT_EQ(replace(xml(settings("fresh", 100000)), {}), ENOSPC);
    EXPECT_TRUE(contents() == old);
    fs::remove(place() + "/filling");
  }
}

}  // namespace
}  // namespace corvane
