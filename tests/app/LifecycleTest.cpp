#include "app/Lifecycle.h"

#include <gmock/gmock.h>

#include "platform/linux/LinuxPlatform.h"
#include "support/ScriptedDesktop.h"
#include "support/TempDir.h"

namespace korvenal::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Remembers what was done to the window and the tray, in order.
class Screen : public MainFrame, public TrayArea {
 public:
  bool hasTray = true;
  bool icon = false;
  std::vector<std::string> log;
  MainWindowPlace now{.State = 0, .Left = 15, .Top = 30, .Width = 15000, .Height = 12000};

  void doPlace(const MainWindowPlace& stored) override {
    log.push_back("place " + std::to_string(stored.Width));
  }
  MainWindowPlace place() const override { return now; }
  void doShow() override { log.emplace_back("show"); }
  void doHide() override { log.emplace_back("hide"); }
  void doEnd() override { log.emplace_back("end"); }
  bool isPresent() const override { return hasTray; }
  void doAddIcon(const std::string&) override { icon = hasTray; }
  void doRemoveIcon() override { icon = false; }
  void doNotify(const std::string& text) override { log.push_back("notice: " + text); }
};

class LifecycleTest : public testing::Test {
 protected:
  LifecycleTest() {
    set("Devices", "dvcS_Name", "V");
    life.frame = &screen;
  }

  void set(const std::string& section, const std::string& key, const std::string& value) {
    Profile(files, places.gSettingsFile).doWriteProfile(section, key, value);
  }
  std::string stored(const std::string& section, const std::string& key) {
    return Profile(files, places.gSettingsFile).doReadProfile(section, key, "none");
  }
  void start() {
    life.doStart();
    screen.log.clear();
  }
  void changeJob() {
    main.doChangeTask(2);
    main.job.txJobName = "Photos";
    main.job.vsContents.setRows(2);
    main.job.doMarkChanged(true);
  }

  TempDir temp;
  LinuxFiles files{nullptr};
  Workspace places =
      Workspace::below(temp.makeFolder("app"), temp.makeFolder("bin"), temp.makeFolder("home"));
  LinuxPlatform platform{{.applicationFolder = places.applicationFolder,
                          .imageDrives = {.folder = places.applicationFolder + "Discs/"}}};
  ScriptedDesktop desktop;
  frmMain main{platform.ports(desktop), places};
  Screen screen;
  Lifecycle life{main, desktop, screen};
};

TEST_F(LifecycleTest, TheWindowIsPlacedBeforeItIsShown) {
  set("MainWin", "Width", "13500");
  EXPECT_TRUE(life.MainHidden);
  life.doStart();
  EXPECT_THAT(screen.log, ElementsAre("place 13500", "show"));
  EXPECT_FALSE(life.MainHidden);
  EXPECT_FALSE(screen.icon);
}

TEST_F(LifecycleTest, WithoutADriveTheDeviceSettingsOpenOverTheWindow) {
  set("Devices", "dvcS_Name", "");
  int opened = 0;
  desktop.onForm = [&](Form& form) {
    ++opened;
    EXPECT_FALSE(life.MainHidden);
    EXPECT_FALSE(life.doClose(CloseReason::SystemShutdown)) << "a settings dialog is open";
    form.doCloseBox();
  };
  life.doStart();
  EXPECT_EQ(opened, 1);
}

TEST_F(LifecycleTest, TheRulesOfClosing) {
  enum class Outcome { Ends, Hides, Stays };
  struct Case {
    const char* name;
    CloseReason reason;
    bool systemTray, desktopHasTray, busy;
    Outcome outcome;
    bool asks;  ///< about the job
  };
  using enum CloseReason;
  const Case cases[] = {
      {"close box", CloseBox, false, true, false, Outcome::Ends, true},
      {"close box in a run", CloseBox, false, true, true, Outcome::Stays, false},
      {"close box, tray on", CloseBox, true, true, false, Outcome::Hides, false},
      {"close box in a run, tray on", CloseBox, true, true, true, Outcome::Hides, false},
      {"close box, no tray there", CloseBox, true, false, false, Outcome::Ends, true},
      {"close box in a run, no tray", CloseBox, true, false, true, Outcome::Stays, false},
      {"menu", Code, false, true, false, Outcome::Hides, false},
      {"menu in a run", Code, true, true, true, Outcome::Hides, false},
      {"menu, no tray there", Code, false, false, false, Outcome::Ends, true},
      {"session end", SystemShutdown, true, true, false, Outcome::Ends, false},
      {"session end in a run", SystemShutdown, false, true, true, Outcome::Stays, false},
  };
  for (const Case& one : cases) {
    SCOPED_TRACE(one.name);
    Screen another;
    ScriptedDesktop person;
    frmMain program(platform.ports(person), places);
    Lifecycle its(program, person, another);
    its.frame = &another;
    another.hasTray = one.desktopHasTray;
    its.doStart();
    its.doSetSystemTray(one.systemTray);
    program.doChangeTask(2);
    program.job.vsContents.setRows(2);
    program.job.doMarkChanged(true);
    another.log.clear();
    program.state.ActionRunning = one.busy;
    person.answers = {Answer::No};

    EXPECT_EQ(its.doClose(one.reason), one.outcome == Outcome::Ends);
    EXPECT_EQ(!person.asked.empty(), one.asks);
    const std::vector<std::string> ends = {"hide", "end"};
    const std::vector<std::string> hides = {"hide"};
    EXPECT_EQ(another.log, one.outcome == Outcome::Ends    ? ends
                           : one.outcome == Outcome::Hides ? hides
                                                           : std::vector<std::string>());
    EXPECT_EQ(its.isUnloaded(), one.outcome == Outcome::Ends);
    EXPECT_EQ(another.icon, one.outcome == Outcome::Hides || (one.outcome == Outcome::Stays &&
                                                              one.systemTray && another.hasTray));
  }
}

TEST_F(LifecycleTest, CancelKeepsTheProgramAndAnotherTryEndsIt) {
  start();
  life.doSetSystemTray(true);
  changeJob();
  desktop.answers = {Answer::Cancel};
  life.commander.doExitProgram();
  EXPECT_THAT(screen.log, IsEmpty());
  EXPECT_FALSE(life.ExitRequested);
  EXPECT_TRUE(screen.icon);

  desktop.answers = {Answer::No};
  life.commander.doExitProgram();
  EXPECT_THAT(screen.log, ElementsAre("hide", "end"));
  EXPECT_FALSE(screen.icon);
}

TEST_F(LifecycleTest, ExitIsRefusedInARunAndForgotten) {
  start();
  main.state.ActionRunning = true;
  life.doExit();
  EXPECT_FALSE(life.isUnloaded());
  main.state.ActionRunning = false;
  EXPECT_FALSE(life.doClose(CloseReason::Code)) << "an exit of long ago";
  EXPECT_TRUE(life.MainHidden);
}

TEST_F(LifecycleTest, NothingEndsUnderTheFeetOfADeed) {
  start();
  screen.hasTray = false;
  {
    const Lifecycle::Deed import(life);
    EXPECT_FALSE(life.doClose(CloseReason::CloseBox));
    EXPECT_FALSE(life.doClose(CloseReason::SystemShutdown));
    EXPECT_FALSE(life.doPrepareSessionEnd());
    EXPECT_FALSE(life.doTerminate());
    const Lifecycle::Deed menuItem(life);
    EXPECT_FALSE(life.doClose(CloseReason::Code));
  }
  const Lifecycle::Deed menuItem(life);
  EXPECT_TRUE(life.doClose(CloseReason::Code));
}

TEST_F(LifecycleTest, ASignalEndsAProgramThatAFlagKeepsOpen) {
  start();
  changeJob();
  const FlagScope running(main.state.ActionRunning);
  EXPECT_FALSE(life.doClose(CloseReason::SystemShutdown));
  EXPECT_TRUE(life.doTerminate());
}

TEST_F(LifecycleTest, ABadJobFileKeepsNobodyFromWorkOrFromTheEnd) {
  start();
  desktop.files = {temp.write("broken.jbf", "no job")};
  desktop.answers = {Answer::Ok};
  main.doOpenJob();
  EXPECT_EQ(desktop.asked.back().text, "Invalid backup job file format!");
  for (const Command command : {Command::NewJob, Command::OpenJob, Command::AddItems, Command::Next,
                                Command::ChangeSettings, Command::Close})
    EXPECT_TRUE(mayBegin(command, main.state));
  EXPECT_TRUE(life.doClose(CloseReason::SystemShutdown));
}

TEST_F(LifecycleTest, TheEndSavesPlaceAndOptions) {
  start();
  life.doSetSystemTray(true);
  EXPECT_TRUE(life.doClose(CloseReason::SystemShutdown));
  EXPECT_EQ(stored("MainWin", "State"), "0");
  EXPECT_EQ(stored("MainWin", "Width"), "15000");
  EXPECT_EQ(stored("Action", "SystemTray"), "1");
  EXPECT_TRUE(life.doClose(CloseReason::CloseBox)) << "ended already";
}

TEST_F(LifecycleTest, TheIconOutlivesTheOptionWhileTheWindowIsHidden) {
  start();
  life.doClose(CloseReason::Code);
  EXPECT_TRUE(screen.icon);
  life.commander.doLeftClick();
  EXPECT_FALSE(screen.icon);
  EXPECT_FALSE(life.MainHidden);
}

TEST_F(LifecycleTest, AHiddenRunTellsItsEndAndAQuestionBringsTheWindowUp) {
  start();
  life.doClose(CloseReason::Code);
  screen.log.clear();
  main.controller.mainTab = ActionController::ErasePage;
  int asked = 0;
  desktop.onForm = [&](Form& form) {
    if (asked++ == 0) {
      life.doPrepareToAsk();
      EXPECT_FALSE(life.MainHidden);
      life.doHide();
    }
    form.doCloseBox();
  };
  main.controller.PBNext(ActionController::Erase);
  EXPECT_GT(asked, 0);
  EXPECT_THAT(screen.log, ElementsAre("show", "hide", "notice: The erase was stopped."));
}

TEST_F(LifecycleTest, PagesOfTheTrayMenuComeUpAndAskAboutTheJob) {
  start();
  changeJob();
  life.doHide();
  screen.log.clear();
  life.commander.mnBackup();
  EXPECT_THAT(screen.log, ElementsAre("show"));
  EXPECT_TRUE(main.job.hasItems()) << "its own page keeps the job";

  desktop.answers = {Answer::Cancel};
  life.commander.mnSchedule();
  EXPECT_EQ(main.controller.mainTab, ActionController::BackupPage);
  desktop.answers = {Answer::No};
  life.commander.mnSchedule();
  EXPECT_EQ(main.controller.mainTab, ActionController::SchedulePage);
}

TEST_F(LifecycleTest, HelpAndFileManagerAreTheDesktops) {
  start();
  main.doShowPageHelp();
  EXPECT_THAT(desktop.opened, IsEmpty()) << "no help is installed";
  const std::string page = temp.write("bin/help/start-page.html", "");
  main.doShowPageHelp();
  main.doOpenExplorer();
  EXPECT_THAT(desktop.opened, ElementsAre(page, places.homeFolder));

  desktop.opensOutside = false;
  desktop.answers = {Answer::Ok};
  main.doOpenExplorer();
  ASSERT_EQ(desktop.asked.size(), 1U);
  EXPECT_EQ(desktop.asked[0].text, "Unable to open Windows Explorer.");
  EXPECT_EQ(desktop.asked[0].title, "Error");
}

}  // namespace
}  // namespace korvenal::test
