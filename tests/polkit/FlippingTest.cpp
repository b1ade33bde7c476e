// Another user of the machine who turns links and plants files wherever they may, without a pause, while an
// administrator opens the lock, writes and reads. CORVANE_FLIPS says how often; more than the few times of a
// test run are for a person with time.
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <vector>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "WriteFaultsFixture.h"
#include "posix/Pipe.h"
#include "support/Patience.h"

namespace corvane {
namespace {

namespace fs = std::filesystem;
using namespace test;
using ::testing::IsEmpty;
using ::testing::Not;

constexpr const char* kShared = "/Users/Shared";
constexpr const char* kTurned = "/Users/Shared/Corp";
constexpr const char* kSecretSettings = "/private/var/root/secret.plist";
constexpr const char* kMissingSettings = "/private/var/root/missing.plist";

int rounds() {
  const char* told = std::getenv("CORVANE_FLIPS");  // NOLINT(concurrency-mt-unsafe): one thread
  return told == nullptr ? 8 : std::atoi(told);
}

/// Where the other user may do as they like.
bool isTheirs(const std::string& path) {
  return path.starts_with(kShared) || path.starts_with("/private/tmp/");
}

class Flipping : public WriteFaults {
 protected:
  void layOut() {
    volume->folder(kShared, 01777);
    volume->folder("/Library/real");
    volume->file("/Library/real/other.plist", "of root", 0600);
    volume->file(kSecretSettings, text(kNew), 0600);
  }
  /// Owner, mode and contents of all that the other user may not change, less what the pane writes.
  [[nodiscard]] std::map<std::string, std::string> world() const {
    std::map<std::string, std::string> found;
    for (const auto& entry : fs::recursive_directory_iterator(volume->root())) {
      const auto path = entry.path().string().substr(volume->root().size());
      if (isTheirs(path)) continue;
      found[path] = volume->rights(path);
      if (entry.is_symlink()) found[path] += " -> " + fs::read_symlink(entry.path()).string();
      if (entry.is_regular_file() && path != kTarget) found[path] += " " + volume->contents(path);
    }
    return found;
  }

  /// Does one thing after the other until it is killed; says so when it begins.
  [[noreturn]] void flipForEver(int started) const {
    const auto real = *volume / "/Library/real";
    const auto mine = *volume / kShared + "/mine";
    const auto next = *volume / kShared + "/next";
    std::error_code ignored;
    fs::create_directory(mine, ignored);
    (void)::write(started, "x", 1);
    for (unsigned act = 0;; ++act) {
      fs::remove(next, ignored);
      if (act % 4 == 0) fs::create_directory_symlink("/Library/real", next, ignored);
      if (act % 4 == 1) fs::create_directory_symlink(real, next, ignored);
      if (act % 4 == 2) fs::create_directory_symlink(mine, next, ignored);
      if (act % 4 == 3) std::ofstream(next) << "a file";
      fs::rename(next, *volume / kTurned, ignored);
      for (const char* name : {"read-missing.plist", "read-secret.plist", "a.plist"}) {
        const auto staging = *volume / "/private/tmp/" + name;
        fs::remove(staging, ignored);
        if (act % 3 == 0) std::ofstream(staging) << text(settings("planted"));
        if (act % 3 == 1) fs::create_symlink(*volume / kSecret, staging, ignored);
      }
    }
  }

  /// One opening of the lock, two writes and two reads.
  void work(WholePane& pane, int round, std::string& last) {
    pane.log.lines.clear();
    ASSERT_TRUE(pane.openLock()) << ::testing::PrintToString(pane.log.lines);
    const Dictionary values = settings(std::to_string(round), static_cast<std::size_t>(round % 7) * 1000);
    auto log = write(pane, *volume / kTarget, values);
    const auto found = volume->contents(kTarget);
    // All of the new file, or all of the last one and a word about it.
    if (found != text(values)) {
      ASSERT_EQ(found, last);
      EXPECT_THAT(log, Not(IsEmpty()));
    }
    last = found;

    log = write(pane, *volume / kTurned + "/a.plist", values);
    EXPECT_THAT(log, Not(IsEmpty())) << "nothing of root's is written where others can turn the way";

    pane.log.lines.clear();
    const auto read = pane.assembly.pane().readRootFile(*volume / kSecretSettings);
    if (read) {
      EXPECT_EQ(read, kNew);
    } else {
      EXPECT_THAT(pane.log.lines, Not(IsEmpty()));
    }
    EXPECT_FALSE(pane.assembly.pane().readRootFile(*volume / kMissingSettings));
    pane.closeLock();
    EXPECT_TRUE(pane.runLoop.runUntil(test::hasNoChild, test::kHangSeconds));
  }
};

TEST_F(Flipping, StrangerWhoFlipsLinksDuringUnlocksWritesAndReadsChangesNothing) {
  CORVANE_START();
  layOut();
  const auto before = world();
  const auto started = makePipe();
  const pid_t hostile =
      PolkitMachine::startAsUser([&] { flipForEver(started.writeEnd.get()); }, PolkitMachine::kStranger);
  ASSERT_TRUE(test::readableSoon(started.readEnd.get()));
  machine.asUser([&] {
    WholePane pane(volume->root(), machine.helper());
    std::string last = text(kOld);
    for (int round = 0; round < rounds() && !HasFailure(); ++round) work(pane, round, last);
  });
  ::kill(hostile, SIGKILL);
  ::waitpid(hostile, nullptr, 0);
  EXPECT_EQ(world(), before);
}

}  // namespace
}  // namespace corvane
