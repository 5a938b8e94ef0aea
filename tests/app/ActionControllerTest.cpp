#include "app/ActionController.h"

#include <gtest/gtest.h>

#include "support/BurnWorld.h"

namespace korvenal::test {
namespace {

using ::testing::ElementsAre;

struct ActionControllerTest : testing::Test {
  BurnWorld world;
  RunPages pages;
  ActionController controller{world.state, world.engine, world.desktop, world.grids, pages};
  int started = 0;

  void SetUp() override {
    controller.mainTab = ActionController::BackupPage;
    controller.runs.start[0] = [&] {
      ++started;
      controller.PBNext(0);  // pressed again while it runs
      EXPECT_TRUE(pages[0].pbStopEnabled);
    };
    controller.runs.summary = [](int) { return std::vector<std::string>{"$Ready."}; };
  }
};

TEST_F(ActionControllerTest, NextLeadsToTheRunPageAndThenRunsOnce) {
  world.state.LimitExceeded = world.state.StopAction = true;
  world.state.TaskError = 4;
  controller.PBNext(0);
  EXPECT_EQ(controller.BackupTab, ActionController::RunStep);
  EXPECT_EQ(controller.nextCaption(0), "Bac&kup");
  EXPECT_FALSE(world.state.LimitExceeded || world.state.StopAction || world.state.TaskError != 0);
  EXPECT_TRUE(world.hasEvent("$Ready."));
  EXPECT_EQ(started, 0);
  controller.PBNext(0);
  EXPECT_EQ(started, 1);
  EXPECT_FALSE(world.state.IgnoreEvents);
  EXPECT_FALSE(pages[0].pbStopEnabled);

  world.state.ActionRunning = true;
  controller.PBBack(0);
  controller.PBNext(0);
  EXPECT_EQ(controller.BackupTab, ActionController::RunStep) << "a run keeps its page";
  EXPECT_EQ(started, 1);
}

TEST_F(ActionControllerTest, AStopIsAFlagAWordAndAFreeTray) {
  world.engine.drives['V'].locked = true;
  controller.pbStop(0);
  EXPECT_FALSE(world.state.StopAction) << "the button is disabled";
  pages[0].pbStopEnabled = true;
  controller.pbStop(0);
  EXPECT_TRUE(world.state.StopAction);
  EXPECT_EQ(world.grids.etProgress[0].text, "Stop action, please wait...");
  EXPECT_FALSE(world.engine.drives['V'].locked);

  pages[0].pbStopEnabled = world.state.Erasing = world.state.DiscInWork = true;
  controller.pbStop(0);
  EXPECT_TRUE(world.hasEvent("The action will stop after erasing complete, please wait."));
  EXPECT_FALSE(world.state.DiscInWork);
}

TEST(MayBegin, EachFlagKeepsItsOwnCommandsOut) {
  const auto refused = [](const ActionState& state) {
    std::vector<Command> found;
    for (const Command one : {Command::ChangePage, Command::NewJob, Command::AddItems,
                              Command::ChangeOption, Command::Next, Command::ShowReport,
                              Command::ChangeSettings, Command::ExportGrid, Command::Close})
      if (!mayBegin(one, state)) found.push_back(one);
    return found;
  };
  EXPECT_TRUE(refused({}).empty());
  EXPECT_THAT(refused({.ActionRunning = true}),
              ElementsAre(Command::ChangePage, Command::NewJob, Command::AddItems, Command::Next,
                          Command::ShowReport, Command::ChangeSettings, Command::ExportGrid,
                          Command::Close));
  EXPECT_THAT(refused({.ActionBusy = true}),
              ElementsAre(Command::ShowReport, Command::ChangeSettings, Command::ExportGrid,
                          Command::Close));
  EXPECT_THAT(refused({.IgnoreEvents = true}),
              ElementsAre(Command::NewJob, Command::ChangeOption, Command::Next));
}

}  // namespace
}  // namespace korvenal::test
