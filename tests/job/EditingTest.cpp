#include <gtest/gtest.h>

#include "job/ContentsEditing.h"
#include "job/JobBench.h"

namespace korvenal::test {

class EditingTest : public testing::Test {
 protected:
  EditingTest() {
    bench_.add("beta", "/b");
    bench_.add("Alpha", "/a");
    bench_.add("gamma.txt", "/c");
    bench_.job.doMarkChanged(false);
  }

  JobBench bench_;
  Job& job_ = bench_.job;
  ContentsEditing editing_{bench_.state, bench_.desktop, bench_.job};
};

TEST_F(EditingTest, RenamingKeepsNamesDifferent) {
  EXPECT_EQ(editing_.doRename(1, "  de:lta. "), NameEdit::Taken);
  EXPECT_EQ(bench_.cell(1, ContentsName), "delta");
  EXPECT_EQ(editing_.doRename(1, " "), NameEdit::Restored)
      << "the old name comes back without a word";
  bench_.desktop.answers = {Answer::Ok};
  EXPECT_EQ(editing_.doRename(1, "ALPHA"), NameEdit::Duplicated);
  EXPECT_EQ(bench_.desktop.asked.back().text, "Name duplicated!");
  EXPECT_EQ(editing_.doRename(2, "ALPHA"), NameEdit::Taken) << "a row is no duplicate of itself";
  EXPECT_EQ(editing_.doRename(3, "gamma2.txt"), NameEdit::Taken);
  EXPECT_EQ(bench_.cell(3, ContentsName), "gamma2.txt");
  EXPECT_FALSE(job_.Modified);
}

TEST_F(EditingTest, MovingKeepsTheEstimateAndDeletingDropsIt) {
  job_.doSetEstimated(true);
  job_.vsContents.Row = 3;
  EXPECT_FALSE(editing_.doUpdateJobCommands().moveDown);
  editing_.doMoveDown();
  editing_.doMoveUp();
  EXPECT_THAT(bench_.names(), testing::ElementsAre("beta", "gamma.txt", "Alpha"));
  EXPECT_EQ(job_.vsContents.Row, 2);
  EXPECT_TRUE(job_.Modified && job_.estimateShown);

  bench_.desktop.answers = {Answer::No, Answer::Yes, Answer::Yes};
  editing_.doDeleteKey();
  editing_.doDeleteKey();
  EXPECT_THAT(bench_.names(), testing::ElementsAre("beta", "Alpha"));
  EXPECT_FALSE(job_.estimateShown);
  editing_.doClearAllFiles();
  EXPECT_FALSE(editing_.doUpdateJobCommands().items);
  editing_.doDeleteKey();
  EXPECT_EQ(bench_.desktop.asked.size(), 3U) << "nothing to delete, nothing to ask";
}

TEST_F(EditingTest, ColumnsSortByWhatTheyMean) {
  const char* sizes[] = {"2.0 GB", "1,023 KB", "1,000.5 MB"};
  for (int row = 1; row <= 3; ++row) job_.vsContents.setText(row, ContentsSize, sizes[row - 1]);
  job_.vsContents.Row = 1;
  editing_.doSortColumn(ContentsSize);
  EXPECT_THAT(bench_.names(), testing::ElementsAre("Alpha", "gamma.txt", "beta"));
  EXPECT_EQ(job_.vsContents.Row, 3) << "the current item stays current";
  editing_.doSortColumn(ContentsIcon);
  EXPECT_THAT(bench_.names(), testing::ElementsAre("Alpha", "beta", "gamma.txt"));
  editing_.doSortColumn(ContentsIcon);
  EXPECT_THAT(bench_.names(), testing::ElementsAre("gamma.txt", "beta", "Alpha"));
  editing_.doSortColumn(ContentsTypeName);
  EXPECT_THAT(bench_.names(), testing::ElementsAre("gamma.txt", "beta", "Alpha"));
}

TEST_F(EditingTest, TheMarkOfASortGoesWithItsOrder) {
  const SortMark byName{.col = ContentsName, .descending = false};
  EXPECT_EQ(editing_.sortMark(), SortMark());
  editing_.doSortColumn(ContentsName);
  EXPECT_EQ(editing_.sortMark(), byName);
  bench_.controls.setSubfolder(1, false);
  bench_.add("zeta", "/z");
  EXPECT_EQ(editing_.sortMark(), byName) << "still in order";
  editing_.doSortColumn(ContentsName);
  EXPECT_TRUE(editing_.sortMark().descending);
  job_.vsContents.Row = 2;
  editing_.doMoveDown();
  EXPECT_EQ(editing_.sortMark(), SortMark());
  editing_.doMoveUp();
  EXPECT_EQ(editing_.sortMark(), SortMark()) << "by chance in order again, by nobody's wish";

  editing_.doSortColumn(ContentsName);
  bench_.newJob.doNewJob();
  EXPECT_EQ(editing_.sortMark(), SortMark());
}

TEST_F(EditingTest, FiltersFollowTheirRules) {
  JobControls& controls = bench_.controls;
  controls.setInclude("");
  EXPECT_EQ(job_.comboInclude, "*");
  EXPECT_TRUE(job_.Modified);
  std::string wide;
  for (int i = 0; i < 131; ++i) wide += "ä";
  controls.setExclude(wide + "x");
  EXPECT_EQ(job_.comboExclude, wide.substr(0, 260));
  controls.setExclude("*;a");
  controls.doLeaveExclude();
  EXPECT_EQ(job_.comboExclude, "*;a");
  controls.setExclude("*");
  controls.doLeaveExclude();
  EXPECT_EQ(job_.comboExclude, "");

  controls.setDateFilter(true);
  EXPECT_EQ(job_.txDateFilter, "90");
  for (const auto& [typed, days] : std::map<std::string, std::string>{
           {"12abc", "12"}, {"abc", "0"}, {"-4", "0"}, {"99999", "9999"}, {"7.9", "7"}}) {
    controls.setDays(typed);
    EXPECT_EQ(job_.txDateFilter, days) << typed;
  }
  EXPECT_TRUE(job_.chkDateFilter);
  controls.setDateFilter(false);
  EXPECT_EQ(job_.txDateFilter, "0");
}

TEST_F(EditingTest, ANewJobTakesTheDefaultsOnce) {
  bench_.settings.Finalize = true;
  bench_.settings.SplitFile = true;
  bench_.settings.SplitSize = 12;
  bench_.settings.SplitSize2 = -1;
  bench_.doConnect('V');
  bench_.doChoose("V");
  bench_.grids.doEventMessage("of the job before");
  bench_.newJob.doNewJob();
  EXPECT_EQ(job_.txJobName, "New Backup");
  EXPECT_TRUE(job_.FinalizeDisc);
  EXPECT_EQ(job_.optSplitAndSpan, 0);
  EXPECT_EQ(job_.FileSize, "700 MB");
  EXPECT_EQ(job_.DiscSize, "10 MB");
  EXPECT_EQ(job_.comboDiscType, 1) << "the drive writes DVD";
  EXPECT_TRUE(job_.BurnBackupIndex);
  EXPECT_FALSE(job_.hasItems() || bench_.grids.vsEvent[0].hasData());
  bench_.settings.Finalize = false;
  EXPECT_TRUE(job_.FinalizeDisc);
}

}  // namespace korvenal::test
