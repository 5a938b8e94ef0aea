#include "erase/EraseRun.h"

#include <gtest/gtest.h>

#include "support/BurnWorld.h"

namespace korvenal::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using End = EraseResult::End;

/// Everything that an erase run stands on. The prompt answers with OK, the first time after the
/// discs have been put in, and is given up after so many loads.
struct EraseWorld : BurnWorld {
  std::map<char, FakeDisc> discs;
  int loads = 1;
  std::vector<int> reasons;
  bool skipBlank = false;
  EraseRun run{
      {state, engine, desktop, clock, grids, page, records, settings, devices, workspace},
      {.doEnsureDevice = [](bool anyDisc) { return anyDisc; },
       .doAskLoadDisc = [this](int reason, DiscRequest& request) { ask(reason, request); }}};

  void ask(int reason, DiscRequest& request) {
    const FlagScope modal(state.IgnoreEvents);
    EXPECT_EQ(state.WorkerMode, WorkerErase);
    EXPECT_EQ(request.FirstPrompt, reason == 0);
    reasons.push_back(reason);
    desktop.doYield();
    request.SkipBlankDiscs = skipBlank;
    if (static_cast<int>(reasons.size()) > loads) state.StopAction = true;
    if (reason == 0)
      for (const auto& [letter, disc] : discs) engine.drives[letter] = {.disc = disc};
  }
  const std::string& record(int row, int column) const {
    return grids.vsOutput[2].text(row, column);
  }
  bool hasErased(const std::string& text) const {
    for (int row = 1; row < grids.vsEvent[2].Rows(); ++row)
      if (grids.vsEvent[2].cellData(row, 1) + grids.vsEvent[2].text(row, 1) == text) return true;
    return false;
  }
  void expectAtRest() {
    EXPECT_FALSE(state.ActionRunning || state.ActionBusy || state.IgnoreEvents);
    EXPECT_FALSE(state.DiscInWork || state.Erasing);
    EXPECT_TRUE(page.buttonsVisible && !page.pbStopVisible && run.EraseMode);
    EXPECT_EQ(engine.do_GetState(), 0);
    for (const auto& [letter, drive] : engine.drives) EXPECT_FALSE(drive.locked);
  }
};

TEST(EraseRun, EveryKindOfDiscGetsItsRecord) {
  struct Case {
    FakeDisc disc;
    std::function<void(EraseWorld&)> arrange;
    const char* type;
    const char* note;
    bool failed;
  };
  const FakeDisc rewritable{.type = 3, .usedBlocks = 500, .sessions = 1, .erasable = true};
  const Case cases[] = {
      {rewritable, {}, "700MB CD-RW", "Success.", false},
      {rewritable, [](auto& w) { w.run.optEraseMode = 1; }, "700MB CD-RW", "Success.", false},
      {{.type = 2}, {}, "CD-R", "Error: Disc is not erasable.", true},
      {rewritable, [](auto& w) { w.engine.failing["do_DiscIs"] = {1}; }, "Unknown",
       "Error: Unknown disc type.", true},
      {rewritable, [](auto& w) { w.engine.failing["do_EraseDisc"] = {1}; }, "700MB CD-RW",
       "Failed: Unable to erase disc.", true},
      {rewritable,
       [](auto& w) {
         w.engine.finishCode = 5;
         w.engine.errorNumber = 1032;
       },
       "700MB CD-RW", "Error: Drive function failed.", true},
      {{.type = 10, .totalBlocks = 2295104, .sessions = 1, .erasable = true},
       [](auto& w) { w.skipBlank = true; },
       "4.7GB DVD+RW",
       "Skip blank disc.",
       false},
      // A blank one is erased like any other as long as nobody asked to skip it.
      {{.type = 10, .totalBlocks = 2295104, .sessions = 1, .erasable = true},
       {},
       "4.7GB DVD+RW",
       "Success.",
       false},
      // Fresh from the factory, it tells no session and does not count as blank.
      {{.type = 10, .totalBlocks = 2295104, .erasable = true},
       [](auto& w) { w.skipBlank = true; },
       "4.7GB DVD+RW",
       "Success.",
       false},
      {rewritable, [](auto& w) { w.skipBlank = true; }, "700MB CD-RW", "Success.", false},
  };
  for (const Case& one : cases) {
    EraseWorld world;
    world.discs['V'] = one.disc;
    if (one.arrange) one.arrange(world);
    const EraseResult result = world.run.doStartErase();
    EXPECT_EQ(result.end, End::Finished);
    EXPECT_THAT(world.reasons, ElementsAre(0, 1));
    ASSERT_EQ(world.grids.vsOutput[2].Rows(), 2) << one.note;
    const bool full = world.run.optEraseMode == 1;
    EXPECT_EQ(world.record(1, 0), "V:");
    EXPECT_EQ(world.record(1, 1), full ? "Full-erase" : "Quick-erase");
    EXPECT_EQ(world.record(1, 3) + world.record(1, 4) + world.record(1, 5), "");
    EXPECT_EQ(world.record(1, 6), one.type);
    EXPECT_EQ(world.record(1, 7), one.note);
    EXPECT_EQ(world.records.vsLog.text(1, 7), one.note);
    EXPECT_TRUE(world.hasErased((one.failed ? "*" : "") + std::string(one.note))) << one.note;
    EXPECT_EQ(result.failed, one.failed ? 1 : 0) << one.note;
    const bool begun = world.engine.count("do_EraseDisc " + std::string(full ? "0" : "-1")) == 1;
    EXPECT_EQ(begun,
              world.hasErased(full ? "Start full erasing disc..." : "Start quick erasing disc..."))
        << one.note;
    EXPECT_TRUE(world.engine.drives['V'].open) << one.note;
    world.expectAtRest();
  }
}

TEST(EraseRun, AllDrivesAreServedAndOnlyAStopEndsTheAction) {
  EraseWorld world;
  world.useDrives("VWX", 1);
  const FakeDisc rewritable{.type = 3, .usedBlocks = 500, .sessions = 1, .erasable = true};
  for (const char letter : {'V', 'W', 'X'}) world.discs[letter] = rewritable;
  world.loads = 3;
  const EraseResult result = world.run.doStartErase();
  EXPECT_EQ(result.erased, 3) << "open trays are passed over";
  EXPECT_THAT(world.reasons, ElementsAre(0, 1, 1, 1));
  EXPECT_EQ(world.record(3, 0), "X:");
  EXPECT_TRUE(world.hasErased("Action stop by user."));
}

TEST(EraseRun, AStopTakesEffectBetweenDiscsAndNeverWithinAnErase) {
  bool stopped = true;
  for (int at = 1; stopped; ++at) {
    EraseWorld world;
    world.useDrives("VW", 1);
    for (const char letter : {'V', 'W'})
      world.discs[letter] = {.type = 3, .usedBlocks = 500, .sessions = 1, .erasable = true};
    stopped = false;
    int begun = 0;
    world.desktop.onYield = [&](int yield) {
      if (yield != at) return;
      stopped = true;
      begun = world.engine.count("do_EraseDisc");
      world.state.StopAction = true;
      world.engine.do_UnlockMedium();
    };
    const EraseResult result = world.run.doStartErase();
    world.expectAtRest();
    EXPECT_TRUE(world.hasErased("Action stop by user."));
    EXPECT_EQ(result.erased, world.engine.count("do_EraseDisc")) << "each one that began has ended";
    EXPECT_EQ(world.grids.vsOutput[2].Rows() - 1, result.erased);
    for (int row = 1; row <= result.erased; ++row) EXPECT_EQ(world.record(row, 7), "Success.");
    if (!stopped || result.end == End::Finished) continue;
    // A stop just before the engine is called comes too late for that disc, and for that alone.
    EXPECT_LE(result.erased, begun + 1) << at;
    EXPECT_LE(world.desktop.yields - at, world.engine.turnsABurn + 12) << "no more than an erase";
  }
}

TEST(EraseRun, WhatCannotBeginIsRefused) {
  EraseWorld world;
  world.state.ActionBusy = true;
  EXPECT_EQ(world.run.doStartErase().end, End::Refused);
  EXPECT_THAT(world.reasons, IsEmpty());
}

}  // namespace
}  // namespace korvenal::test
