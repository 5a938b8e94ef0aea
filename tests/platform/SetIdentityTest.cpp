#include "platform/SetIdentity.h"

#include <gtest/gtest.h>

namespace korvenal {
namespace {

TEST(SetIdentityText, SaysDateTypeAndJobAndIsReadAgain) {
  const SetIdentity photos = SetIdentity::parse("20261123141502-F Family photos");
  EXPECT_EQ(photos.date, "20261123141502");
  EXPECT_EQ(photos.type, 'F');
  EXPECT_EQ(photos.job, "Family photos");
  EXPECT_EQ(photos.text(), "20261123141502-F Family photos");
  EXPECT_EQ(photos.shown(), "Family photos (2026-11-23 14:15)");
  EXPECT_EQ(SetIdentity::ofRun(*Dates::fromDigits("20261123141502"), true, " a\tb ").text(),
            "20261123141502-D a b");
  for (const char* foreign : {"", "20261123141502-X a", "20261123141502a", "20261399141502-F a",
                              "2026112314150-F a", "HOLIDAY"})
    EXPECT_FALSE(SetIdentity::parse(foreign).isKnown()) << foreign;
}

TEST(SetIdentityText, DateAndTypeDecideAndAnUnknownTypeDoesNot) {
  const SetIdentity full = SetIdentity::parse("20261123141502-F A");
  EXPECT_TRUE(full.isSame(SetIdentity::parse("20261123141502-F renamed")));
  EXPECT_TRUE(full.isSame(SetIdentity::parse("20261123141502")));
  EXPECT_FALSE(full.isSame(SetIdentity::parse("20261123141502-D A")));
  EXPECT_FALSE(full.isSame(SetIdentity::parse("20261123141503-F A")));
  EXPECT_FALSE(SetIdentity().isSame(SetIdentity()));
}

}  // namespace
}  // namespace korvenal
