// The environment of a test program, made first of all in its `main`: a home, a language, a time zone and a
// search path of the suite's own, and nothing of what the machine's user has set. Left as they are: where
// temporary files lie, the display, and what is said to the tests, the test framework and the sanitizers.
#pragma once

#include "support/TemporaryFolder.h"

namespace corvane::test {

class PinnedEnvironment {
 public:
  PinnedEnvironment();

 private:
  TemporaryFolder home_;
};

}  // namespace corvane::test
