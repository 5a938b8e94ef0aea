#include "platform/Text.h"
#include "platform/UpperCaser.h"

#include <random>

#include <gmock/gmock.h>

namespace korvenal {

using testing::ElementsAre;

TEST(Text, CutsFallBetweenCharacters) {
  const std::string text =
      "a\xE2\x82\xAC"
      "b";  // a, the euro sign of three bytes, b
  EXPECT_EQ(Text::firstBytes(text, 3), "a");
  EXPECT_EQ(Text::firstBytes(text, 4), "a\xE2\x82\xAC");
  EXPECT_EQ(Text::lastBytes(text, 3), "b");
  EXPECT_EQ(Text::lastBytes(text, 4),
            "\xE2\x82\xAC"
            "b");
  EXPECT_EQ(Text::firstBytes(text, 99), text);
  EXPECT_EQ(Text::doMidBytes(text, 2, 3), "\xE2\x82\xAC");
  EXPECT_EQ(Text::doMidBytes(text, 2, 2), "");
  EXPECT_EQ(Text::doMidBytes("abc", 2, 1), "");  // one byte or less is empty
  EXPECT_EQ(Text::doMidBytes("abc", 0, 3) + Text::doMidBytes("abc", 4, 3), "");
}

TEST(Text, KnowsWellFormedUtf8) {
  for (const char* good : {"", "plain", "\xC3\xA4", "\xED\x9F\xBF", "\xF4\x8F\xBF\xBF"})
    EXPECT_TRUE(Text::isUtf8(good)) << good;
  // Stray and missing bytes, overlong forms, a surrogate, and what lies above the last character.
  for (const char* bad : {"\x80", "\xC3", "a\xE2\x82", "\xC0\xAF", "\xE0\x80\xAF", "\xED\xA0\x80",
                          "\xF4\x90\x80\x80", "\xF8\x88\x80\x80\x80"})
    EXPECT_FALSE(Text::isUtf8(bad));
}

TEST(Text, IgnoresCaseBeyondAscii) {
  EXPECT_TRUE(Text::equalsIgnoreCase("\xC3\x84pfel", "\xC3\xA4PFEL"));
  EXPECT_FALSE(Text::equalsIgnoreCase("a", "b"));
  // A capital may take more bytes than its small letter.
  EXPECT_EQ(Text::toUpper("\xC9\xA5"), "\xEA\x9E\x8D");
  EXPECT_EQ(Text::toUpper("stra\xC3\x9F"
                          "e"),
            "STRASSE");
}

TEST(Text, NumbersAreReadUpToTheFirstOtherCharacter) {
  EXPECT_EQ(Text::toInteger(" +12 MB"), 12);
  EXPECT_EQ(Text::toInteger("-7"), -7);
  EXPECT_EQ(Text::toInteger("x"), 0);
  EXPECT_EQ(Text::toInteger("99999999999999999999"), INT64_MAX);
  EXPECT_EQ(Text::toInteger("-99999999999999999999"), INT64_MIN);
}

TEST(Text, NothingActsOnATerminal) {
  EXPECT_EQ(Text::escaped("a\x1B[2J\t\n\x7F\xC2\x9B\xFF\xC3\xA4"),
            "a\\x1B[2J\\t\\n\\x7F\\xC2\\x9B\\xFF\xC3\xA4");
}

TEST(UpperCaser, GivesWhatTheLibraryGives) {
  UpperCaser caser;
  std::mt19937 random(11);
  const auto pick = [&random](unsigned from, unsigned to) {
    return static_cast<char>(from + random() % (to - from + 1));
  };
  for (int round = 0; round < 20'000; ++round) {
    std::string text;
    for (int i = 0; i < 4; ++i) {
      if (random() % 4 == 0) text += pick(0, 255);  // mostly malformed
      if (random() % 2 == 0) text += {pick(0xC3, 0xDF), pick(0x80, 0xBF)};
      if (random() % 3 == 0) text += {pick(0xE1, 0xEF), pick(0x80, 0xBF), pick(0x80, 0xBF)};
      if (random() % 9 == 0) text += "\xF0\x90\x90\xA8";
      text += pick('_', 'z');
    }
    ASSERT_EQ(caser.toUpper(text), Text::toUpper(text));
  }
}

}  // namespace korvenal
