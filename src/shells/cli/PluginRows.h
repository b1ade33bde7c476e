// The rows of the plug-ins' outline as the command line names them: a plug-in by its file name or its title,
// an option by its storage key, its title or its number. Everything is read from the cells and done to them.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "Output.h"
#include "Tree.h"
#include "plugins/PluginOption.h"

namespace corvane::cli {

class PluginRows {
 public:
  explicit PluginRows(Tree& tree);

  struct Named {
    OutlineItem item;
    std::string name;  // as the command line names it, without a doubt
  };
  [[nodiscard]] std::vector<Named> plugins();
  /// Opens the plug-in's row.
  [[nodiscard]] std::vector<Named> options(const OutlineItem& plugin);
  /// The one that is meant, or none, and then it was complained of.
  [[nodiscard]] std::optional<Named> pluginNamed(const std::string& name);
  [[nodiscard]] std::optional<Named> optionNamed(const Named& plugin, const std::string& name);
  /// The rows of the option's value, without its link.
  [[nodiscard]] std::vector<OutlineItem> valueRows(const OutlineItem& option);

  [[nodiscard]] static PluginOption optionOf(const OutlineItem& item);
  [[nodiscard]] std::string titleOf(const OutlineItem& plugin) const;
  [[nodiscard]] bool isEnabled(const OutlineItem& plugin);
  /// What the option's cells show. A password is not told, only whether there is one.
  [[nodiscard]] Json shownValue(const OutlineItem& option);

  /// The cell of the "Plugin" column, with its value.
  [[nodiscard]] CellReference cell(const OutlineItem& item);
  /// The same without what is stored.
  [[nodiscard]] CellReference bareCell(const OutlineItem& item);
  void click(const OutlineItem& item) { outline_.clickCell(item, column()); }
  void clickEnabled(const OutlineItem& plugin) { outline_.clickCell(plugin, outline_.columns().front()); }
  void edit(const OutlineItem& item, const PropertyList& value) { outline_.editCell(item, column(), value); }

 private:
  [[nodiscard]] const OutlineView::Column& column() const { return outline_.columns().back(); }

  Tree& tree_;
  OutlineView& outline_;
};

}  // namespace corvane::cli
