#include "app/Lifecycle.h"

namespace korvenal {

namespace {

template <typename Result>
std::string endText(const std::string& work, const Result& result, bool withErrors) {
  if (result.end == Result::End::Stopped) return work + " was stopped.";
  if (result.end != Result::End::Finished) return work + " could not go on.";
  return work + (withErrors ? " has ended with errors." : " has ended.");
}

}  // namespace

Lifecycle::Lifecycle(frmMain& main, Desktop& desktop, TrayArea& tray)
    : commander(main.state, main.settings.SystemTray, tray, trayActions()),
      main_(main),
      desktop_(desktop),
      tray_(tray) {
  for (std::size_t action = 0; action < main_.controller.runs.start.size(); ++action) {
    auto& start = main_.controller.runs.start[action];
    start = [this, run = start, action] {
      run();
      doTellEnd(static_cast<int>(action));
    };
  }
}

TrayActions Lifecycle::trayActions() {
  return {
      .facts = [this] { return trayFacts(); },
      .doYield = [this] { desktop_.doYield(); },
      .doShowMain = [this] { doShow(); },
      .doHideMain = [this] { doHide(); },
      .doTask01 = [this] { doShowPage(ActionController::BackupPage, BackupTask); },
      .doTask02 = [this] { doShowPage(ActionController::RestorePage, RestoreTask); },
      .doTask03 = [this] { doShowPage(ActionController::SchedulePage, ScheduleTask); },
      .doDevice = [this] { main_.doDevice(); },
      .doDefault = [this] { main_.doDefault(); },
      .doExit = [this] { doExit(); },
  };
}

TrayFacts Lifecycle::trayFacts() const {
  const int page = main_.controller.mainTab;
  return {.MainHidden = MainHidden,
          .backupInView = page == ActionController::BackupPage,
          .restoreInView = page == ActionController::RestorePage,
          .scheduleInView = page == ActionController::SchedulePage};
}

void Lifecycle::doStart() {
  main_.doLoad();
  if (MainHidden) {
    frame->doPlace(main_.settings.MainWin);
    doShow();
  }
  if (activated_) return;
  activated_ = true;
  doSettleIcon();
  desktop_.doYield();
  main_.doFirstActivate();
}

void Lifecycle::doShow() {
  if (unloaded_) return;
  desktop_.doYield();
  frame->doShow();
  MainHidden = false;
  doSettleIcon();
}

void Lifecycle::doHide() {
  MainHidden = true;
  doSettleIcon();
  frame->doHide();
}

/// The menus can hide the window while the option is off, too: no window without a way back.
void Lifecycle::doSettleIcon() {
  if (!activated_) return;
  if (main_.settings.SystemTray || MainHidden)
    commander.doAddTrayIcon();
  else
    commander.doDeleteTrayIcon();
}

void Lifecycle::doPrepareToAsk() {
  if (activated_ && MainHidden && (closing_ || main_.state.ActionRunning)) doShow();
}

void Lifecycle::doSetSystemTray(bool on) {
  main_.settings.SystemTray = on;
  doSettleIcon();
}

/// Questions of the page stand over the window, so that comes first.
void Lifecycle::doShowPage(int page, int kind) {
  doShow();
  if (main_.controller.mainTab != page) main_.doChangeTask(kind);
}

void Lifecycle::doTellEnd(int action) {
  if (!MainHidden) return;
  switch (action) {
    case ActionController::Backup: {
      const RunFaults& faults = main_.backupResult.faults;
      const bool errors = faults.discs + faults.files + faults.notVerified + faults.missed > 0;
      return commander.doNotify(endText("The backup", main_.backupResult, errors));
    }
    case ActionController::Restore:
      return commander.doNotify(
          endText("The restore", main_.restoreResult, !main_.restoreResult.isAllWell()));
    default:
      return commander.doNotify(
          endText("The erase", main_.eraseResult, main_.eraseResult.failed > 0));
  }
}

bool Lifecycle::doClose(CloseReason reason) {
  if (unloaded_) return true;
  // The question about the job lets handlers in: a second close waits for the first one's answer.
  if (closing_) return false;
  const FlagScope closing(closing_);
  if (!mayClose(reason)) return false;
  doUnload();
  return true;
}

bool Lifecycle::mayEnd(CloseReason reason) const {
  // A menu item is a deed itself.
  const int own = reason == CloseReason::Code ? 1 : 0;
  return deeds_ <= own && mayBegin(Command::Close, main_.state);
}

bool Lifecycle::mayClose(CloseReason reason) {
  const bool atRest = mayEnd(reason);
  if (reason == CloseReason::SystemShutdown) return atRest;
  const bool isExit = ExitRequested;
  ExitRequested = false;
  // A desktop without a tray has no place to hide in: every close is meant.
  const bool hides =
      tray_.isPresent() && !isExit && (reason == CloseReason::Code || main_.settings.SystemTray);
  if (hides) {
    doHide();
    return false;
  }
  return atRest && main_.jobFile.doQuerySaveJob();
}

void Lifecycle::doUnload() {
  unloaded_ = true;
  main_.settings.MainWin = frame->place();
  frame->doHide();
  main_.doUnload();
  commander.doUnload();
  frame->doEnd();
}

void Lifecycle::doExit() {
  if (closing_) return;
  ExitRequested = true;
  doClose(CloseReason::Code);
}

bool Lifecycle::doPrepareSessionEnd() {
  if (unloaded_) return true;
  if (!mayEnd(CloseReason::SystemShutdown)) return false;
  main_.settings.MainWin = frame->place();
  const FlagScope quiet(main_.ownFileFaults.quiet);
  main_.settings.doSaveInitData();
  return true;
}

bool Lifecycle::doTerminate() {
  if (unloaded_) return true;
  if (deeds_ > 0 || closing_) return false;
  doUnload();
  return true;
}

void Lifecycle::doStopRun() {
  main_.controller.pbStop(main_.state.ActionPage);
}

}  // namespace korvenal
