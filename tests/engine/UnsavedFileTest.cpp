#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "engine/EngineFixture.h"
#include "platform/FaultList.h"
#include "platform/Text.h"

namespace korvenal::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

namespace fs = std::filesystem;

constexpr const char* ListName = "_KORVEN{Job(2026-11-23-14-15-F)}.unsaved";

/// Sources that are not at the burn what they were when they were planned, or prepared.
class UnsavedFileTest : public EngineFixture {
 protected:
  /// Writes into a file and puts its modification time back.
  static void rewriteInPlace(const std::string& file, std::int64_t at, const std::string& bytes) {
    struct stat before {};
    ASSERT_EQ(::stat(file.c_str(), &before), 0);
    {
      std::fstream stream(file, std::ios::in | std::ios::out | std::ios::binary);
      stream.seekp(at);
      stream << bytes;
    }
    const struct timespec times[] = {before.st_atim, before.st_mtim};
    ASSERT_EQ(::utimensat(AT_FDCWD, file.c_str(), times, 0), 0);
  }
  std::vector<SourceFinding> measure() {
    return engine->do_MeasureSources([] { return false; });
  }
  /// Burns; the strike comes once, when the burn has begun to write.
  Ending burnAndStrike(const std::function<void()>& strike) {
    bool struck = false;
    const Ending end = burn([&] {
      if (struck || engine->do_GetBlocksWritten() == 0) return;
      struck = true;
      strike();
    });
    EXPECT_TRUE(struck);
    return end;
  }
  std::optional<std::vector<std::string>> listOnDisc() {
    return FaultList::parse(readDisc(ListName));
  }
};

TEST_F(UnsavedFileTest, TheLastFileOfASessionNamesThePaddingInIt) {
  blank(DiscDvdPlusR);
  const std::string bad = dir.write("bad", std::string(3'000'000, 'b'));
  const std::string worse = dir.write("worse", std::string(5'000, 'w'));
  insert("F", "bad", bad);
  insert("\\", "good", dir.write("good", "good"));
  insert("\\", "worse", worse);
  engine->do_SetFaultList(ListName, FaultList::Bytes);
  ASSERT_TRUE(prepare());
  ::unlink(bad.c_str());
  ::truncate(worse.c_str(), 7);
  ASSERT_EQ(burn().error, 0);
  EXPECT_EQ(disc->doGetInfo('V', ListName).size, Fixed4(FaultList::Bytes));
  EXPECT_EQ(listOnDisc(), (std::vector<std::string>{"F\\bad", "worse"}));
  EXPECT_EQ(readDisc("good"), "good");
  ASSERT_EQ(engine->do_GetSkippedFiles().size(), 2U);
  EXPECT_EQ(engine->do_GetSkippedFiles()[0].source, bad);
  EXPECT_EQ(engine->do_GetSkippedFiles()[0].reason, "No such file or directory");

  engine->do_ClearAll();
  ASSERT_NE(engine->do_ImportSession(0, "\\"), 0);
  insert("\\", "more", dir.write("more", "more"));
  engine->do_SetFaultList(ListName, FaultList::Bytes);
  ASSERT_EQ(prepareAndBurn().error, 0);
  EXPECT_EQ(listOnDisc(), std::vector<std::string>()) << "a session speaks of itself";
}

TEST_F(UnsavedFileTest, WithoutRoomInTheListAFaultSpoilsTheBurn) {
  struct Case {
    std::int64_t listBytes;
    std::size_t nameBytes;
    bool well;
  };
  for (const Case& one : {Case{0, 4, false}, Case{FaultList::FewestBytes, 200, true},
                          Case{FaultList::FewestBytes, 250, false}}) {
    blank(DiscDvdPlusR);
    engine->do_ClearAll();
    std::vector<std::string> sources;
    for (char name = 'a'; name < 'j'; ++name) {
      sources.push_back(dir.write(std::string(1, name), "content"));
      insert("\\", std::string(one.nameBytes, name), sources.back());
    }
    engine->do_SetFaultList(ListName, one.listBytes);
    ASSERT_TRUE(prepare());
    for (const std::string& source : sources) ::unlink(source.c_str());
    const Ending end = burn();
    EXPECT_EQ(end.error == 0, one.well) << one.listBytes << " " << one.nameBytes;
    EXPECT_THAT(engine->do_GetSkippedFiles(), Not(IsEmpty())) << "the file is told all the same";
    EXPECT_EQ(listOnDisc().has_value(), one.well);
    shelf->remove('V');
  }
}

TEST_F(UnsavedFileTest, TheListTakesTheRoomThatIsLeft) {
  const std::string source = dir.write("file", std::string(500'000, 'f'));
  blank(DiscDvdPlusR);
  insert("\\", "file", source);
  ASSERT_TRUE(prepare());
  const std::int64_t track = engine->do_GetImageSize();
  struct Case {
    std::int64_t free;  ///< blocks behind the track
    std::int64_t list;  ///< bytes
  };
  for (const Case& one : {Case{100, FaultList::Bytes}, Case{12, 11 * BlockBytes}, Case{1, 0}}) {
    shelf->remove('V');
    engine->do_ClearAll();
    blank(DiscDvdPlusR, track + one.free);
    insert("\\", "file", source);
    engine->do_SetFaultList(ListName, FaultList::Bytes);
    ASSERT_TRUE(prepare());
    EXPECT_LT(engine->do_GetImageSize(), engine->do_GetFreeBlocksOnDisc());
    ASSERT_EQ(burn().error, 0) << engine->do_GetErrorString();
    EXPECT_EQ(disc->doGetInfo('V', ListName).size, Fixed4(one.list)) << one.free;
    EXPECT_EQ(readDisc("file").size(), 500'000U);
  }
}

TEST_F(UnsavedFileTest, MeasuredSourcesAreBurnedAsTheyAreNow) {
  blank(DiscCdR);
  engine->do_SetPlannedSource({5, 12345});
  insert("\\", "grown", dir.write("grown", "123456789"));
  insert("\\", "gone", dir / "gone");
  engine->do_SetPlannedSource({4, {}});
  insert("\\", "same", dir.write("same", "same"));
  insert("\\", "unwanted", dir.write("unwanted", "x"));
  const std::string split = dir.write("split", std::string(10 * BlockBytes, 's'));
  engine->do_InsertFileWithName("\\", split, "split.001", "", -1, 8, 3 * BlockBytes, 0);

  const auto findings = measure();
  ASSERT_EQ(findings.size(), 3U);
  EXPECT_EQ(findings[0].file, 0);
  EXPECT_EQ(findings[0].reason, "");
  EXPECT_EQ(findings[0].now.size, Fixed4(9));
  EXPECT_EQ(findings[1].file, 1);
  EXPECT_EQ(findings[1].reason, "No such file or directory");
  EXPECT_EQ(findings[2].file, 4) << "its range is no longer there";
  const FileInfo seen = files.doGetInfo(dir / "same");
  EXPECT_EQ(engine->do_GetMeasuredSource(2).changedNanoseconds, seen.changedNanoseconds);
  EXPECT_EQ(engine->do_GetMeasuredSource(2).inode, seen.inode);
  EXPECT_EQ(engine->do_GetMeasuredSource(1).kind, FileInfo::Kind::Missing);

  dir.write("gone", "back");
  engine->do_LeaveOutSource(4);
  engine->do_LeaveOutSource(3);
  EXPECT_THAT(measure(), IsEmpty()) << "what was found is not looked at again";
  engine->do_SetSkipFileOnError(0);
  ASSERT_EQ(prepareAndBurn().error, 0) << engine->do_GetErrorString();
  EXPECT_THAT(disc->listFolder('V', ""), ElementsAre("gone", "grown", "same"));
  EXPECT_EQ(readDisc("grown") + readDisc("gone"), "123456789back");
  EXPECT_THAT(unsaved(), IsEmpty());
}

TEST_F(UnsavedFileTest, AChangeTimeThatMovedAloneIsSettledByReadingAgain) {
  constexpr std::int64_t Large = 300'000'000;
  struct Case {
    const char* what;
    std::function<void(const std::string&)> strike;
    bool saved;
  };
  const Case cases[] = {
      {"new permissions", [](const std::string& file) { ::chmod(file.c_str(), 0600); }, true},
      {"a new name and back",
       [](const std::string& file) {
         fs::rename(file, file + ".x");
         fs::rename(file + ".x", file);
       },
       true},
      {"rewritten in front", [](const std::string& file) { rewriteInPlace(file, 0, "new"); },
       false},
      {"rewritten and new permissions",
       [](const std::string& file) {
         rewriteInPlace(file, 0, "new");
         ::chmod(file.c_str(), 0600);
       },
       false},
  };
  for (const Case& one : cases) {
    engine->do_ClearAll();
    blank(DiscDvdPlusR);
    const std::string file = dir.sparse("large", Large);
    insert("\\", "large", file);
    engine->do_SetFaultList(ListName, FaultList::Bytes);
    measure();
    ASSERT_TRUE(prepare());
    ASSERT_EQ(burnAndStrike([&] { one.strike(file); }).error, 0);
    EXPECT_EQ(unsaved().empty(), one.saved) << one.what;
    EXPECT_EQ(listOnDisc().value_or(unsaved()).empty(), one.saved) << one.what;
    shelf->remove('V');
    ::unlink(file.c_str());
  }
}

TEST_F(UnsavedFileTest, AFileRewrittenBeforeItsTurnWithItsTimePutBackIsAChangedFile) {
  blank(DiscDvdPlusR);
  const std::string rewritten = dir.write("rewritten", "before");
  const std::string hidden = dir.write("hidden", "before");
  insert("\\", "hidden", hidden);
  insert("\\", "rewritten", rewritten);
  engine->do_SetFaultList(ListName, FaultList::Bytes);
  measure();
  ASSERT_TRUE(prepare());
  rewriteInPlace(rewritten, 0, "behind");
  ::chmod(hidden.c_str(), 0600);
  ASSERT_EQ(burn().error, 0);
  EXPECT_THAT(unsaved(), ElementsAre("rewritten"));
}

TEST_F(UnsavedFileTest, APieceIsNotTakenFromAFileThatWasPutInThePlaceOfItsOwn) {
  blank(DiscDvdPlusR);
  const std::string split = dir.write("split", std::string(10 * BlockBytes, 's'));
  engine->do_InsertFileWithName("\\", split, "split.001", "", -1, 8, 2 * BlockBytes, 0);
  engine->do_SetFaultList(ListName, FaultList::Bytes);
  measure();
  ASSERT_TRUE(prepare());
  const auto date = fs::last_write_time(split);
  const std::string other = dir.write("other", std::string(10 * BlockBytes, 'o'));
  fs::last_write_time(other, date);
  ::chmod(other.c_str(), 0600);
  fs::rename(other, split);
  ASSERT_EQ(burn().error, 0);
  EXPECT_THAT(unsaved(), ElementsAre("split.001"));
}

TEST_F(UnsavedFileTest, EveryTreeTellsTheDatesOfFiles) {
  blank(DiscCdR);
  const std::string old = dir.write("old", "old");
  const struct timespec times[] = {{1'000'000'000, 0}, {1'000'000'000, 0}};  // 2001-09-09
  ASSERT_EQ(::utimensat(AT_FDCWD, old.c_str(), times, 0), 0);
  insert("\\", "old.txt", old);
  ASSERT_EQ(prepareAndBurn().error, 0);
  for (const char* options : {"!rockridge,joliet", "!rockridge,!joliet"}) {
    const std::string listed = run({"env", "TZ=UTC", "bsdtar", "--options",
                                    std::string("iso9660:") + options, "-tvf", image()});
    EXPECT_THAT(Text::toLower(listed), HasSubstr("sep  9  2001 old.txt")) << options;
  }
}

}  // namespace
}  // namespace korvenal::test
