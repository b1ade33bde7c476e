// A tree for outline tests: an array is a row that can be expanded, its elements (after a name) are the rows
// below it; a string is a leaf. Requests are counted, cells and values are played.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "controls/OutlineView.h"

namespace corvane::test {

class TreeSource final : public OutlineViewDataSource, public OutlineViewDelegate {
 public:
  /// A row that can be expanded, with these rows below it.
  static Array branch(const std::string& name, std::vector<PropertyList> below) {
    Array array = Array::make({PropertyList::string(name)});
    for (PropertyList& child : below) array.append(std::move(child));
    return array;
  }
  static PropertyList leaf(const std::string& name) { return PropertyList::string(name); }
  static std::string nameOf(const PropertyList& object) {
    const std::string* text = object.asArray() ? object.asArray().at(0).asString() : object.asString();
    return text != nullptr ? *text : std::string();
  }

  // The data source.
  int outlineViewNumberOfChildrenOfItem(OutlineView& outline, const OutlineItem& item) override {
    if (const auto call = onCount) call(outline);
    if (item) countsAskedFor.push_back(nameOf(item.object()));
    return item ? static_cast<int>(item.object().asArray().size()) - 1 : static_cast<int>(top.size());
  }
  bool outlineViewIsItemExpandable(OutlineView&, const OutlineItem& item) override {
    return branchesExpand && item.object().asArray();
  }
  PropertyList outlineViewChildOfItem(OutlineView&, int index, const OutlineItem& item) override {
    const auto at = static_cast<std::size_t>(index);
    return item ? item.object().asArray().at(at + 1) : top.at(at);
  }
  int outlineViewKindOfChild(OutlineView&, const PropertyList& child, const OutlineItem&) override {
    const auto played = kinds.find(nameOf(child));
    return played != kinds.end() ? played->second : 0;
  }
  ObjectValue outlineViewObjectValueForTableColumnByItem(OutlineView&, const TableColumn& column,
                                                         const OutlineItem& item) override {
    calls.emplace_back("value");
    const auto played = values.find({column.identifier, nameOf(item.object())});
    return played != values.end() ? played->second : ObjectValue();
  }
  void outlineViewSetObjectValueForTableColumnByItem(OutlineView& outline, const PropertyList& value,
                                                     const TableColumn& column,
                                                     const OutlineItem& item) override {
    edits.push_back({nameOf(item.object()), column.identifier, value});
    if (onSet) onSet(outline, item);
  }

  // The delegate.
  void outlineViewItemDidExpand(OutlineView& outline, const OutlineItem& item) override {
    expanded.push_back(nameOf(item.object()));
    if (onExpand) onExpand(outline, item);
  }
  bool outlineViewShouldEditTableColumnItem(OutlineView&, const TableColumn&, const OutlineItem&) override {
    return editable;
  }
  CellReference outlineViewDataCellForTableColumnItem(OutlineView&, const TableColumn* column,
                                                      const OutlineItem& item) override {
    calls.emplace_back("cell");
    const auto played = cells.find({column->identifier, nameOf(item.object())});
    return played != cells.end() ? std::make_shared<Cell>(played->second) : nullptr;
  }
  double outlineViewHeightOfRowByItem(OutlineView& outline, const OutlineItem&) override {
    return 3 * outline.rowHeight();
  }
  bool outlineViewShouldShowOutlineCellForItem(OutlineView& outline, const OutlineItem& item) override {
    return !outline.parentForItem(item);
  }
  void outlineViewWillDisplayCellForTableColumnItem(OutlineView&, Cell& cell, const TableColumn&,
                                                    const OutlineItem&) override {
    calls.emplace_back("display");
    if (onDisplay) onDisplay(cell);
  }
  void outlineViewDidReleaseRows(OutlineView&) override { ++releases; }

  struct Edit {
    std::string row;
    std::string column;
    PropertyList value;
    friend bool operator==(const Edit&, const Edit&) = default;
  };
  using ColumnAndRow = std::pair<std::string, std::string>;

  std::vector<PropertyList> top;
  std::map<std::string, int> kinds;
  std::map<ColumnAndRow, ObjectValue> values;
  std::map<ColumnAndRow, Cell> cells;
  bool branchesExpand = true;
  bool editable = true;
  std::function<void(OutlineView&)> onCount;
  std::function<void(OutlineView&, const OutlineItem&)> onSet;
  std::function<void(OutlineView&, const OutlineItem&)> onExpand;
  std::function<void(Cell&)> onDisplay;

  std::vector<std::string> countsAskedFor;
  std::vector<std::string> calls;
  std::vector<std::string> expanded;
  std::vector<Edit> edits;
  int releases = 0;
};

}  // namespace corvane::test
