#include <gtest/gtest.h>

#include <filesystem>

#include "plan/ScanFixture.h"
#include "platform/linux/LinuxFiles.h"
#include "platform/linux/LinuxWalker.h"
#include "support/TempDir.h"

namespace korvenal::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

constexpr UnixTime Day = 86400;

/// A scan of real files.
class RealFilesScan : public testing::Test, public ScanFixture {
 protected:
  RealFilesScan() {
    walker = &linuxWalker;
    usedFiles = &linuxFiles;
    workspace.TempFolder = dir.makeFolder("temp") + "/";
    clock.time = std::time(nullptr);
    job.BurnBackupIndex = false;
    settings.ExcludeEmptyFolder = false;
  }

  std::string writeAged(const std::string& name, int days) {
    const std::string path = dir.write(name, "content of " + name);
    age(path, days);
    return path;
  }

  static void age(const std::string& path, int days) {
    std::filesystem::last_write_time(
        path, std::filesystem::file_time_type::clock::now() - std::chrono::hours(24 * days));
  }

  TempDir dir;
  LinuxFiles linuxFiles{nullptr};
  LinuxWalker linuxWalker;
};

TEST_F(RealFilesScan, FiltersDecideOnFilesAndTheDateOnFolderItemsToo) {
  writeAged("src/old.txt", 40);
  writeAged("src/new.txt", 1);
  writeAged("src/new.bak", 1);
  writeAged("src/below/new.TXT", 1);
  writeAged("aged/new.txt", 1);
  age(dir / "aged", 40);
  addRow(dir / "src", "Source", true);
  addRow(dir / "aged", "Aged", true);
  addRow(writeAged("item.bak", 1), "Item", false);
  addRow(writeAged("olditem.bak", 40), "OldItem", false);
  addRow(dir / "missing", "Missing", false);
  job.txDateFilter = "30";
  job.comboInclude = " *.txt ;; ";
  scan();
  EXPECT_THAT(column(PlanName), ElementsAre("Source\\", "Source\\below\\", "Source\\below\\new.TXT",
                                            "Source\\new.txt", "Item"));
  EXPECT_THAT(column(PlanSource), ElementsAre("", dir / "src/below/", dir / "src/below/new.TXT",
                                              dir / "src/new.txt", dir / "item.bak"));
}

TEST_F(RealFilesScan, WhatCannotBeBackedUpIsToldOrAskedAbout) {
  dir.write("src/file", "x");
  dir.write("src/bad\\name", "x");
  dir.makeFolder("src/bad\nfolder");
  std::filesystem::create_directory_symlink(dir.path(), dir / "src/link");
  std::filesystem::create_symlink("nowhere", dir / "src/broken");
  list.skips = {};
  addRow(dir / "src", "Source", true);
  desktop.answers = {Answer::Ok, Answer::Ok};
  scan();
  EXPECT_THAT(column(PlanName), ElementsAre("file"));
  ASSERT_EQ(desktop.asked.size(), 2U);
  EXPECT_THAT(desktop.asked[1].text, HasSubstr("bad\\name\nItem name contains unsupported"));
  const std::string notHeld = "Name not possible on a disc, not backed up:  ";
  EXPECT_THAT(plan.skippedNotes,
              ElementsAre("Not backed up:  1 link to a folder, 1 broken link.",
                          "Excluded, because no disc can hold the name:  2 items.",
                          notHeld + (dir / "src/bad\nfolder"), notHeld + (dir / "src/bad\\name")));
  EXPECT_EQ(plan.missed, 2);
  EXPECT_EQ(grids.vsEvent[0].Rows(), 5);
}

TEST_F(RealFilesScan, TheIndexIsPackedUnderItsOwnNameAndDeletedWithTheRun) {
  dir.write("src/file", "x");
  addRow(dir / "src", "Source", true);
  job.BurnBackupIndex = true;
  job.txJobName = "../a/b";
  SourceScan scan = makeScan();
  frmAddFiles worker(state, desktop, [&](frmAddFiles& form) { scan.doScanFiles(form); });
  desktop.doShowModal(worker);
  EXPECT_EQ(plan.IndexTempPath, workspace.TempFolder + plan.IndexDiscName);
  EXPECT_THAT(plan.IndexDiscName, testing::StartsWith("_KORVEN{.._a_b("));
  EXPECT_TRUE(std::filesystem::exists(plan.IndexTempPath));
  scan.doDeleteRunFiles();
  EXPECT_TRUE(std::filesystem::is_empty(workspace.TempFolder));
}

class ListScan : public testing::Test, public ScanFixture {};

TEST_F(ListScan, TheQuestionsAboutLargeFilesSayWhyAndObeyTheAnswers) {
  job.optSplitAndSpan = 0;
  job.comboDiscType = 1;
  job.optFileSystem = 1;
  addItem("/s/a", file("a", 5'000'000'000));
  addItem("/s/b", file("b", 2147483649));
  addItem("/s/c", file("c", 2147483648));
  splitChoices = {frmSplit::SkipIt, frmSplit::SplitIt};
  scan();
  EXPECT_THAT(splitMessages,
              ElementsAre("The file '/s/a' is larger than DVD 4.7GB disc capacity, it need to be "
                          "split for burning to disc.",
                          "The file '/s/b' is larger than 2GB, it need to be split for burning to "
                          "disc."));
  EXPECT_EQ(plan.TotalSize, Fixed4(2147483649 + 2147483648));
  EXPECT_EQ(plan.TotalFiles, 2);

  splitChoices = {frmSplit::Stop};
  scan();
  EXPECT_TRUE(state.StopAction);
  EXPECT_FALSE(plan.vsBuffer.hasData());
}

TEST_F(ListScan, AStopAtAnyYieldLeavesNoPlan) {
  addItem("/s/top", folder("Top", {file("big", 3'000'000'000), folder("sub", {file("f", 1)})}));
  addItem("/s/other", file(std::string(120, 'x'), 2));
  job.comboDiscType = 1;
  scan();
  const int yields = desktop.yields;
  ASSERT_TRUE(plan.vsBuffer.hasData());
  int stopped = 0;
  for (int at = 1; at <= yields; ++at) {
    desktop.yields = 0;
    desktop.onYield = [&](int now) { state.StopAction = state.StopAction || now == at; };
    scan();
    // The first yield comes before the work, which starts without a stop; the last after it.
    if (at == 1 || at >= yields - 1) continue;
    ++stopped;
    EXPECT_TRUE(state.StopAction) << at;
    EXPECT_LE(desktop.yields - at, 5) << at;
    EXPECT_FALSE(plan.vsBuffer.hasData()) << at;
    EXPECT_EQ(plan.TotalDiscs, 0) << at;
  }
  EXPECT_GT(stopped, 20);
}

/// Reports so many files at once.
class CountingWalker : public Walker {
 public:
  int files = 0;
  void walk(const std::string&, bool, const WalkFilters&, WalkSink& sink) override {
    const WalkEntry entry{.name = "f", .folder = "/s/top/"};
    for (int i = 0; i < files && sink.report(entry); ++i) {
    }
  }
  void walkFile(const std::string&, const WalkFilters&, WalkSink&) override {}
};

TEST_F(ListScan, AMillionRowsWithTheHeaderArePlannedAndOneMoreIsNot) {
  addItem("/s/top", folder("Top", {}));
  CountingWalker counting;
  walker = &counting;
  job.comboDiscType = 2;
  counting.files = Expansion::MaxTableRows - 2;
  scan();
  EXPECT_FALSE(state.LimitExceeded);
  EXPECT_EQ(plan.TotalFiles, counting.files);
  EXPECT_LT(plan.vsBuffer.memoryBytes() / static_cast<std::size_t>(counting.files), 150U);

  ++counting.files;
  desktop.answers = {Answer::Ok};
  scan();
  EXPECT_TRUE(state.LimitExceeded);
  EXPECT_TRUE(state.StopAction);
  EXPECT_FALSE(plan.vsBuffer.hasData());
  ASSERT_EQ(desktop.asked.size(), 1U);
  EXPECT_EQ(desktop.asked[0].title, "Stop Action");
  EXPECT_EQ(desktop.asked[0].text,
            "Backup source has exceeded maximum 1,000,000 items limitation.");
}

TEST(DateFilter, GoesBackByTheCalendarAndIsOffWithoutDays) {
  Job job;
  const UnixTime noon = *Dates::fromDigits("20240310123456");
  EXPECT_FALSE(earliestDateOf(job, noon));
  job.txDateFilter = "70";
  EXPECT_EQ(Dates::digits(*earliestDateOf(job, noon)), "20231231123456");
  job.txDateFilter = "99999999999999999999";
  EXPECT_LT(*earliestDateOf(job, noon), noon - 50'000 * Day);
}

}  // namespace
}  // namespace korvenal::test
