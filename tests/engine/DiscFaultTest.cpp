#include "engine/EngineFixture.h"

#include <filesystem>

#include "platform/linux/engine/ImageDriveSettings.h"

namespace korvenal::test {
namespace {

using ::testing::AnyOf;
using ::testing::HasSubstr;
using ::testing::StartsWith;

/// Discs that go wrong on demand.
class DiscFaultTest : public EngineFixture {
 protected:
  /// Adds lines to the profile of the disc in V, which lies in the tray anew.
  void spoil(const std::string& lines) {
    const std::string file = image();
    dir.write("shelf/disc.iso.disc", TempDir::read(file + ".disc") + lines);
    ASSERT_TRUE(shelf->insert('V', file));
  }
};

TEST_F(DiscFaultTest, APreparationAnEraseAndABurnFailWithTheirNumbers) {
  blank(DiscCdRw);
  insert("\\", "a", dir.write("a", std::string(3'000'000, 'a')));
  spoil("fail-prepare=1\n");
  EXPECT_FALSE(prepare());
  EXPECT_NE(engine->do_GetErrorNumber(), 0);

  spoil("fail-prepare=0\nfail-erase=1\nfail-number=14848\n");
  EXPECT_EQ(erase().error, 14848);

  blank(DiscDvdRw);
  const std::string file = image();
  dir.write("shelf/" + std::filesystem::path(file).filename().string() + ".disc",
            TempDir::read(file + ".disc") + "fail-burn=500\nfail-number=1032\n");
  ASSERT_TRUE(shelf->insert('V', file));
  EXPECT_EQ(prepareAndBurn().error, 1032);
  EXPECT_EQ(engine->do_GetErrorNumber(), 1032);
  EXPECT_NE(engine->do_SessionsOnDisc(), 0) << "not blank any more";
  ASSERT_EQ(erase().error, 0) << "an erase mends it";
  EXPECT_EQ(prepareAndBurn().error, 1032) << "the fault is the disc's own";
}

TEST_F(DiscFaultTest, ABadPlaceIsAnErrorAndThePlacesBeforeItAreNot) {
  blank(DiscCdR);
  insert("\\", "a", dir.write("a", std::string(100'000, 'a')));
  insert("\\", "b", dir.write("b", std::string(4'000'000, 'b')));
  ASSERT_EQ(prepareAndBurn().error, 0);
  spoil("bad-block=1000\n");
  EXPECT_EQ(readDisc("a"), std::string(100'000, 'a'));
  EXPECT_EQ(readDisc("b"), "<unreadable>");
}

TEST_F(DiscFaultTest, ADiscPulledWhileItIsReadLeavesAnOpenTray) {
  blank(DiscCdR);
  insert("\\", "b", dir.write("b", std::string(4'000'000, 'b')));
  ASSERT_EQ(prepareAndBurn().error, 0);
  spoil("pull-after=600\n");
  EXPECT_EQ(readDisc("b"), "<unreadable>");
  EXPECT_EQ(engine->do_TestUnitReady(), 0);
  EXPECT_TRUE(shelf->isOpen('V'));
  EXPECT_EQ(readDisc("b"), "<missing>");
  engine->do_LoadMedium();
  EXPECT_NE(engine->do_TestUnitReady(), 0);
}

TEST_F(DiscFaultTest, AFailedAppendLeavesTheEarlierTreeToEveryReader) {
  for (const DiscType type : {DiscCdR, DiscDvdPlusR, DiscDvdRam}) {
    engine->do_ClearAll();
    blank(type);
    insert("\\", "old", dir.write("old", "old"));
    ASSERT_EQ(prepareAndBurn().error, 0);
    engine->do_ClearAll();
    ASSERT_NE(engine->do_ImportSession(0, "\\"), 0);
    insert("\\", "new", dir.sparse("new", 200'000'000));
    ASSERT_TRUE(prepare());
    EXPECT_NE(burn([&] {
                if (engine->do_GetBlocksWritten() > 0) engine->do_AbortBurn();
              }).error,
              0);
    EXPECT_EQ(readDisc("old"), "old") << int{type};
    EXPECT_EQ(readDisc("new"), "<missing>");
    EXPECT_EQ(engine->do_Writable() > 0, type == DiscDvdRam);
    const std::string seen = run({"bsdtar", "-tf", image()});
    EXPECT_THAT(seen, StartsWith("0\n"));
    EXPECT_THAT(seen, ::testing::Not(HasSubstr("new")));
    shelf->remove('V');
  }
}

TEST_F(DiscFaultTest, AnImageThatCannotBeWrittenFailsTheBurnAndIsNotSpoilt) {
  blank(DiscDvdR);
  insert("\\", "a", dir.write("a", "a"));
  ASSERT_TRUE(prepare());
  // A folder in its place refuses even the superuser.
  const std::string file = image();
  std::filesystem::remove(file);
  std::filesystem::create_directory(file);
  const Ending end = burn();
  EXPECT_TRUE(!end.started || end.error != 0);
  EXPECT_FALSE(engine->do_GetErrorString().empty());
  std::filesystem::remove(file);
  dir.write("shelf/disc.iso", "");
  ASSERT_TRUE(shelf->insert('V', file));
  EXPECT_GT(engine->do_Writable(), 0) << "nothing was written on it";
}

TEST_F(DiscFaultTest, DrivesWriteWhatTheSettingsSay) {
  const std::string settings =
      dir.write("settings", "[ImageDrives]\nDrives=9\nDrive1=rom\nDrive2=CD\nDrive3=DVD\n");
  const ImageShelf::Options options = readImageDrives(Profile(files, settings), dir / "shelf");
  EXPECT_EQ(options.drives, 5);
  EXPECT_TRUE(options.feeder);
  disc.reset();
  engine.reset();
  shelf = std::make_unique<ImageShelf>(files, options);
  engine = std::make_unique<Engine>(clock, shelf->drives(), calls);
  struct Expected {
    char letter;
    bool burner, dvd, dualLayer, cdR;
  };
  for (const Expected& drive :
       {Expected{'V', false, false, false, false}, Expected{'W', true, false, false, true},
        Expected{'X', true, true, false, true}, Expected{'Y', true, true, true, true}}) {
    ASSERT_NE(engine->do_SelectDeviceByLetter(drive.letter), 0);
    EXPECT_EQ(engine->do_DeviceIsBurner() != 0, drive.burner);
    EXPECT_EQ(engine->do_DeviceCan(13) != 0, drive.dvd);
    EXPECT_EQ(engine->do_DeviceCan(18) != 0, drive.dualLayer);
    EXPECT_EQ(engine->do_DeviceCan(19) + engine->do_DeviceCan(12), 0);
    for (const DiscType type : {DiscCdR, DiscDvdR, DiscDvdPlusRDl}) {
      ASSERT_TRUE(shelf->insertBlank(drive.letter, type, "disc", 0));
      const bool expected = type == DiscCdR    ? drive.cdR
                            : type == DiscDvdR ? drive.dvd
                                               : drive.dualLayer;
      EXPECT_EQ(engine->do_Writable() > 0, expected) << drive.letter << int{type};
    }
  }
}

TEST_F(DiscFaultTest, WhatWasBrokenOffLeavesNothingOnTheNextDisc) {
  // An erase was cut off after the profile, a burn before its end was recorded.
  for (const bool erased : {true, false}) {
    engine->do_ClearAll();
    blank(DiscDvdRam);
    insert("\\", "old", dir.write("old", std::string(5'000'000, 'o')));
    ASSERT_EQ(prepareAndBurn().error, 0);
    const std::string file = image();
    const auto sizeBefore = std::filesystem::file_size(file);
    DiscProfile profile = *DiscProfile::parse(TempDir::read(file + ".disc"));
    if (erased) profile.erase();
    profile.writing = !erased;
    dir.write("shelf/" + std::filesystem::path(file).filename().string() + ".disc",
              profile.toText());
    restart();
    engine->do_SelectDeviceByLetter('V');
    ASSERT_NE(engine->do_TestUnitReady(), 0);
    EXPECT_EQ(readDisc("old") == "<missing>", erased);
    insert("\\", "new", dir.write("new", "new"));
    ASSERT_EQ(prepareAndBurn().error, 0) << engine->do_GetErrorString();
    EXPECT_EQ(readDisc("new"), "new");
    EXPECT_EQ(std::filesystem::file_size(file) < sizeBefore, erased);
    shelf->remove('V');
  }
}

TEST_F(DiscFaultTest, AFreshPlusRwIsBlankAndNotDamaged) {
  blank(DiscDvdPlusRw);
  EXPECT_FALSE(shelf->discIn('V').closed);
  EXPECT_EQ(shelf->discIn('V').sessions, 0);
  EXPECT_EQ(engine->do_SessionsOnDisc(), 0);
  ASSERT_EQ(erase().error, 0);
  for (int session = 1; session <= 2; ++session) {
    EXPECT_EQ(engine->do_SessionsOnDisc(), 1) << "whatever it holds";
    insert("\\", "a", dir.write("a", "a"));
    ASSERT_EQ(prepareAndBurn().error, 0);
    EXPECT_EQ(shelf->discIn('V').sessions, session);
  }
}

}  // namespace
}  // namespace korvenal::test
