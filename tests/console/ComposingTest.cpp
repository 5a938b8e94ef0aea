#include "console/ConsoleFixture.h"

namespace korvenal::console {
namespace {

using testing::HasSubstr;
using testing::Not;

class Composing : public ConsoleFixture {
 protected:
  /// The names of the items in their order, as the saved job has them.
  std::vector<std::string> itemsOf(const std::string& jobFile) const {
    Table table;
    table.loadData(test::TempDir::read(jobFile), true);
    std::vector<std::string> names;
    for (int row = 1; row < table.Rows(); ++row) names.push_back(table.text(row, ContentsName));
    return names;
  }
};

TEST_F(Composing, ItemsComeInEveryWayAndTakeEveryOrder) {
  temp.write("source/in/one.txt", std::string(3000, 'x'));
  temp.write("source/in/two.txt", "");
  temp.write("source/in/three.jpg", "");
  temp.write("source/dropped", std::string(2'000'000, 'x'));
  temp.write("source/song.mp3", "");
  temp.write("source/list.m3u", "song.mp3\nmissing.mp3\n");
  const std::string job = temp / "job.jbf";
  const std::string fill = "new\nbrowse " + source + "in *.txt\ndrop " + source +
                           "dropped\nimport " + source +
                           "list.m3u\ncreate folder Later /not/there\n";
  const auto ordered = [&](const std::string& commands) {
    const Outcome outcome = run(fill + commands + "\nsave " + job + "\n");
    EXPECT_EQ(outcome.code, ExitCode::Ok) << outcome.out;
    return itemsOf(job);
  };
  using testing::ElementsAre;
  EXPECT_THAT(ordered("move Later up\nmove one.txt down"),
              ElementsAre("two.txt", "one.txt", "dropped", "Later", "song.mp3"));
  EXPECT_THAT(ordered("sort size\nsort size"),
              ElementsAre("dropped", "one.txt", "two.txt", "song.mp3", "Later"))
      << "sizes as shown, the largest first at the second press";
  EXPECT_THAT(ordered("sort name\nrename dropped zz\nsort name\nremove two.txt"),
              ElementsAre("zz", "song.mp3", "one.txt", "Later"));
  EXPECT_EQ(ordered("randomize"), ordered("randomize")) << "the same at every start";
  EXPECT_EQ(run(fill + "clear\nsave " + job).code, ExitCode::Failed) << "nothing left to save";
  const Outcome refused = run(fill +
                              "sort type\nmove Later down\nrename Later a/b\nrandomize x\n"
                              "browse /not/there\nbrowse . *.none\nimport job.m3u\nshow");
  for (const char* reason :
       {"sort name|size|modified", "\"Later\" cannot go further down.", "holds none of",
        "There is no folder /not/there.", "Nothing there matches.", "There is no file"})
    EXPECT_THAT(refused.out, HasSubstr(reason));
}

TEST_F(Composing, AJobSavedAgainIsTheSameFile) {
  temp.write("source/a.txt", "abc");
  const std::string first = temp / "first.jbf", second = temp / "second.jbf";
  const Outcome outcome = run(
      "new Photos\nset comboExclude '*.tmp;ä*'\nset txDateFilter 30\nset \"chkAttribute(2)\" 0\n"
      "add " +
      source + " " + source +
      "a.txt\ncreate file gone.txt /not/there/gone.txt\n"
      "set include-subfolder(source) 0\nsave " +
      first + "\nnew\nopen " + first + "\nsave " + second + "\n");
  ASSERT_EQ(outcome.code, ExitCode::Ok) << outcome.out;
  EXPECT_EQ(test::TempDir::read(first), test::TempDir::read(second));
  EXPECT_THAT(outcome.out, HasSubstr("<Not Existing>"));
}

TEST_F(Composing, DaysAreTheNumberThatTheTextBeginsWith) {
  struct Case {
    const char* commands;
    const char* box;
    const char* days;
  };
  for (const Case& one : {Case{"set txDateFilter 12abc", "1", "12"},
                          Case{"set txDateFilter 12\nset txDateFilter soon", "1", "0"},
                          Case{"set txDateFilter 12\nset txDateFilter 0", "0", "0"}}) {
    const std::string out = run(std::string("new\n") + one.commands + "\nshow").out;
    EXPECT_THAT(out, HasSubstr(std::string("chkDateFilter = ") + one.box + "\n"));
    EXPECT_THAT(out, HasSubstr(std::string("txDateFilter = ") + one.days + "\n"));
  }
}

TEST_F(Composing, AnEstimateShowsDiscsAndOnDemandWhatGoesOnThem) {
  temp.write("source/a.txt", "abc");
  temp.sparse("source/big.bin", 1'000'000'000);
  const std::string make = "new\nset comboDiscType 0\nadd " + source + "\n";
  const Outcome brief = run(make + "estimate");
  EXPECT_THAT(brief.out, HasSubstr("CD 700MB x 2  (Total:  953.7 MB, 2 files, 1 file split)"));
  EXPECT_THAT(brief.out, HasSubstr("Backup #2"));
  EXPECT_THAT(brief.out, Not(HasSubstr("big.bin.002")));
  const Outcome full =
      run("default EstimateInfo 0\ndefault EstimateShowPath 1\n" + make + "estimate --details");
  EXPECT_THAT(full.out, HasSubstr("Files name on Disc No.2"));
  EXPECT_THAT(full.out, HasSubstr("big.bin\\big.bin.002"));
  EXPECT_THAT(full.out, HasSubstr("Split File  " + source + "big.bin"));

  const Outcome changed =
      run("new\nset comboDiscType 1\nadd " + source + "a.txt\nanswer Yes\nestimate\nshow", false);
  EXPECT_THAT(changed.out, HasSubstr("select a lower capacity disc type."));
  EXPECT_THAT(changed.out, HasSubstr("comboDiscType = 0 CD 700MB"));
}

TEST_F(Composing, DefaultsAreShownAndReset) {
  EXPECT_EQ(run("default SplitSize 7\ndefault PlaySound 0").code, ExitCode::Ok);
  EXPECT_THAT(run("default").out, HasSubstr("SplitSize = 7"));
  const Outcome outcome = run("default reset\ndefault");
  EXPECT_THAT(outcome.out, HasSubstr("SplitSize = 2"));
  EXPECT_THAT(outcome.out, HasSubstr("PlaySound = 0")) << "no option of new jobs";
  EXPECT_EQ(run("default SplitSize").code, ExitCode::Usage);
}

TEST_F(Composing, TablesAreExportedAndNotPrinted) {
  temp.write("source/a.txt", "abc");
  const std::string make = "new\nadd " + source + "\n";
  EXPECT_EQ(run(make + "export vsContents " + (temp / "out.txt")).code, ExitCode::Ok);
  EXPECT_THAT(test::TempDir::read(temp / "out.txt"), HasSubstr("source\t\tFolder\t"));
  EXPECT_EQ(run(make + "export vsContents " + target).code, ExitCode::Failed);
  EXPECT_THAT(run(make + "print vsContents").out, HasSubstr("There is no printer here"));
}

}  // namespace
}  // namespace korvenal::console
