// What signals do to a process: used after a fork, where only calls that are safe in a signal handler may be
// made.
#pragma once

#include <csignal>

namespace corvane::helper {

/// `handler` is SIG_DFL or SIG_IGN. A signal that can't be set is left as it is.
inline void setSignal(int number, void (*handler)(int)) {
  struct sigaction action {};
  action.sa_handler = handler;
  ::sigemptyset(&action.sa_mask);
  (void)::sigaction(number, &action, nullptr);
}

inline void setAllSignalsToDefault() {
  for (int number = 1; number < NSIG; ++number) setSignal(number, SIG_DFL);
}

}  // namespace corvane::helper
