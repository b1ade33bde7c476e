// What signals do to a process. The functions for one signal and for all are safe after a fork, where only
// what a signal handler may call may be called.
#pragma once

namespace corvane {

/// `handler` is SIG_DFL or SIG_IGN. A signal that can't be set is left as it is.
void setSignal(int number, void (*handler)(int));
void setAllSignalsToDefault();

/// For the pane's own process; a program's main calls this before anything else. Makes the process
/// independent of what it was started with: it does not end when nobody reads its standard error any more (a
/// log line would end it otherwise), a file that may not grow further is a failed write, and its children can
/// be waited for even when whoever started it did not want to hear of his own. Programs that the pane starts
/// get the defaults again.
void prepareSignals();

}  // namespace corvane
