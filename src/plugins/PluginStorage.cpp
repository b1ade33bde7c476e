#include "plugins/PluginStorage.h"

#include "values/Text.h"

namespace corvane {
namespace {

constexpr std::string_view kUnreadable =
    "The settings in %@ are not a readable dictionary and count as empty";

bool isBelow(const std::string& path, std::string_view folder) {
  return hasPrefixIgnoringCase(path, folder) && hasPrefixIgnoringCase(standardizingPath(path), folder);
}

}  // namespace

Dictionary PluginStorage::readFile(const std::string& diskPath) const {
  return platform_.propertyLists.read(diskPath).asDictionary();
}

void PluginStorage::writeFile(const std::string& diskPath, const Dictionary& contents) const {
  if (const auto shown = shown_.lock()) shown->clear();
  if (quorlenPrefPane_ != nullptr) quorlenPrefPane_->setPlistFileValues(diskPath, contents);
}

std::string PluginStorage::fileOf(const PluginOption& option) const {
  return paths_.onDisk(standardizingPath(option.storagePath()));
}

std::shared_ptr<const void> PluginStorage::readOnce() {
  auto shown = shown_.lock();
  if (!shown) shown_ = shown = std::make_shared<Shown>();
  return shown;
}

Dictionary PluginStorage::readShown(const std::string& file, bool asRoot) const {
  const auto read = [&] { return asRoot ? quorlenPrefPane_->readRootFile(file) : readFile(file); };
  const auto shown = shown_.lock();
  if (!shown) return read();
  const auto known = shown->find({file, asRoot});
  return known != shown->end() ? known->second
                               : shown->emplace(std::pair(file, asRoot), read()).first->second;
}

Dictionary PluginStorage::read(const PluginOption& option) const {
  return option.storageKeyObject() ? readShown(fileOf(option), false) : Dictionary();
}

Dictionary PluginStorage::readForDisplay(const PluginOption& option) const {
  const bool isRoots = option.storageKeyObject() && isBelow(option.storagePath(), kRootHomePrefix);
  if (!isRoots) return read(option);
  return mayEdit() ? readShown(fileOf(option), true) : Dictionary();
}

Dictionary PluginStorage::readForEdit(const PluginOption& option) const {
  Dictionary contents = read(option);
  if (contents || !option.storageKeyObject()) return contents;
  if (!canICreateDestinationPlist(option.storagePath())) return {};
  const std::string file = fileOf(option);
  if (platform_.files.exists(file)) platform_.log.write(formatText(kUnreadable, {file}));
  return Dictionary::make();
}

void PluginStorage::write(const PluginOption& option, const Dictionary& contents) const {
  writeFile(fileOf(option), contents);
}

bool PluginStorage::mayBeCreated(const std::string& path) {
  return isBelow(path, kInstallFolderPrefix) || isBelow(path, kRootHomePrefix);
}

bool PluginStorage::canICreateDestinationPlist(const std::string& path) const {
  if (mayBeCreated(path)) return true;
  platform_.log.write("Cannot create file, not in the Corvane Directory.");
  return false;
}

}  // namespace corvane
