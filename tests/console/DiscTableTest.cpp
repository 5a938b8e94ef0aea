#include <filesystem>

#include "console/ConsoleFixture.h"

namespace korvenal::console {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::Not;

enum class Holds { Nothing, Session, ClosedSession };

/// A disc, what it holds, what the job says; then what its record, the events and the disc say.
struct DiscCase {
  const char* type;
  Holds holds;
  const char* options;  ///< commands behind those of the job
  const char* recordType;
  const char* note;
  const char* event;  ///< a line among others
  const char* after;  ///< end of its line in the list of discs
};

std::string nameOf(const testing::TestParamInfo<DiscCase>& info) {
  std::string name = std::to_string(info.index) + info.param.type;
  std::erase_if(name, [](char c) { return std::isalnum(static_cast<unsigned char>(c)) == 0; });
  return name;
}

class DiscTable : public ConsoleFixture, public testing::WithParamInterface<DiscCase> {
 protected:
  DiscTable() { feeder = false; }

  void prepare(Holds holds, const std::string& type) {
    run("disc new V '" + type + "'");
    if (holds == Holds::Nothing) return;
    temp.write("source/first.txt", "first");
    const char* closing = holds == Holds::ClosedSession ? "set FinalizeDisc 1\n" : "";
    ASSERT_EQ(run(backup(closing)).code, ExitCode::Ok);
    fs::remove(source + "first.txt");
  }
};

TEST_P(DiscTable, RecordEventsAndDiscAgree) {
  const DiscCase& one = GetParam();
  prepare(one.holds, one.type);
  temp.write("source/second.txt", "second");
  const bool good = one.note == std::string("Success.");
  const Outcome outcome = run(backup(one.options));
  EXPECT_EQ(outcome.code == ExitCode::Ok, good) << outcome.out;
  EXPECT_EQ(record(6), one.recordType);
  EXPECT_EQ(record(7), one.note);
  EXPECT_THAT(outcome.out, HasSubstr(one.event));
  EXPECT_THAT(outcome.out, HasSubstr((good ? "   " : " * ") + std::string(one.note)));
  EXPECT_THAT(run("disc list").out, HasSubstr(std::string(one.after) + " (tray open)\n"));
}

constexpr const char* Imported = "Sessions imported successfully.";
constexpr const char* Burning = "Burning backup disc #1...";

INSTANTIATE_TEST_SUITE_P(
    All, DiscTable,
    testing::Values(
        DiscCase{"CD-R", Holds::Nothing, "", "700MB CD-R", "Success.", "Disc type:  700MB CD-R",
                 "Backup #1, 1 session"},
        DiscCase{"CD-R", Holds::Nothing, "set FinalizeDisc 1\n", "700MB CD-R", "Success.", Burning,
                 "Backup #1, 1 session, closed"},
        DiscCase{"CD-R", Holds::Session, "", "700MB CD-R", "Success.", Imported, "2 sessions"},
        DiscCase{"CD-R", Holds::Session, "set AutoErase 1\n", "700MB CD-R", "Success.", Imported,
                 "2 sessions"},
        DiscCase{"CD-R", Holds::Session, "set optFileSystem 1\n", "700MB CD-R",
                 "Error: Disc is not empty.", "Disc type:  700MB CD-R", "1 session"},
        DiscCase{"CD-R", Holds::ClosedSession, "", "CD-R", "Error: Disc is not writable.",
                 "Checking disc in drive (V:)...", "1 session, closed"},
        DiscCase{"CD-RW", Holds::Session, "set AutoErase 1\n", "700MB CD-RW", "Success.",
                 "Quick erase successfully.", "Backup #1, 1 session"},
        DiscCase{"CD-RW", Holds::ClosedSession, "set AutoErase 1\nset optFileSystem 1\n",
                 "700MB CD-RW", "Success.", "Quick erase non-empty rewritable disc...",
                 "Backup #1, 1 session"},
        DiscCase{"CD-RW", Holds::ClosedSession, "", "700MB CD-RW",
                 "Error: Disc free space not enough.", Burning, "1 session, closed"},
        DiscCase{"DVD-R", Holds::Session, "", "4.7GB DVD-R", "Success.", Imported, "2 sessions"},
        DiscCase{"DVD-RW", Holds::Session, "", "4.7GB DVD-RW", "Success.", Imported, "2 sessions"},
        DiscCase{"DVD+RW", Holds::Nothing, "", "4.7GB DVD+RW", "Success.",
                 "Disc formatted successfully.", "Backup #1, 1 session"},
        DiscCase{"DVD+RW", Holds::Session, "set AutoErase 1\nset FinalizeDisc 1\n", "4.7GB DVD+RW",
                 "Success.", "Quick erase successfully.", "Backup #1, 1 session"},
        DiscCase{"DVD+R", Holds::Nothing, "", "4.7GB DVD+R", "Success.",
                 "Reset disc for verifying backup files...", "Backup #1, 1 session"},
        DiscCase{"DVD+R DL", Holds::Nothing, "set FinalizeDisc 1\n", "DVD+R DL", "Success.",
                 "Disc type:  DVD+R DL", "Backup #1, 1 session, closed"},
        DiscCase{"DVD-RAM", Holds::Nothing, "set FinalizeDisc 1\n", "4.7GB DVD-RAM", "Success.",
                 Burning, "Backup #1, 1 session"}),
    nameOf);

using DiscFaults = DiscTable;

TEST_F(DiscFaults, ABackupOfMoreDiscsTakesNoDiscWithData) {
  prepare(Holds::Session, "CD-R");
  temp.sparse("source/large", 800'000'000);
  EXPECT_NE(run(backup("")).code, ExitCode::Ok);
  EXPECT_EQ(record(7), "Error: Disc is not empty.");
  EXPECT_THAT(run("disc list").out, HasSubstr("Backup #1, 1 session (tray open)"));
}

TEST_F(DiscFaults, ADiscThatIsTooSmallIsToldApart) {
  temp.write("source/large", std::string(3'000'000, 'x'));
  run("disc new V CD-R 1000");
  run(backup(""));
  EXPECT_EQ(record(7), "Error: Wrong disc type.");
}

TEST_F(DiscFaults, APressedDiscIsNotWritable) {
  prepare(Holds::Session, "CD-R");
  fs::copy_file(temp / "app/Discs/Disc.iso", temp / "pressed.iso");
  temp.write("source/second.txt", "second");
  run("disc insert V " + (temp / "pressed.iso") + "\n" + backup(""));
  EXPECT_EQ(record(6), "CD-ROM");
  EXPECT_EQ(record(7), "Error: Disc is not writable.");
}

TEST_F(DiscFaults, ADiscPutInByHandStaysAndOnesLeftInAreChanged) {
  feeder = true;
  temp.write("source/file.txt", "text");
  run("disc new V CD-RW\n" + backup(""));
  EXPECT_THAT(run("disc list").out, HasSubstr("V: CD-RW, 359849 blocks, Backup #1, 1 session"));
  const Outcome erased = run("disc insert V Disc.iso\n" + backup("set AutoErase 1\n"));
  EXPECT_THAT(erased.out, HasSubstr("Quick erase successfully."));
  EXPECT_THAT(run(backup("set AutoErase 1\n")).out, Not(HasSubstr("Quick erase")));
  EXPECT_THAT(run("disc list").out, HasSubstr("V: CD-R, 359849 blocks, Backup #1, 1 session"));
}

TEST_F(DiscFaults, EraseEmptiesWhatLiesIn) {
  prepare(Holds::ClosedSession, "DVD-RW");
  const Outcome erased = run("erase full");
  EXPECT_EQ(erased.code, ExitCode::Ok);
  EXPECT_EQ(record(1) + " " + record(7), "Full-erase Success.");
  EXPECT_THAT(run("disc list").out, HasSubstr("V: DVD-RW, 2298496 blocks, blank"));
  EXPECT_EQ(run("disc new V CD-R\nerase quick").code, ExitCode::Failed);
  EXPECT_EQ(record(7), "Error: Disc is not erasable.");
  EXPECT_EQ(run("erase slowly").code, ExitCode::Usage);
  interruptAt = "Start quick erasing disc...";
  const Outcome stopped = run("disc new V CD-RW\nerase quick");
  interruptAt.clear();
  EXPECT_EQ(stopped.code, ExitCode::Stopped);
  EXPECT_THAT(stopped.out, HasSubstr("The action will stop after erasing complete, please wait."));
  EXPECT_EQ(record(7), "Success.");
  EXPECT_EQ(run("disc eject V\nerase quick").code, ExitCode::Stopped);
}

}  // namespace
}  // namespace korvenal::console
