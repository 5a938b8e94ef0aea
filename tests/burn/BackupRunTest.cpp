#include "burn/BackupRun.h"

#include <gtest/gtest.h>

#include <set>

#include "burn/frmNotice.h"
#include "support/BurnWorld.h"

namespace korvenal::test {
namespace {

using ::testing::ElementsAre;
using ::testing::StartsWith;
using End = BackupResult::End;

constexpr int ManyFiles = 300;

/// What must hold after every press of the button, however it ended.
void expectAtRest(BurnWorld& world) {
  const ActionState& state = world.state;
  EXPECT_FALSE(state.ActionRunning || state.ActionBusy || state.IgnoreEvents);
  EXPECT_FALSE(state.DiscInWork || state.Erasing);
  EXPECT_EQ(world.engine.do_GetState(), 0);
  EXPECT_TRUE(world.page.buttonsVisible && !world.page.pbStopVisible && !world.page.ProgressPanel);
  for (const auto& [letter, drive] : world.engine.drives) EXPECT_FALSE(drive.locked);
}

std::set<std::string> labelsBurned(const BurnWorld& world) {
  std::set<std::string> labels;
  const Table& output = world.grids.vsOutput[0];
  for (int row = 1; row < output.Rows(); ++row)
    if (world.note(row) == "Success.") labels.insert(output.text(row, 5));
  return labels;
}

TEST(BackupRun, AllDiscsOfAPlanAreAskedForAndRecorded) {
  BurnWorld world;
  world.job.JobFile = "/home/holidays.jbf";
  BackupRun run(world.services, world.steps());
  EXPECT_EQ(run.doStartBackup().end, End::Finished);
  expectAtRest(world);
  EXPECT_THAT(world.promptedFor, ElementsAre(1, 2, 3));
  EXPECT_THAT(world.events(), StartsWith("Start backup action.\n"
                                         "Collecting backup data information...\n"
                                         "?Full backup:  4 files, 1 file split\n"
                                         "?Total size:  10.0 MB\n"
                                         "?Disc required:  CD 700MB  x 3\n"
                                         "?Burn backup index:  YES\n"));
  EXPECT_TRUE(world.hasEvent("Backup action finished."));
  EXPECT_EQ(world.desktop.sounds.size(), 3U);
  ASSERT_EQ(world.records.vsRecent.Rows(), 2);
  EXPECT_EQ(world.records.vsRecent.text(1, 5), "3");
  EXPECT_EQ(world.records.vsRecent.text(1, 6), "Full backup.");
  EXPECT_EQ(world.records.vsRecent.text(1, 7), "/home/holidays.jbf");

  world.promptedFor.clear();
  EXPECT_EQ(run.doStartBackup().end, End::Finished);
  EXPECT_EQ(world.scans, 1) << "the plan still holds";
  EXPECT_THAT(world.promptedFor, ElementsAre(1, 2, 3));
}

/// Steps whose plan has many small files on its second disc besides.
BackupRun::Steps stepsOfManyFiles(BurnWorld& world) {
  BackupRun::Steps steps = world.steps();
  steps.doScanFiles = [&world, scan = steps.doScanFiles](frmAddFiles& worker) {
    scan(worker);
    for (int i = 0; i < ManyFiles && !world.state.StopAction; ++i)
      world.addFile(PlanTable::DiscRoot, "f" + std::to_string(i), 1, 2);
  };
  return steps;
}

TEST(BackupRun, AStopAtAnyMomentLeavesAllAtRestAndTheNextPressGoesOn) {
  constexpr int Soon = 9;  // yields until all is at rest, however much there was to do
  bool stopped = true;
  int stops = 0;
  for (int at = 1; stopped; ++at) {
    BurnWorld world;
    BackupRun run(world.services, stepsOfManyFiles(world));
    stopped = false;
    bool allDone = false;
    bool verifying = false;
    world.desktop.onYield = [&](int yield) {
      if (yield != at) return;
      stopped = true;
      const auto& last = world.engine.drives['V'].disc;
      allDone = run.request().DiscsBurned == 3 || world.hasEvent("Backup action finished.") ||
                (last && last->label == "Backup #3");
      verifying = world.state.DiscInWork && !world.page.pbStopEnabled;
      world.state.StopAction = true;
      world.engine.do_UnlockMedium();
    };
    const End end = run.doStartBackup().end;
    expectAtRest(world);
    // Verification goes to its end.
    if (end == End::Stopped) {
      EXPECT_LE(world.desktop.yields - at, verifying ? ManyFiles / 10 + Soon : Soon) << at;
    }
    if (end == End::Finished) {
      EXPECT_TRUE(allDone || !stopped) << "a stop was lost at yield " << at;
      EXPECT_EQ(labelsBurned(world).size(), 3U) << at;
      continue;
    }
    ++stops;
    ASSERT_EQ(end, End::Stopped) << at;
    EXPECT_TRUE(world.hasEvent("Action stop by user."));
    if (world.records.vsRecent.hasData()) {
      EXPECT_EQ(world.records.vsRecent.text(1, 6), "* Uncompleted.");
    }
    const int burned = run.request().DiscsBurned;
    EXPECT_EQ(static_cast<int>(labelsBurned(world).size()), burned) << at;
    EXPECT_EQ(run.PreparedForRun, world.plan.vsBuffer.hasData()) << "no half plan";

    const int scansBefore = run.PreparedForRun ? world.scans : world.scans + 1;
    world.promptedFor.clear();
    world.desktop.onYield = {};
    EXPECT_EQ(run.doStartBackup().end, End::Finished) << at;
    EXPECT_EQ(world.scans, scansBefore);
    EXPECT_EQ(world.promptedFor.front(), burned == 3 ? 1 : burned + 1);
    EXPECT_EQ(labelsBurned(world).size(), 3U) << at;
    expectAtRest(world);
  }
  EXPECT_GT(stops, 50);
}

TEST(BackupRun, OneFailingCallCostsOneDiscAndNotTheBackup) {
  for (const char* call : {"do_DiscIs", "do_Writable", "do_Prepare", "do_GetImageSize", "do_Burn",
                           "session", "do_SelectDeviceByLetter", "do_TestUnitReady"}) {
    for (int nth = 1; nth <= 6; ++nth) {
      BurnWorld world;
      world.engine.failing[call] = {nth};
      BackupRun run(world.services, world.steps());
      const BackupResult result = run.doStartBackup();
      EXPECT_EQ(result.end, End::Finished) << call << nth;
      const int failed = world.grids.vsOutput[0].Rows() - 1 - 3;
      EXPECT_EQ(result.faults.discs, failed) << call << nth;
      EXPECT_LE(failed, 1);
      EXPECT_LE(result.faults.notVerified, 1);
      EXPECT_EQ(labelsBurned(world).size(), 3U) << call << nth;
      expectAtRest(world);
    }
  }
}

TEST(BackupRun, WhatCannotBeginIsRefused) {
  struct Case {
    End end;
    const char* told;
    std::function<void(BurnWorld&)> arrange;
    std::function<void(BurnWorld&)> scan;
  };
  const Case cases[] = {
      {End::Refused,
       "Backup size has exceeded the limitations of this software, unable to backup.",
       [](auto& w) { w.state.LimitExceeded = true; },
       {}},
      {End::Refused,
       "Backup data contents is empty, unable to backup.",
       [](auto& w) { w.job.vsContents.clearData(); },
       {}},
      {End::Refused, "", [](auto& w) { w.state.ActionBusy = true; }, {}},
      {End::NothingToDo,
       "No file need to be backup.",
       {},
       [](auto& w) { w.state.TaskDone = true; }},
      {End::LimitExceeded,
       "",
       {},
       [](auto& w) {
         w.planThreeDiscs();
         w.state.LimitExceeded = w.state.StopAction = true;
       }},
  };
  for (const Case& one : cases) {
    BurnWorld world;
    if (one.arrange) one.arrange(world);
    auto steps = world.steps();
    steps.doScanFiles = [&](frmAddFiles&) { one.scan(world); };
    world.desktop.answers = {Answer::Ok};
    EXPECT_EQ(BackupRun(world.services, steps).doStartBackup().end, one.end);
    EXPECT_EQ(world.desktop.asked.empty() ? "" : world.desktop.asked.front().text, one.told);
    EXPECT_FALSE(world.plan.vsBuffer.hasData() || world.state.ActionRunning);
    EXPECT_EQ(world.grids.vsOutput[0].Rows(), 1);
  }
}

TEST(BackupRun, ASmallLastDiscBringsAdviceAboutASmallerDisc) {
  const auto hintOf = [](int discType, bool differential, int discs, std::int64_t lastBytes) {
    BurnWorld world;
    world.job.comboDiscType = discType;
    world.job.optBackupType = differential ? 1 : 0;
    auto steps = world.steps();
    steps.doScanFiles = [&](frmAddFiles&) {
      world.planOneFile();
      world.plan.TotalFiles = 1;
      world.plan.TotalSize = 1;
      world.plan.TotalDiscs = discs;
      world.plan.DiscUsed[static_cast<std::size_t>(discs - 1)] = lastBytes;
      world.state.TaskDone = true;
    };
    std::string hint;
    steps.doAskLoadDisc = [&](int, DiscRequest& request) {
      hint = request.SizeHint;
      world.state.StopAction = true;
    };
    BackupRun(world.services, steps).doStartBackup();
    return hint;
  };
  EXPECT_EQ(hintOf(1, false, 1, 700'000'000),
            "This disc only need 667.6 MB, may use a CD disc instead.");
  EXPECT_EQ(hintOf(2, true, 3, 4'689'297'407),
            "Last disc only need 4.4 GB, may use a DVD disc instead.");
  EXPECT_EQ(hintOf(1, true, 1, 700'000'000), "");
  EXPECT_EQ(hintOf(1, false, 1, 720'183'296), "");
  EXPECT_EQ(hintOf(0, false, 1, 1), "");
}

TEST(BackupRun, TheNoticeComesUntilItIsNoLongerWanted) {
  BurnWorld world;
  world.profile.doWriteProfile("Backup", "Notice", "0");
  BackupRun run(world.services, world.steps());
  world.desktop.onForm = [](Form& form) {
    auto& notice = dynamic_cast<frmNotice&>(form);
    notice.ckShowNoMore = true;
    notice.pbStop();
  };
  EXPECT_EQ(run.doStartBackup().end, End::Stopped);
  EXPECT_TRUE(world.promptedFor.empty());
  expectAtRest(world);
  world.desktop.onForm = {};
  EXPECT_EQ(run.doStartBackup().end, End::Finished);
}

}  // namespace
}  // namespace korvenal::test
