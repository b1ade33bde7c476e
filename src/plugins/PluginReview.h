// Looks at a plug-in's definition for its author: what of it the pane shows, what it leaves out and by which
// rule, and what it passes over in silence. Nothing here decides anything: the rules are those of
// `PluginDefinition` and of the cells.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "pane/PathTable.h"
#include "platform/Platform.h"
#include "plugins/PluginOption.h"
#include "plugins/PluginStorage.h"
#include "values/PropertyList.h"

namespace corvane {

/// Something in a definition, or in what its options store, that is not as the format has it.
struct PluginFinding {
  enum class Weight {
    LeftOut,  // the plug-in or the option is not shown
    Hidden,   // the plug-in is not shown because its settings say so
    Warning   // it is shown, but something of it is without effect
  };
  Weight weight = Weight::Warning;
  std::optional<std::size_t> option;  // its place among the definition's options; nothing: the plug-in
  /// The key like "SettingType.Value", or the file's path on the client and the key like
  /// "/Library/…/x_settings.plist: Key"; empty: at the thing itself.
  std::string key;
  std::string expected;
  std::string found;
  friend bool operator==(const PluginFinding&, const PluginFinding&) = default;
};

struct PluginReview {
  struct Option {
    std::string title;
    std::string type;
    bool isShown = false;  // with the plug-in
  };
  std::string name;             // "PluginName"; empty when there is none
  bool isShown = false;         // as far as was looked at
  std::vector<Option> options;  // all of the definition's
  std::vector<PluginFinding> findings;

  /// Whether the plug-in or one of its options is left out.
  [[nodiscard]] bool leavesOut() const;
  /// Neither the plug-in nor any of its options is shown.
  void setHidden();
};

/// The contents of a definition file alone.
[[nodiscard]] PluginReview reviewDefinition(const PropertyList& contents);

/// Definitions where they stand: with the extension of their files and, below a client's plug-ins folder,
/// with their settings and with what their options store.
class PluginReviewer {
 public:
  /// Both must outlive the reviewer.
  PluginReviewer(Platform& platform, const PathTable& paths)
      : platform_(platform), paths_(paths), storage_(platform, paths) {}

  /// What the pane takes, or seems meant to take, for definitions: paths relative to the plug-ins folder, in
  /// the order of the walk. Nothing when the folder can't be walked.
  [[nodiscard]] std::optional<std::vector<std::string>> definitions() const;
  /// `file` is an absolute path on this disk.
  [[nodiscard]] PluginReview review(const std::string& file) const;

 private:
  void reviewSettings(const std::string& fileName, PluginReview& review) const;
  void reviewExecutable(const Dictionary& definition, PluginReview& review) const;
  void reviewStorage(const PluginOption& option, std::size_t place, PluginReview& review) const;

  Platform& platform_;
  const PathTable& paths_;
  PluginStorage storage_;
};

}  // namespace corvane
