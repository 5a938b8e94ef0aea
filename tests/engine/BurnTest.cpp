#include "engine/EngineFixture.h"

#include <sys/stat.h>
#include <unistd.h>

#include <thread>

namespace korvenal::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

using BurnTest = EngineFixture;

TEST_F(BurnTest, BurnedFilesComeBackAndOtherReadersSeeThem) {
  blank(DiscDvdPlusR);
  const std::string source = dir.write("source/a.txt", "hello");
  ::chmod(source.c_str(), 0640);
  engine->do_CreateDir("\\", "Photos");
  engine->do_CreateDir("Photos", "Empty");
  insert("\\", "a.txt", source);
  insert("\\", "nothing", dir.write("nothing", ""));
  insert("Photos", "Größe #1.txt", source);
  ASSERT_TRUE(prepare()) << engine->do_GetErrorString();
  engine->do_SetVolumeID("Backup #1");
  const std::int32_t size = engine->do_GetImageSize();
  const std::int32_t free = engine->do_GetFreeBlocksOnDisc();
  std::int32_t written = 0;
  const Ending end = burn([&] { written = std::max(written, engine->do_GetBlocksWritten()); });
  ASSERT_EQ(end.error, 0) << engine->do_GetErrorString();
  EXPECT_LE(written, size);
  EXPECT_GE(free - engine->do_GetFreeBlocksOnDisc(), size);

  EXPECT_EQ(readDisc("Photos\\Größe #1.txt"), "hello");
  EXPECT_EQ(readDisc("Photos\\none"), "<missing>");
  const FileInfo info = disc->doGetInfo('V', "a.txt");
  EXPECT_EQ(info.permissions, 0640U);
  EXPECT_EQ(info.modified, files.doGetInfo(source).modified);
  EXPECT_EQ(disc->doGetInfo('V', "Photos\\Empty\\").kind, FileInfo::Kind::Folder);
  EXPECT_THAT(disc->listFolder('V', ""), ElementsAre("Photos", "a.txt", "nothing"));
  EXPECT_EQ(readDisc("nothing"), "");
  ASSERT_TRUE(disc->doGetVolumeInfo('V'));
  EXPECT_EQ(disc->doGetVolumeInfo('V')->label, "Backup #1");

  EXPECT_THAT(run({"bsdtar", "-tf", image()}), StartsWith("0\n"));
  EXPECT_THAT(run({"bsdtar", "-tf", image()}), HasSubstr("Photos/Größe #1.txt"));
  EXPECT_THAT(run({"7z", "l", image()}), HasSubstr("5 ")) << "sizes in the Joliet tree";
  EXPECT_THAT(run({"xorriso", "-indev", "stdio:" + image(), "-find", "/"}),
              HasSubstr("'/Photos/Größe #1.txt'"));
}

TEST_F(BurnTest, NamesAreAsGivenHoweverLongDeepOrAlike) {
  blank(DiscCdR);
  const std::string source = dir.write("s", "x");
  std::string folder;
  for (int level = 1; level <= 31; ++level)
    folder +=
        (level == 1 ? "" : "\\") + std::string("a rather long level ") + std::to_string(level);
  const std::string longName = std::string(250, 'n') + ".text";
  for (const std::string& name : {longName, std::string("Case"), std::string("cASE"),
                                  std::string("a:b*c?.txt"), std::string("trailing dot.")})
    insert(folder, name, source);
  ASSERT_EQ(prepareAndBurn().error, 0) << engine->do_GetErrorString();
  for (const std::string& name : {longName, std::string("Case"), std::string("cASE"),
                                  std::string("a:b*c?.txt"), std::string("trailing dot.")})
    EXPECT_EQ(readDisc(folder + "\\" + name), "x") << name;
  const std::string seen = run({"bsdtar", "-tf", image()});
  EXPECT_THAT(seen, HasSubstr("level 31/" + longName));
  EXPECT_THAT(seen, HasSubstr("level 31/cASE"));
  EXPECT_THAT(seen, HasSubstr("level 31/Case"));
}

TEST_F(BurnTest, FilesOfOneNameInAFolderAllReachTheDisc) {
  blank(DiscCdR);
  engine->do_CreateDir("\\", "same");
  insert("\\", "same", dir.write("1", "one"));
  insert("\\", "same", dir.write("2", "two"));
  ASSERT_EQ(prepareAndBurn().error, 0);
  EXPECT_EQ(disc->doGetInfo('V', "same").kind, FileInfo::Kind::Folder);
  EXPECT_EQ(readDisc("same (2)"), "one");
  EXPECT_EQ(readDisc("same (3)"), "two");
}

TEST_F(BurnTest, PiecesHoldTheirRangeOfTheSource) {
  blank(DiscDvdR);
  std::string content(3 * 1024 * 1024 + 77, '\0');
  for (std::size_t i = 0; i < content.size(); ++i) content[i] = static_cast<char>(i * 31 >> 4);
  const std::string source = dir.write("big", content);
  const std::int64_t cut = 700 * BlockBytes;
  const auto size = static_cast<std::int64_t>(content.size());
  engine->do_InsertFileWithName("\\", source, "big.001", "", -1, 0, cut, 0);
  engine->do_SetPlannedSource({size, files.doGetInfo(source).modified});
  engine->do_InsertFileWithName("\\", source, "big.002", "", -1, 700, size - cut, 0);
  // A range that the file does not have, and numbers that no file has.
  engine->do_InsertFileWithName("\\", source, "big.003", "", -1, 700, size - cut + 1, 0);
  engine->do_InsertFileWithName("\\", source, "big.004", "", -1, INT64_MAX, 5, INT64_MAX);
  const Ending end = prepareAndBurn();
  ASSERT_EQ(end.error, 0);
  EXPECT_EQ(end.fileErrors, 2);
  EXPECT_EQ(readDisc("big.001") + readDisc("big.002"), content);
  EXPECT_THAT(unsaved(), ElementsAre("big.003", "big.004"));
}

TEST_F(BurnTest, SourcesThatAreNotAsPlannedStayOutOfTheTree) {
  blank(DiscCdR);
  ASSERT_EQ(::mkfifo((dir / "pipe").c_str(), 0600), 0);
  const std::string target = dir.write("target", "linked");
  ASSERT_EQ(::symlink(target.c_str(), (dir / "link").c_str()), 0);
  insert("\\", "gone", dir / "gone");
  insert("\\", "folder", dir.makeFolder("folder"));
  insert("\\", "pipe", dir / "pipe");
  engine->do_SetPlannedSource({5, {}});
  insert("\\", "size", dir.write("size", "123456"));
  engine->do_SetPlannedSource({1, 12345});
  insert("\\", "time", dir.write("time", "1"));
  insert("\\", "link", dir / "link");
  insert("\\", "a/b", target);
  const Ending end = prepareAndBurn();
  ASSERT_EQ(end.error, 0) << engine->do_GetErrorString();
  EXPECT_EQ(end.fileErrors, 6);
  EXPECT_THAT(disc->listFolder('V', ""), ElementsAre("link"));
  EXPECT_EQ(readDisc("link"), "linked");
  EXPECT_THAT(TempDir::read(dir / "burn.log"), HasSubstr(dir / "gone"));

  engine->do_SetSkipFileOnError(0);
  insert("\\", "gone", dir / "gone");
  EXPECT_FALSE(prepare());
  EXPECT_NE(engine->do_GetErrorNumber(), 0);
}

// What happens to a source between its preparation and the moment when it is read.
struct Mishap {
  const char* name;
  void (*strike)(const std::string& file);
};

class SourceMishap : public EngineFixture, public ::testing::WithParamInterface<Mishap> {};

INSTANTIATE_TEST_SUITE_P(
    All, SourceMishap,
    ::testing::Values(
        Mishap{"Vanishes", [](const std::string& file) { ::unlink(file.c_str()); }},
        Mishap{"Shrinks", [](const std::string& file) { (void)!::truncate(file.c_str(), 10); }},
        Mishap{"Grows", [](const std::string& file) { (void)!::truncate(file.c_str(), 9999999); }},
        Mishap{"BecomesAFolder",
               [](const std::string& file) {
                 ::unlink(file.c_str());
                 ::mkdir(file.c_str(), 0700);
               }},
        Mishap{"BecomesAPipe",
               [](const std::string& file) {
                 ::unlink(file.c_str());
                 (void)!::mkfifo(file.c_str(), 0600);
               }}),
    [](const auto& param) { return param.param.name; });

TEST_P(SourceMishap, IsPaddedAndToldWhenSkipping) {
  blank(DiscDvdPlusR);
  const std::string source = dir.write("bad", std::string(2'500'001, 'b'));
  insert("\\", "good", dir.write("good", "good"));
  insert("F", "bad", source);
  insert("\\", "last", dir.write("last", "last"));
  engine->do_SetFaultList("list", 4096);
  ASSERT_TRUE(prepare());
  GetParam().strike(source);
  const Ending end = burn();
  ASSERT_EQ(end.error, 0) << engine->do_GetErrorString();
  EXPECT_EQ(end.fileErrors, 1);
  EXPECT_THAT(unsaved(), ElementsAre("F\\bad"));
  EXPECT_EQ(disc->doGetInfo('V', "F\\bad").size, Fixed4(2'500'001));
  EXPECT_EQ(readDisc("good") + readDisc("last"), "goodlast");
}

TEST_P(SourceMishap, FailsTheBurnOtherwise) {
  blank(DiscDvdPlusR);
  const std::string source = dir.write("bad", std::string(2'500'001, 'b'));
  insert("\\", "bad", source);
  engine->do_SetFileError_Skip(0);
  ASSERT_TRUE(prepare());
  GetParam().strike(source);
  const Ending end = burn();
  EXPECT_TRUE(end.finished);
  EXPECT_NE(end.error, 0);
  EXPECT_EQ(engine->do_Writable(), 0) << "a write-once disc does not forgive";
  EXPECT_EQ(disc->doGetInfo('V', "bad").kind, FileInfo::Kind::Missing);
}

TEST_F(BurnTest, AStopEndsTheBurnAndTheDrivesCanGoOn) {
  blank(DiscCdR);
  insert("\\", "large", dir.sparse("large", 600'000'000));
  ASSERT_TRUE(prepare());
  bool stopped = false;
  const Ending end = burn([&] {
    if (stopped || engine->do_GetBlocksWritten() == 0) return;
    EXPECT_EQ(engine->do_TestUnitReady(), 0);
    engine->do_UnlockMedium();
    engine->do_EjectMedium();
    EXPECT_FALSE(shelf->remove('V'));
    engine->do_AbortBurn();
    stopped = true;
  });
  ASSERT_TRUE(stopped);
  EXPECT_NE(end.error, 0);
  EXPECT_EQ(engine->do_GetState(), 0);
  EXPECT_EQ(engine->do_Writable(), 0);
  EXPECT_NE(engine->do_SessionsOnDisc(), 0) << "not blank any more";
  EXPECT_EQ(disc->doGetInfo('V', "").kind, FileInfo::Kind::Missing);

  engine->do_ClearAll();
  blank(DiscCdR);
  insert("\\", "small", dir.write("small", "small"));
  ASSERT_EQ(prepareAndBurn().error, 0) << engine->do_GetErrorString();
  EXPECT_EQ(readDisc("small"), "small");
}

TEST_F(BurnTest, AStopOfThePreparationLeavesNothingPrepared) {
  blank(DiscCdR);
  insert("F", "file", dir.write("source", "x"));
  ASSERT_LE(engine->do_Prepare([] { return true; }), 0);
  EXPECT_EQ(engine->do_GetErrorString(), "Operation canceled");
  ASSERT_FALSE(burn().started);
  ASSERT_GT(engine->do_Prepare([] { return false; }), 0);
  EXPECT_EQ(burn().error, 0);
}

TEST_F(BurnTest, ATrackLargerThanTheDiscIsNotBegun) {
  blank(DiscDvdPlusR, 1000);
  insert("\\", "large", dir.sparse("large", 1000 * BlockBytes));
  ASSERT_TRUE(prepare());
  EXPECT_GT(engine->do_GetImageSize(), engine->do_GetFreeBlocksOnDisc());
  EXPECT_FALSE(burn().started);
  EXPECT_EQ(engine->do_SessionsOnDisc(), 0) << "still blank";
}

TEST_F(BurnTest, TheEndOfTheProgramEndsABurn) {
  blank(DiscDvdR);
  insert("\\", "large", dir.sparse("large", 3'000'000'000));
  ASSERT_TRUE(prepare());
  ASSERT_NE(engine->do_Burn({}, {}, 0, ""), 0);
  while (engine->do_GetBlocksWritten() == 0) std::this_thread::yield();
  restart();
  engine->do_SelectDeviceByLetter('V');
  EXPECT_EQ(engine->do_DiscIs(), DiscDvdR);
  EXPECT_EQ(engine->do_Writable(), 0);
}

}  // namespace
}  // namespace korvenal::test
