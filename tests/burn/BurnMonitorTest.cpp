#include "burn/BurnMonitor.h"

#include <gtest/gtest.h>

#include "support/BurnWorld.h"

namespace korvenal::test {
namespace {

struct BurnMonitorTest : testing::Test {
  BurnWorld world;
  BurnMonitor monitor{world.state, world.engine, world.grids, world.clock};
  Progress& progress = world.grids.etProgress[0];

  void SetUp() override {
    world.engine.drives['V'].disc = FakeDisc();
    world.engine.turnsABurn = 20;  // of a track of 100 blocks: 5 a turn
    world.engine.do_Burn([](auto, auto) {}, [](auto, auto) {}, 0, "log");
    monitor.start();
  }
  /// Two turns of the wait make one tick.
  void tick() {
    for (int turn = 0; turn < 2; ++turn) {
      world.engine.do_Deliver();
      monitor.pump();
    }
  }
};

TEST_F(BurnMonitorTest, PhasesFollowTheBlockCounter) {
  monitor.ImageBlocks = 1000;
  monitor.TIMER_Timer();
  monitor.TIMER_Timer();
  EXPECT_EQ(world.events(), "Setting up disc track...\n");
  tick();
  EXPECT_EQ(progress.text, "Setting up disc track...") << "below one percent";
  monitor.ImageBlocks = 0;
  tick();
  EXPECT_EQ(monitor.ImageBlocks, 100) << "asked again";
  tick();
  EXPECT_EQ(progress.text, "25%");
  EXPECT_EQ(progress.bar, 25);
  EXPECT_EQ(progress.bytesDone, 25 * BlockBytes);
  EXPECT_EQ(progress.bytesTotal, 100 * BlockBytes);
  for (int i = 0; i < 6; ++i) tick();
  EXPECT_EQ(world.events(), "Setting up disc track...\nStart writing data to disc...\n")
      << "once each";
}

TEST_F(BurnMonitorTest, AStopReachesTheEngineOnceAndAFailureIsNotTold) {
  world.state.StopAction = true;
  tick();
  tick();
  EXPECT_EQ(world.engine.count("do_AbortBurn"), 1);
  EXPECT_EQ(world.events(), "Stop action...\n");
  world.state = {};
  world.state.TaskError = 5;
  monitor.start();
  tick();
  EXPECT_EQ(world.engine.count("do_AbortBurn"), 1);
}

}  // namespace
}  // namespace korvenal::test
