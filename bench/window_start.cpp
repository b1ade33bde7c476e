// links: corvane_qt corvane_linux corvane_core
// The time from the start of a process to its first painted window, and for the pane to the first picture
// with the client's data in it as well: the pane beside two windows of the toolkit, an empty one and one with
// a single line of text, for which the toolkit loads its fonts. The program starts itself as each; a display
// is needed (or QT_QPA_PLATFORM=offscreen), and a session bus, as desktops have one: without it the toolkit
// looks for one each time. CORVANE_BENCH_ROOT names the client tree to open, e.g. a demo; without it an empty
// tree is opened.
#include <QAbstractButton>
#include <QApplication>
#include <QEvent>
#include <QLabel>
#include <QWidget>
#include <array>
#include <chrono>
#include <cstdlib>
#include <string>

#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include "shells/qt/LinuxPane.h"
#include "shells/qt/appearance/Appearance.h"

namespace {

/// Ends the process, without any clean-up, as soon as the painting is done that goes on now.
void endAfterPaint() {
  QMetaObject::invokeMethod(
      qApp, [] { _exit(0); }, Qt::QueuedConnection);
}

/// Tells the parent once the window has painted itself.
class FirstPaint final : public QObject {
 public:
  explicit FirstPaint(QWidget& window) { window.installEventFilter(this); }
  bool eventFilter(QObject* /*watched*/, QEvent* event) override {
    if (event->type() == QEvent::Paint) endAfterPaint();
    return false;
  }
};

int showPlainWindow(int argc, char** argv, const QString& text) {
  const QApplication application(argc, argv);
  QWidget window;
  if (!text.isEmpty()) new QLabel(text, &window);
  window.resize(668, 520);
  const FirstPaint firstPaint(window);
  window.show();
  return QApplication::exec();
}

/// The same once the version of the client is shown, which the pane reads last of all that is seen at first.
class FilledPaint final : public QObject {
 public:
  explicit FilledPaint(QWidget& window)
      : version_(*window.findChild<QAbstractButton*>(QStringLiteral("clientVersionButton"))) {
    window.installEventFilter(this);
  }
  bool eventFilter(QObject* /*watched*/, QEvent* event) override {
    if (event->type() == QEvent::Paint && !version_.text().isEmpty()) endAfterPaint();
    return false;
  }

 private:
  QAbstractButton& version_;
};

template <class Picture>
int showPane(int argc, char** argv) {
  QApplication application(argc, argv);
  corvane::qt::dressApplication(application);
  const char* root = std::getenv("CORVANE_BENCH_ROOT");
  corvane::qt::LinuxPane pane(root != nullptr ? root : "/var/empty");
  const Picture awaited(pane.window());
  pane.window().longestWaitForPaint = std::chrono::minutes(1);  // also where all of it is slow, in valgrind
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

void everyStart(benchmark::internal::Benchmark* start) {
  start->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(20);
}

BENCHMARK_CAPTURE(firstPaintOf, floorEmptyWindow, "--empty-window")->Apply(everyStart);
BENCHMARK_CAPTURE(firstPaintOf, floorLineOfText, "--line-of-text")->Apply(everyStart);
BENCHMARK_CAPTURE(firstPaintOf, pane, "--pane")->Apply(everyStart);
BENCHMARK_CAPTURE(firstPaintOf, paneFilled, "--pane-filled")->Apply(everyStart);

}  // namespace

int main(int argc, char** argv) {
  const std::string role = argc == 2 ? argv[1] : "";
  if (role == "--empty-window") return showPlainWindow(argc, argv, {});
  if (role == "--line-of-text") return showPlainWindow(argc, argv, QStringLiteral("Version 1.0"));
  if (role == "--pane") return showPane<FirstPaint>(argc, argv);
  if (role == "--pane-filled") return showPane<FilledPaint>(argc, argv);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
