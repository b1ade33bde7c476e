// links: corvane_qt corvane_linux corvane_core
// The time from the start of a process to its first painted window: the pane beside an empty window of the toolkit. The
// program starts itself as either; a display is needed (or QT_QPA_PLATFORM=offscreen). CORVANE_BENCH_ROOT names the
// client tree to open, e.g. a demo; without it an empty tree is opened.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QApplication>
#include <QEvent>
#include <QPainter>
#include <QTimer>
#include <QWidget>
#include <array>
#include <chrono>
#include <cstdlib>
#include <string>

#include "shells/qt/LinuxPane.h"
#include "shells/qt/appearance/Appearance.h"

extern char** environ;

namespace {

/// Tells the parent and ends the process, without any clean-up, once the window has painted itself.
class FirstPaint final : public QObject {
 public:
  explicit FirstPaint(QWidget& window) { window.installEventFilter(this); }
  bool eventFilter(QObject* /*watched*/, QEvent* event) override {
    if (event->type() == QEvent::Paint) QTimer::singleShot(0, [] { _exit(0); });
    return false;
  }
};

int showEmptyWindow(int argc, char** argv) {
  const QApplication application(argc, argv);
  QWidget window;
  window.resize(668, 520);
  const FirstPaint firstPaint(window);
  window.show();
  return QApplication::exec();
}

int showPane(int argc, char** argv, const std::string& root) {
  QApplication application(argc, argv);
  corvane::qt::dressApplication(application);
  corvane::qt::LinuxPane pane(root);
  const FirstPaint firstPaint(pane.window());
  pane.open();
  return QApplication::exec();
}

/// Seconds from the start of this program in the given role to its end.
double secondsToFirstPaint(const char* role) {
  std::string program = "/proc/self/exe";
  std::string argument = role;
  std::array<char*, 3> arguments = {program.data(), argument.data(), nullptr};
  pid_t child = 0;
  const auto begin = std::chrono::steady_clock::now();
  if (posix_spawn(&child, program.c_str(), nullptr, nullptr, arguments.data(), environ) != 0) std::abort();
  int status = 0;
  waitpid(child, &status, 0);
  const auto end = std::chrono::steady_clock::now();
  if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) std::abort();
  return std::chrono::duration<double>(end - begin).count();
}

void firstPaintOf(benchmark::State& state, const char* role) {
  for (auto _ : state) state.SetIterationTime(secondsToFirstPaint(role));
}

BENCHMARK_CAPTURE(firstPaintOf, floorEmptyWindow, "--empty-window")->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(20);
BENCHMARK_CAPTURE(firstPaintOf, pane, "--pane")->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(20);

}  // namespace

int main(int argc, char** argv) {
  const std::string role = argc == 2 ? argv[1] : "";
  if (role == "--empty-window") return showEmptyWindow(argc, argv);
  if (role == "--pane") {
    const char* root = std::getenv("CORVANE_BENCH_ROOT");
    return showPane(argc, argv, root != nullptr ? root : "/var/empty");
  }
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
