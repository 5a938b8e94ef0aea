#include <filesystem>

#include "engine/EngineFixture.h"
#include "platform/linux/engine/HeldProfile.h"
#include "support/SmallDisk.h"

namespace korvenal::test {
namespace {

constexpr std::int64_t DiskBytes = 8 << 20;

using ImageRoomTest = EngineFixture;

TEST_F(ImageRoomTest, ADiscPromisesNoMoreThanItsDiskHolds) {
  const SmallDisk disk(dir.makeFolder("shelf"), DiskBytes);
  if (!disk) GTEST_SKIP() << "no disk of one's own for this user";
  for (const auto type : {DiscDvdR, DiscDvdPlusRw}) {
    blank(type);
    if (type == DiscDvdPlusRw) {
      ASSERT_EQ(erase().error, 0);
    }
    const std::int64_t free = engine->do_GetFreeBlocksOnDisc();
    EXPECT_GT(free, 0);
    EXPECT_LE(free * BlockBytes, disk.freeBytes());
    EXPECT_EQ(free + engine->do_GetBlocksWithoutRoom(), engine->do_GetTotalBlocksOnDisc());
  }
  insert("\\", "large", dir.sparse("large", DiskBytes));
  ASSERT_TRUE(prepare());
  EXPECT_FALSE(burn().started);
  EXPECT_EQ(std::filesystem::file_size(image()), 0U);
  EXPECT_EQ(TempDir::read(ImageDrive::profileFileOf(image())).find("writing=1"), std::string::npos);
}

TEST_F(ImageRoomTest, TheProfileGetsItsPlaceOnAFullDisk) {
  const std::string folder = dir.makeFolder("disk") + "/";
  const SmallDisk disk(folder, DiskBytes);
  if (!disk) GTEST_SKIP() << "no disk of one's own for this user";
  const std::string profile = dir.write("disk/a.iso.disc", "old");
  HeldProfile held;
  ASSERT_EQ(held.hold(profile, 2000), 0);
  disk.fill();
  ASSERT_FALSE(files.writeAll(profile, "not held")) << "there is room left";
  EXPECT_EQ(held.store("new"), 0);
  EXPECT_EQ(TempDir::read(profile), "new");
  EXPECT_NE(held.hold(profile, DiskBytes), 0) << "there is no room left to hold";
  EXPECT_EQ(files.listFolder(folder), (std::vector<std::string>{"a.iso.disc", "filler"}));
}

TEST_F(ImageRoomTest, ABurnThatCannotBeRecordedHasFailed) {
  blank(DiscDvdR);
  const std::string profile = ImageDrive::profileFileOf(image());
  insert("\\", "a", dir.write("a", "content"));
  ASSERT_TRUE(prepare());
  const Ending end = burn([&] {
    // In the way of every file that is to stand there.
    if (std::filesystem::is_regular_file(profile)) std::filesystem::remove(profile);
    std::filesystem::create_directories(profile + "/in-the-way");
  });
  EXPECT_NE(end.error, 0);
  EXPECT_NE(engine->do_GetErrorString().find(profile), std::string::npos);
}

}  // namespace
}  // namespace korvenal::test
