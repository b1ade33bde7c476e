// The page of the Configuration tab.
#pragma once

#include "configuration/ConfigurationTabView.h"
#include "tabs/Page.h"

namespace corvane::appkit {

class ConfigurationPage final : public Page {
 public:
  /// The controls must live longer than the page.
  ConfigurationPage(ConfigurationTabView& view, NSSize size);
};

}  // namespace corvane::appkit
