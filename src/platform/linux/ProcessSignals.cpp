#include "platform/linux/ProcessSignals.h"

#include "helper/Signals.h"

namespace corvane {

void prepareSignals() {
  helper::setSignal(SIGPIPE, SIG_IGN);
  helper::setSignal(SIGCHLD, SIG_DFL);
}

}  // namespace corvane
