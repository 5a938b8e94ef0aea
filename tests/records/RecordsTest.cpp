#include "records/Records.h"

#include <gtest/gtest.h>

#include "support/Workbench.h"

namespace korvenal::test {

class RecordsTest : public testing::Test {
 protected:
  void runDisc(const std::string& note) {
    Table& run = bench_.grids.vsOutput[0];
    const DiscRecord record{.drive = "V:",
                            .eraseMode = "",
                            .outputTime = " 2026-01-02 10:00 ",
                            .action = "Backup",
                            .jobName = "Job",
                            .label = "Backup #1",
                            .discType = "CD-R",
                            .note = note};
    records_.doAddDiscLogRow(0, run.addRow(record.columns()));
  }
  void runBackup(const std::string& jobFile) {
    records_.doAddRecent(
        {"2026-01-02 10:00", "Job", "3", "1 KB", "CD 700MB", "1", "* Uncompleted.", jobFile});
  }
  /// What the next start of the program would see.
  Records reloaded() {
    Records again(bench_.files, bench_.desktop, bench_.grids, bench_.workspace);
    again.doReadDiscLog();
    again.doReadRecent();
    return again;
  }

  Workbench bench_;
  Records records_{bench_.files, bench_.desktop, bench_.grids, bench_.workspace};
};

TEST_F(RecordsTest, NewestDiscsComeFirstAndTheOldestFallsOut) {
  for (int disc = 1; disc <= 201; ++disc) runDisc("disc " + std::to_string(disc));
  const Records again = reloaded();
  ASSERT_EQ(again.vsLog.Rows(), 201);
  EXPECT_EQ(again.vsLog.text(0, 7), "Note");
  EXPECT_EQ(again.vsLog.text(1, 7), "disc 201");
  EXPECT_EQ(again.vsLog.text(1, 2), "2026-01-02 10:00") << "trimmed";
  EXPECT_EQ(again.vsLog.text(200, 7), "disc 2");
}

TEST_F(RecordsTest, RecentBackupsMoveBetweenTheirTwoLimits) {
  std::vector<int> rows;
  for (int run = 1; run <= 102; ++run) {
    runBackup("job " + std::to_string(run));
    if (run >= 99) rows.push_back(records_.vsRecent.Rows());
  }
  EXPECT_THAT(rows, testing::ElementsAre(100, 101, 100, 101));
  const Records again = reloaded();
  EXPECT_EQ(again.vsRecent.text(1, 7), "job 102");
  EXPECT_TRUE(again.vsRecent.isColHidden(7));
}

TEST_F(RecordsTest, HistoriesOfWhichNothingIsLeftAreEmptyTables) {
  bench_.files.writeAll(bench_.workspace.gDiscLogFile, "bad escape \\q\nbad line\n");
  bench_.files.doCreateFolderPath(bench_.workspace.gRecentFile);
  const Records again = reloaded();
  EXPECT_EQ(again.vsLog.Rows(), 1);
  EXPECT_EQ(again.vsLog.text(0, 0), "Drive");
  EXPECT_EQ(again.vsRecent.Rows(), 1);
  EXPECT_EQ(again.vsRecent.text(0, 1), "Backup Job");
}

TEST_F(RecordsTest, AHistoryThatCannotBeReadForAWhileComesBackBehindTheNewRows) {
  runDisc("old");
  const std::string file = bench_.workspace.gDiscLogFile;
  const std::string stored = TempDir::read(file);
  std::filesystem::remove(file);
  std::filesystem::create_directory(file);
  Records later(bench_.files, bench_.desktop, bench_.grids, bench_.workspace);
  std::vector<std::string> told;
  later.onFault = [&told](const std::string& path, const std::string&) { told.push_back(path); };
  later.doReadDiscLog();
  EXPECT_THAT(told, testing::ElementsAre(file));
  std::filesystem::remove(file);
  bench_.files.writeAll(file, stored);
  bench_.grids.vsOutput[0].setRows(1);
  const int row = bench_.grids.vsOutput[0].addRow({"V:", "", "", "", "", "", "", "new"});
  later.doAddDiscLogRow(0, row);
  const Records again = reloaded();
  ASSERT_EQ(again.vsLog.Rows(), 3);
  EXPECT_EQ(again.vsLog.text(1, 7) + again.vsLog.text(2, 7), "newold");
  EXPECT_EQ(told.size(), 1U);
}

TEST_F(RecordsTest, RowsAreDeletedAtOnceAndAllOfThemAfterAQuestion) {
  runDisc("old");
  runDisc("new");
  records_.doDeleteLogRow();
  EXPECT_EQ(reloaded().vsLog.text(1, 7), "old");
  records_.vsLog.Row = 0;
  records_.doDeleteLogRow();
  EXPECT_EQ(records_.vsLog.Rows(), 2) << "the header is no record";

  bench_.desktop.answers = {Answer::No, Answer::Yes};
  records_.doClearLog();
  EXPECT_EQ(records_.vsLog.Rows(), 2);
  records_.doClearLog();
  EXPECT_EQ(reloaded().vsLog.Rows(), 1);
  EXPECT_EQ(bench_.desktop.asked[1].text, "Are you sure you want to clear all disc record?");
}

}  // namespace korvenal::test
