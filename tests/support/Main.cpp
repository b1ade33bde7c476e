// Of all test programs that need nothing more.
#include <gmock/gmock.h>

#include "support/PinnedEnvironment.h"

int main(int argc, char** argv) {
  const corvane::test::PinnedEnvironment environment;
  ::testing::InitGoogleMock(&argc, argv);
  return RUN_ALL_TESTS();
}
