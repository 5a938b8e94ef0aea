#include <gmock/gmock.h>

#include "core/Workspace.h"
#include "tray/frmCommander.h"

namespace korvenal {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Tray : public TrayArea {
 public:
  bool icon = false;
  std::string tip;

  bool isPresent() const override { return true; }
  void doAddIcon(const std::string& text) override {
    icon = true;
    tip = text;
  }
  void doRemoveIcon() override { icon = false; }
  void doNotify(const std::string&) override {}
};

class CommanderTest : public testing::Test {
 protected:
  TrayActions actions() {
    const auto told = [this](const char* what) {
      return [this, what] { done.emplace_back(what); };
    };
    return {.facts = [this] { return facts; },
            .doYield =
                [this] {
                  if (onYield) onYield();
                },
            .doShowMain = told("show"),
            .doHideMain = told("hide"),
            .doTask01 = told("backup"),
            .doTask02 = told("restore"),
            .doTask03 = told("schedule"),
            .doDevice = told("device"),
            .doDefault = told("default"),
            .doExit = told("exit")};
  }
  void pressAll() {
    for (const auto item :
         {&frmCommander::mnOpen, &frmCommander::mnHide, &frmCommander::mnBackup,
          &frmCommander::mnRestore, &frmCommander::mnSchedule, &frmCommander::mnDevice,
          &frmCommander::mnDefault, &frmCommander::mnExit})
      (commander.*item)();
  }

  ActionState state;
  bool systemTray = true;
  TrayFacts facts;
  Tray tray;
  std::vector<std::string> done;
  std::function<void()> onYield;
  frmCommander commander{state, systemTray, tray, actions()};
};

TEST(TrayMenuStates, FollowThePageTheWindowAndTheWork) {
  const TrayFacts shown;
  const TrayFacts hidden{.MainHidden = true, .backupInView = true};
  const TrayFacts onBackup{.backupInView = true};
  const TrayFacts onRestore{.restoreInView = true};
  const TrayFacts onSchedule{.scheduleInView = true};
  struct Case {
    const char* name;
    TrayFacts facts;
    bool systemTray, busy;
    TrayMenu menu;
  };
  // open, hide, hide visible, backup, restore, schedule, settings, exit
  const Case cases[] = {
      {"start page", shown, true, false, {0, 1, 1, 1, 1, 1, 1, 1}},
      {"option off", shown, false, false, {0, 1, 0, 1, 1, 1, 1, 1}},
      {"backup in view", onBackup, true, false, {0, 1, 1, 0, 1, 1, 1, 1}},
      {"restore in view", onRestore, true, false, {0, 1, 1, 1, 0, 1, 1, 1}},
      {"schedule in view", onSchedule, true, false, {0, 1, 1, 1, 1, 0, 1, 1}},
      {"hidden", hidden, true, false, {1, 0, 1, 1, 1, 1, 1, 1}},
      {"busy", onRestore, true, true, {0, 1, 1, 0, 0, 0, 0, 0}},
      {"busy and hidden", hidden, true, true, {1, 0, 1, 0, 0, 0, 0, 0}},
  };
  for (const Case& one : cases)
    EXPECT_EQ(trayMenu(one.facts, one.systemTray, one.busy), one.menu) << one.name;
}

TEST_F(CommanderTest, TwoRightClicksOpenOneMenu) {
  onYield = [this] { EXPECT_FALSE(commander.doRightClick()); };
  EXPECT_TRUE(commander.doRightClick());
  onYield = nullptr;
  EXPECT_FALSE(commander.doRightClick());
  commander.doMenuClosed();
  EXPECT_TRUE(commander.doRightClick());
}

TEST_F(CommanderTest, BehindADialogTheMenuStaysAwayAndOnlyTheWindowMoves) {
  state.IgnoreEvents = true;
  facts.MainHidden = true;
  EXPECT_FALSE(commander.doRightClick());
  pressAll();
  EXPECT_THAT(done, ElementsAre("show"));
}

TEST_F(CommanderTest, ItemsThatCannotBeChosenDoNothing) {
  pressAll();
  EXPECT_THAT(done,
              ElementsAre("hide", "backup", "restore", "schedule", "device", "default", "exit"));
  done.clear();
  state.ActionRunning = true;
  commander.mnDevice();
  EXPECT_THAT(done, IsEmpty()) << "an index is read from the drives";
  state.ActionRunning = false;
  state.ActionBusy = true;
  systemTray = false;
  pressAll();
  EXPECT_THAT(done, IsEmpty());
  commander.doLeftClick();
  EXPECT_THAT(done, ElementsAre("show"));
}

TEST_F(CommanderTest, TheIconBearsTheProductAndGoesWithTheEnd) {
  commander.doAddTrayIcon();
  EXPECT_EQ(tray.tip, "Korvenal to DVD 2.0");
  state.ActionRunning = true;
  EXPECT_FALSE(commander.doUnload());
  EXPECT_TRUE(tray.icon);
  state.ActionRunning = false;
  EXPECT_TRUE(commander.doUnload());
  EXPECT_FALSE(tray.icon);
}

}  // namespace
}  // namespace korvenal
