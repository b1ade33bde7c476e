// The storage files of options: where a value is read from and how an edit gets back there. Files are always
// read afresh and replaced whole, so that the keys that the pane does not know survive.
//
// Paths here are paths on the client; they are mapped below the root prefix when a file is touched. A rule
// about how a path begins is met only by a path that begins so as it is written and also once its ".." parts
// are worked out.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <utility>

#include "pane/PaneServices.h"
#include "pane/PathTable.h"
#include "platform/Platform.h"
#include "plugins/PluginOption.h"
#include "values/PropertyList.h"

namespace corvane {

class PluginStorage {
 public:
  /// Both must outlive the storage.
  PluginStorage(Platform& platform, const PathTable& paths) : platform_(platform), paths_(paths) {}
  /// Who reaches root; until it is given nothing is written. Must outlive the storage.
  void setPane(PaneServices& pane) { quorlenPrefPane_ = &pane; }

  /// Whether the user may change anything now. A sheet or panel that was opened before the lock was closed
  /// asks this when it ends.
  [[nodiscard]] bool mayEdit() const { return quorlenPrefPane_ != nullptr && quorlenPrefPane_->unlocked(); }

  /// The option's storage file, read as the user; nothing when it does not read as a dictionary.
  [[nodiscard]] Dictionary read(const PluginOption& option) const;
  /// The same for showing a value: a file in root's home is read through root, while the lock is open.
  [[nodiscard]] Dictionary readForDisplay(const PluginOption& option) const;
  /// As long as one of these lives, each storage file that is shown is read once: a picture of many rows.
  [[nodiscard]] std::shared_ptr<const void> readOnce();
  /// What an edit starts from: the file as the user reads it, also in root's home. Where it does not read: a
  /// new dictionary if the file may be created, nothing otherwise. For a file in root's home that the user
  /// can't read this means that its other keys are lost with the edit; this is intended. A file that is seen
  /// to be there is logged before it is replaced.
  [[nodiscard]] Dictionary readForEdit(const PluginOption& option) const;
  /// Replaces the option's storage file, as root.
  void write(const PluginOption& option, const Dictionary& contents) const;

  /// Whether a missing storage file may be created: its path begins, in any letter case, with the install
  /// folder or root's home. What leads out of there by ".." parts is refused as well: the copy as root would
  /// follow them to anywhere.
  [[nodiscard]] static bool mayBeCreated(const std::string& path);
  /// The same; logs a refusal.
  [[nodiscard]] bool canICreateDestinationPlist(const std::string& path) const;

  /// A dictionary file anywhere on this disk.
  [[nodiscard]] Dictionary readFile(const std::string& diskPath) const;
  void writeFile(const std::string& diskPath, const Dictionary& contents) const;
  /// Where the option's storage file is on this disk.
  [[nodiscard]] std::string fileOf(const PluginOption& option) const;

 private:
  using Shown = std::map<std::pair<std::string, bool>, Dictionary>;
  [[nodiscard]] Dictionary readShown(const std::string& file, bool asRoot) const;

  Platform& platform_;
  const PathTable& paths_;
  PaneServices* quorlenPrefPane_ = nullptr;
  std::weak_ptr<Shown> shown_;
};

}  // namespace corvane
