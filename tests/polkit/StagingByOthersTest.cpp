// Another user of the machine at the staging paths, where every user may make files under names that every
// user can predict, while the pane writes.
#include <csignal>
#include <filesystem>
#include <fstream>
#include <ostream>
#include <string>
#include <vector>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "WriteFaultsFixture.h"
#include "posix/Pipe.h"

namespace corvane {
namespace {

namespace fs = std::filesystem;
using namespace test;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using Texts = std::vector<std::string>;

/// Puts something at the path, as another user would who wants to see or change settings.
void plant(const MacVolume& volume, const std::string& kind, const std::string& path) {
  if (kind == "link") (void)::symlink((volume / kSecret).c_str(), path.c_str());
  if (kind == "fifo") (void)::mkfifo(path.c_str(), 0666);
  if (kind == "folder") (void)::mkdir(path.c_str(), 0777);
  if (kind == "hardlink") (void)::link((volume / kTarget).c_str(), path.c_str());
  if (kind != "file") return;
  const std::string own = path + ".own";
  std::ofstream(own) << text(settings("planted"));
  (void)::rename(own.c_str(), path.c_str());
}

struct Planted {
  const char* kind;
  const char* why;
};
void PrintTo(const Planted& planted, std::ostream* stream) { *stream << planted.kind; }
class PlantedStaging : public WriteFaults, public testing::WithParamInterface<Planted> {};

TEST_P(PlantedStaging, PreventsTheWriteAndIsNeitherFollowedNorRemoved) {
  CORVANE_START();
  const pid_t stranger = PolkitMachine::startAsUser(
      [&] { plant(*volume, GetParam().kind, *volume / kStaging); }, PolkitMachine::kStranger);
  ::waitpid(stranger, nullptr, 0);
  const std::string rights = volume->rights(kStaging);
  ASSERT_THAT(rights, testing::StartsWith(std::to_string(PolkitMachine::kStranger)));
  machine.asUser([&] {
    WholePane pane(volume->root(), machine.helper());
    ASSERT_TRUE(pane.openLock());
    EXPECT_THAT(write(pane, *volume / kTarget, kNew),
                ElementsAre(AllOf(HasSubstr("Root command refused: /bin/rm: "), HasSubstr(GetParam().why)),
                            HasSubstr("Error deleting file: "), "Failed to write tmp file"));
  });
  expectOldTarget();
  EXPECT_EQ(volume->contents(kSecret), "secret");
  EXPECT_EQ(volume->rights(kStaging), rights);
  EXPECT_THAT(staged(), ElementsAre("a.plist"));
}
INSTANTIATE_TEST_SUITE_P(Things, PlantedStaging,
                         testing::Values(Planted{"link", "a symbolic link stands in the way"},
                                         Planted{"fifo", "what stands there is not a regular file"},
                                         Planted{"folder", "what stands there is not a regular file"},
                                         Planted{"file", "the file belongs to another user"}),
                         [](const testing::TestParamInfo<Planted>& value) { return value.param.kind; });

using StagingByOthers = WriteFaults;

/// Plants one thing after the other until it is killed; says so when it begins.
[[noreturn]] void plantForEver(const MacVolume& volume, int started) {
  (void)::write(started, "x", 1);
  for (;;) {
    for (const char* kind : {"link", "fifo", "folder", "file", "hardlink"}) {
      for (const char* name : {kStaging, "/private/tmp/read-a.plist"}) {
        std::error_code ignored;
        fs::remove(volume / name, ignored);
        plant(volume, kind, volume / name);
      }
    }
  }
}

TEST_F(StagingByOthers, HostileUserAtTheStagingPathsChangesAndSeesNothing) {
  CORVANE_START();
  constexpr int kWrites = 200;
  const auto started = makePipe();
  const pid_t hostile = PolkitMachine::startAsUser([&] { plantForEver(*volume, started.writeEnd.get()); },
                                                   PolkitMachine::kStranger);
  ASSERT_TRUE(test::readableSoon(started.readEnd.get()));
  machine.asUser([&] {
    WholePane pane(volume->root(), machine.helper());
    ASSERT_TRUE(pane.openLock());
    std::string last = text(kOld);
    for (int count = 0; count < kWrites; ++count) {
      const Dictionary values = settings(std::to_string(count), static_cast<std::size_t>(count % 7) * 1000);
      const Texts log = write(pane, *volume / kTarget, values);
      const std::string found = volume->contents(kTarget);
      // All of the new file, or all of the last one and a word about it.
      if (found == text(values)) {
        last = found;
      } else {
        ASSERT_EQ(found, last);
        EXPECT_THAT(log, testing::Not(IsEmpty()));
      }
    }
  });
  ::kill(hostile, SIGKILL);
  ::waitpid(hostile, nullptr, 0);
  EXPECT_EQ(volume->contents(kSecret), "secret");
  EXPECT_EQ(volume->rights(kSecret), "0:0 600");
  EXPECT_EQ(volume->rights(kTarget), "0:80 644");
}

}  // namespace
}  // namespace corvane
