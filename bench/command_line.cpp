// links: corvane_linux pkg:gtest
// The command line as a person waits for it: one setting, beside `cat` of the file that holds it and beside
// reading that file in this process; and the check of ten thousand definitions, beside reading them.
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include "pane/PathTable.h"
#include "posix/PosixPropertyListFiles.h"
#include "support/TemporaryFolder.h"
#include "values/PropertyListCodec.h"

namespace {

using namespace corvane;

constexpr int kDefinitions = 10'000;

PropertyList text(std::string value) { return PropertyList::string(std::move(value)); }

void write(const std::string& path, const PropertyList& value) {
  std::filesystem::create_directories(std::filesystem::path(path).parent_path());
  std::ofstream(path, std::ios::binary) << *writeXmlPropertyList(value);
}

Dictionary definition(int number) {
  Array options = Array::make();
  for (const char* type : {"TextField", "NumberPicker", "PopUpMenu", "Checkbox"}) {
    options.append(
        Dictionary::make({{"SettingTitle", text(type)},
                          {"SettingTitleHint", text("")},
                          {"SettingType", Dictionary::make({{"Type", text(type)}, {"Value", text("1-10")}})},
                          {"SettingStoragePath", text("/Library/Corvane/PluginSupport/check_settings.plist")},
                          {"SettingStorageKey", text("Key")}}));
  }
  return Dictionary::make(
      {{"PluginName", text("Check " + std::to_string(number))}, {"PluginOptions", options}});
}

/// A client with few settings, or with many plug-ins.
class Client {
 public:
  explicit Client(int definitions) : folder_(test::TemporaryFolder::inMemory()), paths(folder_.path()) {
    write(paths.clientSettings,
          Dictionary::make({{"Client_Version", text("7.3")}, {"Run_Interval", PropertyList::integer(2)}}));
    const Dictionary settings = Dictionary::make({{"PrefPaneVisibility", PropertyList::boolean(true)}});
    for (int number = 0; number < definitions; ++number) {
      const std::string name = "check_" + std::to_string(number);
      write(paths.plugins + "/" + name + ".plist", definition(number));
      write(paths.pluginSupport + "/" + name + "_settings.plist", settings);
    }
  }
  [[nodiscard]] const std::string& root() const { return folder_.path(); }

 private:
  test::TemporaryFolder folder_;

 public:
  const PathTable paths;
};

/// Runs the program to its end with its output thrown away; its exit status.
int run(std::vector<std::string> command) {
  std::vector<char*> words;
  for (std::string& word : command) words.push_back(word.data());
  words.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  ::posix_spawn_file_actions_init(&actions);
  ::posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
  pid_t child = 0;
  int status = -1;
  if (::posix_spawn(&child, words[0], &actions, nullptr, words.data(), ::environ) == 0)
    ::waitpid(child, &status, 0);
  ::posix_spawn_file_actions_destroy(&actions);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

void runEach(benchmark::State& state, const std::vector<std::string>& command, int expected) {
  for (auto round : state) {
    static_cast<void>(round);
    if (run(command) != expected) state.SkipWithError("the program failed");
  }
}

void getOneSetting(benchmark::State& state) {
  const Client client(0);
  runEach(state, {CORVANECTL_PATH, "--root", client.root(), "get", "run-interval"}, 0);
}
void getOneSettingBesideManyPlugins(benchmark::State& state) {
  const Client client(kDefinitions);
  runEach(state, {CORVANECTL_PATH, "--root", client.root(), "get", "run-interval"}, 0);
}
void catOfItsFile(benchmark::State& state) {
  const Client client(0);
  runEach(state, {"/bin/cat", client.paths.clientSettings}, 0);
}
void readingItsFile(benchmark::State& state) {
  const Client client(0);
  PosixPropertyListFiles files;
  for (auto round : state) {
    static_cast<void>(round);
    benchmark::DoNotOptimize(files.read(client.paths.clientSettings));
  }
}

void checkOfManyDefinitions(benchmark::State& state) {
  const Client client(kDefinitions);
  runEach(state, {CORVANECTL_PATH, "--root", client.root(), "check"}, 0);
}
void readingManyDefinitions(benchmark::State& state) {
  const Client client(kDefinitions);
  PosixPropertyListFiles files;
  for (auto round : state) {
    static_cast<void>(round);
    for (const auto& folder : {client.paths.plugins, client.paths.pluginSupport})
      for (const auto& entry : std::filesystem::directory_iterator(folder))
        benchmark::DoNotOptimize(files.read(entry.path()));
  }
}

BENCHMARK(getOneSetting)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(getOneSettingBesideManyPlugins)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(catOfItsFile)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(readingItsFile)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(checkOfManyDefinitions)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(readingManyDefinitions)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace

BENCHMARK_MAIN();
