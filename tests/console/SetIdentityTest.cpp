#include <filesystem>

#include "console/ConsoleFixture.h"
#include "console/OtherProgram.h"
#include "restore/IndexLines.h"

namespace korvenal::console {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::Not;

constexpr const char* IndexFile = "_KORVEN{Demo(2026-11-22-10-00-F)}.bdx";
constexpr const char* Demo = "20261122100000-F Demo";
constexpr const char* Other = "20261122100059-F Other";

/// Discs of several backups that bear the same labels, in one drive, side by side, or one behind
/// the other on one disc.
class SetsOnDiscs : public ConsoleFixture {
 protected:
  SetsOnDiscs() { feeder = false; }

  std::string restored(const std::string& path) const {
    return test::TempDir::read(target + "/" + path);
  }
  /// Burns what another program lays out as the next session of an image; its path.
  std::string burnDisc(const std::string& image, int number, const std::string& identity,
                       const std::string& name, const std::string& content,
                       const std::vector<std::string>& more = {}) {
    const std::string file = temp.makeFolder("discs") + "/" + image;
    std::vector<std::string> words = {"xorriso",
                                      "-report_about",
                                      "FAILURE",
                                      fs::exists(file) ? "-dev" : "-outdev",
                                      "stdio:" + file,
                                      "-volid",
                                      "Backup #" + std::to_string(number),
                                      "-volset_id",
                                      identity,
                                      "-map",
                                      temp.write("layout/" + name, content),
                                      "/" + name};
    words.insert(words.end(), more.begin(), more.end());
    EXPECT_EQ(runProgram(words, temp / "printed"), 0);
    return file;
  }
  /// A set of two discs with a file each: its first disc holds the index.
  std::string burnFirst(const std::string& image, const std::string& identity) {
    temp.write("layout/more/a", "A1");
    return burnDisc(image, 1, identity, IndexFile, index(), {"-map", temp / "layout/more/a", "/a"});
  }
  static std::string index() {
    test::IndexLines lines;
    lines.job = "Demo";
    lines.discs = 2;
    return lines.file("a", 2, 1).file("b", 2, 2).text();
  }
  std::string restoreAll() const { return "answer Yes\nindex\nrestore " + target + " --mode 0\n"; }
  static int count(const std::string& out, const std::string& text) {
    int found = 0;
    for (std::size_t at = 0; (at = out.find(text, at)) != std::string::npos; ++at) ++found;
    return found;
  }
};

TEST_F(SetsOnDiscs, EachBackupOfOneDiscComesBackFromItsOwnSession) {
  run("default Notice 1\ndefault ExcludeTopFolder 1\ndisc new V CD-R");
  temp.write("source/doc.txt", "full");
  ASSERT_EQ(run(backup("")).code, ExitCode::Ok);
  temp.write("source/doc.txt", "diff");  // as long as the other
  ASSERT_EQ(run(backup("set optBackupType 1\n")).code, ExitCode::Ok);
  temp.write("source/doc.txt", "another");
  const std::string otherJob =
      "new Other\nset comboDiscType 0\nset AutoErase 0\n"
      "set FinalizeDisc 0\nadd '" +
      source + "'\nbackup\n";
  ASSERT_EQ(run(otherJob).code, ExitCode::Ok);

  for (const auto& [choice, content] : {std::pair{"1", "full"}, {"2", "diff"}, {"3", "another"}}) {
    const Outcome outcome = run("answer " + std::string(choice) + "\n" + restoreAll() + "errors\n");
    EXPECT_EQ(outcome.code, ExitCode::Ok) << outcome.out;
    EXPECT_EQ(restored("doc.txt"), content) << outcome.out;
    EXPECT_THAT(outcome.out, Not(HasSubstr("  4:"))) << "each index once";
  }
  // Whoever has the image alone has all of its sessions.
  const std::string lone = temp / "lone.iso";
  for (const auto& file : fs::directory_iterator(temp / "app/Discs"))
    if (file.path().extension() == ".iso") fs::copy_file(file.path(), lone);
  const Outcome outcome = run("disc insert V " + lone + "\nanswer 1\n" + restoreAll());
  EXPECT_EQ(restored("doc.txt"), "full") << outcome.out;
}

TEST_F(SetsOnDiscs, ADiscOfAnotherBackupIsToldAndAskedForAgain) {
  const std::string first = burnFirst("first.iso", Demo);
  const std::string other = burnDisc("other.iso", 2, Other, "b", "XX");
  const std::string second = burnDisc("second.iso", 2, Demo, "b", "B2");
  const Outcome outcome = run("disc insert V " + first + "\n" + restoreAll(), false,
                              {"insert V " + other, "ok", "insert V " + second, "ok"});
  EXPECT_EQ(outcome.code, ExitCode::Ok) << outcome.out;
  EXPECT_THAT(
      outcome.out,
      HasSubstr(" * Backup disc #2 belongs to another backup: Other (2026-11-22 10:00).\n"));
  EXPECT_EQ(restored("a") + restored("b"), "A1B2");
}

TEST_F(SetsOnDiscs, ABackupAppendedToADiscOfTheSetLocksNobodyOut) {
  const std::string first = burnFirst("first.iso", Demo);
  const std::string second = burnDisc("second.iso", 2, Demo, "b", "B2");
  burnDisc("second.iso", 1, Other, "b", "XX");
  const Outcome outcome =
      run("disc insert V " + first + "\n" + restoreAll(), false, {"insert V " + second, "ok"});
  EXPECT_EQ(outcome.code, ExitCode::Ok) << outcome.out;
  EXPECT_EQ(restored("b"), "B2");
}

TEST_F(SetsOnDiscs, DiscsOlderThanIdentitiesCountByTheirLabel) {
  const std::string first = burnFirst("first.iso", "");
  burnDisc("first.iso", 1, Other, "a", "XX");
  const std::string second = burnDisc("second.iso", 2, "", "b", "B2");
  burnDisc("second.iso", 1, Other, "b", "XX");
  const Outcome outcome =
      run("disc insert V " + first + "\n" + restoreAll(), false, {"insert V " + second, "ok"});
  EXPECT_EQ(outcome.code, ExitCode::Ok) << outcome.out;
  EXPECT_EQ(restored("a") + restored("b"), "A1B2");
}

TEST_F(SetsOnDiscs, TheWantedDiscIsLookedUpAnewForEachDrive) {
  imageDrives = 2;
  const std::string twoDrives = "device dvcM_Name1 V\ndevice dvcM_Name2 W\ndevice dvcType 1\n";
  const std::string first = burnFirst("first.iso", Demo);
  const std::string copy = temp / "discs/copy.iso";
  fs::copy_file(first, copy);
  const std::string second = burnDisc("second.iso", 2, Demo, "b", "B2");
  run(twoDrives + "device dvcM_Eject 0");
  const Outcome alike =
      run("disc insert V " + first + "\ndisc insert W " + copy + "\n" + restoreAll(), false,
          {"ok", "insert W " + second, "ok"});
  EXPECT_EQ(alike.code, ExitCode::Ok) << alike.out;
  EXPECT_EQ(restored("a") + restored("b"), "A1B2");

  // The drive of the index comes first, whatever its letter, and a restore from several drives
  // begins with the prompt.
  fs::remove(target + "/a");
  const std::string foreign = burnDisc("foreign.iso", 1, "", "a", "XX");
  const Outcome behind =
      run("disc insert V " + foreign + "\ndisc insert W " + first + "\n" + restoreAll(), false,
          {"ok", "insert V " + second, "ok"});
  EXPECT_EQ(behind.code, ExitCode::Ok) << behind.out;
  EXPECT_EQ(restored("a") + restored("b"), "A1B2");
  EXPECT_LT(behind.out.find("Ask for loading disc..."), behind.out.find("Checking backup disc..."));
}

TEST_F(SetsOnDiscs, ARestoreFromOneDriveBeginsWithTheDiscOfItsIndexWithoutAPrompt) {
  const std::string first = burnFirst("first.iso", Demo);
  const std::string second = burnDisc("second.iso", 2, Demo, "b", "B2");
  const std::string other = burnDisc("other.iso", 1, Other, IndexFile, index());
  const Outcome direct =
      run("disc insert V " + first + "\n" + restoreAll(), false, {"insert V " + second, "ok"});
  EXPECT_EQ(direct.code, ExitCode::Ok);
  EXPECT_EQ(count(direct.out, "Ask for loading disc..."), 1) << direct.out;

  // A disc that took its place meanwhile is another matter, even with a file of that name.
  const Outcome changed = run("disc insert V " + first + "\nanswer Yes\nindex\ndisc insert V " +
                                  other + "\nrestore " + target + " --mode 0\n",
                              false, {"insert V " + first, "ok", "insert V " + second, "ok"});
  EXPECT_EQ(changed.code, ExitCode::Ok) << changed.out;
  EXPECT_EQ(count(changed.out, "Ask for loading disc..."), 2);
}

TEST_F(SetsOnDiscs, AnIndexThatCannotBeOpenedChangesNothing) {
  temp.write("layout/" + std::string(IndexFile), "");
  const std::string first = burnFirst("first.iso", Demo);
  const std::string second = burnDisc("second.iso", 2, Demo, "b", "B2");
  const Outcome outcome =
      run("disc insert V " + first + "\nanswer Yes\nindex\nanswer OK\nindex " +
              temp.write("bad.bdx", "no index") + "\nlist\nrestore " + target + " --mode 0\n",
          false, {"insert V " + second, "ok"});
  EXPECT_EQ(outcome.code, ExitCode::Failed) << "the second index was refused";
  EXPECT_EQ(count(outcome.out, "Ask for loading disc..."), 1) << outcome.out;
  EXPECT_EQ(restored("a") + restored("b"), "A1B2");
}

TEST_F(SetsOnDiscs, TheFeederPutsInNoDiscOfAnotherSet) {
  feeder = true;
  fs::create_directories(temp / "app/Discs");
  const std::string first = burnFirst("first.iso", Demo);
  const std::string other = burnDisc("other.iso", 2, Other, "b", "XX");
  const std::string second = burnDisc("second.iso", 2, Demo, "b", "B2");
  for (const std::string& file : {other, second})
    fs::rename(file, temp / ("app/Discs/" + fs::path(file).filename().string()));
  const std::string script = "disc insert V " + first + "\n" + restoreAll();
  const Outcome good = run(script);
  EXPECT_EQ(good.code, ExitCode::Ok) << good.out;
  EXPECT_EQ(restored("a") + restored("b"), "A1B2");

  fs::remove_all(target);
  temp.makeFolder("target");
  run("disc insert V " + first);
  fs::remove(temp / "app/Discs/second.iso");
  const Outcome missing = run(script);
  EXPECT_NE(missing.code, ExitCode::Ok);
  EXPECT_THAT(missing.out, HasSubstr("Disc 2 of this set is not on the shelf."));
  EXPECT_THAT(run("disc list").out, HasSubstr("V: CD-ROM, 224 blocks, Backup #1"))
      << "the tray is left as it is";
  EXPECT_FALSE(fs::exists(target + "/b"));
}

}  // namespace
}  // namespace korvenal::console
