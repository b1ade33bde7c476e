#include "posix/Signals.h"

#include <csignal>

namespace corvane {

void setSignal(int number, void (*handler)(int)) {
  struct sigaction action {};
  action.sa_handler = handler;
  sigemptyset(&action.sa_mask);  // without "::", since some systems make it a macro
  (void)::sigaction(number, &action, nullptr);
}

void setAllSignalsToDefault() {
  for (int number = 1; number < NSIG; ++number) setSignal(number, SIG_DFL);
}

void prepareSignals() {
  setSignal(SIGPIPE, SIG_IGN);
  setSignal(SIGXFSZ, SIG_IGN);
  setSignal(SIGCHLD, SIG_DFL);
}

}  // namespace corvane
