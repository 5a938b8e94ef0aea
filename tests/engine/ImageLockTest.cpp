#include "engine/EngineFixture.h"

namespace korvenal::test {
namespace {

using ::testing::HasSubstr;

/// What a second program would see, and do, through descriptors of its own.
class ImageLockTest : public EngineFixture {
 protected:
  ImageUse seenByOthers() const { return ImageLock().others(image()); }
  /// Another program has burned a session onto the disc.
  void burnElsewhere() const {
    const std::string file = ImageDrive::profileFileOf(image());
    DiscProfile profile = *DiscProfile::parse(TempDir::read(file));
    profile.sessions.push_back(static_cast<std::uint32_t>(profile.nextSession()));
    profile.end = profile.sessions.back() + 100;
    LinuxFiles(nullptr).writeAll(file, profile.toText());
  }
};

TEST_F(ImageLockTest, AnImageIsLockedWhileItIsAtWorkAndNeverWhileIdle) {
  blank(DiscDvdPlusR);
  insert("\\", "a", dir.write("a", "content"));
  ASSERT_TRUE(prepare());
  EXPECT_EQ(seenByOthers(), ImageUse::None);
  bool always = true;
  const Ending end = burn([&] { always = always && seenByOthers() == ImageUse::Written; });
  ASSERT_EQ(end.error, 0);
  EXPECT_TRUE(always);
  EXPECT_EQ(seenByOthers(), ImageUse::None);
  EXPECT_EQ(readDisc("a"), "content");
  EXPECT_EQ(seenByOthers(), ImageUse::None) << "a disc that was read is idle again";
  engine->do_LockMedium();
  EXPECT_EQ(seenByOthers(), ImageUse::Read);
  engine->do_UnlockMedium();
  EXPECT_EQ(seenByOthers(), ImageUse::None);
}

TEST_F(ImageLockTest, WhatAnotherProgramWritesIsLeftAlone) {
  blank(DiscDvdRw);
  const std::string taken = image();
  insert("\\", "a", dir.write("a", "content"));
  ASSERT_TRUE(prepare());
  ImageLock other;
  for (const ImageUse use : {ImageUse::Read, ImageUse::Written}) {
    ASSERT_TRUE(other.take(taken, use));
    EXPECT_EQ(shelf->discIn('V').elsewhere, use);
    EXPECT_EQ(engine->do_TestUnitReady() != 0, use == ImageUse::Read);
    EXPECT_FALSE(burn().started);
    EXPECT_FALSE(erase().started);
    EXPECT_THAT(engine->do_GetErrorString(), HasSubstr(taken));
  }
  EXPECT_THAT(engine->problem('V'), HasSubstr(taken));
  ASSERT_TRUE(shelf->remove('V'));
  EXPECT_EQ(shelf->insert('V', taken).fault, TrayResult::InUse);
  EXPECT_EQ(shelf->discsOnShelf().at(0).elsewhere, ImageUse::Written);
  other.release();
  EXPECT_TRUE(shelf->insert('V', taken));
  EXPECT_NE(engine->do_TestUnitReady(), 0);
}

TEST_F(ImageLockTest, WhatAnotherProgramHasBurnedIsNeverOverwritten) {
  blank(DiscDvdR);
  insert("\\", "a", dir.write("a", "content"));
  ASSERT_TRUE(prepare());
  burnElsewhere();
  EXPECT_FALSE(burn().started) << "the track was made for the disc as it was";
  EXPECT_EQ(engine->do_SessionsOnDisc(), 1);
  EXPECT_GT(engine->do_GetFreeBlocksOnDisc(), 0);
}

}  // namespace
}  // namespace korvenal::test
