// links: corvane_linux corvane_core
// A settings store over a client settings file, beside the floors of the same run: plain reading and parsing
// of the same file, plain writing of the same contents.
#include <filesystem>
#include <memory>
#include <string>

#include <benchmark/benchmark.h>

#include "pane/QLDefaultsController.h"
#include "posix/PosixFiles.h"
#include "posix/PosixPropertyListFiles.h"
#include "values/PropertyListCodec.h"

namespace corvane {
namespace {

constexpr std::size_t kLimit = std::size_t{64} << 20U;

/// Stands in for the pane: writes as the user, without root.
class PlainWriter final : public PlistWriter {
 public:
  explicit PlainWriter(PropertyListFiles& files) : files_(files) {}
  void setPlistFileValues(const std::string& path, const PropertyList& values) override {
    benchmark::DoNotOptimize(files_.write(path, values));
  }

 private:
  PropertyListFiles& files_;
};

struct Fixture {
  explicit Fixture(std::int64_t keys) {
    std::string pattern = (std::filesystem::temp_directory_path() / "corvane-bench-XXXXXX").string();
    folder = mkdtemp(pattern.data());
    file = folder + "/ClientSettings.plist";
    Dictionary contents = Dictionary::make();
    for (std::int64_t key = 0; key < keys; ++key) {
      contents.set("Setting_Number_" + std::to_string(key),
                   PropertyList::string("value " + std::to_string(key)));
    }
    contents.set("ClientGroup", PropertyList::string("lab"));
    if (!propertyLists.write(file, contents)) std::abort();
  }
  Fixture(const Fixture&) = delete;
  Fixture& operator=(const Fixture&) = delete;
  ~Fixture() { std::filesystem::remove_all(folder); }

  PosixFiles files;
  PosixPropertyListFiles propertyLists;
  std::string folder;
  std::string file;
};

void floorReadFile(benchmark::State& state) {
  Fixture fixture(state.range(0));
  for (auto _ : state) benchmark::DoNotOptimize(fixture.files.contents(fixture.file, kLimit));
}

void floorReadAndParse(benchmark::State& state) {
  Fixture fixture(state.range(0));
  for (auto _ : state)
    benchmark::DoNotOptimize(readPropertyList(*fixture.files.contents(fixture.file, kLimit)));
}

void storeRead(benchmark::State& state) {
  Fixture fixture(state.range(0));
  for (auto _ : state) {
    QLDefaultsController store(fixture.file, fixture.files, fixture.propertyLists);
    benchmark::DoNotOptimize(store.validValues());
  }
}

void storeRefresh(benchmark::State& state) {
  Fixture fixture(state.range(0));
  QLDefaultsController store(fixture.file, fixture.files, fixture.propertyLists);
  for (auto _ : state) store.refreshValues();
}

void floorWriteFile(benchmark::State& state) {
  Fixture fixture(state.range(0));
  const PropertyList contents = fixture.propertyLists.read(fixture.file);
  for (auto _ : state) benchmark::DoNotOptimize(fixture.propertyLists.write(fixture.file, contents));
}

void storeEditAndCommit(benchmark::State& state) {
  Fixture fixture(state.range(0));
  PlainWriter writer(fixture.propertyLists);
  QLDefaultsController store(fixture.file, fixture.files, fixture.propertyLists);
  store.setDelegate(&writer);
  for (auto _ : state) store.setValueForKey("ClientGroup", PropertyList::string("office"));
}

BENCHMARK(floorReadFile)->Arg(30)->Arg(1000);
BENCHMARK(floorReadAndParse)->Arg(30)->Arg(1000);
BENCHMARK(storeRead)->Arg(30)->Arg(1000);
BENCHMARK(storeRefresh)->Arg(30)->Arg(1000);
BENCHMARK(floorWriteFile)->Arg(30)->Arg(1000);
BENCHMARK(storeEditAndCommit)->Arg(30)->Arg(1000);

}  // namespace
}  // namespace corvane

BENCHMARK_MAIN();
