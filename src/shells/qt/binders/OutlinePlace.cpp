#include "binders/OutlinePlace.h"

#include <algorithm>

namespace corvane::qt {

OutlinePlace::OutlinePlace(OutlineView& outline, const OutlineItem& item) : item_(item) {
  for (OutlineItem step = item; step; step = outline.parentForItem(step)) {
    steps_.insert(steps_.begin(), {outline.persistentNameOfItem(step), outline.indexOfItem(step)});
  }
}

OutlineItem OutlinePlace::childAt(OutlineView& outline, const OutlineItem& parent, const Step& step) {
  // Several rows can have one name: the one in the same place comes first.
  const OutlineItem same = outline.childOfItem(parent, step.index);
  if (same && outline.persistentNameOfItem(same) == step.name) return same;
  if (step.name.empty()) return {};
  const std::vector<OutlineItem> children = outline.childrenOfItem(parent);
  const auto named = std::find_if(children.begin(), children.end(), [&](const OutlineItem& child) {
    return outline.persistentNameOfItem(child) == step.name;
  });
  return named != children.end() ? *named : OutlineItem();
}

OutlineItem OutlinePlace::visibleRow(OutlineView& outline) const {
  if (outline.rowForItem(item_) >= 0) return item_;
  OutlineItem found;
  for (const Step& step : steps_) {
    OutlineItem child = childAt(outline, found, step);
    const std::size_t siblings = outline.numberOfChildrenOfItem(found);
    const bool isGone = !child;
    if (isGone && siblings > 0) child = outline.childOfItem(found, std::min(step.index, siblings - 1));
    if (outline.rowForItem(child) < 0) break;
    found = child;
    if (isGone) break;
  }
  return found;
}

}  // namespace corvane::qt
