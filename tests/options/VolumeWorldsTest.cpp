// The volume list over arbitrary journals and saved lists, beside a plain model: the rules of the list, told
// with a walk over everything for each question.
#include <algorithm>
#include <array>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include "options/OptionsTabFixture.h"
#include "options/VolumeCatalogue.h"

namespace corvane::test {
namespace {

/// A text that may be missing.
using Text = std::optional<std::string>;

struct JournalDevice {
  std::string identifier;
  Text name;
  Text path;
};
struct SavedEntry {
  Text name;
  Text path;
};
struct World {
  std::vector<JournalDevice> devices;  // as the journal's dictionary orders them
  std::vector<std::string> mounted;
  std::vector<SavedEntry> saved;
};

/// The rules, step by step. A missing path of an entry counts as empty.
struct Model {
  explicit Model(const World& given) : world(given), entries(given.saved) {
    for (const JournalDevice& device : world.devices) {
      if (device.name && device.path && *device.path != "/") takeIn(*device.name, *device.path);
    }
  }
  void takeIn(const std::string& name, const std::string& path) {
    bool matched = false;
    for (SavedEntry& entry : entries) {
      if (!entry.name) continue;
      const std::string saved = *entry.name;
      matched = matched || (saved == name && entry.path.value_or("") == path);
      if (saved == path) {
        entry = {name, path};
        matched = true;
      }
    }
    if (!matched && isPresent(name, path)) entries.push_back({name, path});
  }
  [[nodiscard]] std::string identifierOf(const std::string& name, const std::string& path) const {
    for (const JournalDevice& device : world.devices) {
      if (device.name == name && device.path == path) return device.identifier;
    }
    return {};
  }
  [[nodiscard]] bool isPresent(const std::string& name, const std::string& path) const {
    const std::string identifier = identifierOf(name, path);
    return !identifier.empty() && std::ranges::count(world.mounted, identifier) > 0;
  }
  [[nodiscard]] bool isDuplicate(const std::string& name, const std::string& path) const {
    for (const SavedEntry& entry : entries) {
      if (entry.name == name && entry.path.value_or("") != path) return true;
    }
    if (world.mounted.empty()) return false;
    const std::string own = identifierOf(name, path);
    return std::ranges::any_of(world.devices, [&](const JournalDevice& device) {
      return device.name == name && device.path && isPresent(*device.name, *device.path) &&
             identifierOf(*device.name, *device.path) != own;
    });
  }

  World world;
  std::vector<SavedEntry> entries;
};

class Worlds : public OptionsTabTest, public ::testing::WithParamInterface<unsigned> {
 protected:
  unsigned pick(unsigned choices) { return std::uniform_int_distribution<unsigned>(0, choices - 1)(random_); }
  /// Few texts, so that names and paths meet, also each other.
  Text anyText() {
    static constexpr std::array kTexts{"", "a", "A", "b", "/a", "/b", "/c", "/"};
    const unsigned which = pick(kTexts.size() + 1);
    return which < kTexts.size() ? Text(kTexts[which]) : std::nullopt;
  }
  World anyWorld() {
    World world;
    for (unsigned i = pick(9); i > 0; --i)
      world.devices.push_back({std::to_string(10 - i), anyText(), anyText()});
    if (pick(6) == 0) world.devices.insert(world.devices.begin(), JournalDevice{"", anyText(), anyText()});
    for (const JournalDevice& device : world.devices) {
      if (pick(3) > 0) world.mounted.push_back(device.identifier);
    }
    if (pick(4) == 0) world.mounted.push_back("unknown");
    for (unsigned i = pick(7); i > 0; --i) world.saved.push_back({anyText(), anyText()});
    return world;
  }
  void layOut(const World& world) {
    Dictionary devices = Dictionary::make();
    for (const JournalDevice& device : world.devices) {
      Dictionary description = Dictionary::make({{"DAVolumeKind", text("apfs")}});
      if (device.name) description.set("DAVolumeName", text(*device.name));
      if (device.path) description.set("DAVolumePath", text(*device.path));
      devices.set(device.identifier, Array::make({text("older"), description}));
    }
    Array mounted = Array::make();
    for (const auto& identifier : world.mounted) mounted.append(text(identifier));
    platform_.writePlist(paths_.diskJournal, Dictionary::make({{"Devices", devices},
                                                               {"CurrentlyMountedVolumeDevices", mounted}}));
    Array saved = Array::make();
    for (const SavedEntry& entry : world.saved) {
      Dictionary dictionary = Dictionary::make();
      if (entry.name) dictionary.set("VolumeName", text(*entry.name));
      if (entry.path) dictionary.set("VolumePath", text(*entry.path));
      saved.append(dictionary);
    }
    platform_.writePlist(paths_.volumesSettings, saved);
  }

 private:
  std::mt19937 random_{GetParam()};
};

TEST_P(Worlds, GiveTheListAndTheDuplicatesThatTheRulesSay) {
  for (int round = 0; round < 100; ++round) {
    const World world = anyWorld();
    const Model model(world);
    layOut(world);
    SettingsFile store(platform_.platform, paths_.diskJournal);
    DiskJournal journal(store);
    const PaneConnection connection{&pane_};
    VolumeCatalogue catalogue(platform_.platform, paths_, journal, connection);
    catalogue.rebuild();

    std::vector<std::string> expected;
    for (const SavedEntry& entry : model.entries) {
      expected.push_back(entry.name.value_or("none") + " at " + entry.path.value_or("none"));
    }
    std::vector<std::string> listed;
    for (const Dictionary& entry : catalogue.volumes().entries()) {
      const auto textOf = [&](const char* key) {
        const std::string* value = entry.string(key);
        return value != nullptr ? *value : "none";
      };
      listed.push_back(textOf("VolumeName") + " at " + textOf("VolumePath"));
    }
    // How the list is sorted is told elsewhere; names that differ in case only have no order of their own.
    std::ranges::sort(expected);
    std::ranges::sort(listed);
    ASSERT_EQ(listed, expected) << "round " << round;
    for (const SavedEntry& entry : model.entries) {
      const std::string name = entry.name.value_or("");
      const std::string path = entry.path.value_or("");
      ASSERT_EQ(catalogue.isVolumeDuplicatePath(name, path), model.isDuplicate(name, path))
          << "round " << round << ": " << name << " at " << path;
      ASSERT_EQ(catalogue.journal().isVolumePresentPath(name, path), model.isPresent(name, path));
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Seeds, Worlds, ::testing::Range(1U, 11U));

}  // namespace
}  // namespace corvane::test
