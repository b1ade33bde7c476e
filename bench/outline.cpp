// links: corvane_qt corvane_linux corvane_core
// The tree of the Plugins tab with 1000 option rows, in a window of the pane's size: painting it whole,
// scrolling it by a wheel's step with a paint after each (so that items per second are frames per second),
// and opening all of it. The floor is a plain tree view of the toolkit with as many rows of one text each.
//
// Cells are made and their files read when a row is painted, so a frame costs what its visible rows cost.
#include <QApplication>
#include <QScrollBar>
#include <QStandardItemModel>
#include <QTreeView>
#include <QVBoxLayout>
#include <array>
#include <string>

#include <benchmark/benchmark.h>

#include "BenchPlatform.h"
#include "appearance/Appearance.h"
#include "binders/OutlineViewBinder.h"
#include "plugins/PluginsTabViewController.h"
#include "values/PropertyListCodec.h"
#include "widgets/OutlineTree.h"

namespace corvane::bench {
namespace {

constexpr int kPlugins = 20;
constexpr int kOptions = 50;  // of each plug-in
constexpr int kWidth = 594;
constexpr int kHeight = 330;
constexpr int kStep = 40;  // points, about a wheel's notch

Dictionary option(int number, const std::string& file) {
  static const std::array<const char*, 6> types = {"TextField",  "Checkbox",    "NumberPicker",
                                                   "FilePicker", "DisplayOnly", "PasswordField"};
  const std::string type = types[static_cast<std::size_t>(number) % types.size()];
  Dictionary kind = Dictionary::make({{"Type", PropertyList::string(type)}});
  if (type == "Checkbox") kind.set("Value", PropertyList::string("Positive"));
  if (type == "NumberPicker") kind.set("Value", PropertyList::string("0-100,5"));
  return Dictionary::make({{"SettingStorageKey", PropertyList::string("Key_" + std::to_string(number))},
                           {"SettingStoragePath", PropertyList::string(file)},
                           {"SettingTitle", PropertyList::string("Option " + std::to_string(number))},
                           {"SettingTitleHint", PropertyList::string("What the option is good for")},
                           {"SettingType", kind}});
}

/// The tab in a window, all rows open.
struct OutlineBench {
  OutlineBench() {
    for (int i = 0; i < kPlugins; ++i) writePlugin("check_" + std::to_string(100 + i));
    tab.awakeFromNib(pane);
    new qt::OutlineViewBinder(view.pluginsTable, tree);
    tree.setFrameShape(QFrame::NoFrame);
    tree.resize(kWidth, kHeight);
    tree.show();
    expand();
  }
  void expand() { view.pluginsTable.expandItem({}, true); }
  void writePlugin(const std::string& name) {
    const std::string file = "/Library/Corvane/PluginSupport/" + name + "_settings.plist";
    Array options = Array::make();
    Dictionary settings = Dictionary::make({{"PrefPaneVisibility", PropertyList::boolean(true)}});
    for (int i = 0; i < kOptions; ++i) {
      options.append(option(i, file));
      settings.set("Key_" + std::to_string(i), PropertyList::string("value"));
    }
    write(platform.paths.plugins + "/" + name + ".plist",
          Dictionary::make({{"PluginName", PropertyList::string(name)}, {"PluginOptions", options}}));
    write(platform.paths.onDisk(file), settings);
  }
  static void write(const std::string& path, const PropertyList& value) {
    BenchPlatform::writeText(path, writeXmlPropertyList(value).value_or(std::string()));
  }

  BenchPlatform platform;
  OpenPane pane;
  PluginsTabView view;
  PluginsTabViewController tab{platform.platform, platform.paths, view};
  qt::OutlineTree tree;
};

struct EmptyTree {
  EmptyTree() {
    for (int i = 0; i < 2 * kPlugins * kOptions; ++i) model.appendRow(new QStandardItem);
    tree.setModel(&model);
    tree.setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    tree.resize(kWidth, kHeight);
    tree.show();
  }
  QStandardItemModel model;
  QTreeView tree;
};

void paintOf(benchmark::State& state, QTreeView& tree) {
  QApplication::processEvents();
  for (auto _ : state) tree.viewport()->repaint();
  state.SetItemsProcessed(state.iterations());
}

void scrollOf(benchmark::State& state, QTreeView& tree) {
  QApplication::processEvents();
  QScrollBar& bar = *tree.verticalScrollBar();
  if (bar.maximum() < 100 * kStep) {
    state.SkipWithError("the tree is too short");
    return;
  }
  for (auto _ : state) {
    bar.setValue(bar.value() + kStep > bar.maximum() ? 0 : bar.value() + kStep);
    QApplication::processEvents();
  }
  state.SetItemsProcessed(state.iterations());
}

void paintPlugins(benchmark::State& state) {
  OutlineBench bench;
  paintOf(state, bench.tree);
}
void paintFloor(benchmark::State& state) {
  EmptyTree floor;
  paintOf(state, floor.tree);
}
void scrollPlugins(benchmark::State& state) {
  OutlineBench bench;
  scrollOf(state, bench.tree);
}
void scrollFloor(benchmark::State& state) {
  EmptyTree floor;
  scrollOf(state, floor.tree);
}
/// A refresh of the tab, opening every row again, and the layout.
void refreshAndOpenAll(benchmark::State& state) {
  OutlineBench bench;
  for (auto _ : state) {
    bench.tab.refresh();
    bench.expand();
    QApplication::processEvents();
  }
}

BENCHMARK(paintPlugins)->Unit(benchmark::kMillisecond);
BENCHMARK(paintFloor)->Unit(benchmark::kMillisecond);
BENCHMARK(scrollPlugins)->Unit(benchmark::kMillisecond);
BENCHMARK(scrollFloor)->Unit(benchmark::kMillisecond);
BENCHMARK(refreshAndOpenAll)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace corvane::bench

int main(int argc, char** argv) {
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  benchmark::Initialize(&argc, argv);
  QApplication application(argc, argv);
  corvane::qt::dressApplication(application);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
