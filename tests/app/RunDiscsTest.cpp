#include "app/RunDiscs.h"

#include <gmock/gmock.h>

#include "app/ProgramBench.h"

namespace korvenal::test {
namespace {

using testing::ElementsAre;

class RunDiscsTest : public testing::Test {
 protected:
  void doPlan(int discs) {
    main.plan.TotalDiscs = discs;
    for (int disc = 0; disc < discs; ++disc)
      main.plan.DiscUsed[static_cast<std::size_t>(disc)] = Fixed4(1000 + disc);
    main.backup.PreparedForRun = true;
  }
  int doRecord(int action, int place, const std::string& drive, const std::string& note) {
    Table& records = main.grids.vsOutput[static_cast<std::size_t>(action)];
    const int row = records.addRow({drive, "", "", "", "", "", "", note});
    if (place > 0) main.grids.setDiscOf(action, row, place);
    return row;
  }
  /// "1 V verified 100": number, drive, state and percent of each disc.
  std::vector<std::string> shown(int action) const {
    constexpr const char* States[] = {"planned", "writing", "good", "failed"};
    std::vector<std::string> all;
    for (const RunDisc& disc : runDiscs(main, action))
      all.push_back(std::to_string(disc.number) + " " + (disc.drive == 0 ? '-' : disc.drive) + " " +
                    States[static_cast<int>(disc.state)] + " " + std::to_string(disc.percent));
    return all;
  }

  ProgramBench bench;
  frmMain& main = bench.main;
};

TEST_F(RunDiscsTest, OfSeveralTriesTheLastOneCounts) {
  EXPECT_THAT(shown(0), ElementsAre()) << "no plan yet";
  doPlan(3);
  doRecord(0, 0, "V:", "Success.");  // of an earlier run
  doRecord(0, 1, "V:", "Error: Disc is not empty.");
  const int good = doRecord(0, 1, "W:", "Success.");
  main.grids.setVerified(good);
  doRecord(0, 2, "V:", "Action stop by user.");
  doRecord(0, 9, "V:", "Success.");  // of a plan that was longer
  EXPECT_THAT(shown(0), ElementsAre("1 W good 100", "2 V planned 0", "3 - planned 0"));
  const std::vector<RunDisc> discs = runDiscs(main, 0);
  EXPECT_TRUE(discs[0].verified);
  EXPECT_FALSE(discs[1].verified);
  EXPECT_EQ(discs[2].bytes, Fixed4(1002));

  doRecord(0, 1, "V:", "2 backup files error.");
  EXPECT_EQ(shown(0)[0], "1 V failed 100");
  EXPECT_FALSE(runDiscs(main, 0)[0].verified);
}

TEST_F(RunDiscsTest, TheDiscInHandIsShownByItsWorkNotByItsLastRecord) {
  doPlan(2);
  doRecord(0, 2, "V:", "Error: Disc is not empty.");
  RunPage& page = main.runPages[0];
  page.DiscInHand = 2;
  page.DriveInHand = 'W';
  Progress& progress = main.grids.etProgress[0];
  progress = {"Preparing", 3, 0, 0};
  const auto work = [this] { return runDiscs(main, 0)[1].work; };
  EXPECT_THAT(shown(0), ElementsAre("1 - planned 0", "2 W writing 3"));
  EXPECT_EQ(runDiscs(main, 0)[1].note, "");
  EXPECT_EQ(work(), RunDisc::Work::None) << "no data runs yet";
  progress = {"", 40, 400, 1000};
  EXPECT_EQ(work(), RunDisc::Work::Data);
  progress.bytesDone = progress.bytesTotal;
  EXPECT_EQ(work(), RunDisc::Work::None) << "the disc is being closed";
  page.OnlyShowErrorFileEnabled = false;
  EXPECT_EQ(work(), RunDisc::Work::Verifying);
  page.DiscInHand = 3;
  EXPECT_EQ(shown(0).size(), 2U) << "a disc that the plan has not";
}

TEST_F(RunDiscsTest, ARestoreShowsTheDiscsInTheOrderOfItsVisits) {
  main.restorePage.RestoreDiscList = {1, 7, 3};
  EXPECT_THAT(shown(1), ElementsAre()) << "not for the selection at hand";
  main.restorePage.PreparedForRun = true;
  doRecord(1, 1, "V:", "Success. 3 files restored.");
  doRecord(1, 2, "V:", "3 files restored. 1 file error.");
  EXPECT_THAT(shown(1), ElementsAre("1 V good 100", "7 V failed 100", "3 - planned 0"));
}

TEST_F(RunDiscsTest, AnEraseShowsWhatItHasHadAndCannotTellHowFarItIs) {
  EXPECT_THAT(shown(2), ElementsAre());
  doRecord(2, 0, "V:", "Success.");
  doRecord(2, 0, "", "Skip blank disc.");
  main.runPages[2].DiscInHand = 3;
  main.runPages[2].DriveInHand = 'V';
  EXPECT_THAT(shown(2), ElementsAre("0 V good 100", "0 - planned 0", "0 V writing -1"));
  EXPECT_EQ(runDiscs(main, 2).back().work, RunDisc::Work::Erasing);
}

}  // namespace
}  // namespace korvenal::test
