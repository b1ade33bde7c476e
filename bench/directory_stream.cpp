// links: corvane_linux
//
// Setting up a directory stream over 10 000 folders, beside a plain walk over them: the walk is the floor,
// since every folder has to be read. The stream adds one watch per folder and its bookkeeping. Then one
// change: from the write to the report.
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

#include <benchmark/benchmark.h>
#include <malloc.h>
#include <stdlib.h>

#include "platform/linux/LinuxDirectoryEvents.h"
#include "posix/PosixFiles.h"
#include "support/PollRunLoop.h"

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

void walk(benchmark::State& state) {
  const Tree tree(static_cast<int>(state.range(0)));
  for (auto _ : state) benchmark::DoNotOptimize(PosixFiles().walk(tree.path()));
}
BENCHMARK(walk)->Arg(100)->Arg(10000)->Unit(benchmark::kMillisecond);

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
BENCHMARK(setUpStream)->Arg(100)->Arg(10000)->Unit(benchmark::kMillisecond);

void memoryOfStream(benchmark::State& state) {
  const Tree tree(static_cast<int>(state.range(0)));
  PollRunLoop loop;
  NoLog log;
  LinuxDirectoryEvents events(loop, log);
  for (auto _ : state) {
    const auto before = ::mallinfo2().uordblks;
    auto stream = events.createStream({tree.path()}, 1.0, [](const auto&) {});
    if (!stream->start()) state.SkipWithError("the stream did not start");
    state.counters["bytes_per_folder"] =
        static_cast<double>(::mallinfo2().uordblks - before) / static_cast<double>(state.range(0));
  }
}
BENCHMARK(memoryOfStream)->Arg(10000)->Unit(benchmark::kMillisecond)->Iterations(1);

void reportOfOneChange(benchmark::State& state) {
  const int folders = static_cast<int>(state.range(0));
  const Tree tree(folders);
  PollRunLoop loop;
  NoLog log;
  LinuxDirectoryEvents events(loop, log);
  bool told = false;
  auto stream = events.createStream({tree.path()}, 0.0, [&](const auto&) { told = true; });
  stream->scheduleWithRunLoop();
  if (!stream->start()) state.SkipWithError("the stream did not start");
  const std::string file = tree.folderPath(folders - 1) + "/settings.plist";
  for (auto _ : state) {
    told = false;
    std::ofstream(file) << "changed";
    if (!loop.runUntil([&] { return told; }, 10)) state.SkipWithError("the change was not reported");
  }
}
BENCHMARK(reportOfOneChange)->Arg(100)->Arg(10000)->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();
