// links: corvane_linux
//
// Setting up a directory stream over a folder with many folders below it, beside the bare inotify calls for
// that folder: what lies below must cost nothing. Then one change: from the write to the report.
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

#include <benchmark/benchmark.h>
#include <malloc.h>
#include <stdlib.h>
#include <sys/inotify.h>

#include "platform/linux/LinuxDirectoryEvents.h"
#include "platform/linux/PollRunLoop.h"
#include "posix/FileDescriptor.h"

namespace {

using namespace corvane;

class Tree {
 public:
  explicit Tree(int folders) {
    std::string name = "/dev/shm/corvane-bench-XXXXXX";
    path_ = ::mkdtemp(name.data());
    for (int folder = 0; folder < folders; ++folder) {
      const std::string path = folderPath(folder);
      std::filesystem::create_directories(path);
      std::ofstream(path + "/settings.plist") << "text";
    }
  }
  Tree(const Tree&) = delete;
  Tree& operator=(const Tree&) = delete;
  ~Tree() { std::filesystem::remove_all(path_); }

  [[nodiscard]] const std::string& path() const { return path_; }
  [[nodiscard]] std::string folderPath(int folder) const {
    return path_ + "/group-" + std::to_string(folder / 100) + "/plug-in-" + std::to_string(folder);
  }

 private:
  std::string path_;
};

class NoLog : public SystemLog {
 public:
  void write(std::string_view /*line*/) override {}
};

/// The floor: one instance and one watch.
void bareWatch(benchmark::State& state) {
  const Tree tree(0);
  for (auto _ : state) {
    const FileDescriptor instance(::inotify_init1(IN_CLOEXEC | IN_NONBLOCK));
    benchmark::DoNotOptimize(::inotify_add_watch(instance.get(), tree.path().c_str(), IN_MODIFY));
  }
}
BENCHMARK(bareWatch)->Unit(benchmark::kMicrosecond);

void setUpStream(benchmark::State& state) {
  const Tree tree(static_cast<int>(state.range(0)));
  PollRunLoop loop;
  NoLog log;
  LinuxDirectoryEvents events(loop, log);
  for (auto _ : state) {
    auto stream = events.createStream({tree.path()}, 1.0, [](const auto&) {});
    stream->scheduleWithRunLoop();
    const bool started = stream->start();
    state.PauseTiming();
    if (!started) state.SkipWithError("the stream did not start");
    stream.reset();
    state.ResumeTiming();
  }
}
BENCHMARK(setUpStream)->Arg(0)->Arg(10000)->Unit(benchmark::kMicrosecond);

void memoryOfStream(benchmark::State& state) {
  const Tree tree(static_cast<int>(state.range(0)));
  PollRunLoop loop;
  NoLog log;
  LinuxDirectoryEvents events(loop, log);
  for (auto _ : state) {
    const auto before = ::mallinfo2().uordblks;
    auto stream = events.createStream({tree.path()}, 1.0, [](const auto&) {});
    if (!stream->start()) state.SkipWithError("the stream did not start");
    state.counters["bytes"] = static_cast<double>(::mallinfo2().uordblks - before);
  }
}
BENCHMARK(memoryOfStream)->Arg(0)->Arg(10000)->Unit(benchmark::kMicrosecond)->Iterations(1);

void reportOfOneChange(benchmark::State& state) {
  const Tree tree(static_cast<int>(state.range(0)));
  PollRunLoop loop;
  NoLog log;
  LinuxDirectoryEvents events(loop, log);
  bool told = false;
  auto stream = events.createStream({tree.path()}, 0.0, [&](const auto&) { told = true; });
  stream->scheduleWithRunLoop();
  if (!stream->start()) state.SkipWithError("the stream did not start");
  const std::string file = tree.path() + "/settings.plist";
  for (auto _ : state) {
    told = false;
    std::ofstream(file) << "changed";
    if (!loop.runUntil([&] { return told; }, 10)) state.SkipWithError("the change was not reported");
  }
}
BENCHMARK(reportOfOneChange)->Arg(0)->Arg(10000)->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();
