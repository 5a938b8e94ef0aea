#include "burn/SourceChanges.h"

#include <gtest/gtest.h>

#include "burn/DiscWriter.h"
#include "support/BurnWorld.h"

namespace korvenal::test {
namespace {

using ::testing::HasSubstr;

/// Files in memory take no index.
void planWithoutIndex(BurnWorld& world) {
  world.planThreeDiscs();
  world.plan.IndexOnDiscs = false;
}

struct SourceChangesTest : testing::Test {
  BurnWorld world;
  DiscWriter writer{world.services};
  DiscRequest request;

  SourceChangesTest() { planWithoutIndex(world); }
  void write(const FakeDisc& disc = {}) {
    world.engine.drives['V'] = {.disc = disc};
    writer.doWriteDiscs(request);
  }
  bool isOnDisc(const std::string& path) { return world.engine.disc().files.contains(path); }
  FileInfo& source(const std::string& name) { return world.files.sources["/src/" + name]; }
  bool isLost(const std::string& name) const {
    const PlanTable& table = world.plan.vsBuffer;
    for (int row = 1; row < table.Rows(); ++row)
      if (table.fileOnDisc(row).ends_with(name)) return table.row(row).lost;
    ADD_FAILURE() << name;
    return false;
  }
};

TEST_F(SourceChangesTest, AFileThatCannotBeSavedIsAskedAboutUnlessErrorsAreSkipped) {
  struct Case {
    std::deque<Answer> answers;
    const char* note;
    bool saved;
  };
  for (const Case& one : {Case{{Answer::Skip}, "1 backup file error.", false},
                          Case{{Answer::Retry, Answer::Retry}, "Success.", true},
                          Case{{Answer::Stop}, "Action stop by user.", false}}) {
    BurnWorld fresh;
    planWithoutIndex(fresh);
    fresh.settings.SkipError = false;
    const FileInfo a = fresh.files.sources.extract("/src/a.jpg").mapped();
    fresh.desktop.answers = one.answers;
    fresh.engine.look = [&](const std::string& path) {
      if (path == "/src/a.jpg" && one.saved && fresh.desktop.answers.empty())
        fresh.files.sources[path] = a;
      return fresh.files.doGetInfo(path);
    };
    fresh.engine.drives['V'].disc = FakeDisc();
    DiscRequest from;
    DiscWriter writes(fresh.services);
    writes.doWriteDiscs(from);
    EXPECT_EQ(fresh.note(1), one.note);
    EXPECT_EQ(fresh.desktop.asked.size(), one.answers.size());
    EXPECT_THAT(fresh.desktop.asked.at(0).text, HasSubstr("/src/a.jpg: No such file"));
    EXPECT_EQ(fresh.engine.disc().files.contains("Photos\\a.jpg"), one.saved);
    EXPECT_EQ(writes.faults.files, one.note == std::string("1 backup file error.") ? 1 : 0);
    EXPECT_FALSE(fresh.state.IgnoreEvents);
  }
}

TEST_F(SourceChangesTest, WhatATryInVainFoundDoesNotHoldForTheNext) {
  const FileInfo a = source("a.jpg");
  world.files.sources.erase("/src/a.jpg");
  world.engine.failing["do_Burn"] = {1};
  write();
  EXPECT_EQ(world.note(1), "Error: Data buffer allocated failed.");
  EXPECT_TRUE(world.hasEvent("*/src/a.jpg: No such file"));
  EXPECT_TRUE(isLost("a.jpg"));
  world.files.sources["/src/a.jpg"] = a;
  write();
  EXPECT_EQ(world.note(2), "Success.");
  EXPECT_TRUE(isOnDisc("Photos\\a.jpg"));
  EXPECT_FALSE(isLost("a.jpg"));
  EXPECT_EQ(writer.faults.files, 0);
}

TEST_F(SourceChangesTest, APieceOfAnotherStateIsNotBurned) {
  write();
  EXPECT_TRUE(isOnDisc("Photos\\big.iso\\big.iso.001"));
  ++source("big.iso").changedNanoseconds;
  write();
  EXPECT_FALSE(isOnDisc("Photos\\big.iso\\big.iso.002"));
  EXPECT_TRUE(isOnDisc("Photos\\b.jpg"));
  EXPECT_TRUE(isLost("big.iso.001") && isLost("big.iso.002"));
  EXPECT_TRUE(world.plan.IndexOutdated);
  EXPECT_EQ(writer.faults.files, 1);
  EXPECT_THAT(world.events(), HasSubstr("*/src/big.iso: The file has changed"));
  writer.doBeginSet();
  EXPECT_FALSE(isLost("big.iso.001") || isLost("big.iso.002")) << "all begins anew";
}

TEST_F(SourceChangesTest, ASplitFileOfAnotherStateIsAskedAboutUnlessErrorsAreSkipped) {
  world.settings.SkipError = false;
  write();
  ++source("big.iso").changedNanoseconds;
  world.desktop.answers = {Answer::Retry, Answer::Stop};
  write();
  EXPECT_EQ(world.desktop.asked.size(), 2U);
  EXPECT_EQ(world.note(2), "Action stop by user.");
  EXPECT_FALSE(isLost("big.iso.002"));

  world.state.StopAction = false;
  world.desktop.answers = {Answer::Skip};
  write();
  EXPECT_TRUE(isOnDisc("Photos\\b.jpg"));
  EXPECT_TRUE(isLost("big.iso.002"));
}

TEST_F(SourceChangesTest, ASplitFileIsTakenAsItIsNowWhenItFitsItsPieces) {
  constexpr std::int64_t FirstPiece = 4'194'304;
  source("big.iso").size = Fixed4(FirstPiece + 5);
  source("big.iso").modified += 1;
  write();
  write();
  EXPECT_EQ(world.note(2), "Success.");
  EXPECT_EQ(world.engine.disc().files["Photos\\big.iso\\big.iso.002"], 5);
  EXPECT_EQ(writer.faults.files, 0);

  for (const std::int64_t size : {FirstPiece, std::int64_t{10'485'761}}) {
    BurnWorld fresh;
    planWithoutIndex(fresh);
    fresh.files.sources["/src/big.iso"].size = Fixed4(size);
    fresh.engine.drives['V'].disc = FakeDisc();
    DiscRequest from;
    DiscWriter writes(fresh.services);
    writes.doWriteDiscs(from);
    EXPECT_FALSE(fresh.engine.disc().files.contains("Photos\\big.iso\\big.iso.001")) << size;
    EXPECT_EQ(fresh.note(1), "1 backup file error.") << size;
  }
}

TEST_F(SourceChangesTest, APieceThatFailedInMidBurnLosesTheWholeFile) {
  world.engine.unreadable = {"/src/big.iso"};
  write();
  EXPECT_TRUE(world.hasEvent("*/src/big.iso: Input/output error"));
  world.engine.unreadable.clear();
  write();
  EXPECT_FALSE(isOnDisc("Photos\\big.iso\\big.iso.002"));
  EXPECT_EQ(writer.faults.files, 2) << "one row on each disc";
}

TEST_F(SourceChangesTest, ASizeThatNoIndexOnTheDiscTellsIsNotSaved) {
  world.plan.IndexOnDiscs = true;  // that of disc 1 stands; no other can be written
  write();
  source("b.jpg").size = Fixed4(4000);
  write();
  EXPECT_FALSE(isOnDisc("Photos\\b.jpg"));
  EXPECT_TRUE(isLost("b.jpg"));
  EXPECT_TRUE(isOnDisc("Photos\\big.iso\\big.iso.002"));
  EXPECT_THAT(world.events(), HasSubstr("*/src/b.jpg: The file has changed, and no index"));
}

TEST_F(SourceChangesTest, TheNewEndOfASplitFileStaysOutOfADiscThatLacksAnIndex) {
  constexpr std::int64_t Whole = 5'000'000;
  constexpr std::int64_t Cut = 4'194'304;
  for (const int first : {1, 2}) {
    BurnWorld fresh;
    fresh.addFile(PlanTable::DiscRoot, "index", 900, 1);
    const auto split = fresh.addFolder(PlanTable::DiscRoot, "big.iso", RowType::SplitFile, first);
    fresh.plan.vsBuffer.rows().back().size = Whole;
    fresh.addPiece(split, {1, 1, Cut}, first);
    fresh.addPiece(split, {2, Cut + 1, Whole}, first + 1);
    SourceChanges changes(fresh.plan);
    changes.doBeginTry();
    ASSERT_TRUE(changes.doFitPieces(2, {.kind = FileInfo::Kind::File, .size = Whole - 5}));
    changes.doKeepTry();
    changes.doBeginTry();
    EXPECT_EQ(changes.isUntoldByFirst(4), first == 2) << "disc 1 tells what changed before it";
    EXPECT_FALSE(changes.isUntoldByFirst(3));
  }
}

TEST_F(SourceChangesTest, WhatHasGrownTooMuchStaysOutAndTheRestIsBurned) {
  world.plan.vsBuffer.clear();
  world.plan.clearTotals();
  for (const char* name : {"a", "b", "c"})
    world.addFile(PlanTable::DiscRoot, name, 10 * BlockBytes, 1);
  source("a").size = Fixed4(20 * BlockBytes);
  source("b").size = Fixed4(300 * BlockBytes);
  write({.totalBlocks = 100 + 45});
  EXPECT_TRUE(isOnDisc("a") && isOnDisc("c"));
  EXPECT_FALSE(isOnDisc("b"));
  EXPECT_EQ(world.note(1), "1 backup file error.");
  EXPECT_TRUE(world.hasEvent("*/src/b: The file has grown and does not fit on the disc"));
}

}  // namespace
}  // namespace korvenal::test
