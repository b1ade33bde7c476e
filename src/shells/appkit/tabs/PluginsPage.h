// The page of the Plugins tab: the outline of the plug-ins and their settings fills it.
#pragma once

#include "plugins/PluginsTabView.h"
#include "tabs/Page.h"

namespace corvane::appkit {

class PluginsPage final : public Page {
 public:
  /// The controls must live longer than the page.
  PluginsPage(PluginsTabView& view, NSSize size);
};

}  // namespace corvane::appkit
