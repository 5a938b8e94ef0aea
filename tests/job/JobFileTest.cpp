#include "job/JobFile.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "job/JobBench.h"
#include "job/JobOptions.h"
#include "platform/Paths.h"
#include "platform/Text.h"

namespace korvenal::test {

class JobFileTest : public testing::Test {
 protected:
  /// Writes a job file by hand: header cells, then rows of type, name, path and check of the box.
  std::string store(const std::string& product, const std::string& name, const std::string& options,
                    const std::vector<std::array<std::string, 4>>& items = {}) {
    Table table;
    table.setCols(ContentsColumns);
    table.setText(0, HeaderProduct, product);
    table.setText(0, HeaderJobName, name);
    table.setText(0, HeaderInclude, "*.jpg");
    table.setText(0, HeaderOptions, options);
    for (const auto& item : items) {
      const int row = table.addRow();
      table.setText(row, ContentsType, item[0]);
      table.setText(row, ContentsName, item[1]);
      table.setText(row, ContentsPath, item[2]);
      table.setCheck(row, ContentsSubfolder, static_cast<Table::Check>(item[3][0] - '0'));
    }
    return bench_.folder.write("stored.jbf", table.saveData(true));
  }
  bool load(const std::string& path) { return bench_.jobFile.doLoadJob(path); }
  const std::string& lastMessage() const { return bench_.desktop.asked.back().text; }

  JobBench bench_;
  Job& job_ = bench_.job;
  const std::string zeros_ = std::string(OptionTextLength, '0');
};

TEST_F(JobFileTest, EverythingComesBack) {
  const std::string folder = bench_.folder.makeFolder("data");
  bench_.add("Data", folder, 0);
  bench_.add("Lost", bench_.folder / "a\ttab\\/lost.txt");
  job_.vsContents.setCheck(1, ContentsSubfolder, Table::Check::Unticked);
  JobControls& controls = bench_.controls;
  controls.setJobName("Photos of Ann");
  controls.setBackupType(1);
  controls.setDateFilter(true);
  controls.setDays("31");
  controls.setAttribute(1, false);
  controls.setExclude("*.tmp;ä*");
  controls.setDiscType(2);
  controls.setFileSystem(1);
  controls.setSplitAndSpan(0);
  EXPECT_TRUE(controls.setFileSize("700 MB") && controls.setDiscSize("1"));
  controls.setFinalizeDisc(true);
  controls.setSkipError(false);
  controls.setBurnRestoreKit(true);
  const std::string saved = buildOptionText(job_);

  bench_.desktop.files = {bench_.folder / "photos.JBF"};
  ASSERT_TRUE(bench_.jobFile.doSaveJob());
  EXPECT_FALSE(job_.Modified);
  bench_.newJob.doNewJob();
  ASSERT_FALSE(job_.hasItems());

  ASSERT_TRUE(load(bench_.folder / "photos.JBF"));
  EXPECT_EQ(job_.txJobName, "Photos of Ann");
  EXPECT_EQ(buildOptionText(job_), saved);
  EXPECT_EQ(saved.size(), OptionTextLength);
  EXPECT_EQ(job_.comboInclude, "*");
  EXPECT_EQ(job_.comboExclude, "*.tmp;ä*");
  EXPECT_EQ(job_.FileSize, "700 MB");
  EXPECT_TRUE(job_.chkAttribute[0] && !job_.chkAttribute[1]);
  EXPECT_EQ(job_.vsContents.check(1, ContentsSubfolder), Table::Check::Unticked);
  EXPECT_EQ(bench_.cell(2, ContentsPath), bench_.folder / "a\ttab\\/lost.txt");
  EXPECT_EQ(bench_.cell(2, ContentsModified), NotExistingText);
  EXPECT_EQ(job_.JobFile, bench_.folder / "photos.JBF");
  EXPECT_FALSE(job_.Modified || bench_.state.ActionRunning || bench_.state.IgnoreEvents);
}

TEST_F(JobFileTest, TenThousandItemsSavedAgainAreTheSameFile) {
  job_.vsContents.setRows(1 + MaxItems);
  for (int row = 1; row <= MaxItems; ++row) {
    const std::string name = "item " + std::to_string(row);
    job_.vsContents.setText(row, ContentsType, row % 3 == 0 ? "0" : "1");
    job_.vsContents.setText(row, ContentsName, name);
    job_.vsContents.setText(row, ContentsPath, "/not/there/" + name);
    if (row % 3 == 0)
      job_.vsContents.setCheck(row, ContentsSubfolder,
                               row % 2 == 0 ? Table::Check::Ticked : Table::Check::Unticked);
  }
  const std::string first = bench_.folder / "first.jbf", second = bench_.folder / "second.jbf";
  ASSERT_TRUE(bench_.jobFile.doWriteJobFile(first));
  ASSERT_TRUE(load(first));
  EXPECT_EQ(job_.vsContents.Rows(), 1 + MaxItems);
  ASSERT_TRUE(bench_.jobFile.doWriteJobFile(second));
  ASSERT_TRUE(load(second));
  ASSERT_TRUE(bench_.jobFile.doWriteJobFile(first));
  EXPECT_EQ(TempDir::read(first), TempDir::read(second));
}

TEST_F(JobFileTest, OptionsOutOfRangeAreMended) {
  const auto loadFields = [this](const std::map<std::size_t, std::string>& fields) {
    std::string options = zeros_;
    for (const auto& [field, value] : fields) options.replace(field * 10, 10, value);
    ASSERT_TRUE(load(store(gProductName, "J", options)));
  };
  loadFields({{0, "0000000002"},
              {1, "0000010000"},
              {3, "0000000003"},
              {6, "0000000004"},
              {7, "0000000000"},
              {9, "9999999999"},
              {11, "0000000002"},
              {12, "not number"}});
  EXPECT_EQ(buildOptionText(job_),
            zeros_.substr(0, 60) + "00000000200000000010" + zeros_.substr(80))
      << "20 and 10 MB, all else off";
  EXPECT_FALSE(job_.chkDateFilter);
  loadFields({{1, "0000009999"}, {6, "0000000005"}, {7, "0000000500"}, {11, "0000000001"}});
  EXPECT_EQ(job_.txDateFilter, "9999");
  EXPECT_TRUE(job_.chkDateFilter);
  EXPECT_EQ(job_.FileSize + job_.DiscSize, "5 MB500 MB");
  EXPECT_EQ(job_.optSplitAndSpan, 1);
  loadFields({{1, "-000000003"}, {6, "0000000701"}, {7, "0000000501"}});
  EXPECT_EQ(job_.txDateFilter, "0");
  EXPECT_EQ(job_.FileSize + job_.DiscSize, "20 MB10 MB");
}

TEST_F(JobFileTest, OptionTextsOfOlderVersionsArePadded) {
  std::string options = zeros_.substr(0, 90);
  options.replace(80, 10, "0000000001");
  ASSERT_TRUE(load(store(gProductName, "J", options)));
  EXPECT_TRUE(job_.SkipError);
  EXPECT_FALSE(job_.BurnBackupIndex) << "missing fields read as off";

  bench_.desktop.answers = {Answer::Ok};
  EXPECT_FALSE(load(store(gProductName, "J", options.substr(0, 89))));
  EXPECT_EQ(lastMessage(), "Invalid backup job file format!");
}

TEST_F(JobFileTest, WhatIsNoJobLeavesANewOneAndNothingLocked) {
  bench_.desktop.answerAllOk = true;
  const std::string whole = store(gProductName, "J", zeros_, {{"1", "a", "/a", "0"}});
  const std::string content = TempDir::read(whole);
  const std::vector<std::string> broken = {
      store("Korvenal to DVD 1.0", "J", zeros_, {{"1", "a", "/a", "0"}}),
      store(gProductName, "", zeros_),
      bench_.folder.write("cut.jbf", content.substr(0, content.size() - 2)),
      bench_.folder.write("empty.jbf", ""),
      bench_.folder.write("wide.jbf", std::string(1'000'000, '\t')),
      bench_.folder.write("binary.jbf", std::string("\0\xff\xfe\t1", 5)),
  };
  const auto refuses = [this](const std::string& path, const std::string& message) {
    EXPECT_FALSE(load(path)) << path;
    EXPECT_EQ(lastMessage(), message) << path;
    EXPECT_FALSE(bench_.state.ActionRunning || bench_.state.IgnoreEvents) << path;
    EXPECT_FALSE(job_.hasItems());
    EXPECT_EQ(job_.JobFile, "");
    EXPECT_EQ(bench_.cell(0, HeaderOptions), "");
  };
  for (const std::string& path : broken) refuses(path, "Invalid backup job file format!");
  refuses(bench_.folder.makeFolder("folder.jbf"), "Backup job file open error!");
  refuses(bench_.folder / "missing.jbf", "Backup job file open error!");
  EXPECT_TRUE(load(bench_.folder.write("whole.jbf", content)));
}

TEST_F(JobFileTest, TwoItemsOfOneNameAreNoJob) {
  bench_.desktop.answerAllOk = true;
  const auto loads = [&](const std::string& first, const std::string& second) {
    return load(
        store(gProductName, "J", zeros_, {{"1", first, "/a/x", "0"}, {"1", second, "/b/y", "0"}}));
  };
  EXPECT_FALSE(loads("doc", "doc"));
  EXPECT_EQ(lastMessage(), "Invalid backup job file format!");
  EXPECT_FALSE(loads("\u00c4rger", "\u00e4RGER"));
  EXPECT_FALSE(loads("..", "X")) << "the first is called by its path";
  EXPECT_TRUE(loads("doc", "doc2"));
}

TEST_F(JobFileTest, EditorsOfOtherSystemsDoNoHarm) {
  const std::string stored = TempDir::read(
      store(gProductName, "J", zeros_, {{"1", "a", "/a", "0"}, {"0", "b", "/b", "2"}}));
  ASSERT_TRUE(load(
      bench_.folder.write("edited.jbf", "\xEF\xBB\xBF" + Text::replaceAll(stored, "\n", "\r\n"))));
  EXPECT_EQ(job_.txJobName, "J");
  EXPECT_THAT(bench_.names(), testing::ElementsAre("a", "b"));
  EXPECT_EQ(job_.vsContents.check(2, ContentsSubfolder), Table::Check::Unticked);
}

TEST_F(JobFileTest, ItemsBecomeWhatTheirSourcesAreNow) {
  const std::string file = bench_.folder.write("was-folder", "12345");
  const std::string folder = bench_.folder.makeFolder("was-file");
  const std::string kept = bench_.folder.makeFolder("kept");
  ASSERT_TRUE(load(store(gProductName, "J", zeros_,
                         {{"0", "one", file, "1"},
                          {"1", "two", folder, "0"},
                          {"0", "three", kept + "/", "2"},
                          {"7", "four", "/nowhere/four", "0"},
                          {"1", "five", "relative/path", "0"}})));
  EXPECT_EQ(bench_.cell(1, ContentsType), "1");
  EXPECT_EQ(bench_.cell(1, ContentsSize), "1 KB");
  EXPECT_EQ(job_.vsContents.check(1, ContentsSubfolder), Table::Check::None);
  EXPECT_EQ(bench_.cell(2, ContentsType), "0");
  EXPECT_EQ(job_.vsContents.check(2, ContentsSubfolder), Table::Check::Ticked);
  EXPECT_EQ(job_.vsContents.check(3, ContentsSubfolder), Table::Check::Unticked);
  EXPECT_EQ(bench_.cell(3, ContentsPath), bench_.folder / "kept");
  EXPECT_EQ(bench_.cell(4, ContentsType), "0");
  EXPECT_EQ(bench_.cell(4, ContentsModified), NotExistingText);
  EXPECT_EQ(bench_.cell(5, ContentsModified), NotExistingText);
}

TEST_F(JobFileTest, NamesThatNoDiscCanHoldAreNotTakenOver) {
  ASSERT_TRUE(load(store(gProductName, "../../etc: x", zeros_,
                         {{"1", "..", "/data/safe.txt", "0"},
                          {"1", "a\\b", "/data/other.txt", "0"},
                          {"1", "x/y", "/data/..", "0"},
                          {"1", "\xff", "", "0"},
                          {"1", "fine", "/data/fine", "0"}})));
  EXPECT_THAT(bench_.names(), testing::ElementsAre("safe.txt", "other.txt", "fine"));
  EXPECT_EQ(job_.txJobName, "....etc x");
}

TEST_F(JobFileTest, SavingRefusesWhatItMust) {
  EXPECT_FALSE((bench_.desktop.answers = {Answer::Ok}, bench_.jobFile.doSaveJob()));
  EXPECT_EQ(lastMessage(), "Backup data contents is empty, unable to save job.");
  bench_.add("a", "/a");
  bench_.desktop.answerAllOk = true;
  bench_.desktop.files = {"", bench_.folder / "x.txt", bench_.folder / "missing/x.jbf"};
  EXPECT_FALSE(bench_.jobFile.doSaveJob());
  EXPECT_FALSE(bench_.jobFile.doSaveJob());
  EXPECT_EQ(lastMessage(), "Backup job file type error.");
  EXPECT_FALSE(bench_.jobFile.doSaveJob());
  EXPECT_EQ(lastMessage(), "Backup job save error.");
  EXPECT_TRUE(job_.Modified);
}

TEST_F(JobFileTest, ReadOnlyFilesAreReplacedAndNameANewJob) {
  bench_.add("a", "/a");
  const std::string path = bench_.folder.write("My.Job.jbf", "old");
  ASSERT_EQ(chmod(path.c_str(), 0444), 0);
  bench_.desktop.files = {path};
  ASSERT_TRUE(bench_.jobFile.doSaveJob());
  EXPECT_EQ(job_.txJobName, "My.Job");
  EXPECT_EQ(bench_.profile.doReadProfile("Backup", "JobPath", ""), Paths::doGetFolderPart(path));
  ASSERT_TRUE(load(path));
  EXPECT_EQ(job_.txJobName, "My.Job");
}

TEST_F(JobFileTest, OnlyAChangedJobInViewIsAskedAbout) {
  bench_.add("a", "/a");
  bench_.desktop.answers = {Answer::Cancel, Answer::No};
  EXPECT_FALSE(bench_.jobFile.doQuerySaveJob());
  EXPECT_TRUE(bench_.jobFile.doQuerySaveJob());
  job_.onBackupPage = false;
  EXPECT_TRUE(bench_.jobFile.doQuerySaveJob());
  job_.onBackupPage = true;
  job_.vsContents.clearData();
  EXPECT_TRUE(bench_.jobFile.doQuerySaveJob());
  EXPECT_EQ(bench_.desktop.asked.size(), 2U);
}

}  // namespace korvenal::test
