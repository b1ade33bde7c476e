// links: corvane_qt corvane_linux corvane_core
//
// What it costs to follow a client while the pane is open: the time from the change of a file to the end of
// the reload beyond the second in which changes are gathered, the processor time of a pane that nobody
// touches, processor time and memory over a client that runs every ten seconds, and a plug-ins folder with 10
// 000 folders in it.
//
// CORVANE_BENCH_ROOT names a demo client with short runs (make-demo --run-seconds 1 DIR), which is changed.
// CORVANE_BENCH_MINUTES is how long the client runs again and again (0.5 when not given),
// CORVANE_BENCH_IDLE_SECONDS how long the pane is left alone (10). Set QT_QPA_PLATFORM=offscreen where there
// is no display.
#include <QApplication>
#include <QEventLoop>
#include <QTimer>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <string>
#include <vector>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include "LinuxPane.h"
#include "appearance/Appearance.h"

namespace {

using namespace corvane;
using Clock = std::chrono::steady_clock;

constexpr double kGatheringSeconds = 1.0;
constexpr double kSecondsBetweenRuns = 10.0;
constexpr int kManyFolders = 10000;

double secondsSince(Clock::time_point begin) {
  return std::chrono::duration<double>(Clock::now() - begin).count();
}

struct Usage {
  double processorSeconds = 0;
  long wakeUps = 0;
};

Usage usage() {
  rusage now{};
  ::getrusage(RUSAGE_SELF, &now);
  const auto seconds = [](const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
  };
  return {seconds(now.ru_utime) + seconds(now.ru_stime), now.ru_nvcsw};
}

/// In KiB.
long residentMemory() {
  long pages = 0;
  long resident = 0;
  std::ifstream("/proc/self/statm") >> pages >> resident;
  return resident * (::sysconf(_SC_PAGESIZE) / 1024);
}

double numberFrom(const char* variable, double otherwise) {
  const char* text = std::getenv(variable);
  return text != nullptr ? std::strtod(text, nullptr) : otherwise;
}

void runLoopFor(double seconds) {
  QEventLoop loop;
  QTimer::singleShot(static_cast<int>(seconds * 1000), &loop, &QEventLoop::quit);
  loop.exec();
}

/// Runs the loop until the condition holds, asked after every event; ends the program when it never does.
void runLoopUntil(const std::function<bool()>& condition) {
  const Clock::time_point begin = Clock::now();
  while (!condition()) {
    if (secondsSince(begin) > 30) {
      std::fprintf(stderr, "the pane does not follow\n");
      std::exit(1);
    }
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  }
}

void replaceInFile(const std::string& path, const std::string& from, const std::string& to) {
  std::ifstream file(path, std::ios::binary);
  std::string contents{std::istreambuf_iterator<char>(file), {}};
  if (const auto at = contents.find(from); at != std::string::npos) contents.replace(at, from.size(), to);
  std::ofstream(path, std::ios::binary) << contents;
}

/// A change of the version, until header, Configuration tab and Plugins tab have been reloaded.
void measureLatency(qt::LinuxPane& pane) {
  const PathTable& paths = pane.assembly().paths();
  Button& version = pane.assembly().view().clientVersionButton;
  OutlineView& plugins = pane.assembly().pluginsView().pluginsTable;
  // The last reload of the batch is that of the plug-ins, which closes what was open.
  const auto pluginIsOpen = [&] { return plugins.isItemExpanded(plugins.itemAtRow(0)); };
  constexpr int kChanges = 15;
  std::vector<double> milliseconds;
  for (int change = 0; change < kChanges; ++change) {
    plugins.expandItem(plugins.itemAtRow(0));
    const std::string before = version.title();
    const std::string shown = before.substr(before.find(' ') + 1);
    const Clock::time_point begin = Clock::now();
    replaceInFile(paths.clientSettings, "<string>" + shown + "</string>",
                  "<string>9." + std::to_string(change) + "</string>");
    runLoopUntil([&] { return version.title() != before && !pluginIsOpen(); });
    milliseconds.push_back((secondsSince(begin) - kGatheringSeconds) * 1000);
    replaceInFile(paths.clientSettings, "<string>9." + std::to_string(change) + "</string>",
                  "<string>7.3.1</string>");
    runLoopUntil([&] { return version.title() == "Version 7.3.1"; });
  }
  std::sort(milliseconds.begin(), milliseconds.end());
  std::printf(
      "change to finished reload, beyond the gathering second: median %.1f ms, least %.1f, most %.1f\n",
      milliseconds[kChanges / 2], milliseconds.front(), milliseconds.back());
}

void measureIdle(double seconds) {
  const Usage before = usage();
  runLoopFor(seconds);
  const Usage after = usage();
  const double spent = after.processorSeconds - before.processorSeconds;
  std::printf("idle for %.0f s: %.1f ms of processor time (%.3f %% of one), %.2f wake-ups per second\n",
              seconds, spent * 1000, spent / seconds * 100,
              static_cast<double>(after.wakeUps - before.wakeUps) / seconds);
}

void startClient(const PathTable& paths) {
  const pid_t child = ::fork();
  if (child == 0) {
    ::execl("/bin/bash", "bash", paths.runClient.c_str(), "--log-parent", "bench", "--force", nullptr);
    ::_exit(127);
  }
}

void measureRuns(qt::LinuxPane& pane, double minutes) {
  int runs = 0;
  const auto run = [&] {
    while (::waitpid(-1, nullptr, WNOHANG) > 0) {
    }
    startClient(pane.assembly().paths());
    ++runs;
  };
  run();  // the first one warms up
  runLoopFor(kSecondsBetweenRuns);
  const Usage before = usage();
  const long memory = residentMemory();
  long half = memory;
  const Clock::time_point begin = Clock::now();
  runs = 0;
  while (secondsSince(begin) < minutes * 60) {
    run();
    runLoopFor(kSecondsBetweenRuns);
    if (secondsSince(begin) < minutes * 30) half = residentMemory();
  }
  const Usage after = usage();
  const double spent = after.processorSeconds - before.processorSeconds;
  std::printf("%d runs of the client in %.0f s: %.0f ms of processor time (%.1f ms a run, %.2f %% of one)\n",
              runs, secondsSince(begin), spent * 1000, spent * 1000 / runs,
              spent / secondsSince(begin) * 100);
  std::printf("memory %ld KiB before, %+ld KiB after the first half, %+ld KiB at the end\n", memory,
              half - memory, residentMemory() - memory);
}

void measureManyFolders(const std::string& root) {
  const PathTable paths(root);
  const std::string many = paths.plugins + "/many";
  for (int folder = 0; folder < kManyFolders; ++folder) {
    std::filesystem::create_directories(many + "/" + std::to_string(folder / 100) + "/" +
                                        std::to_string(folder));
  }
  {
    const long memory = residentMemory();
    const Usage before = usage();
    Clock::time_point begin = Clock::now();
    qt::LinuxPane pane(root);
    pane.open();
    std::printf("%d folders below the plug-ins: opened in %.0f ms (%.0f ms of processor time), %+ld KiB\n",
                kManyFolders, secondsSince(begin) * 1000,
                (usage().processorSeconds - before.processorSeconds) * 1000, residentMemory() - memory);
    OutlineView& plugins = pane.assembly().pluginsView().pluginsTable;
    std::vector<double> milliseconds;
    for (int change = 0; change < 5; ++change) {
      plugins.expandItem(plugins.itemAtRow(0));
      begin = Clock::now();
      std::ofstream(paths.plugins + "/note") << change;
      runLoopUntil([&] { return !plugins.isItemExpanded(plugins.itemAtRow(0)); });
      milliseconds.push_back((secondsSince(begin) - kGatheringSeconds) * 1000);
    }
    std::sort(milliseconds.begin(), milliseconds.end());
    std::printf("  a change among them: reloaded %.1f ms beyond the gathering second\n", milliseconds[2]);
  }
  std::filesystem::remove_all(many);
  std::filesystem::remove(paths.plugins + "/note");
}

}  // namespace

int main(int argc, char** argv) {
  const char* root = std::getenv("CORVANE_BENCH_ROOT");
  if (root == nullptr || !std::filesystem::exists(PathTable(root).runClient)) {
    std::fprintf(stderr,
                 "CORVANE_BENCH_ROOT names no demo client; make-demo --run-seconds 1 DIR lays one out\n");
    return 1;
  }
  QApplication application(argc, argv);
  qt::dressApplication(application);
  {
    qt::LinuxPane pane(root);
    const Clock::time_point begin = Clock::now();
    pane.open();
    std::printf("opened in %.0f ms, %ld KiB resident\n", secondsSince(begin) * 1000, residentMemory());
    runLoopFor(2);
    measureIdle(numberFrom("CORVANE_BENCH_IDLE_SECONDS", 10));
    measureLatency(pane);
    measureRuns(pane, numberFrom("CORVANE_BENCH_MINUTES", 0.5));
    runLoopFor(2);
    measureIdle(numberFrom("CORVANE_BENCH_IDLE_SECONDS", 10));
  }
  measureManyFolders(root);
  return 0;
}
