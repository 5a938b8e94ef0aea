#include "platform/Paths.h"

#include <gtest/gtest.h>

namespace korvenal {

TEST(Paths, EachKindHasItsOwnSeparator) {
  EXPECT_EQ(Paths::doGetFilePart("/home/back\\slash"), "back\\slash");
  EXPECT_EQ(Paths::doGetFilePart("folder\\a/b"), "a/b");
  EXPECT_EQ(Paths::doGetFilePart("plain"), "plain");
  EXPECT_EQ(Paths::doGetFolderPart("/x"), "/");
  EXPECT_EQ(Paths::doGetFolderPart("/x/y"), "/x");
  EXPECT_EQ(Paths::doGetFolderPart("a\\b\\c"), "a\\b");
  EXPECT_EQ(Paths::doGetFolderPart("plain"), "plain");
}

TEST(Paths, PathsOnDrives) {
  EXPECT_EQ(Paths::asDrivePath("v:\\a\\b")->letter, 'V');
  EXPECT_EQ(Paths::asDrivePath("V:\\a\\b")->discPath, "a\\b");
  EXPECT_EQ(Paths::asDrivePath("V:")->discPath, "");
  EXPECT_EQ(Paths::asDrivePath("V:\\")->discPath, "");
  EXPECT_FALSE(Paths::asDrivePath("V:\\a")->session);
  EXPECT_EQ(Paths::asDrivePath(Paths::onDrive('V', 32, "a\\b"))->session, 32U);
  EXPECT_EQ(Paths::asDrivePath("V:32\\a\\b")->discPath, "a\\b");
  for (const char* other :
       {"", "V", "V:a", "V:-1\\a", "V:32a", "V:4294967296\\a", "1:\\a", "/V:\\a", "VV:\\"})
    EXPECT_FALSE(Paths::asDrivePath(other)) << other;
}

TEST(Paths, NamesThatADiscCanHold) {
  for (const char* good : {"a", "a/b", ":*?\"<>|", "\xC3\xA4", "\xC2\xA0"})
    EXPECT_TRUE(Paths::isHoldable(good)) << good;
  for (const char* bad : {"", "a\\b", "a\tb", "\x7F", "\xC2\x85", "\xFF"})
    EXPECT_FALSE(Paths::isHoldable(bad)) << bad;
}

}  // namespace korvenal
