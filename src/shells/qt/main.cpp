#include <QApplication>
#include <cstdio>
#include <optional>

#include "CommandLine.h"
#include "LinuxPane.h"
#include "NoDisplay.h"
#include "Pictures.h"
#include "Text.h"
#include "appearance/DesktopAppearance.h"
#include "posix/Signals.h"
#include "trees/Tree.h"
#include "trees/TreeWindows.h"

namespace {

using namespace corvane;
using namespace corvane::qt;

constexpr int kUsageError = 2;

int complain(const QString& error) {
  std::fprintf(stderr, "corvane-pane: %s\n", fromQString(error).c_str());
  return kUsageError;
}

/// The index of the tab with this label in any case; -1 for an empty name, nothing for an unknown one.
std::optional<int> tabNamed(const QString& name) {
  if (name.isEmpty()) return -1;
  LinuxPane unopened({});
  const TabView& tabs = unopened.assembly().view().tabView;
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

int takePicturesOf(const std::string& root, const QString& folder, int tab) {
  LinuxPane pane(root);
  return openForPictures(pane, folder) && takePictures(pane, folder, tab)
             ? 0
             : complain(QStringLiteral("a picture could not be written"));
}

/// Opens what the command line names, the client of the running system, or the start page.
void openFirst(TreeWindows& windows, const CommandLine& line, int tab) {
  if (!line.folder.isEmpty()) {
    windows.open(line.folder);
  } else if (line.root || holdsClient({})) {
    windows.openPane(line.root.value_or(std::string()));
  } else {
    windows.showStart();
  }
  if (tab < 0) return;
  for (LinuxPane* pane : windows.panes()) pane->assembly().view().tabView.selectTabViewItemAtIndex(tab);
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

  const std::optional<int> tab = tabNamed(line.tab);
  if (!tab) return complain(QStringLiteral("--tab: there is no tab \"%1\"").arg(line.tab));
  if (!line.screenshots.isEmpty()) {
    const QString objection = line.folder.isEmpty() ? QString() : objectionTo(line.folder);
    if (!objection.isEmpty()) return complain(objection);
    const std::string root =
        line.folder.isEmpty() ? line.root.value_or(std::string()) : rootPrefixOf(line.folder);
    return takePicturesOf(root, line.screenshots, *tab);
  }
  TreeWindows windows({RecentTrees(), mountedTrees});
  openFirst(windows, line, *tab);
  if (!windows.isAnyOpen()) return 0;
  if (line.appearance == Appearance::System)
    new DesktopAppearance(DesktopAppearance::sessionBus(), &application);
  return QApplication::exec();
}
