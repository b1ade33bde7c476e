#include "platform/macos/MacProcessListing.h"

#include "posix/ProgramOutput.h"

namespace corvane {

std::optional<std::string> MacProcessListing::listProcesses() { return outputOf("/bin/ps", {"axco", "pid"}); }

}  // namespace corvane
