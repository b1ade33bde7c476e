#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include "platform/macos/MacProcessListing.h"

namespace corvane {
namespace {

TEST(MacProcessListing, HoldsThisProcessBelowAHeading) {
  const auto listing = MacProcessListing().listProcesses();
  ASSERT_TRUE(listing);
  EXPECT_THAT(*listing, ::testing::MatchesRegex(" *PID\n( *[0-9]+\n)+"));
  EXPECT_THAT(*listing, ::testing::ContainsRegex("\n *" + std::to_string(::getpid()) + "\n"));
}

}  // namespace
}  // namespace corvane
