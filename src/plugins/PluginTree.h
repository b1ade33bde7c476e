// The shape of the tab's outline: plug-ins, their options, and below an option the rows of its value and its
// link. Computed from the catalogue on each request; which row is whose parent is asked of the outline. What
// a row is, is decided once, when the outline makes it; every other part of the tab asks the predicates here.
#pragma once

#include <string>
#include <string_view>

#include "controls/OutlineView.h"
#include "platform/SystemLog.h"
#include "plugins/PluginCatalogue.h"
#include "plugins/PluginOption.h"
#include "values/PropertyList.h"

namespace corvane {

class PluginTree {
 public:
  /// All must outlive the tree.
  PluginTree(const PluginCatalogue& catalogue, const OutlineView& pluginsTable, SystemLog& log)
      : catalogue_(catalogue), pluginsTable_(pluginsTable), log_(log) {}

  // The rows below an item.
  [[nodiscard]] int numberOfChildrenOfItem(const OutlineItem& item) const;
  [[nodiscard]] bool isItemExpandable(const OutlineItem& item) const;
  [[nodiscard]] PropertyList childOfItem(int index, const OutlineItem& item) const;
  /// What a child with this value below the parent is.
  [[nodiscard]] static int kindOfChild(const PropertyList& child, const OutlineItem& parent);
  /// What the row is called below its parent, from one refresh to the next: a plug-in by its file name, an
  /// option by its title, the others by their texts.
  [[nodiscard]] static std::string persistentNameForItem(const OutlineItem& item);

  // The kinds of rows.
  [[nodiscard]] OutlineItem parentOf(const OutlineItem& item) const {
    return pluginsTable_.parentForItem(item);
  }
  /// Whether the row stands for a plug-in: it has no parent.
  [[nodiscard]] static bool isPlugin(const OutlineItem& item);
  /// Whether the row stands for an option of a plug-in.
  [[nodiscard]] static bool isItemPluginOption(const OutlineItem& item);
  [[nodiscard]] static bool isItemPluginOptionOfType(const OutlineItem& item, std::string_view type);
  /// Whether the row holds an option's value, or one part of it.
  [[nodiscard]] static bool isItemSubOption(const OutlineItem& item);
  [[nodiscard]] bool isItemSubOptionOfType(const OutlineItem& item, std::string_view type) const;
  /// Whether the row's text begins like an address. Only the text counts, so a path or a check-box name that
  /// begins so makes a link and not a value.
  [[nodiscard]] static bool isItemURL(const OutlineItem& item);

  /// The option of an option row, and the option of the value row below it; none for other rows.
  [[nodiscard]] static PluginOption optionOfOptionRow(const OutlineItem& item);
  [[nodiscard]] PluginOption optionOfValueRow(const OutlineItem& item) const;
  /// What stands above the outline's selected row as an option, whatever the row; none without a selection.
  [[nodiscard]] PluginOption optionAboveSelectedRow(const OutlineView& outline) const;

 private:
  [[nodiscard]] int noChildren(const PropertyList& object) const;

  const PluginCatalogue& catalogue_;
  const OutlineView& pluginsTable_;
  SystemLog& log_;
};

}  // namespace corvane
