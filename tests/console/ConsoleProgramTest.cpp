#include "console/ConsoleProgram.h"

#include <algorithm>
#include <filesystem>

#include "console/ConsoleFixture.h"
#include "platform/Text.h"

namespace korvenal::console {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

/// All below a folder: path, kind, permissions, date in seconds and content.
std::vector<std::string> listing(const std::string& folder) {
  std::vector<std::string> lines;
  for (const auto& entry : fs::recursive_directory_iterator(folder)) {
    std::string line = fs::relative(entry.path(), folder).string();
    if (entry.is_regular_file()) {
      const auto date =
          std::chrono::floor<std::chrono::seconds>(entry.last_write_time().time_since_epoch());
      line += " " + std::to_string(static_cast<unsigned>(entry.status().permissions())) + " " +
              std::to_string(date.count()) + " " + test::TempDir::read(entry.path());
    }
    lines.push_back(line);
  }
  std::sort(lines.begin(), lines.end());
  return lines;
}

class Console : public ConsoleFixture {
 protected:
  void writeSource() {
    temp.write("source/a.txt", "lower");
    temp.write("source/A.txt", "upper");
    temp.write("source/it's \"odd\" #1;*?.txt", "odd");
    temp.write("source/deep/er/" + std::string(200, 'n'), std::string(100000, 'x'));
    temp.write("source/empty.bin", "");
    fs::permissions(source + "a.txt", fs::perms(0755));
    fs::permissions(source + "A.txt", fs::perms(0400));
    fs::last_write_time(source + "a.txt",
                        fs::last_write_time(source + "a.txt") - std::chrono::hours(5000));
  }
  std::string backupScript() const {
    return "default ExcludeTopFolder 1\nnew Demo\nset comboDiscType 0\nadd '" + source +
           "'\nbackup\n";
  }
};

TEST_F(Console, AFolderComesBackAsItWas) {
  writeSource();
  const std::string json = temp / "plan.json";
  const std::string tsv = temp / "plan.tsv";
  ASSERT_EQ(run("new Demo\nset comboDiscType 0\nadd '" + source + "'\nbackup --json " + json +
                " --tsv " + tsv)
                .code,
            ExitCode::Ok);
  EXPECT_THAT(test::TempDir::read(json), HasSubstr("\"TotalFiles\": 5"));
  const auto rows = Text::split(test::TempDir::read(tsv), '\n');
  ASSERT_EQ(rows.size(), 9U);  // the index, five files, two folders, the end of the last line
  for (std::size_t i = 0; i + 1 < rows.size(); ++i)
    EXPECT_EQ(std::count(rows[i].begin(), rows[i].end(), '\t'), PlanColumns - 1) << rows[i];

  // Another start, which finds the disc by itself.
  const Outcome restored = run("new Kept\nindex\nrestore " + target +
                               " --mode 0\ncreate file f "
                               "/f\nshow\nreport 1");
  EXPECT_THAT(restored.out, HasSubstr("txJobName = Kept\n"));
  EXPECT_EQ(listing(source), listing(target)) << restored.out;
  EXPECT_THAT(restored.out, HasSubstr("Restore action finished."));
  EXPECT_EQ(restored.code, ExitCode::Failed) << "the report belonged to the first start";
}

TEST_F(Console, OnlyWhatIsSelectedComesBack) {
  writeSource();
  ASSERT_EQ(run(backupScript()).code, ExitCode::Ok);
  const Outcome outcome = run("index\nselect '*.txt'\nfind UPPER\nfind it\nlist 'n*'\nrestore " +
                              target + " --mode 3 --only-files");
  EXPECT_THAT(outcome.out, HasSubstr("[ ] 1  98 KB"));
  EXPECT_EQ(outcome.code, ExitCode::Failed) << "find UPPER has no match";
  EXPECT_EQ(listing(target).size(), 3U);
}

TEST_F(Console, AnUnknownControlOrValueChangesNothing) {
  const std::string before = run("show").out;
  for (const std::string line : {"set comboDiscType 3",
                                 "set comboDiscType -1",
                                 "set FileSize 25",
                                 "set chkAttribute(4) 0",
                                 "set chkAttribute(0) yes",
                                 "set txJobName a.b",
                                 "set txDateFilter 10000",
                                 "set nothing 1",
                                 "set include-subfolder(none) 0",
                                 "remove none",
                                 "rename none other",
                                 "default Default 4",
                                 "default nothing 1",
                                 "device dvcType 3",
                                 "device dvcS_Name Q",
                                 "device dvcM_ErrorMax 0",
                                 "create file a.txt relative.txt",
                                 "new a/b",
                                 "open missing.jbf",
                                 "save /nowhere/x.jbf",
                                 "import missing.m3u",
                                 "export nothing x",
                                 "disc new V floppy",
                                 "disc insert V missing.iso",
                                 "disc eject Q",
                                 "select all",
                                 "list",
                                 "index missing.bdx",
                                 "restore /tmp",
                                 "report 1",
                                 "backup",
                                 "estimate"}) {
    const Outcome outcome = run(line + "\nshow");
    EXPECT_EQ(outcome.code, ExitCode::Failed) << line;
    EXPECT_THAT(outcome.out, testing::EndsWith(before.substr(before.find("  txJobName")))) << line;
  }
}

TEST_F(Console, WrongUsageIsToldAndDoesNotEndTheScript) {
  for (const std::string line :
       {"nonsense", "set comboDiscType", "add", "disc", "disc throw V", "disc new V", "backup now",
        "backup --tsv", "restore a b", "restore a --mode 9", "create link a b", "add 'open"}) {
    const Outcome outcome = run(line + "\ndrives");
    EXPECT_EQ(outcome.code, ExitCode::Usage) << line;
    EXPECT_THAT(outcome.out, HasSubstr("Device mode:  Single-drive (V:)")) << line;
  }
}

TEST_F(Console, PreparedAnswersDecideAboutALargeFile) {
  temp.sparse("source/large", 800'000'000);
  temp.write("source/small", "x");
  const auto plan = [&](const std::string& answers) {
    const std::string json = temp / "plan.json";
    run("set comboDiscType 0\nset optSplitAndSpan 0\nadd '" + source + "'\n" + answers +
        "estimate --json " + json);
    const std::string text = test::TempDir::read(json);
    return text.substr(0, text.find("  \"TotalSize\""));
  };
  EXPECT_THAT(plan("answer 'Skip It'\n"), HasSubstr("\"TotalFiles\": 1,\n  \"TotalSplits\": 0"));
  EXPECT_THAT(plan(""), HasSubstr("\"TotalFiles\": 2,\n  \"TotalSplits\": 1"));
  EXPECT_THAT(plan("answer Stop\n"), HasSubstr("\"TotalDiscs\": 0"));
}

TEST_F(Console, NobodyToAskMeansThatNoDiscIsWritten) {
  temp.write("source/x", "x");
  const Outcome outcome = run(backupScript(), false);
  EXPECT_EQ(outcome.code, ExitCode::Stopped);
  EXPECT_THAT(run("disc list").out, Not(HasSubstr("Backup #1")));
}

TEST_F(Console, APersonServesTheTrayByHand) {
  feeder = false;
  temp.write("source/x", "x");
  const Outcome outcome = run(backupScript(), false,
                              {"OK",  // the notice
                               "ok", "shelf", "nonsense", "blank V floppy", "blank V CD-RW", "ok"});
  EXPECT_EQ(outcome.code, ExitCode::Ok) << outcome.out;
  EXPECT_THAT(outcome.out, HasSubstr("Please make sure the disc is loaded and try again."));
  EXPECT_THAT(run("disc list").out, HasSubstr("V: CD-RW, 359849 blocks, Backup #1, 1 session"));
}

TEST_F(Console, DiscsGoInAndOutOfTheTray) {
  const std::string out =
      run("disc new V DVD-R\ndisc new V 2 1000\ndisc eject V\ndisc list\ndisc insert V Disc.iso\n"
          "disc list")
          .out;
  EXPECT_THAT(out, HasSubstr("V: no disc (tray open)\nShelf"));
  EXPECT_THAT(out, HasSubstr(": CD-R, 1000 blocks, blank\n"));
  EXPECT_THAT(run("disc list").out, HasSubstr("V: DVD-R, 2298496 blocks, blank"));
}

TEST_F(Console, TheInterruptKeyStopsTheRunAndTheScript) {
  temp.write("source/x", "x");
  for (const char* moment :
       {"Press [Backup]", "Start backup action.", "Disc required", "Ask for loading disc...",
        "Checking disc", "Collecting disc track", "Allocating data buffer"}) {
    interruptAt = moment;
    const Outcome outcome = run(backupScript() + "help\n");
    EXPECT_EQ(outcome.code, ExitCode::Stopped) << moment;
    EXPECT_THAT(outcome.out, HasSubstr("Action stop by user.")) << moment;
    EXPECT_THAT(outcome.out, Not(HasSubstr("opens a job"))) << moment;
  }
  interruptAt.clear();
  EXPECT_EQ(run(backupScript()).code, ExitCode::Ok);
}

TEST_F(Console, AStoppedBackupGoesOnWithItsPlan) {
  feeder = false;
  temp.write("source/x", "x");
  const Outcome outcome = run(backupScript() + "disc new V CD-R\nbackup\nbackup\nrecent", false,
                              {"OK", "stop", "ok", "ok"});
  EXPECT_EQ(outcome.code, ExitCode::Stopped);
  const auto count = [&](const std::string& text) {
    int found = 0;
    for (std::size_t at = 0; (at = outcome.out.find(text, at)) != std::string::npos; ++at) ++found;
    return found;
  };
  EXPECT_EQ(count("Collecting backup data information..."), 1) << outcome.out;
}

TEST_F(Console, ADifferentialBackupTakesWhatChangedAndAQuietDayIsNoFailure) {
  temp.write("source/old", "1");
  temp.write("source/new", "1");
  const std::string script = "new D\nset comboDiscType 0\nset optBackupType 1\nadd '" + source +
                             "'\nbackup --json " + (temp / "plan.json");
  const auto files = [this] {
    const std::string json = test::TempDir::read(temp / "plan.json");
    return Text::toInteger(json.substr(json.find("TotalFiles\": ") + 13));
  };
  EXPECT_EQ(run(script).code, ExitCode::Ok);
  EXPECT_EQ(files(), 2);
  temp.write("source/new", "22");
  EXPECT_EQ(run(script).code, ExitCode::Ok);
  EXPECT_EQ(files(), 1);
  EXPECT_EQ(run(script).code, ExitCode::Ok);
  EXPECT_EQ(files(), 0);

  const Outcome full = run("new F\nadd '" + temp.makeFolder("nothing") + "'\nbackup");
  EXPECT_EQ(full.code, ExitCode::Failed) << "a full backup without a file has lost its sources";
}

TEST_F(Console, APersonDecidesAboutFilesThatExist) {
  for (const char* name : {"a", "b", "c", "d"}) temp.write(std::string("source/") + name, "new");
  ASSERT_EQ(run(backupScript()).code, ExitCode::Ok);
  for (const char* name : {"a", "b", "c", "d"}) temp.write(std::string("target/") + name, "old");
  const Outcome outcome = run("index\nrestore " + target + " --mode 1", false,
                              {"ok", "Yes", "No", "perhaps", "Yes", "Replace All"});
  EXPECT_EQ(outcome.code, ExitCode::Ok) << outcome.out;
  EXPECT_EQ(test::TempDir::read(target + "/a"), "old");
  for (const char* name : {"/b", "/c", "/d"})
    EXPECT_EQ(test::TempDir::read(target + name), "new") << name;
}

TEST_F(Console, WithTwoDrivesOneChoosesBetweenTwoBackups) {
  imageDrives = 2;
  temp.write("source/one", "1");
  const std::string twoDrives = "device dvcM_Name1 V\ndevice dvcM_Name2 w:\ndevice dvcType 1\n";
  ASSERT_EQ(run("device dvcS_Name V\n" + backupScript()).code, ExitCode::Ok);
  temp.write("source/two", "2");
  ASSERT_EQ(
      run("device dvcS_Name W\nnew Second\nset comboDiscType 0\nadd '" + source + "'\nbackup").code,
      ExitCode::Ok);
  const Outcome both = run(twoDrives + "device dvcM_Eject 0\ndrives\nanswer 2\nindex\nlist");
  EXPECT_EQ(both.code, ExitCode::Ok) << both.out;
  EXPECT_THAT(both.out, HasSubstr("Device mode:  Multiple-drive (V:W:)"));
}

TEST_F(Console, TablesAreShownAndExported) {
  temp.write("source/x", "x");
  const std::string file = temp / "out.txt";
  const Outcome outcome = run(backupScript() + "report 1\nexport 'vsError(0)' " + file);
  EXPECT_EQ(outcome.code, ExitCode::Ok);
  EXPECT_THAT(outcome.out, HasSubstr("Verify Report - Backup #1"));
  EXPECT_THAT(test::TempDir::read(file), HasSubstr("PASS"));
  const Outcome later = run("records\nrecent\nerrors");
  EXPECT_THAT(later.out, HasSubstr("Success."));
  EXPECT_THAT(later.out, HasSubstr("Full backup."));
  EXPECT_THAT(later.out, HasSubstr("No errors."));
}

TEST_F(Console, NoNameMakesTheTerminalAct) {
  temp.write("source/x", "x");
  temp.write("source/\x1b[31mred", "x");
  temp.write("source/two\nlines", "x");
  const Outcome outcome = run(backupScript() + "add '" + source + "\x1b[31mred'\nshow");
  EXPECT_THAT(outcome.out, Not(HasSubstr("\x1b")));
  EXPECT_THAT(outcome.out, HasSubstr("\\x1B[31mred"));
}

TEST_F(Console, TheMachineStaysAwakeForAsLongAsARunIsAtWork) {
  writeSource();
  ASSERT_EQ(run(backupScript() + "index\nrestore " + target).code, ExitCode::Ok);
  EXPECT_THAT(power.notes, ElementsAre("A backup is at work.", "may sleep", "A restore is at work.",
                                       "may sleep"));
}

}  // namespace
}  // namespace korvenal::console
