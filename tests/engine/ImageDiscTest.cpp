#include "engine/EngineFixture.h"

#include <filesystem>

namespace korvenal::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

using ImageDiscTest = EngineFixture;

/// How the program tells that a disc is blank.
bool isBlank(Engine& engine) {
  if (engine.do_DiscIs() != DiscDvdPlusRw) return engine.do_SessionsOnDisc() == 0;
  return engine.do_SessionsOnDisc() == 1 && engine.do_GetFreeBlocksOnDisc() > 0 &&
         engine.do_GetFreeBlocksOnDisc() == engine.do_GetTotalBlocksOnDisc();
}

struct TypeCase {
  DiscType type;
  std::int32_t blocks;
  bool erasable;
};

class DiscTypeTest : public EngineFixture, public ::testing::WithParamInterface<TypeCase> {};

INSTANTIATE_TEST_SUITE_P(All, DiscTypeTest,
                         ::testing::Values(TypeCase{DiscCdR, 359849, false},
                                           TypeCase{DiscCdRw, 359849, true},
                                           TypeCase{DiscDvdR, 2298496, false},
                                           TypeCase{DiscDvdRw, 2298496, true},
                                           TypeCase{DiscDvdPlusRw, 2295104, true},
                                           TypeCase{DiscDvdPlusR, 2295104, false},
                                           TypeCase{DiscDvdPlusRDl, 4173824, false},
                                           TypeCase{DiscDvdRam, 2236704, true}),
                         [](const auto& param) { return std::to_string(param.param.type); });

TEST_P(DiscTypeTest, BlankBurnCloseEraseAndBurnAgain) {
  const TypeCase& type = GetParam();
  blank(type.type);
  EXPECT_EQ(engine->do_DiscIs(), type.type);
  EXPECT_EQ(engine->do_Erasable() != 0, type.erasable);
  EXPECT_EQ(engine->do_GetTotalBlocksOnDisc(), type.blocks);
  EXPECT_EQ(disc->doGetInfo('V', "").kind, FileInfo::Kind::Missing) << "no tree on a blank disc";
  if (type.type == DiscDvdPlusRw) {
    EXPECT_EQ(engine->do_SessionsOnDisc(), 0) << "not formatted yet";
    ASSERT_EQ(erase().error, 0);
  }
  EXPECT_TRUE(isBlank(*engine));
  EXPECT_GT(engine->do_Writable(), 0);

  const int sessions = engine->do_SessionsOnDisc();
  insert("\\", "a", dir.write("a", "first"));
  engine->do_SetFinalizeDisc(-1);
  ASSERT_EQ(prepareAndBurn().error, 0) << engine->do_GetErrorString();
  EXPECT_FALSE(isBlank(*engine));
  EXPECT_EQ(readDisc("a"), "first");
  EXPECT_TRUE(type.erasable || engine->do_SessionsOnDisc() > sessions);
  EXPECT_LT(engine->do_GetFreeBlocksOnDisc(), type.blocks);
  EXPECT_EQ(engine->do_Writable() > 0, type.erasable);
  EXPECT_EQ(erase().started, type.erasable);
  if (!type.erasable) return;

  EXPECT_TRUE(isBlank(*engine));
  EXPECT_EQ(readDisc("a"), "<missing>");
  engine->do_ClearAll();
  insert("\\", "b", dir.write("b", "second"));
  ASSERT_EQ(prepareAndBurn().error, 0) << engine->do_GetErrorString();
  EXPECT_EQ(readDisc("a") + readDisc("b"), "<missing>second");
}

TEST_F(ImageDiscTest, ASessionIsAddedToEarlierOnesOrStandsAlone) {
  blank(DiscDvdPlusR);
  insert("F", "kept", dir.write("1", "kept"));
  insert("F", "replaced", dir.write("2", "old"));
  ASSERT_EQ(prepareAndBurn().error, 0);

  engine->do_ClearAll();
  ASSERT_NE(engine->do_ImportSession(0, "\\"), 0);
  engine->do_SetReplaceFile(-1);
  engine->do_CreateDir("\\", "F");
  insert("F", "replaced", dir.write("3", "newer"));
  insert("G", "added", dir.write("4", "added"));
  ASSERT_EQ(prepareAndBurn().error, 0) << engine->do_GetErrorString();
  EXPECT_EQ(engine->do_SessionsOnDisc(), 2);
  EXPECT_EQ(readDisc("F\\kept"), "kept");
  EXPECT_EQ(readDisc("F\\replaced"), "newer");
  EXPECT_EQ(readDisc("G\\added"), "added");
  EXPECT_THAT(run({"xorriso", "-indev", "stdio:" + image(), "-toc"}),
              HasSubstr("ISO session  :   2"));
  EXPECT_THAT(run({"bsdtar", "-xOf", image(), "F/kept"}), HasSubstr("kept"));

  engine->do_ClearAll();
  insert("\\", "alone", dir.write("5", "alone"));
  engine->do_SetFinalizeDisc(-1);
  ASSERT_EQ(prepareAndBurn().error, 0);
  EXPECT_THAT(disc->listFolder('V', ""), ElementsAre("alone"));
  EXPECT_EQ(engine->do_Writable(), 0);
  EXPECT_EQ(engine->do_GetFreeBlocksOnDisc(), 0);
}

TEST_F(ImageDiscTest, TraysOutlastTheProgram) {
  blank(DiscCdR);
  const std::string first = image();
  blank(DiscDvdR, 5000);
  EXPECT_NE(image(), first) << "the name was taken";
  engine->do_EjectMedium();
  EXPECT_TRUE(shelf->isOpen('V'));
  EXPECT_EQ(engine->do_TestUnitReady(), 0);
  EXPECT_EQ(engine->do_DiscIs(), 0);
  ASSERT_TRUE(shelf->insert('W', first));
  EXPECT_FALSE(shelf->insert('V', first)) << "it lies in the other tray";

  restart();
  engine->do_SelectDeviceByLetter('V');
  EXPECT_TRUE(shelf->isOpen('V'));
  engine->do_LoadMedium();
  EXPECT_NE(engine->do_TestUnitReady(), 0);
  EXPECT_EQ(engine->do_GetTotalBlocksOnDisc(), 5000);
  EXPECT_EQ(shelf->discIn('W').file, first);
  EXPECT_THAT(shelf->discsOnShelf(), IsEmpty());
  ASSERT_TRUE(shelf->remove('W'));
  ASSERT_EQ(shelf->discsOnShelf().size(), 1U);
  EXPECT_EQ(shelf->discsOnShelf()[0].typeCode, DiscCdR);

  engine->do_LockMedium();
  engine->do_EjectMedium();
  EXPECT_NE(engine->do_TestUnitReady(), 0) << "a locked tray stays closed";
}

TEST_F(ImageDiscTest, AnImageFromElsewhereIsAPressedDisc) {
  const std::string foreign = dir / "foreign.iso";
  dir.write("tree/a/b.txt", "from elsewhere");
  ASSERT_THAT(
      run({"xorriso", "-outdev", "stdio:" + foreign, "-volid", "OTHER", "-map", dir / "tree", "/"}),
      ::testing::StartsWith("0\n"));
  ASSERT_TRUE(shelf->insert('V', foreign));
  EXPECT_EQ(shelf->discIn('V').label, "OTHER");
  engine->do_SelectDeviceByLetter('V');
  EXPECT_EQ(engine->do_DiscIs(), DiscCdRom);
  EXPECT_EQ(engine->do_Writable() + engine->do_Erasable(), 0);
  EXPECT_EQ(readDisc("a\\b.txt"), "from elsewhere");
}

TEST_F(ImageDiscTest, AnImageThatGoesAwayLeavesNoDisc) {
  blank(DiscCdR);
  insert("\\", "a", dir.write("a", "a"));
  ASSERT_EQ(prepareAndBurn().error, 0);
  const auto stream = disc->open('V', "a");
  ASSERT_TRUE(stream);
  engine->do_EjectMedium();
  char byte = 0;
  EXPECT_LT(stream->read(0, &byte, 1), 0) << "the disc has left the drive";
  engine->do_LoadMedium();
  std::filesystem::remove(image());
  EXPECT_EQ(engine->do_TestUnitReady(), 0);
  EXPECT_EQ(readDisc("a"), "<missing>");
  insert("\\", "b", dir / "a");
  EXPECT_FALSE(prepare());
}

TEST(DiscProfileTest, TextThatBreaksTheRulesIsNoProfile) {
  DiscProfile profile = DiscProfile::blank(DiscDvdPlusR, 0);
  profile.sessions = {32, 1504};
  profile.end = 2816;
  const std::string good = profile.toText();
  const auto read = DiscProfile::parse(good);
  ASSERT_TRUE(read);
  EXPECT_EQ(read->toText(), good);
  EXPECT_TRUE(DiscProfile::parse(good + "unknown=1\n"));
  const auto with = [&](const std::string& line) { return DiscProfile::parse(good + line); };
  EXPECT_FALSE(with("sessions=5,5\n"));
  EXPECT_FALSE(with("sessions=99\n")) << "not in order behind those read before";
  EXPECT_FALSE(with("end=-1\n"));
  EXPECT_FALSE(with("end=1000\n")) << "in front of a session";
  EXPECT_FALSE(with("capacity=99999999999999999999\n"));
  EXPECT_FALSE(with("type=13\n"));
  EXPECT_FALSE(with("nonsense\n"));
  EXPECT_FALSE(DiscProfile::parse(""));
}

}  // namespace
}  // namespace korvenal::test
