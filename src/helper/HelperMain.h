// The helper tool as a function, for its main.
#pragma once

#include "helper/RootTree.h"

namespace corvane::helper {

/// Takes the arguments of main; answers the exit status. The observers are for tests.
[[nodiscard]] int helperMain(int count, char** vector, TreeObservers observers = {});

}  // namespace corvane::helper
