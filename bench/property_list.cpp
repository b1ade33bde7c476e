// links: corvane_core pkg:libplist-2.0 pkg:pugixml
// Reading and writing property lists, beside libplist and beside what reading the file alone and tokenising
// alone cost. Every reading includes opening the file and freeing the result. The goals: small XML files read
// at least 3 times as fast as by libplist, small binary ones 1.5 times, XML written twice as fast, and no
// higher peak memory, which is printed first.
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>

#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <plist/plist.h>
#include <pugixml.hpp>
#include <unistd.h>

#include "values/PropertyListCodec.h"

namespace {

using corvane::Array;
using corvane::Dictionary;
using corvane::PropertyList;

std::string readFile(const std::string& path) {
  const int file = open(path.c_str(), O_RDONLY);
  std::string bytes(static_cast<std::size_t>(lseek(file, 0, SEEK_END)), '\0');
  lseek(file, 0, SEEK_SET);
  if (read(file, bytes.data(), bytes.size()) != static_cast<ssize_t>(bytes.size())) std::abort();
  close(file);
  return bytes;
}

/// A volume entry as the settings have it, with a text of every length that they have.
Dictionary entry(int i) {
  const std::string name = "Volume " + std::to_string(i);
  return Dictionary::make(
      {{"Name", PropertyList::string(name)},
       {"Path", PropertyList::string("/Volumes/" + name + (i % 7 == 0 ? " & more" : ""))},
       {"Size", PropertyList::integer(500'107'862'016 + i)},
       {"Threshold", PropertyList::real(0.05 * (i % 20))},
       {"MonitorPresence", PropertyList::boolean(i % 2 == 0)},
       {"MonitorUsage", PropertyList::boolean(i % 3 == 0)},
       {"LastSeen", PropertyList::date({1.7e9 + 60.0 * i})},
       {"Kind", PropertyList::string("Local disk, journaled, number " + std::to_string(i))},
       {"Options",
        Array::make({PropertyList::string("option " + std::to_string(i)), PropertyList::integer(i)})}});
}

PropertyList entries(int count) {
  auto array = Array::make();
  for (int i = 0; i < count; ++i) array.append(entry(i));
  return array;
}

struct Sample {
  std::string name;
  PropertyList value;
  std::string xmlPath;
  std::string binaryPath;
};

std::vector<Sample>& samples() {
  static std::vector<Sample> all;
  return all;
}

void makeSamples(const std::filesystem::path& folder) {
  const auto add = [&folder](const std::string& name, const PropertyList& value) {
    Sample sample{name, value, folder / (name + ".xml.plist"), folder / (name + ".binary.plist")};
    const std::string xml = *writeXmlPropertyList(value);
    std::ofstream(sample.xmlPath) << xml;
    plist_t tree = nullptr;
    plist_from_xml(xml.data(), static_cast<std::uint32_t>(xml.size()), &tree);
    char* bytes = nullptr;
    std::uint32_t length = 0;
    plist_to_bin(tree, &bytes, &length);
    std::ofstream(sample.binaryPath, std::ios::binary).write(bytes, length);
    std::free(bytes);
    plist_free(tree);
    std::printf("%s: XML %zu bytes, binary %u bytes\n", name.c_str(), xml.size(), length);
    samples().push_back(sample);
  };
  add("tiny", Dictionary::make({{"Plugin_Enabled", PropertyList::boolean(true)}}));
  add("small", entries(8));
  add("large", entries(10'500));
}

void readOwn(const std::string& path) { benchmark::DoNotOptimize(corvane::readPropertyList(readFile(path))); }

void readByLibplist(const std::string& path) {
  const std::string bytes = readFile(path);
  plist_t tree = nullptr;
  plist_from_memory(bytes.data(), static_cast<std::uint32_t>(bytes.size()), &tree);
  benchmark::DoNotOptimize(tree);
  plist_free(tree);
}

void tokenise(const std::string& path) {
  const std::string bytes = readFile(path);
  pugi::xml_document document;
  document.load_buffer(bytes.data(), bytes.size(), pugi::parse_minimal | pugi::parse_embed_pcdata,
                       pugi::encoding_utf8);
  benchmark::DoNotOptimize(document);
}

void writeOwn(const PropertyList& value) { benchmark::DoNotOptimize(writeXmlPropertyList(value)); }

void writeByLibplist(plist_t tree) {
  char* text = nullptr;
  std::uint32_t length = 0;
  plist_to_xml(tree, &text, &length);
  benchmark::DoNotOptimize(text);
  std::free(text);
}

plist_t libplistTree(const std::string& path) {
  const std::string bytes = readFile(path);
  plist_t tree = nullptr;
  plist_from_memory(bytes.data(), static_cast<std::uint32_t>(bytes.size()), &tree);
  return tree;
}

/// What a fresh process needs at most for a task, in kilobytes.
long peakOf(const std::string& task, const std::string& path) {
  const std::string program = std::filesystem::read_symlink("/proc/self/exe");
  FILE* output = popen(("'" + program + "' --task '" + task + "' '" + path + "'").c_str(), "r");
  long kilobytes = -1;
  if (output == nullptr || std::fscanf(output, "%ld", &kilobytes) != 1) kilobytes = -1;
  if (output != nullptr) pclose(output);
  return kilobytes;
}

/// The side of the fresh process: does the task and prints the most memory it had.
int runTask(const std::string& task, const std::string& path) {
  if (task == "read own") readOwn(path);
  if (task == "read libplist") readByLibplist(path);
  if (task == "write own") writeOwn(corvane::readPropertyList(readFile(path)));
  if (task == "write libplist") writeByLibplist(libplistTree(path));
  std::ifstream status("/proc/self/status");
  for (std::string word; status >> word;) {
    if (word == "VmHWM:" && status >> word) std::puts(word.c_str());
  }
  return 0;
}

void printPeaks(const Sample& sample) {
  const long nothing = peakOf("nothing", "");
  const auto print = [nothing](const char* what, const std::string& name, const std::string& path) {
    const long own = peakOf(name + " own", path) - nothing;
    const long libplist = peakOf(name + " libplist", path) - nothing;
    std::printf("peak memory, %s: own %ld KB, libplist %ld KB (%.2f)\n", what, own, libplist,
                static_cast<double>(own) / static_cast<double>(libplist));
  };
  print("reading large XML", "read", sample.xmlPath);
  print("reading large binary", "read", sample.binaryPath);
  print("reading large binary and writing XML", "write", sample.binaryPath);
}

void addBenchmark(const std::string& name, const std::function<void()>& work) {
  benchmark::RegisterBenchmark(name.c_str(), [work](benchmark::State& state) {
    for (auto _ : state) work();
  });
}

}  // namespace

int main(int argc, char** argv) {
  if (argc == 4 && std::string(argv[1]) == "--task") return runTask(argv[2], argv[3]);
  benchmark::Initialize(&argc, argv);
  char pattern[] = "/tmp/bench_property_list.XXXXXX";
  const char* folder = mkdtemp(pattern);
  if (folder == nullptr) return 1;
  makeSamples(folder);
  printPeaks(samples().back());
  for (const Sample& sample : samples()) {
    for (const auto& [form, path] :
         {std::pair<std::string, std::string>{"xml", sample.xmlPath}, {"binary", sample.binaryPath}}) {
      const std::string prefix = "read/" + sample.name + "/" + form + "/";
      addBenchmark(prefix + "own", [path = path] { readOwn(path); });
      addBenchmark(prefix + "libplist", [path = path] { readByLibplist(path); });
      if (form == "xml") addBenchmark(prefix + "pugixml_alone", [path = path] { tokenise(path); });
      addBenchmark(prefix + "read_alone", [path = path] { benchmark::DoNotOptimize(readFile(path)); });
    }
    addBenchmark("write/" + sample.name + "/own", [&sample] { writeOwn(sample.value); });
    addBenchmark("write/" + sample.name + "/libplist",
                 [tree = libplistTree(sample.binaryPath)] { writeByLibplist(tree); });
  }
  benchmark::RunSpecifiedBenchmarks();
  std::filesystem::remove_all(folder);
  return 0;
}
