#include <gtest/gtest.h>

#include <filesystem>

#include "restore/RestoreRig.h"
#include "restore/frmReplace.h"

namespace korvenal::test {
namespace {

using End = RestoreResult::End;
using Texts = std::vector<std::string>;

/// Two discs with three files in folders.
void fillTwoDiscs(RestoreRig& rig) {
  rig.discs.contents["Backup #1"] = {{"A\\one", "first"}, {"A\\B\\two", std::string(600000, 'x')}};
  rig.discs.contents["Backup #2"] = {{"A\\three", "third"}};
  rig.openAll(IndexLines()
                  .folder("A")
                  .folder("A\\empty")
                  .file("A\\one", 5)
                  .file("A\\B\\two", 600000)
                  .file("A\\three", 5, 2));
}

void expectTwoDiscs(const RestoreRig& rig) {
  EXPECT_EQ(rig.restored("A/one"), "first");
  EXPECT_EQ(rig.restored("A/B/two"), std::string(600000, 'x'));
  EXPECT_EQ(rig.restored("A/three"), "third");
  EXPECT_TRUE(rig.files.doFolderExists(rig.target("A/empty")));
}

void expectAtRest(RestoreRig& rig) {
  EXPECT_FALSE(rig.state.ActionRunning);
  EXPECT_FALSE(rig.state.ActionBusy);
  EXPECT_FALSE(rig.state.DiscInWork);
  EXPECT_FALSE(rig.state.IgnoreEvents);
  EXPECT_FALSE(rig.engine.drives['V'].locked);
  EXPECT_FALSE(rig.runPage.pbStopVisible);
}

TEST(RestoreRun, BringsFilesBackDiscByDisc) {
  RestoreRig rig;
  fillTwoDiscs(rig);
  EXPECT_EQ(rig.run.doStartRestore().end, End::Finished);
  expectTwoDiscs(rig);
  expectAtRest(rig);
  EXPECT_EQ(rig.prompts, (Texts{"0: 1 2", "1: 2"}));
  EXPECT_EQ(rig.page.RestoreDiscIndex, 0);
  EXPECT_EQ(rig.files.doGetInfo(rig.target("A/one")).modified, rig.discs.modified);
  ASSERT_EQ(rig.grids.vsOutput[1].Rows(), 3);
  const Texts record{
      "V:",        "",           Dates::displayShort(rig.clock.now()), "Restore", "Photos",
      "Backup #1", "700MB CD-R", "Success. 2 files restored."};
  for (int col = 0; col < 8; ++col)
    EXPECT_EQ(rig.grids.vsOutput[1].text(1, col), record[static_cast<std::size_t>(col)]);
  EXPECT_EQ(rig.records.vsLog.Rows(), 3);
  EXPECT_EQ(rig.engine.count("do_EjectMedium"), 2);
  for (const char* event : {"Select drive (V:) to restore from backup disc #2",
                            "Start restoring files from backup disc #1...",
                            "Start restoring file from backup disc #2...",
                            "Success. 1 file restored.", "Restore action finished."})
    EXPECT_TRUE(rig.hasEvent(event)) << event;
}

TEST(RestoreRun, AsksForNoDiscThatTheIndexWasReadFrom) {
  RestoreRig rig;
  const std::string index = "_KORVEN{P(2026-11-22-10-00-F)}.bdx";
  rig.discs.contents["Backup #1"] = {{"a", "A"}, {index, IndexLines().file("a", 1).text()}};
  rig.insertDisc(1);
  rig.desktop.answers = {Answer::Yes};
  rig.opening.doReadBackupIndex(false);
  EXPECT_EQ(rig.run.doStartRestore().end, End::Finished);
  EXPECT_EQ(rig.restored("a"), "A");
  EXPECT_TRUE(rig.prompts.empty());
}

TEST(RestoreRun, TakesDiscsFromSeveralDrivesInTheOrderOfTheList) {
  RestoreRig rig;
  fillTwoDiscs(rig);
  rig.devices.DeviceMode = 1;
  rig.devices.MultiDrive = {"V", "W"};
  rig.devices.doBuildDriveLetters();
  rig.onPrompt = [&rig](int, const DiscRequest&) {
    rig.insert('V', "BACKUP #2");
    rig.discs.contents["BACKUP #2"] = rig.discs.contents["Backup #2"];
    rig.insert('W', "Backup #1");
  };
  EXPECT_EQ(rig.run.doStartRestore().end, End::Finished);
  expectTwoDiscs(rig);
  EXPECT_EQ(rig.prompts.size(), 1U);
  EXPECT_EQ(rig.grids.vsOutput[1].text(1, 0), "W:");
}

IndexLines splitIndex() {
  return IndexLines().folder("A").split("A\\film", 9, {2, 3, 4}).file("A\\after", 5, 4);
}

void fillSplitDiscs(RestoreRig& rig) {
  rig.discs.contents["Backup #2"] = {{"A\\film\\film.001", "one"}};
  rig.discs.contents["Backup #3"] = {{"A\\film\\film.002", "two"}};
  rig.discs.contents["Backup #4"] = {{"A\\film\\film.003", "six"}, {"A\\after", "after"}};
  rig.openAll(splitIndex());
}

TEST(RestoreRun, JoinsAFileThatWasSplitOverThreeDiscs) {
  RestoreRig rig;
  fillSplitDiscs(rig);
  rig.folder.write("target/A/film", "an older film, longer than the new one");
  rig.page.RestoreOpt = ExistingReplaceAll;
  EXPECT_EQ(rig.run.doStartRestore().end, End::Finished);
  EXPECT_EQ(rig.restored("A/film"), "onetwosix");
  EXPECT_EQ(rig.restored("A/after"), "after");
  EXPECT_EQ(rig.prompts, (Texts{"0: 2 3 4", "1: 3 4", "1: 4"}));
  EXPECT_EQ(rig.note(1), "Success.");
  EXPECT_EQ(rig.note(2), "Success.");
  EXPECT_EQ(rig.note(3), "Success. 2 files restored.");
}

TEST(RestoreRun, JoinsASplitFileFromThreeDrivesInTheWrongOrder) {
  RestoreRig rig;
  fillSplitDiscs(rig);
  rig.devices.DeviceMode = 1;
  rig.devices.MultiDrive = {"V", "W", "X"};
  rig.devices.doBuildDriveLetters();
  rig.onPrompt = [&rig](int, const DiscRequest&) {
    rig.insert('V', "Backup #4");
    rig.insert('W', "Backup #2");
    rig.insert('X', "Backup #3");
  };
  EXPECT_EQ(rig.run.doStartRestore().end, End::Finished);
  EXPECT_EQ(rig.restored("A/film"), "onetwosix");
  EXPECT_EQ(rig.restored("A/after"), "after");
  EXPECT_EQ(rig.prompts, Texts{"0: 2 3 4"});
}

TEST(RestoreRun, OneFileOfAHundredDiscsAsksForItsDiscAlone) {
  RestoreRig rig;
  IndexLines lines;
  for (int disc = 1; disc <= 100; ++disc) {
    const std::string name = "file" + std::to_string(disc);
    rig.discs.contents["Backup #" + std::to_string(disc)] = {{name, name}};
    lines.file(name, name.size(), disc);
  }
  rig.open(lines.text());
  for (const int disc : {57, 100}) {
    const std::string name = "file" + std::to_string(disc);
    rig.prompts.clear();
    rig.page.PreparedForRun = false;
    rig.selection.doSelectMatching(name);
    EXPECT_EQ(rig.run.doStartRestore().end, End::Finished);
    EXPECT_EQ(rig.restored(name), name);
    EXPECT_EQ(rig.prompts, Texts{"0: " + std::to_string(disc)});
  }
  EXPECT_EQ(rig.files.listFolder(rig.target("")).size(), 2U);
}

TEST(RestoreRun, APartMissingOnTheLastDiscOfItsFileIsAnError) {
  RestoreRig lost;
  fillSplitDiscs(lost);
  lost.discs.contents["Backup #4"].erase("A\\film\\film.003");
  lost.desktop.answers = {Answer::Yes};
  EXPECT_EQ(lost.run.doStartRestore().faults.files, 1);
  EXPECT_EQ(lost.errors(), Texts{"Backup #4|File restore failed.|" + lost.target("A/film")});
  EXPECT_EQ(lost.restored("A/after"), "after");
}

TEST(RestoreRun, ASplitFileThatIsGivenUpKeepsNoDiscWanted) {
  for (const int failing : {1, 2, 3}) {
    RestoreRig rig;
    fillSplitDiscs(rig);
    rig.targets.failingAppend = failing;
    EXPECT_EQ(rig.run.doStartRestore().end, End::Finished) << failing;
    const std::string disc = "Backup #" + std::to_string(failing + 1);
    EXPECT_EQ(rig.errors(), Texts{disc + "|Bad|" + rig.target("A/film")});
    EXPECT_EQ(rig.restored("A/after"), "after");
    EXPECT_EQ(rig.prompts.size(), failing == 1 ? 2U : 3U) << "disc 3 is wanted for its part alone";
    EXPECT_EQ(rig.hasEvent("Backup disc #3 is no longer needed: only parts of files that are not "
                           "restored lie there."),
              failing == 1);
    EXPECT_TRUE(rig.hasEvent("2 files selected: 1 restored, 0 skipped, 1 failed."));
  }
}

TEST(RestoreRun, ASplitFileThatWasOpenAtAStopIsToldAndGoesOn) {
  RestoreRig rig;
  fillSplitDiscs(rig);
  rig.onPrompt = [&rig](int, const DiscRequest& request) {
    const int wanted = request.restoreDisc(request.RestoreDiscIndex + 1);
    rig.state.StopAction = wanted == 3;
    rig.insertDisc(wanted);
  };
  EXPECT_EQ(rig.run.doStartRestore().end, End::Stopped);
  EXPECT_FALSE(rig.stands("A/film"));
  const Texts parts = TempDir::names(rig.target("A"));
  ASSERT_EQ(parts.size(), 1U);
  EXPECT_EQ(rig.errors(), Texts{"Backup #2|Not whole yet, left under the name " + parts[0] + ".|" +
                                rig.target("A/film")});
  rig.onPrompt = {};
  EXPECT_TRUE(rig.run.doStartRestore().isAllWell());
  EXPECT_EQ(rig.restored("A/film"), "onetwosix");
  EXPECT_EQ(TempDir::names(rig.target("A")), (Texts{"after", "film"}));
  EXPECT_EQ(rig.prompts, (Texts{"0: 2 3 4", "1: 3 4", "0: 3 4", "1: 4"}));
}

TEST(RestoreRun, ShortenedNamesComeBackLongAndAreFoundOnDiscShort) {
  RestoreRig rig;
  rig.discs.contents["Backup #1"] = {{"sh\\ort.txt", "text"}, {"s\\s.001", "a"}, {"s\\s.002", "b"}};
  IndexLines lines;
  lines.file("sh\\ort.txt", 4, 1, "long\\file name.txt");
  lines.line({"2", "s\\", "long split", "2", "3", "", "2", "1", "1", "1"});
  for (const char* part : {"1", "2"})
    lines.line({"2", "s\\s", "", "1", "4", "", part, "1", "1", "1"});
  rig.openAll(lines);
  rig.run.doStartRestore();
  EXPECT_EQ(rig.restored("long/file name.txt"), "text");
  EXPECT_EQ(rig.restored("long split"), "ab");
}

struct ExistingCase {
  int mode;
  int secondsNewer;  ///< the existing file against the one on disc
  int answer;        ///< of the question; -1: none is asked
  bool replaced;
  End end = End::Finished;
};

constexpr ExistingCase ExistingCases[] = {{ExistingReplaceAll, 100, -1, true},
                                          {ExistingReplaceOlder, -1, -1, true},
                                          {ExistingReplaceOlder, 0, -1, true},
                                          {ExistingReplaceOlder, 1, -1, false},
                                          {ExistingSkip, -100, -1, false},
                                          {ExistingAsk, 0, ReplaceYes, true},
                                          {ExistingAsk, 0, ReplaceNo, false},
                                          {ExistingAsk, 0, ReplaceAll, true},
                                          {ExistingAsk, 0, ReplaceCancel, false, End::Stopped}};

TEST(RestoreRun, TreatsAnExistingFileByTheMode) {
  for (const ExistingCase& given : ExistingCases) {
    SCOPED_TRACE(testing::Message() << given.mode << " " << given.secondsNewer << given.answer);
    RestoreRig rig;
    fillTwoDiscs(rig);
    const std::string path = rig.folder.write("target/A/one", "old");
    const std::chrono::sys_seconds date(
        std::chrono::seconds(rig.discs.modified + given.secondsNewer));
    std::filesystem::last_write_time(path, std::chrono::file_clock::from_sys(date));
    rig.page.RestoreOpt = given.mode;
    int asked = 0;
    rig.desktop.onForm = [&](Form& form) {
      auto& question = dynamic_cast<frmReplace&>(form);
      ++asked;
      EXPECT_TRUE(rig.state.IgnoreEvents);
      EXPECT_EQ(question.message, "The file 'one' is existing.");
      EXPECT_EQ(question.files[1].dateText,
                "Modified date:  " + Dates::displayShort(rig.discs.modified));
      if (given.answer == ReplaceYes) question.pbYes();
      if (given.answer == ReplaceNo) question.doCloseBox();
      if (given.answer == ReplaceCancel) question.pbCancel();
      if (given.answer == ReplaceAll) question.pbReplaceAll();
    };
    EXPECT_EQ(rig.run.doStartRestore().end, given.end);
    EXPECT_EQ(rig.restored("A/one"), given.replaced ? "first" : "old");
    EXPECT_EQ(asked, given.answer < 0 ? 0 : 1);
    expectAtRest(rig);
  }
}

TEST(RestoreRun, AsksWhetherToGoOnWithoutMissingFiles) {
  for (const Answer answer : {Answer::Yes, Answer::No}) {
    RestoreRig rig;
    fillTwoDiscs(rig);
    rig.discs.contents["Backup #1"].erase("A\\one");
    rig.desktop.asked.clear();
    rig.desktop.answers = {answer};
    const RestoreResult result = rig.run.doStartRestore();
    ASSERT_EQ(rig.desktop.asked.size(), 1U);
    EXPECT_EQ(rig.desktop.asked[0].title, "Backup disc #1");
    EXPECT_EQ(rig.desktop.asked[0].text,
              "1 of 2 files not found in this disc,  do you want to continue the restore action?");
    if (answer == Answer::Yes) {
      EXPECT_EQ(rig.errors(), Texts{"Backup #1|Backup file not found.|V:\\A\\one"});
      EXPECT_EQ(rig.note(1), "1 file restored. 1 file error.");
      EXPECT_EQ(result.faults.files, 1);
    } else {
      EXPECT_EQ(result.end, End::Stopped);
      EXPECT_FALSE(rig.grids.vsOutput[1].hasData());
      EXPECT_TRUE(rig.hasEvent("Action stop by user."));
    }
  }
}

TEST(RestoreRun, NeverWritesOutsideTheTarget) {
  RestoreRig rig;
  const Texts bad = {"..\\evil", "A\\..\\..\\evil", "A\\\\x", "\\evil",
                     "sub/evil", "link\\evil",      "."};
  IndexLines lines;
  for (const std::string& path : bad) {
    rig.discs.contents["Backup #1"][path] = "evil";
    lines.file(path, 4);
  }
  rig.discs.contents["Backup #1"]["good"] = "good";
  rig.folder.makeFolder("outside");
  std::filesystem::create_symlink(rig.folder / "outside", rig.target("link"));
  rig.openAll(lines.folder("..\\made").file("good", 4));
  rig.page.RestoreOpt = ExistingReplaceAll;
  EXPECT_EQ(rig.run.doStartRestore().faults.files, static_cast<int>(bad.size()) + 1);
  EXPECT_EQ(rig.restored("good"), "good");
  EXPECT_FALSE(rig.files.doFileExists(rig.folder / "evil"));
  EXPECT_FALSE(rig.files.doFileExists(rig.folder / "made"));
  EXPECT_TRUE(rig.files.listFolder(rig.folder / "outside").empty());
  EXPECT_FALSE(rig.stands("evil"));
}

TEST(RestoreRun, AFolderSwappedForALinkAtAnyMomentLeadsNowhere) {
  int swapped = 0;
  for (int n = 1;; ++n) {
    RestoreRig rig;
    fillTwoDiscs(rig);
    const std::string outside = rig.folder.makeFolder("outside");
    rig.desktop.yields = 0;
    rig.desktop.onYield = [&](int yield) {
      if (yield != n || !rig.stands("A")) return;
      ++swapped;
      std::filesystem::rename(rig.target("A"), rig.target("moved"));
      std::filesystem::create_symlink(outside, rig.target("A"));
    };
    EXPECT_EQ(rig.run.doStartRestore().end, End::Finished) << n;
    rig.desktop.onYield = {};
    EXPECT_TRUE(rig.files.listFolder(outside).empty()) << n;
    Texts told = rig.errors();
    for (const char* file : {"one", "B/two", "three"}) {
      const std::string end = "|" + rig.target("A/" + std::string(file));
      const bool stands =
          rig.stands("A/" + std::string(file)) || rig.stands("moved/" + std::string(file));
      const bool error = std::any_of(told.begin(), told.end(),
                                     [&](const std::string& row) { return row.ends_with(end); });
      EXPECT_NE(stands, error) << file << " at yield " << n;
    }
    ASSERT_FALSE(HasFailure()) << n;
    if (rig.desktop.yields < n) break;
  }
  EXPECT_GT(swapped, 10);
}

TEST(RestoreRun, AStopAnywhereLeavesAllInOrderAndTheNextStartGoesOn) {
  int stops = 0;
  for (int n = 1;; ++n) {
    RestoreRig rig;
    fillTwoDiscs(rig);
    rig.page.RestoreOpt = ExistingReplaceAll;
    rig.desktop.yields = 0;
    rig.desktop.onYield = [&rig, n](int yield) {
      if (yield == n) rig.state.StopAction = true;
    };
    const End end = rig.run.doStartRestore().end;
    rig.desktop.onYield = {};
    expectAtRest(rig);
    if (end == End::Finished && rig.desktop.yields < n) break;
    if (end == End::Stopped) ++stops;
    if (end == End::Stopped) {
      EXPECT_TRUE(rig.hasEvent("Action stop by user.")) << n;
      EXPECT_EQ(rig.run.doStartRestore().end, End::Finished) << n;
    }
    expectTwoDiscs(rig);
    ASSERT_FALSE(HasFailure()) << "stopped at yield " << n;
  }
  EXPECT_GT(stops, 20);
}

TEST(RestoreRun, ADiscThatBringsNothingIsAskedForAgainUntilTheLimit) {
  RestoreRig rig;
  fillTwoDiscs(rig);
  rig.devices.DeviceMode = 1;
  rig.devices.MultiDrive = {"V"};
  rig.devices.MultiErrorMax = 2;
  rig.devices.MultiEject = 0;
  rig.devices.doBuildDriveLetters();
  rig.discs.contents["Backup #1"] = {{"else", ""}};
  const RestoreResult result = rig.run.doStartRestore();
  EXPECT_EQ(result.end, End::Failed);
  EXPECT_EQ(result.faults.discs, 2);
  EXPECT_EQ(rig.prompts, (Texts{"0: 1 2", "1: 1 2"}));
  EXPECT_EQ(rig.note(2), "Error: Nothing to be restored in the disc.");
  EXPECT_TRUE(rig.hasEvent("Action stop: Disc burning error counted 2."));
  expectAtRest(rig);
}

TEST(RestoreRun, AFullTargetEndsTheRun) {
  RestoreRig full;
  fillTwoDiscs(full);
  full.targets.failingCopy = 2;
  EXPECT_EQ(full.run.doStartRestore().end, End::Failed);
  EXPECT_EQ(full.note(1), "Failed: Insufficient HDD space.");
  EXPECT_TRUE(full.hasEvent("Action stop: Insufficient HDD space."));
  EXPECT_EQ(full.page.RestoreDiscIndex, 0);
  expectAtRest(full);
  full.targets.failingCopy = 0;
  full.page.RestoreOpt = ExistingReplaceAll;
  EXPECT_EQ(full.run.doStartRestore().end, End::Finished);
  expectTwoDiscs(full);
}

TEST(RestoreRun, WhatTheMediumDidNotTakeIsWrittenAgain) {
  RestoreRig rig;
  fillTwoDiscs(rig);
  rig.targets.failingSync = 2;
  rig.page.RestoreOpt = ExistingSkip;
  const RestoreResult failed = rig.run.doStartRestore();
  EXPECT_EQ(failed.end, End::Failed);
  EXPECT_EQ(rig.note(2), "Failed: Nothing can be written: Lost.");
  EXPECT_TRUE(rig.hasEvent("3 files selected: 2 restored, 0 skipped, 0 failed, 1 not done yet."));
  rig.discs.contents["Backup #2"]["A\\three"] = "THIRD";
  EXPECT_TRUE(rig.run.doStartRestore().isAllWell());
  EXPECT_EQ(rig.restored("A/three"), "THIRD");
  EXPECT_EQ(rig.targets.copies, 4) << "the files of disc 1 are safe";
}

TEST(DiscList, AnIndexThatAsksForEndlessVisitsIsRefused) {
  RestoreRig rig;
  IndexLines lines;
  for (int i = 0; i < 50; ++i)
    lines.line({"2", "s" + std::to_string(i) + "\\", "", "1", "3", "", "1", "1", "999", "1"});
  rig.openAll(lines);
  EXPECT_FALSE(rig.run.doGetRestoreDisc());
}

}  // namespace
}  // namespace korvenal::test
