// The command line on a Mac's volume that belongs to root, called by an ordinary user, with the real polkit.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <utility>

#include <gmock/gmock.h>
#include <sys/stat.h>

#include "AdministratorFixture.h"
#include "cli/RunningCtl.h"
#include "posix/Pipe.h"

namespace corvane::test::administrator {
namespace {

class CommandLine : public testing::Test {
 protected:
  /// Puts the program and a client on the machine.
  void layOut() {
    std::filesystem::copy_file(CORVANECTL_PATH, program());
    volume = std::make_unique<MacVolume>(machine.base() / "Macintosh HD");
    layOutClient(*volume);
  }
  [[nodiscard]] std::string program() const { return machine.base() / "opt/corvanectl"; }
  [[nodiscard]] Ended call(const Words& words) const {
    return RunningCtl(words, {.user = PolkitMachine::kUser, .program = program()}).end();
  }
  void good(Words words) const {
    words.insert(words.begin(), {"--root", volume->root()});
    const Ended ended = call(words);
    EXPECT_EQ(ended.status, 0);
    EXPECT_EQ(ended.errors, "");
  }

  PolkitMachine machine;
  std::unique_ptr<MacVolume> volume;
};

TEST_F(CommandLine, ChangesSettingsOfAMacsVolume) {
  CORVANE_START_MACHINE(PolkitMachine::Rule::Allow);
  layOut();
  good({"set", "group", "R&D <lab>", "run-interval", "4", "startup-disk.percent", "85", "automount", "on"});
  good({"volumes", "set", "Backup", "absence.warn", "on", "absence.minutes", "15", "usage.warn", "on",
        "usage.percent", "80"});
  expectFiles(*volume, filesAfterTheWindowsSession());
  EXPECT_TRUE(std::filesystem::is_empty(*volume / "/private/tmp"));
}

TEST_F(CommandLine, SaysWhyNothingMayBeChanged) {
  CORVANE_START_MACHINE(PolkitMachine::Rule::Refuse);
  layOut();
  const Ended ended = call({"--root", volume->root(), "set", "run-interval", "4"});
  EXPECT_EQ(ended.status, 77);
  EXPECT_THAT(ended.errors, testing::StartsWith("corvanectl: no rights to change anything: "));
  EXPECT_EQ(std::ranges::count(ended.errors, '\n'), 1) << ended.errors;
  EXPECT_TRUE(std::filesystem::is_empty(*volume / "/private/tmp"));
}

/// A call of the program with polkit's own agent on a terminal, where somebody answers each question.
class Asked {
 public:
  Asked(const PolkitMachine& machine, const std::string& program, const Words& words, std::string password) {
    // The agent has to be there first, and to know the process: it waits to become the program.
    const std::string gate = machine.base() / "gate";
    EXPECT_TRUE(::mkfifo(gate.c_str(), 0644) == 0 && ::chown(gate.c_str(), PolkitMachine::kUser, -1) == 0);
    Words line = {"-c", "read go < '" + gate + "'; exec \"$@\"", "sh", program};
    line.insert(line.end(), words.begin(), words.end());
    RunningCtl ctl(line, {.user = PolkitMachine::kUser, .program = "/bin/sh"});
    // Nobody may answer for a process of another user, which it is until it has become one of the user's.
    EXPECT_TRUE(waitUntil([process = "/proc/" + std::to_string(ctl.pid())] {
      struct stat status {};
      return ::stat(process.c_str(), &status) == 0 && status.st_uid == PolkitMachine::kUser;
    }));
    Pipe registered = makePipe();
    (void)::fcntl(registered.writeEnd.get(), F_SETFD, 0);
    const Terminal terminal;
    const RunningCtl agent(
        {"--process", std::to_string(ctl.pid()), "--notify-fd", std::to_string(registered.writeEnd.get())},
        {.terminal = &terminal, .user = PolkitMachine::kUser, .program = "/usr/bin/pkttyagent"});
    registered.writeEnd.reset();
    EXPECT_TRUE(readableSoon(registered.readEnd.get())) << "the agent says: " << terminal.shown();
    std::ofstream(gate) << "go\n";
    password += '\n';
    EXPECT_TRUE(waitUntil([&] {
      said += terminal.shown();
      if (said.ends_with("Password: ")) {
        ++questions;
        said += '\n';
        terminal.type(password);
      }
      return ctl.hasEnded();
    })) << said;
    ended = ctl.end();
    std::filesystem::remove(gate);
  }

  int questions = 0;
  std::string said;
  Ended ended;
};

TEST_F(CommandLine, AsksForAPasswordOnceForEachTree) {
  CORVANE_START_MACHINE(PolkitMachine::Rule::AskAdministrator);
  layOut();
  const MacVolume other(machine.base() / "Other");
  layOutClient(other);
  const Words change = {"set", "group",     "R&D <lab>", "run-interval", "4", "startup-disk.percent",
                        "85",  "automount", "on"};
  Words one = {"--root", volume->root()};
  Words two = {"--root", volume->root(), "--root", other.root()};
  for (Words* words : {&one, &two}) words->insert(words->end(), change.begin(), change.end());

  const Asked first(machine, program(), one, PolkitMachine::kPassword);
  EXPECT_EQ(first.ended.status, 0) << first.said;
  EXPECT_EQ(first.ended.errors, "");
  EXPECT_EQ(first.questions, 1) << first.said;
  const Asked second(machine, program(), two, PolkitMachine::kPassword);
  EXPECT_EQ(second.ended.status, 0) << second.said;
  EXPECT_EQ(second.questions, 2) << second.said;
  for (const MacVolume* each : {&std::as_const(*volume), &other}) {
    EXPECT_EQ(each->contents(kClientSettings), kClientSettingsAfter);
    EXPECT_EQ(each->contents(kRootCapacity), kRootCapacityAfter);
    EXPECT_TRUE(std::filesystem::is_empty(*each / "/private/tmp"));
  }
}

TEST_F(CommandLine, AsksNothingForWhatIsOnlyRead) {
  CORVANE_START_MACHINE(PolkitMachine::Rule::AskAdministrator);
  layOut();
  for (const Words& words : {Words{"get"}, {"status"}, {"volumes"}, {"plugins", "show"}, {"check"}}) {
    Words line = {"--root", volume->root()};
    line.insert(line.end(), words.begin(), words.end());
    const Asked asked(machine, program(), line, PolkitMachine::kPassword);
    EXPECT_EQ(asked.questions, 0) << asked.said;
    EXPECT_EQ(asked.ended.errors, "");
    EXPECT_EQ(asked.ended.status, 0);
  }
}

TEST_F(CommandLine, AWrongPasswordChangesNothing) {
  CORVANE_START_MACHINE(PolkitMachine::Rule::AskAdministrator);
  layOut();
  const Asked asked(machine, program(), {"--root", volume->root(), "set", "run-interval", "4"}, "wrong");
  EXPECT_EQ(asked.ended.status, 77) << asked.said;
  EXPECT_GT(asked.questions, 0);
  EXPECT_THAT(asked.ended.errors, testing::StartsWith("corvanectl: no rights to change anything"));
  EXPECT_EQ(volume->contents(kClientSettings), kClientSettingsBefore);
  EXPECT_TRUE(std::filesystem::is_empty(*volume / "/private/tmp"));
}

}  // namespace
}  // namespace corvane::test::administrator
