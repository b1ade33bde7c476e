// The signals of the pane's own process. A program's main calls this before anything else.
#pragma once

namespace corvane {

/// Makes the process independent of what it was started with: it does not end when nobody reads its standard
/// error any more (a log line would end it otherwise), and its children can be waited for even when whoever
/// started it did not want to hear of his own. Programs that the pane starts get the defaults again.
void prepareSignals();

}  // namespace corvane
