#include "platform/Fixed4.h"

#include <gtest/gtest.h>

namespace korvenal {

TEST(Fixed4, TextsComeBackAsTheSameNumber) {
  for (const std::int64_t raw :
       {0L, 1L, -1L, 10'000L, -15'000L, 123'456'789L, INT64_MAX, -INT64_MAX}) {
    const Fixed4 number = Fixed4::ofRaw(raw);
    EXPECT_EQ(Fixed4::parse(number.toText()), number) << number.toText();
  }
  EXPECT_EQ(Fixed4(1'073'741'824).toText(), "1073741824");
  EXPECT_EQ(Fixed4::ofRaw(-5'000).toText(), "-0.5");
  EXPECT_EQ(Fixed4::ofRaw(12'050).toText(), "1.205");
}

TEST(Fixed4, ReadsWhatATextBeginsWith) {
  EXPECT_EQ(Fixed4::parse(" 12.5 MB"), Fixed4::ofRaw(125'000));
  EXPECT_EQ(Fixed4::parse("1.23456"), Fixed4::ofRaw(12'345));
  EXPECT_EQ(Fixed4::parse("+3"), Fixed4(3));
  EXPECT_EQ(Fixed4::parse("text"), Fixed4());
  EXPECT_EQ(Fixed4::parse("-"), Fixed4());
  EXPECT_EQ(Fixed4::parse(std::string(400, '9')), Fixed4::ofRaw(INT64_MAX));
}

TEST(Fixed4, SaturatesInsteadOfOverflowing) {
  const Fixed4 most = Fixed4::ofRaw(INT64_MAX);
  const Fixed4 least = Fixed4::ofRaw(-INT64_MAX);
  EXPECT_EQ(most + Fixed4(1), most);
  EXPECT_EQ(least - Fixed4(1), least);
  EXPECT_EQ(Fixed4(INT64_MAX), most);
  EXPECT_EQ(Fixed4(INT64_MIN), least);
}

}  // namespace korvenal
