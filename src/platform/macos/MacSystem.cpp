#include "platform/macos/MacSystem.h"

namespace corvane {

MacSystem::MacSystem(const ToolkitServices& toolkit)
    : authorization_(calls_, log_, toolkit.bundle.pathForAuxiliaryExecutable("qlhelper")),
      platform_{
          log_,           files_,     propertyLists_, runLoop_,        directoryEvents_,  fileEventQueues_,
          authorization_, processes_, texts_,         toolkit.dialogs, toolkit.workspace, toolkit.bundle} {}

}  // namespace corvane
