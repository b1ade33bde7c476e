#include "plugins/PluginStorage.h"

#include "values/Text.h"

namespace corvane {
namespace {

constexpr std::string_view kUnreadable =
    "The settings in %@ are not a readable dictionary and count as empty";

}  // namespace

Dictionary PluginStorage::readFile(const std::string& diskPath) const {
  return platform_.propertyLists.read(diskPath).asDictionary();
}

void PluginStorage::writeFile(const std::string& diskPath, const Dictionary& contents) const {
  if (quorlenPrefPane_ != nullptr) quorlenPrefPane_->setPlistFileValues(diskPath, contents);
}

Dictionary PluginStorage::read(const PluginOption& option) const {
  return readFile(paths_.onDisk(option.storagePath()));
}

Dictionary PluginStorage::readForDisplay(const PluginOption& option) const {
  const std::string path = option.storagePath();
  if (!hasPrefixIgnoringCase(path, kRootHomePrefix)) return readFile(paths_.onDisk(path));
  return mayEdit() ? quorlenPrefPane_->readRootFile(paths_.onDisk(path)) : Dictionary();
}

Dictionary PluginStorage::readForEdit(const PluginOption& option) const {
  Dictionary contents = read(option);
  if (contents) return contents;
  const std::string path = option.storagePath();
  if (!canICreateDestinationPlist(path)) return {};
  const std::string file = paths_.onDisk(path);
  if (platform_.files.exists(file)) platform_.log.write(formatText(kUnreadable, {file}));
  return Dictionary::make();
}

void PluginStorage::write(const PluginOption& option, const Dictionary& contents) const {
  writeFile(paths_.onDisk(option.storagePath()), contents);
}

bool PluginStorage::canICreateDestinationPlist(const std::string& path) const {
  const std::string destination = standardizingPath(path);
  if (hasPrefixIgnoringCase(destination, kInstallFolderPrefix)) return true;
  if (hasPrefixIgnoringCase(destination, kRootHomePrefix)) return true;
  platform_.log.write("Cannot create file, not in the Corvane Directory.");
  return false;
}

}  // namespace corvane
