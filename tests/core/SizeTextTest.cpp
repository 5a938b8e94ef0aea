#include "core/SizeText.h"

#include <gtest/gtest.h>

namespace korvenal {
namespace {

TEST(SizeText, RoundsUpToWholeKilobytes) {
  EXPECT_EQ(formatSizeText(-5, true), "0 KB");
  EXPECT_EQ(formatSizeText(0, false), "0 KB");
  EXPECT_EQ(formatSizeText(1, false), "1 KB");
  EXPECT_EQ(formatSizeText(1024, false), "1 KB");
  EXPECT_EQ(formatSizeText(1025, false), "2 KB");
  EXPECT_EQ(formatSizeText(2147483648, false), "2,097,152 KB");
}

TEST(SizeText, BigUnitsBeginAtExactlyOneOfThem) {
  EXPECT_EQ(formatSizeText(1048575, true), "1,024 KB");
  EXPECT_EQ(formatSizeText(1048576, true), "1.0 MB");
  EXPECT_EQ(formatSizeText(1073741823, true), "1.0 GB");
  EXPECT_EQ(formatSizeText(1073741824, true), "1.0 GB");
  EXPECT_EQ(formatSizeText(1536LL * 1048576, true), "1.5 GB");
  EXPECT_EQ(formatSizeText(512LL * 1024 * 1073741824, true), "524,288.0 GB");
}

}  // namespace
}  // namespace korvenal
