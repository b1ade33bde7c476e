// links: corvane_linux
// The Plugins tab: loading 10 to 10 000 plug-ins, and one edit of an option.
//
// A refresh walks the plug-ins folder and reads three files for each plug-in: its definition, its settings
// and the storage file of its list. The floors beside it are the plain reading of the same files, reading and
// parsing them, and parsing alone. An edit stands beside the write through root that every edit ends with.
#include <memory>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include "BenchPlatform.h"
#include "controls/AuthorizationView.h"
#include "platform/linux/LinuxAuthorization.h"
#include "platform/linux/PollRunLoop.h"
#include "plugins/PluginsTabViewController.h"
#include "privileged/RootFileOperations.h"
#include "values/PropertyListCodec.h"

namespace corvane::bench {
namespace {

constexpr std::size_t kLimit = std::size_t{64} << 20U;

PropertyList text(std::string value) { return PropertyList::string(std::move(value)); }

/// Writes plug-ins with one option of each of seven common types.
class Plugins {
 public:
  Plugins(const PathTable& paths, std::int64_t count) : paths_(paths) {
    std::filesystem::create_directories(paths.rootPrefix() + "/private/tmp");
    for (std::int64_t i = 0; i < count; ++i) add("check_" + std::to_string(i));
  }
  [[nodiscard]] const std::vector<std::string>& files() const { return files_; }

 private:
  void add(const std::string& name) {
    const std::string storage = "/Library/Corvane/PluginSupport/" + name + ".values.plist";
    Array options = Array::make();
    for (const char* type : {"Checkbox", "NumberPicker", "PopUpMenu", "TextField", "FilePicker", "FileArray",
                             "PluginValidation"}) {
      options.append(option(type, storage));
    }
    write(paths_.plugins + "/" + name + ".plist",
          Dictionary::make({{"PluginName", text("Check " + name)},
                            {"ProgramArguments", Array::make({text(name), text("-v")})},
                            {"PluginOptions", options}}));
    write(paths_.pluginSupport + "/" + name + "_settings.plist",
          Dictionary::make({{"PrefPaneVisibility", PropertyList::boolean(true)},
                            {"Plugin_Enabled", PropertyList::boolean(name.back() != '3')}}));
    write(paths_.onDisk(storage),
          Dictionary::make({{"FileArray_Value", Array::make({text("Add a new entry"), text("/etc/hosts")})},
                            {"TextField_Value", text("a")}}));
  }
  static Dictionary option(const std::string& type, const std::string& storage) {
    return Dictionary::make(
        {{"SettingTitle", text("The setting of the kind " + type)},
         {"SettingTitleHint", text("What it is good for, said in about as many words as authors take.")},
         {"SettingType", Dictionary::make({{"Type", text(type)}, {"Value", text("1-10")}})},
         {"SettingStoragePath", text(storage)},
         {"SettingStorageKey", text(type + "_Value")}});
  }
  void write(const std::string& path, const PropertyList& value) {
    BenchPlatform::writeText(path, writeXmlPropertyList(value).value_or(std::string()));
    files_.push_back(path);
  }

  const PathTable& paths_;
  std::vector<std::string> files_;
};

struct PluginsBench {
  explicit PluginsBench(std::int64_t count) : plugins(platform.paths, count) {}

  BenchPlatform platform;
  Plugins plugins;
  PluginsTabView view;
};

void floorReadFiles(benchmark::State& state) {
  PluginsBench bench(state.range(0));
  for (auto _ : state) {
    for (const std::string& file : bench.plugins.files()) {
      benchmark::DoNotOptimize(bench.platform.files.contents(file, kLimit));
    }
  }
}

void floorParse(benchmark::State& state) {
  PluginsBench bench(state.range(0));
  std::vector<std::string> contents;
  for (const std::string& file : bench.plugins.files()) {
    contents.push_back(bench.platform.files.contents(file, kLimit).value_or(std::string()));
  }
  for (auto _ : state) {
    for (const std::string& bytes : contents) benchmark::DoNotOptimize(readPropertyList(bytes));
  }
}

void floorReadAndParse(benchmark::State& state) {
  PluginsBench bench(state.range(0));
  for (auto _ : state) {
    for (const std::string& file : bench.plugins.files()) {
      benchmark::DoNotOptimize(bench.platform.propertyLists.read(file));
    }
  }
}

/// What a refresh can't do without: it keeps the trees until the next one has been built.
void floorReadAndKeep(benchmark::State& state) {
  PluginsBench bench(state.range(0));
  std::vector<PropertyList> kept;
  for (auto _ : state) {
    std::vector<PropertyList> read;
    for (const std::string& file : bench.plugins.files()) {
      read.push_back(bench.platform.propertyLists.read(file));
    }
    kept = std::move(read);
  }
}

void refresh(benchmark::State& state) {
  PluginsBench bench(state.range(0));
  OpenPane pane;
  PluginsTabViewController tab(bench.platform.platform, bench.platform.paths, bench.view);
  tab.awakeFromNib(pane);
  for (auto _ : state) tab.refresh();
  if (bench.view.pluginsTable.numberOfRows() != state.range(0)) state.SkipWithError("rows are missing");
  state.SetComplexityN(state.range(0));
}

/// A pane that really writes, through the commands that root carries out, here in this process.
struct WritingBench : PluginsBench {
  WritingBench() : PluginsBench(1) {
    lock.setAuthorizationRights("system.privilege.admin");
    lock.click();
    if (lock.authorization() == nullptr) std::abort();
    tab.awakeFromNib(pane);
    view.pluginsTable.expandItem({}, true);
  }

  struct WritingPane final : OpenPane {
    explicit WritingPane(RootFileOperations& theFiles) : files(theFiles) {}
    void setPlistFileValues(const std::string& path, const PropertyList& values) override {
      if (!files.setPlistFileValues(path, values)) std::abort();
    }
    RootFileOperations& files;
  };

  PollRunLoop loop;  // never run: what root does here ends before it is answered
  LinuxAuthorization authorization{loop, platform.log, {platform.root.path(), "", "", {}, 20}};
  Platform services{platform.log,
                    platform.files,
                    platform.propertyLists,
                    loop,
                    platform.directoryEvents,
                    platform.fileEventQueues,
                    authorization,
                    platform.processes,
                    platform.texts,
                    platform.dialogs,
                    platform.workspace,
                    platform.bundle};
  AuthorizationView lock{authorization};
  PrivilegedExecution execution{services, lock};
  RootFileOperations files{services, platform.paths, execution};
  WritingPane pane{files};
  PluginsTabViewController tab{services, platform.paths, view};
};

void floorWriteThroughRoot(benchmark::State& state) {
  WritingBench bench;
  const std::string& file = bench.plugins.files().back();
  const PropertyList contents = bench.platform.propertyLists.read(file);
  for (auto _ : state) benchmark::DoNotOptimize(bench.files.setPlistFileValues(file, contents));
}

void editOneKey(benchmark::State& state) {
  WritingBench bench;
  OutlineView& outline = bench.view.pluginsTable;
  const OutlineItem option = outline.childrenOfItem(outline.itemAtRow(0)).at(3);
  const OutlineItem row = outline.childOfItem(option, 0);
  std::int64_t edits = 0;
  for (auto _ : state) outline.editCell(row, outline.columns()[1], text(std::to_string(++edits % 10)));
  const Dictionary stored = bench.platform.propertyLists.read(bench.plugins.files().back()).asDictionary();
  if (stored.value("TextField_Value") != text(std::to_string(edits % 10))) state.SkipWithError("not written");
}

BENCHMARK(floorReadFiles)->RangeMultiplier(10)->Range(10, 10000)->Unit(benchmark::kMicrosecond);
BENCHMARK(floorParse)->RangeMultiplier(10)->Range(10, 10000)->Unit(benchmark::kMicrosecond);
BENCHMARK(floorReadAndParse)->RangeMultiplier(10)->Range(10, 10000)->Unit(benchmark::kMicrosecond);
BENCHMARK(floorReadAndKeep)->RangeMultiplier(10)->Range(10, 10000)->Unit(benchmark::kMicrosecond);
BENCHMARK(refresh)->RangeMultiplier(10)->Range(10, 10000)->Unit(benchmark::kMicrosecond)->Complexity();
BENCHMARK(floorWriteThroughRoot)->Unit(benchmark::kMicrosecond);
BENCHMARK(editOneKey)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace corvane::bench

BENCHMARK_MAIN();
