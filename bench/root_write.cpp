// links: corvane_helper pkg:gtest
// One settings write as root: the three root commands of the pane through one helper process, beside what
// three starts of a program that does nothing cost in the same run: bare ones, and ones through polkit, on
// the small machine that the tests build (run as root; nothing outside a mount name space of this process
// changes).
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include "helper/Session.h"
#include "polkit/PolkitMachine.h"

namespace corvane::helper {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kSettingsSize = 4096;
constexpr int kCommandsOfOneWrite = 3;

/// Starts the program with the descriptor as its standard input, or with the caller's.
pid_t start(const std::vector<std::string>& line, int input = -1) {
  posix_spawn_file_actions_t actions;
  ::posix_spawn_file_actions_init(&actions);
  if (input >= 0) ::posix_spawn_file_actions_adddup2(&actions, input, 0);
  ::posix_spawn_file_actions_addopen(&actions, 2, "/dev/null", O_WRONLY, 0);
  std::vector<char*> vector;
  for (const auto& word : line) vector.push_back(const_cast<char*>(word.c_str()));
  vector.push_back(nullptr);
  char* environment[] = {nullptr};
  pid_t pid = -1;
  if (::posix_spawn(&pid, vector[0], &actions, nullptr, vector.data(), environment) != 0) pid = -1;
  ::posix_spawn_file_actions_destroy(&actions);
  return pid;
}

bool endsWell(pid_t pid) {
  int status = 0;
  return pid > 0 && ::waitpid(pid, &status, 0) == pid && status == 0;
}

/// A tree with one settings file, and the helper that serves it.
struct Served {
  Served() {
    std::string name = (fs::temp_directory_path() / "corvane-bench-XXXXXX").string();
    if (::mkdtemp(name.data()) != nullptr) root = fs::canonical(name).string();
    fs::create_directories(root + "/private/tmp");
    fs::create_directories(root + "/Library/Corvane");
    std::ofstream(target()) << std::string(kSettingsSize, 'o');
    int ends[2];
    if (::socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends) != 0) return;
    socket = FileDescriptor(ends[0]);
    const FileDescriptor theirs(ends[1]);
    pid = start({QLHELPER_PATH, "--session", "--root", root}, theirs.get());
  }
  Served(const Served&) = delete;
  Served& operator=(const Served&) = delete;
  ~Served() {
    socket.reset();
    if (pid > 0) ::waitpid(pid, nullptr, 0);
    fs::remove_all(root);
  }
  [[nodiscard]] bool saysHello() const { return pid > 0 && receivePacket(socket.get()).bytes == kHello; }
  [[nodiscard]] bool asks(const std::string& tool, const std::vector<std::string>& arguments) const {
    const auto packet = encodeRequest({.program = tool, .arguments = arguments});
    if (!packet || !sendPacket(socket.get(), *packet)) return false;
    const auto reply = decodeReply(receivePacket(socket.get()).bytes);
    return reply && reply->outcome == Outcome::Started && reply->exitStatus == 0;
  }
  void stage() const { std::ofstream(staging()) << std::string(kSettingsSize, 'n'); }
  [[nodiscard]] std::string staging() const { return root + "/private/tmp/ClientSettings.plist"; }
  [[nodiscard]] std::string target() const { return root + "/Library/Corvane/ClientSettings.plist"; }

  std::string root;
  FileDescriptor socket;
  pid_t pid = -1;
};

/// With a staging file left over, so that all three commands have something to do.
void SettingsWriteThroughTheHelper(benchmark::State& state) {
  const Served served;
  if (!served.saysHello()) return state.SkipWithError("the helper does not start");
  served.stage();
  for (auto _ : state) {
    bool done = served.asks("/bin/rm", {served.staging()});
    served.stage();
    done = served.asks("/bin/cp", {served.staging(), served.target()}) && done;
    done = served.asks("/bin/rm", {served.staging()}) && done;
    if (!done) return state.SkipWithError("a command failed");
    served.stage();
  }
}
BENCHMARK(SettingsWriteThroughTheHelper)->Unit(benchmark::kMillisecond)->UseRealTime();

void ThreeBareProgramStarts(benchmark::State& state) {
  for (auto _ : state) {
    for (int i = 0; i < kCommandsOfOneWrite; ++i) {
      if (!endsWell(start({"/bin/true"}))) return state.SkipWithError("/bin/true does not run");
    }
  }
}
BENCHMARK(ThreeBareProgramStarts)->Unit(benchmark::kMillisecond)->UseRealTime();

/// Of an ordinary user whom polkit allows it without a question.
void ThreeStartsThroughPolkit(benchmark::State& state) {
  corvane::test::PolkitMachine machine;
  if (const auto missing = machine.start(corvane::test::PolkitMachine::Rule::Allow)) {
    return state.SkipWithError(("not measured: " + *missing).c_str());
  }
  machine.replaceHelper("/bin/true");
  const auto program = machine.helper();
  const auto becomeLauncher = [&program] {
    char* environment[] = {nullptr};
    ::execle("/usr/bin/pkexec", "pkexec", "--disable-internal-agent", program.c_str(), nullptr, environment);
    ::_exit(1);
  };
  for (auto _ : state) {
    for (int i = 0; i < kCommandsOfOneWrite; ++i) {
      if (!endsWell(corvane::test::PolkitMachine::startAsUser(becomeLauncher))) {
        return state.SkipWithError("a start through polkit failed");
      }
    }
  }
}
BENCHMARK(ThreeStartsThroughPolkit)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
}  // namespace corvane::helper

BENCHMARK_MAIN();
