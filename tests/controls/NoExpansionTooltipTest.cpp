#include <gtest/gtest.h>

#include "controls/NoExpansionTooltip.h"
#include "controls/TableView.h"
#include "controls/TextField.h"

namespace corvane {
namespace {

TEST(NoExpansionTooltip, TheExpansionFrameIsEmptyWhateverTheFrameAndTheView) {
  const TableView table({});
  const TextField field(TextField::Role::Label, "a label");
  const Rect empty{0, 0, 0, 0};
  EXPECT_EQ(expansionFrameWithFrameInView({10, 20, 300, 17}, table), empty);
  EXPECT_EQ(expansionFrameWithFrameInView({-5, 1, 1e9, 1e9}, field), empty);
  EXPECT_EQ(expansionFrameWithFrameInView({}, field), empty);
}

}  // namespace
}  // namespace corvane
