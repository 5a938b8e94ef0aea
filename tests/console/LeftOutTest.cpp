#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "console/ConsoleFixture.h"
#include "console/OtherProgram.h"

namespace korvenal::console {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::Not;

/// What a backup does not take is told, and counts when the job names it.
class LeftOut : public ConsoleFixture {
 protected:
  void addItem(const std::string& path) { items_ += "add '" + path + "'\n"; }
  Outcome backupItems(const std::string& options = "") {
    return run("new Home\nset comboDiscType 0\nset FinalizeDisc 0\n" + items_ + options +
               "backup --tsv " + (temp / "plan.tsv") + "\n");
  }
  std::string plan() const { return test::TempDir::read(temp / "plan.tsv"); }

  std::string items_;
};

TEST_F(LeftOut, WhatIsNotThereIsToldAndIsNoSuccess) {
  temp.write("source/there", "there");
  addItem(source + "there");
  items_ += "create folder Disk /not/mounted\n";
  const std::string line = "Not existing, not backed up: /not/mounted";
  const Outcome estimated = run("new Home\n" + items_ + "estimate\n");
  EXPECT_THAT(estimated.out, HasSubstr(line));
  const Outcome outcome = backupItems();
  EXPECT_EQ(outcome.code, ExitCode::Failed);
  EXPECT_THAT(outcome.out, HasSubstr(line));
  EXPECT_THAT(outcome.out, HasSubstr("Backup action finished.")) << "what is there is saved";
  EXPECT_THAT(outcome.out, HasSubstr("1 item could not be backed up"));
  // Nothing changed since, but what is gone is not a quiet day.
  const Outcome second = backupItems("set optBackupType 1\n");
  EXPECT_EQ(second.code, ExitCode::Failed) << second.out;
}

TEST_F(LeftOut, NamesThatNoDiscHoldsAreCountedAndPipesAreNot) {
  temp.write("source/there", "there");
  ASSERT_EQ(::mkfifo((temp / "source/pipe").c_str(), 0600), 0);
  fs::create_symlink("nowhere", temp / "source/link");
  addItem(source);
  EXPECT_EQ(backupItems().code, ExitCode::Ok);
  for (int i = 0; i < 11; ++i) temp.write("source/back\\slash" + std::to_string(i), "");
  const Outcome outcome = backupItems();
  EXPECT_EQ(outcome.code, ExitCode::Failed);
  EXPECT_THAT(outcome.out, HasSubstr("no disc can hold the name:  11 items."));
  const std::string each = "not backed up:  " + source + "back\\slash";
  EXPECT_THAT(outcome.out, HasSubstr(each + "8")) << "the first ten by their paths";
  EXPECT_THAT(outcome.out, Not(HasSubstr(each + "9")));
}

TEST_F(LeftOut, AFolderThatCannotBeReadIsNoSuccess) {
  if (::geteuid() == 0) GTEST_SKIP() << "everything is readable for this user";
  temp.write("source/there", "there");
  temp.write("source/locked/file", "x");
  ASSERT_EQ(::chmod((temp / "source/locked").c_str(), 0), 0);
  addItem(source);
  const Outcome outcome = backupItems();
  ::chmod((temp / "source/locked").c_str(), 0700);
  EXPECT_EQ(outcome.code, ExitCode::Failed);
  EXPECT_THAT(outcome.out, HasSubstr("not backed up:  " + source + "locked/"));
}

TEST_F(LeftOut, AHomeWithTheProgramsFilesInItDoesNotBackItselfUp) {
  temp.write("source/letter", "letter");
  addItem(temp.path());
  for (int i = 0; i < 2; ++i) {
    const Outcome outcome = backupItems();
    EXPECT_EQ(outcome.code, ExitCode::Ok) << outcome.out;
    EXPECT_THAT(plan(), HasSubstr("letter"));
    EXPECT_THAT(plan(), Not(HasSubstr(".iso")));
    EXPECT_THAT(plan(), Not(HasSubstr("KORVEN2.dat")));
    EXPECT_THAT(outcome.out, HasSubstr("this program's own files (" + (temp / "app/")));
  }
}

TEST_F(LeftOut, AShelfElsewhereKeepsItsDiscsAndGivesThemWhenItIsNamed) {
  temp.write("source/letter", "letter");
  const std::string shelf = temp.makeFolder("discs");
  const std::string mine = temp.write("discs/downloaded.iso", std::string(70'000, 'x'));
  const auto console = [&](const std::string& script) {
    return runProgram({KORVENAL_CONSOLE, "--app", temp / "app", "--discs", shelf, "--yes",
                       temp.write("script", script)},
                      temp / "said");
  };
  const std::string head = "new Home\nset comboDiscType 0\nset FinalizeDisc 0\nset AutoErase 0\n";
  const std::string tail = "\nbackup --tsv " + (temp / "plan.tsv") + "\n";
  for (int i = 0; i < 2; ++i) {
    ASSERT_EQ(console(head + "add " + temp.path() + tail), 0) << test::TempDir::read(temp / "said");
    EXPECT_THAT(plan(), HasSubstr("downloaded.iso")) << "a person's own file";
    EXPECT_THAT(plan(), Not(HasSubstr("disc 01.iso")));
  }
  // The disc in the tray still takes data; the one on the shelf is no longer written to.
  ASSERT_EQ(console("disc list\n"), 0);
  const std::string list = test::TempDir::read(temp / "said");
  std::string inTray;
  for (const auto& entry : fs::directory_iterator(shelf))
    if (entry.path().extension() == ".iso" &&
        list.find("  " + entry.path().filename().string()) == std::string::npos)
      inTray = entry.path().filename();
  ASSERT_NE(inTray, "") << list;
  ASSERT_EQ(console(head + "add " + shelf + tail), 0) << test::TempDir::read(temp / "said");
  EXPECT_THAT(plan(), HasSubstr("disc 01.iso.disc"));
  EXPECT_THAT(plan(), Not(HasSubstr(inTray)));
}

TEST_F(LeftOut, ACommandFileThatCannotBeReadIsWrongUsage) {
  for (const std::string& file : {temp / "missing", temp.path()})
    EXPECT_EQ(runProgram({KORVENAL_CONSOLE, "--app", temp / "app", file}, temp / "said"), 2)
        << file;
}

}  // namespace
}  // namespace korvenal::console
