#include <gmock/gmock.h>

#include <filesystem>

#include "console/ConsoleFixture.h"
#include "platform/Profile.h"
#include "platform/linux/LinuxFiles.h"

namespace korvenal::console {
namespace {

namespace fs = std::filesystem;
using test::TempDir;
using testing::HasSubstr;
using testing::Not;

/// What a person set up stays, whatever became of the files that hold it.
class OwnStateTest : public ConsoleFixture {
 protected:
  OwnStateTest() { temp.write("source/file", "content"); }

  std::string app(const std::string& name) const { return temp / "app/" + name; }
  std::string stored(const std::string& key) {
    LinuxFiles files(nullptr);
    return Profile(files, app("KORVEN2.dat")).doReadProfile("Devices", key, "");
  }
  void store(const std::vector<ProfileEntry>& entries) {
    temp.makeFolder("app");
    LinuxFiles files(nullptr);
    Profile(files, app("KORVEN2.dat")).doWriteProfiles(entries);
  }
  /// A record of the disc log as a line of its file.
  static std::string line(const std::string& job) {
    return "V:\t\t2026-01-02 10:00\tBackup\t" + job + "\tBackup #1\tCD-R\tSuccess.\n";
  }
  static int countIn(const std::string& text, const std::string& word) {
    int count = 0;
    for (std::size_t at = text.find(word); at != std::string::npos; at = text.find(word, at + 1))
      ++count;
    return count;
  }
};

TEST_F(OwnStateTest, ABadJobFileLocksNothing) {
  run("new Good\nadd '" + source + "file'\nsave " + temp.path() + "good.jbf\n");
  const std::string good = TempDir::read(temp / "good.jbf");
  const std::string row = good.substr(good.find('\n') + 1);
  const std::vector<std::string> bad = {
      temp.write("older.jbf", Text::replaceAll(good, "DVD 2.0", "DVD 1.0")),
      temp.write("cut.jbf", good.substr(0, good.size() / 2)),
      temp.write("twice.jbf", good + row),
      temp.write("case.jbf", good + Text::replaceAll(row, "file\t", "FILE\t")),
  };
  for (const std::string& file : bad) {
    interrupted = false;
    const Outcome said =
        run("open " + file + "\nnew Next\nadd '" + source + "file'\nopen " + temp.path() +
            "good.jbf\ndevice dvcS_Eject 0\nbackup\nindex\nerase quick\n");
    EXPECT_EQ(said.code, ExitCode::Failed) << file;
    EXPECT_EQ(countIn(said.out, "Invalid backup job file format!"), 1) << said.out;
    EXPECT_THAT(said.out, HasSubstr("Success.")) << file;
    EXPECT_THAT(said.out, HasSubstr("Backup created by")) << file;
    EXPECT_THAT(said.out, Not(HasSubstr("cannot be changed now"))) << file;
    EXPECT_THAT(said.out, Not(HasSubstr("cannot be opened now"))) << file;
  }
  const std::string edited = "\xEF\xBB\xBF" + Text::replaceAll(good, "\n", "\r\n");
  const Outcome said = run("open " + temp.write("edited.jbf", edited) + "\n");
  EXPECT_EQ(said.code, ExitCode::Ok) << said.out;
  EXPECT_THAT(said.out, HasSubstr("txJobName = Good"));
}

TEST_F(OwnStateTest, AnUnpluggedDriveStaysChosen) {
  const std::vector<ProfileEntry> chosen = {{"Devices", "dvcType", "1"},
                                            {"Devices", "dvcS_Name", "E"},
                                            {"Devices", "dvcM_Name1", "V"},
                                            {"Devices", "dvcM_Name3", "F"},
                                            {"Devices", "dvcAL_Name", "G"}};
  store(chosen);
  const Outcome records = run("records\nrecent\nshow\ndrives\n");
  EXPECT_EQ(records.code, ExitCode::Ok) << records.out;
  EXPECT_THAT(records.out, Not(HasSubstr("Device settings")));
  EXPECT_THAT(run("estimate\n").out, HasSubstr("Device settings"));
  run(backup(""));
  for (const ProfileEntry& entry : chosen) EXPECT_EQ(stored(entry.key), entry.value) << entry.key;

  store({{"Devices", "dvcType", "0"}});
  EXPECT_NE(run(backup("")).code, ExitCode::Ok) << "nobody chose V: for this";
  EXPECT_EQ(stored("dvcS_Name"), "E");
}

TEST_F(OwnStateTest, SettingsThatCannotBeWrittenHoldForTheRun) {
  temp.makeFolder("app/KORVEN2.dat");
  const Outcome said = run("device dvcM_ErrorMax 4\ndevice dvcS_Eject 0\ndrives\n" + backup(""));
  EXPECT_EQ(said.code, ExitCode::Failed);
  EXPECT_EQ(countIn(said.out, app("KORVEN2.dat")), 1) << said.out;
  EXPECT_THAT(said.out, HasSubstr("Success.")) << "the drive chosen at the first need is kept";
  EXPECT_TRUE(fs::is_directory(app("KORVEN2.dat")));
}

TEST_F(OwnStateTest, DamageCostsTheLinesThatItStruck) {
  const std::string header =
      "Drive\tDisc#\tOutput Time\tAction\tBackup Job\tLabel ID\tDisc Type\tNote\n";
  std::string broken = line("Struck");
  broken[2] = '\\';  // one bit
  const std::string before = header + line("First") + broken + line("Third") + "V:\t\tcut";
  temp.write("app/DiscLog.dat", before);
  const Outcome said = run("records\n");
  EXPECT_EQ(said.code, ExitCode::Failed);
  EXPECT_THAT(said.out,
              testing::AllOf(HasSubstr("First"), HasSubstr("Third"), HasSubstr("2 lines")));
  EXPECT_EQ(TempDir::read(app("DiscLog.dat.damaged")), before);
  const Outcome again = run(backup("") + "records\n");
  EXPECT_EQ(again.code, ExitCode::Ok) << again.out;
  EXPECT_THAT(again.out, testing::AllOf(HasSubstr("First"), HasSubstr("Third"), HasSubstr("Demo")));
}

TEST_F(OwnStateTest, AHistoryIsNeverEmptiedByAReadThatFails) {
  std::string many = "\n";
  for (int i = 0; i <= 10'000; ++i) many += line("job " + std::to_string(i));
  std::string large = "\n" + line("kept");
  large.append(17 << 20, 'x');
  for (const auto& [content, last] : {std::pair(many, "job 198"), std::pair(large, "kept")}) {
    temp.write("app/DiscLog.dat", content);
    const Outcome said = run(backup("") + "records\n");
    EXPECT_EQ(said.code, ExitCode::Failed);
    EXPECT_THAT(said.out, HasSubstr(last));
    EXPECT_TRUE(TempDir::read(app("DiscLog.dat.damaged")) == content);
    fs::remove(app("DiscLog.dat.damaged"));
  }
  fs::remove(app("DiscLog.dat"));
  temp.makeFolder("app/DiscLog.dat");  // reading it fails
  const Outcome said = run(backup(""));
  EXPECT_EQ(said.code, ExitCode::Failed);
  EXPECT_EQ(countIn(said.out, app("DiscLog.dat")), 1) << said.out;
  EXPECT_TRUE(fs::is_directory(app("DiscLog.dat.damaged"))) << "whatever it was";
  EXPECT_THAT(run("records\n").out, HasSubstr("Success."));
}

TEST_F(OwnStateTest, RecordsThatCannotBeWrittenAreToldOnce) {
  whenPrinted = {{"Demo", [this] {
                    fs::remove(app("RecentBackup.dat"));
                    fs::create_directories(app("RecentBackup.dat"));
                  }}};
  const Outcome said = run(backup(""));
  EXPECT_EQ(said.code, ExitCode::Failed);
  EXPECT_THAT(said.out, HasSubstr("Success."));
  EXPECT_EQ(countIn(said.out, "cannot be written"), 1) << said.out;
}

}  // namespace
}  // namespace korvenal::console
