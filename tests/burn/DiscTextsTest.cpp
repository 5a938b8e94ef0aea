#include "burn/DiscTexts.h"

#include <gtest/gtest.h>

#include "support/FakeEngine.h"

namespace korvenal::test {
namespace {

struct DiscTextsTest : testing::Test {
  ManualClock clock;
  FakeEngine engine{clock};
  DiscTexts texts{engine};
  FakeDisc& disc = engine.drives['V'].disc.emplace();
};

TEST_F(DiscTextsTest, ADiscIsNamedByCapacityAndType) {
  struct Case {
    std::uint8_t type;
    std::int32_t blocks;
    const char* text;
  };
  const Case cases[] = {
      {1, 359849, "CD-ROM"},         {2, 333000, "700MB CD-R"},   {3, 361328, "700MB CD-RW"},
      {15, 361329, "4.7GB CD-RW"},   {5, 2298496, "4.7GB DVD-R"}, {11, 2343750, "DVD+R"},
      {12, 4173824, "DVD+R DL"},     {4, 2298496, "DVD-ROM"},     {13, 1, "CD-ROM"},
      {6, 2236704, "4.7GB DVD-RAM"}, {16, 1, "700MB "},           {200, 4173824, ""},
  };
  for (const Case& one : cases) {
    disc.totalBlocks = one.blocks;
    EXPECT_EQ(texts.discText(one.type), one.text) << int{one.type};
  }
}

TEST_F(DiscTextsTest, BlankAndWritableFollowTheKindOfDisc) {
  EXPECT_TRUE(texts.doIsDiscBlank(2));
  EXPECT_FALSE(texts.doIsDiscBlank(10)) << "never formatted";
  disc.sessions = 1;
  EXPECT_FALSE(texts.doIsDiscBlank(2));
  EXPECT_TRUE(texts.doIsDiscBlank(10));
  disc.usedBlocks = 1;
  EXPECT_FALSE(texts.doIsDiscBlank(10));
  disc.usedBlocks = disc.totalBlocks = 0;
  EXPECT_FALSE(texts.doIsDiscBlank(10)) << "no room at all";
  EXPECT_TRUE(texts.doIsDiscWritable(2));
  EXPECT_FALSE(texts.doIsDiscWritable(13));
  disc.writable = false;
  EXPECT_FALSE(texts.doIsDiscWritable(2));
}

TEST_F(DiscTextsTest, AnErrorIsAlwaysASentence) {
  const auto sentence = [&](std::int32_t number, const std::string& text, auto transfer) {
    engine.errorNumber = number;
    engine.errorText = text;
    return texts.doGetDiscErrorText(transfer);
  };
  const auto writing = DiscTexts::Transfer::Writing;
  EXPECT_EQ(sentence(0, "ignored", writing), "Disc may be damaged/corrupted.");
  EXPECT_EQ(sentence(1032, "", writing), "Drive function failed.");
  EXPECT_EQ(sentence(9216, "", writing), "Invalid field in disc block.");
  EXPECT_EQ(sentence(14848, "", writing), "Disc writing failed.");
  EXPECT_EQ(sentence(14848, "", DiscTexts::Transfer::Reading), "Disc reading failed.");
  EXPECT_EQ(sentence(5, "MEDIUM Error", writing), "Medium error.");
  EXPECT_EQ(sentence(5, "\xC3\x89JECT", writing), "\xC3\x89ject.");
  EXPECT_EQ(sentence(5, "X", writing), "x.");
  EXPECT_EQ(sentence(5, "", writing), ".");
}

TEST_F(DiscTextsTest, TheSpeedFollowsTheListIndexAndTheDrive) {
  struct Case {
    std::uint8_t type;
    std::int32_t maximum;
    std::int64_t setting;
    int set;  ///< multiple set; 0 for none
    const char* line;
  };
  const Case cases[] = {
      {5, 5540, 0, 0, "Drive speed set to:  4x (5,500 KB/s)"},
      {5, 22160, 1, 12, "Drive speed set to:  12x (16,600 KB/s)"},  // 16: 12 is above the half
      {5, 2770, 1, 2, "Drive speed set to:  2x (2,700 KB/s)"},      // 2: nothing is
      {5, 22160, 2, 8, "Drive speed set to:  8x (11,000 KB/s)"},
      {5, 4155, 2, 2, "Drive speed set to:  2x (2,700 KB/s)"},
      {5, 4155, 3, 2, "Drive speed set to:  2x (2,700 KB/s)"},
      {5, 22160, 4, 16, "Drive speed set to:  16x (22,100 KB/s)"},  // "20x", capped
      {5, 22160, 13, 2, "Drive speed set to:  2x (2,700 KB/s)"},
      {2, 9152, 4, 52, "Drive speed set to:  52x (9,100 KB/s)"},
      {2, 9152, 29, 2, "Drive speed set to:  2x (300 KB/s)"},
      {12, 3324, 0, 0, "Drive speed set to:  2.4x (3,300 KB/s)"},
      {2, 176, 0, 0, ""},
      {2, 0, 4, 0, ""},
  };
  for (const Case& one : cases) {
    engine.calls.clear();
    engine.writeSpeed = one.maximum;
    std::uint8_t type = one.type;
    EXPECT_EQ(texts.doSetDriveSpeed(type, {one.setting, one.setting}, DiscTexts::Transfer::Writing),
              one.line);
    const int unit = one.type == 2 ? 176 : 1385;
    EXPECT_EQ(engine.calls.size(), one.set == 0 ? 1U : 2U) << one.maximum << " " << one.setting;
    EXPECT_EQ(engine.calls.back(), "do_SetDeviceSpeed " + std::to_string(one.set * unit));
  }
  std::uint8_t unknown = 0;
  texts.doSetDriveSpeed(unknown, {}, DiscTexts::Transfer::Writing);
  EXPECT_EQ(unknown, disc.type);
}

}  // namespace
}  // namespace korvenal::test
