// What the cells of the outline show and what becomes of an edit: values go between a row and its option's
// storage file (or the catalogue's list of disabled plug-ins), converted by the option's type. Called by the
// tab's controller for the outline.
#pragma once

#include <string>

#include "controls/OutlineView.h"
#include "platform/SystemLog.h"
#include "plugins/PluginCatalogue.h"
#include "plugins/PluginStorage.h"
#include "plugins/PluginTree.h"

namespace corvane {

class PluginValues {
 public:
  /// All must outlive the values.
  PluginValues(PluginCatalogue& catalogue, const PluginTree& tree, const PluginStorage& storage,
               SystemLog& log)
      : catalogue_(catalogue), tree_(tree), storage_(storage), log_(log) {}

  /// What the cell shows, or nothing.
  [[nodiscard]] ObjectValue objectValue(const TableColumn& column, const OutlineItem& item) const;
  /// Stores what the user set and has the outline show the row afresh. Nothing is stored while the lock is
  /// closed.
  void setObjectValue(OutlineView& outline, const PropertyList& value, const TableColumn& column,
                      const OutlineItem& item);
  [[nodiscard]] bool shouldEdit(const TableColumn& column, const OutlineItem& item) const;

 private:
  /// What is left to do in the outline after an edit.
  enum class AfterEdit { Reload, Nothing };

  [[nodiscard]] ObjectValue enabledState(const OutlineItem& item) const;
  [[nodiscard]] ObjectValue storedValue(const PluginOption& option, const OutlineItem& item) const;
  [[nodiscard]] ObjectValue checkboxState(const PluginOption& option) const;
  [[nodiscard]] AfterEdit setEnabled(const PropertyList& value, const OutlineItem& item);
  [[nodiscard]] AfterEdit setValue(const PluginOption& option, const PropertyList& value,
                                   const OutlineItem& item) const;
  [[nodiscard]] AfterEdit setCheckboxOfSet(const PluginOption& option, const std::string& name,
                                           bool state) const;
  [[nodiscard]] AfterEdit setCheckbox(const PluginOption& option, bool state) const;

  PluginCatalogue& catalogue_;
  const PluginTree& tree_;
  const PluginStorage& storage_;
  SystemLog& log_;
};

}  // namespace corvane
