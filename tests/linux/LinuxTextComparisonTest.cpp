#include <gtest/gtest.h>

#include "platform/linux/LinuxTextComparison.h"

namespace corvane {
namespace {

TEST(LinuxTextComparison, ComparesRegardlessOfCase) {
  LinuxTextComparison texts;
  EXPECT_EQ(texts.caseInsensitiveCompare("Backup", "bACKUP"), 0);
  EXPECT_LT(texts.caseInsensitiveCompare("alpha", "Beta"), 0);
  EXPECT_GT(texts.caseInsensitiveCompare("Zeta", "beta"), 0);
  EXPECT_EQ(texts.caseInsensitiveCompare("\xC3\x84rger", "\xC3\xA4RGER"), 0);
  EXPECT_EQ(texts.caseInsensitiveCompare("\xC3\xA9", "e\xCC\x81"), 0)
      << "composed and decomposed accents are the same";
  EXPECT_NE(texts.caseInsensitiveCompare("\xFF", "\xFE"), 0) << "bytes that are no text compare as they are";
}

}  // namespace
}  // namespace corvane
