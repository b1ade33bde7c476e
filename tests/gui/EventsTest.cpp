// What tests of the window stand on fails in words.
#include <QLabel>

#include <gtest/gtest-spi.h>

#include "Events.h"

namespace corvane::test {
namespace {

TEST(Events, AWidgetThatIsNotThereFailsWithItsKindNameFileAndLine) {
  const QWidget window;
  ::testing::TestPartResultArray failures;
  const int line = __LINE__ + 4;  // where it is asked for
  {
    const ::testing::ScopedFakeTestPartResultReporter reporter(
        ::testing::ScopedFakeTestPartResultReporter::INTERCEPT_ONLY_CURRENT_THREAD, &failures);
    EXPECT_THROW((void)find<QLabel>(window, "missing"), ::testing::AssertionException);
  }
  ASSERT_EQ(failures.size(), 1);
  EXPECT_STREQ(failures.GetTestPartResult(0).summary(),
               "Failed\nthere is no QLabel with the name \"missing\"");
  EXPECT_STREQ(failures.GetTestPartResult(0).file_name(), __FILE__);
  EXPECT_EQ(failures.GetTestPartResult(0).line_number(), line);
}

TEST(Events, TextsAndPlacesOfTheToolkitPrintAsWhatTheyAre) {
  EXPECT_EQ(::testing::PrintToString(QStringLiteral("Später")), "\"Später\"");
  EXPECT_EQ(::testing::PrintToString(QRect(1, 2, 3, 4)), "QRect(1,2 3x4)");
  EXPECT_EQ(::testing::PrintToString(QSize(3, 4)), "QSize(3, 4)");
  EXPECT_EQ(::testing::PrintToString(QPoint(1, 2)), "QPoint(1,2)");
}

}  // namespace
}  // namespace corvane::test
