// The tab's reference to the pane, which its collaborators share. There is no pane before the tab's interface
// is loaded: until then the lock counts as closed and nothing is written.
#pragma once

#include <string>

#include "pane/PaneServices.h"

namespace corvane {

struct PaneConnection {
  PaneServices* quorlenPrefPane = nullptr;

  [[nodiscard]] bool unlocked() const { return quorlenPrefPane != nullptr && quorlenPrefPane->unlocked(); }
  void setPlistFileValues(const std::string& path, const PropertyList& values) const {
    if (quorlenPrefPane != nullptr) quorlenPrefPane->setPlistFileValues(path, values);
  }
};

}  // namespace corvane
