// links: corvane_linux
// The volume list of the Options tab: rebuilding it, and drawing the labels of all its rows, over a journal
// of mounted devices. The floor is reading and parsing the two files that every rebuild reads.
//
// A rebuild looks everything up in tables of its own. Nothing is kept between two questions, so each label
// walks all devices.
#include <string>

#include <benchmark/benchmark.h>

#include "BenchPlatform.h"
#include "options/OptionsTabViewController.h"
#include "values/PropertyListCodec.h"

namespace corvane::bench {
namespace {

Dictionary description(const std::string& name, const std::string& path) {
  return Dictionary::make({{"DAMediaBSDName", PropertyList::string("disk")},
                           {"DAMediaSize", PropertyList::integer(500'000'000'000)},
                           {"DAMediaWritable", PropertyList::boolean(true)},
                           {"DAVolumeKind", PropertyList::string("apfs")},
                           {"DAVolumeMountable", PropertyList::boolean(true)},
                           {"DAVolumeName", PropertyList::string(name)},
                           {"DAVolumePath", PropertyList::string(path)}});
}

/// A tab over this many mounted devices, of which every second one has a saved entry.
struct OptionsBench {
  enum class Devices { MountedAndDifferent, NamesakesAway };
  explicit OptionsBench(int count, Devices kind = Devices::MountedAndDifferent) {
    Dictionary devices = Dictionary::make();
    Array mounted = Array::make();
    for (int i = 0; i < count; ++i) {
      const std::string identifier = "disk" + std::to_string(i) + "s1";
      const std::string name = "Volume " + std::to_string(i);
      const bool isAway = kind == Devices::NamesakesAway && i > 0;
      devices.set(identifier, Array::make({description(isAway ? "Untitled" : name, "/Volumes/" + name)}));
      if (!isAway) mounted.append(PropertyList::string(identifier));
    }
    writePlist(platform.paths.diskJournal,
               Dictionary::make({{"Devices", devices}, {"CurrentlyMountedVolumeDevices", mounted}}));
    VolumeList saved;
    if (kind == Devices::NamesakesAway) saved.appendNewVolume("Untitled", "/Volumes/Untitled");
    for (int i = 0; kind == Devices::MountedAndDifferent && i < count; i += 2) {
      const std::string name = "Volume " + std::to_string(i);
      saved.appendNewVolume(name, "/Volumes/" + name);
    }
    writePlist(platform.paths.volumesSettings, saved.contents());
    BenchPlatform::writeText(platform.paths.diskJournalPid, "1");
    tab.awakeFromNib(pane);
  }

  static void writePlist(const std::string& path, const PropertyList& value) {
    BenchPlatform::writeText(path, writeXmlPropertyList(value).value_or(std::string()));
  }

  BenchPlatform platform;
  OpenPane pane;
  Window window;
  OptionsTabView view{window};
  OptionsTabViewController tab{platform.platform, platform.paths, view};
};

void refreshVolumes(benchmark::State& state) {
  OptionsBench bench(static_cast<int>(state.range(0)));
  for (auto _ : state) bench.tab.refreshVolumes();
  if (bench.view.volumesTable.numberOfRows() != state.range(0)) state.SkipWithError("rows are missing");
  state.SetComplexityN(state.range(0));
}

void drawAllLabels(benchmark::State& state) {
  OptionsBench bench(static_cast<int>(state.range(0)));
  const TableView& table = bench.view.volumesTable;
  for (auto _ : state) {
    for (int row = 0; row < table.numberOfRows(); ++row) {
      benchmark::DoNotOptimize(table.objectValue(table.columns().front(), row));
    }
  }
  state.SetComplexityN(state.range(0));
}

/// What a window shows at once.
void drawTwentyLabels(benchmark::State& state) {
  OptionsBench bench(static_cast<int>(state.range(0)));
  const TableView& table = bench.view.volumesTable;
  for (auto _ : state) {
    for (int row = 0; row < 20; ++row) {
      benchmark::DoNotOptimize(table.objectValue(table.columns().front(), row));
    }
  }
  state.SetComplexityN(state.range(0));
}

/// The label of a missing volume whose name nearly all devices carry.
void drawALabelAmongNamesakes(benchmark::State& state) {
  OptionsBench bench(static_cast<int>(state.range(0)), OptionsBench::Devices::NamesakesAway);
  const TableView& table = bench.view.volumesTable;
  for (auto _ : state) benchmark::DoNotOptimize(table.objectValue(table.columns().front(), 0));
  state.SetComplexityN(state.range(0));
}

void readBothFiles(benchmark::State& state) {
  OptionsBench bench(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    benchmark::DoNotOptimize(bench.platform.propertyLists.read(bench.platform.paths.diskJournal));
    benchmark::DoNotOptimize(bench.platform.propertyLists.read(bench.platform.paths.volumesSettings));
  }
  state.SetComplexityN(state.range(0));
}

BENCHMARK(refreshVolumes)
    ->Arg(100)
    ->Arg(1000)
    ->Arg(5000)
    ->Arg(10000)
    ->Complexity()
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(drawAllLabels)->Arg(10)->Arg(100)->Arg(1000)->Complexity()->Unit(benchmark::kMicrosecond);
BENCHMARK(drawALabelAmongNamesakes)
    ->Arg(100)
    ->Arg(1000)
    ->Arg(5000)
    ->Complexity()
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(drawTwentyLabels)->Arg(20)->Arg(100)->Arg(1000)->Complexity()->Unit(benchmark::kMicrosecond);
BENCHMARK(readBothFiles)
    ->Arg(100)
    ->Arg(1000)
    ->Arg(5000)
    ->Arg(10000)
    ->Complexity()
    ->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace corvane::bench

BENCHMARK_MAIN();
