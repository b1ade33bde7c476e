// Web and mail addresses that come from the client's files.
#pragma once

#include <string>

#include "platform/Platform.h"
#include "values/Text.h"

namespace corvane {

/// Opens the address with the desktop's handler for it; one that can't be opened leaves a line in the log.
inline void openAddress(Platform& platform, const std::string& address) {
  if (!platform.workspace.openUrl(address)) {
    platform.log.write(formatText("Could not open the address \"%@\"", {address}));
  }
}

}  // namespace corvane
