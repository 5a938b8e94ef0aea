#include "burn/Verification.h"

#include <gtest/gtest.h>

#include "support/BurnWorld.h"

namespace korvenal::test {
namespace {

using ::testing::ElementsAre;

struct VerificationTest : testing::Test {
  BurnWorld world;
  SourceChanges changes{world.plan};
  Verification verification{world.services, changes};
  MemoryFiles burned{world.engine};  ///< the sources as they were burned
  std::map<std::string, std::int64_t>& onDisc = world.engine.drives['V'].disc.emplace().files;

  DiscAttempt verify(int number, std::unordered_set<std::string> padded = {}) {
    DiscAttempt attempt;
    attempt.letter = 'V';
    attempt.number = number;
    attempt.padded = std::move(padded);
    attempt.record.label = "Backup #1";
    const PlanTable& table = world.plan.vsBuffer;
    for (int row = 1; row < table.Rows(); ++row)
      if (table.row(row).disc == number && !isFolderOnDisc(table.row(row).type))
        attempt.states.emplace_back(row, burned.doGetInfo(table.sourcePath(row)));
    attempt.doSucceed();
    verification.doVerifyDisc(attempt, false);
    return attempt;
  }
  std::vector<std::string> report() const {
    std::vector<std::string> lines;
    const Table& table = world.grids.vsError[0];
    for (int row = 1; row < table.Rows(); ++row)
      lines.push_back(table.text(row, 0) + "|" + table.text(row, 1) + "|" + table.text(row, 2));
    return lines;
  }
};

TEST_F(VerificationTest, EveryFileOfTheDiscHasOneResult) {
  world.planThreeDiscs();
  world.addFile(PlanTable::DiscRoot, "_RestoreKit_Installer.exe", 5, 1);
  world.addFile(PlanTable::DiscRoot, "gone.txt", 5, 1);
  world.addFile(PlanTable::DiscRoot, "padded.txt", 5, 1);
  world.files.sources.erase("/src/gone.txt");
  onDisc = {{"_KORVEN{H}.bdx", 900},
            {"Photos\\a.jpg", 2999},
            {"padded.txt", 5},
            {"Photos\\big.iso\\big.iso.001", 4194304}};
  const DiscAttempt attempt = verify(1, {"padded.txt"});
  EXPECT_THAT(report(),
              ElementsAre("_KORVEN{H}.bdx|PASS|Backup Index", "a.jpg|Size error|/src/a.jpg",
                          "big.iso.001|PASS|/src/big.iso",
                          "_RestoreKit_Installer.exe|Backup failed|/src/_RestoreKit_Installer.exe",
                          "gone.txt|Source not found|/src/gone.txt",
                          "padded.txt|Backup failed|/src/padded.txt"));
  EXPECT_EQ(attempt.FileErrorCount, 4);
  EXPECT_EQ(attempt.record.note, "4 backup files error.");
  EXPECT_FALSE(attempt.discError);
  EXPECT_EQ(world.grids.PBErrorList[0], "&Verify Report - Backup #1");
  EXPECT_TRUE(world.page.pbStopEnabled);
}

TEST_F(VerificationTest, OnlyWhatStandsOnDiscAsPlannedCountsAsSaved) {
  world.planThreeDiscs();
  world.addFile(PlanTable::DiscRoot, "blank at the end ", 5, 1);
  world.job.optBackupType = 1;
  onDisc = {{"_KORVEN{H}.bdx", 900},
            {"blank at the end ", 5},
            {"Photos\\a.jpg", 3000},
            {"Photos\\b.jpg", 3000},
            {"Photos\\big.iso\\big.iso.001", 4194304}};
  burned.sources = world.files.sources;
  world.files.sources["/src/b.jpg"].modified += 1;  // after it was burned
  verify(1);
  EXPECT_THAT(world.bits.cleared,
              ElementsAre("/src/_KORVEN{H}.bdx", "/src/a.jpg", "/src/blank at the end "))
      << "one piece is not the file";
  world.bits.cleared.clear();
  verify(2);
  EXPECT_THAT(world.bits.cleared, ElementsAre("/src/b.jpg")) << "the second piece is missing";
  EXPECT_EQ(world.bits.states["/src/b.jpg"].modified, burned.sources["/src/b.jpg"].modified);
  world.bits.cleared.clear();
  onDisc["Photos\\big.iso\\big.iso.002"] = 6291456;
  verify(2);
  EXPECT_THAT(world.bits.cleared, ElementsAre("/src/big.iso", "/src/b.jpg"));
  world.job.optBackupType = 0;
  world.bits.cleared.clear();
  verify(1);
  EXPECT_TRUE(world.bits.cleared.empty()) << "a full backup marks nothing";
}

TEST_F(VerificationTest, AFileBurnedInAnotherSizeThanItHadAtTheScanIsToldAndSaved) {
  world.planOneFile(3000);
  world.job.optBackupType = 1;
  FileInfo now = world.files.sources["/src/one.txt"];
  now.size = Fixed4(4000);
  burned.sources["/src/one.txt"] = now;
  changes.doChange(1, now);
  onDisc = {{"one.txt", 4000}};
  world.files.sources.erase("/src/one.txt");
  EXPECT_EQ(verify(1).FileErrorCount, 0);
  EXPECT_THAT(report(), ElementsAre("one.txt|Size error|/src/one.txt"));
  EXPECT_EQ(world.bits.states["/src/one.txt"].size, Fixed4(4000));
  onDisc = {{"one.txt", 3000}};
  EXPECT_EQ(verify(1).FileErrorCount, 1) << "not what was burned";
}

TEST_F(VerificationTest, WhatABurnLeftOutIsInTheRecordAlsoWhenNoDiscIsReadAgain) {
  world.planOneFile(3000);
  world.engine.drives['V'] = {.disc = FakeDisc{.type = DiscDvdPlusR}};
  world.engine.unreadable = {"/src/one.txt"};
  world.engine.loseDiscAtLoad = true;
  DiscWriter writer(world.services);
  DiscRequest request;
  writer.doWriteDiscs(request);
  EXPECT_TRUE(world.hasEvent("Skip verifying backup files."));
  EXPECT_EQ(writer.faults.files, 1);
  EXPECT_EQ(world.note(1), "1 backup file error.");
}

TEST_F(VerificationTest, ADriveThatDoesNotComeBackIsToldAndNothingIsSaved) {
  world.planThreeDiscs();
  world.job.optBackupType = 1;
  world.engine.drives['V'].open = true;
  world.grids.OnlyShowErrorFile = true;
  DiscAttempt attempt = verify(1);
  EXPECT_TRUE(world.hasEvent("Skip verifying backup files."));
  EXPECT_EQ(attempt.record.note, "Success.");
  EXPECT_FALSE(attempt.verified);
  EXPECT_TRUE(report().empty() && world.bits.cleared.empty());

  world.engine.drives['V'].open = false;
  onDisc = {{"_KORVEN{H}.bdx", 900}};
  verify(1);
  EXPECT_TRUE(world.grids.vsError[0].isRowHidden(1)) << "good files are hidden on request";
  EXPECT_FALSE(world.grids.vsError[0].isRowHidden(2));
}

}  // namespace
}  // namespace korvenal::test
