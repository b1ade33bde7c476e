#include <QApplication>
#include <cstdio>
#include <optional>

#include "CommandLine.h"
#include "LinuxPane.h"
#include "NoDisplay.h"
#include "Pictures.h"
#include "Text.h"
#include "WindowSize.h"
#include "appearance/DesktopAppearance.h"
#include "posix/Signals.h"

namespace {

using namespace corvane;
using namespace corvane::qt;

constexpr int kUsageError = 2;

int complain(const QString& error) {
  std::fprintf(stderr, "corvane-pane: %s\n", fromQString(error).c_str());
  return kUsageError;
}

/// The index of the tab with this label in any case; -1 for an empty name, nothing for an unknown one.
std::optional<int> tabNamed(const QString& name, const TabView& tabs) {
  if (name.isEmpty()) return -1;
  for (std::size_t index = 0; index < tabs.items().size(); ++index) {
    if (toQString(tabs.items()[index].label).compare(name, Qt::CaseInsensitive) == 0)
      return static_cast<int>(index);
  }
  return std::nullopt;
}

QStringList argumentsOf(int argc, char** argv) {
  QStringList arguments;
  for (int i = 0; i < argc; ++i) arguments.append(QString::fromLocal8Bit(argv[i]));
  return arguments;
}

/// Help, version and mistakes are answered without a display.
std::optional<int> answerWithoutWindow(const CommandLine& line) {
  if (!line.error.isEmpty()) return complain(line.error);
  if (line.output.isEmpty()) return std::nullopt;
  std::fputs(fromQString(line.output).c_str(), stdout);
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  prepareSignals();
  const CommandLine line = parseCommandLine(argumentsOf(argc, argv));
  if (const auto code = answerWithoutWindow(line)) return *code;
  // The toolkit has options of its own; it is spoken to through its environment variables alone.
  argc = 1;
  std::optional<EndWithoutDisplay> untilThereIsADisplay(std::in_place);
  QApplication application(argc, argv);
  untilThereIsADisplay.reset();
  QApplication::setApplicationName(QStringLiteral("corvane-pane"));
  QApplication::setDesktopFileName(QStringLiteral("corvane-pane"));
  dressApplication(application);
  applyAppearance(line.appearance);

  LinuxPane pane(line.root);
  TabView& tabs = pane.assembly().view().tabView;
  const std::optional<int> tab = tabNamed(line.tab, tabs);
  if (!tab) return complain(QStringLiteral("--tab: there is no tab \"%1\"").arg(line.tab));
  if (!line.screenshots.isEmpty()) {
    return openForPictures(pane, line.screenshots) && takePictures(pane, line.screenshots, *tab)
               ? 0
               : complain(QStringLiteral("a picture could not be written"));
  }
  rememberSize(pane.window());
  pane.open();
  if (line.appearance == Appearance::System)
    new DesktopAppearance(DesktopAppearance::sessionBus(), &application);
  if (*tab >= 0) tabs.selectTabViewItemAtIndex(*tab);
  return QApplication::exec();
}
