// The page of the Options tab: the table of volumes with the settings of the selected one over its right
// part, and the three warnings below.
#pragma once

#include "options/OptionsTabView.h"
#include "tabs/Page.h"

namespace corvane::appkit {

class OptionsPage final : public Page {
 public:
  /// The controls must live longer than the page.
  OptionsPage(OptionsTabView& view, NSSize size);

 private:
  void addVolumes(OptionsTabView& view);
  void addBox(OptionsTabView& view);
  void addRows(OptionsTabView& view);
};

}  // namespace corvane::appkit
