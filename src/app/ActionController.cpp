#include "app/ActionController.h"

namespace korvenal {

namespace {

void doCall(const std::function<void()>& function) {
  if (function) function();
}

}  // namespace

bool mayBegin(Command command, const ActionState& state) {
  switch (command) {
    case Command::ChangePage:
    case Command::GoToStart:
    case Command::SaveJob:
    case Command::AddItems:
      return !state.ActionRunning;
    case Command::NewJob:
    case Command::OpenJob:
    case Command::Next:
      return !state.ActionRunning && !state.IgnoreEvents;
    case Command::ChangeOption:
      return !state.IgnoreEvents;
    case Command::ShowReport:
    case Command::ExportGrid:
    case Command::ChangeSettings:  // looking for drives would take the one that a run has chosen
    case Command::Close:
      return !state.ActionRunning && !state.ActionBusy;
  }
  return false;
}

void ActionController::PBNext(int action) {
  if (!mayBegin(Command::Next, state_)) return;
  const FlagScope bracket(state_.IgnoreEvents);
  if (action != Erase && stepOf(action) == DefineStep) {
    doShowStep(action, RunStep);
  } else {
    const auto at = static_cast<std::size_t>(action);
    // A run may be stopped at any time but when it says otherwise itself.
    pages_[at].pbStopEnabled = true;
    doCall(runs.start[at]);
    pages_[at].pbStopEnabled = false;
  }
}

void ActionController::PBBack(int action) {
  if (action == Erase) {
    if (mayBegin(Command::ChangePage, state_)) mainTab = StartPage;
  } else if (stepOf(action) == RunStep) {
    doShowStep(action, DefineStep);
  }
}

void ActionController::pbStop(int action) {
  RunPage& page = pages_[static_cast<std::size_t>(action)];
  if (!page.pbStopEnabled) return;
  state_.StopAction = true;
  page.pbStopEnabled = false;
  if (state_.Erasing) {
    state_.DiscInWork = false;
    grids_.doEventMessage("The action will stop after erasing complete, please wait.");
  } else if (state_.ActionPage != Erase) {
    grids_.etProgress[static_cast<std::size_t>(state_.ActionPage)].text =
        "Stop action, please wait...";
  }
  desktop_.doYield();
  engine_.do_UnlockMedium();
}

std::string ActionController::nextCaption(int action) const {
  if (action == Erase || stepOf(action) == DefineStep) return "&Next";
  return action == Backup ? "Bac&kup" : "Res&tore";
}

bool ActionController::doShowStep(int action, int step) {
  if (!mayBegin(Command::ChangePage, state_)) return false;
  (action == Backup ? BackupTab : RestoreTab) = step;
  if (step == RunStep) {
    doEnterRunStep(action);
  } else {
    doEnterDefineStep(action);
  }
  return true;
}

void ActionController::doEnterRunStep(int action) {
  state_.TaskError = 0;
  state_.StopAction = false;
  if (action == Backup) {
    state_.LimitExceeded = false;
    doCall(runs.doForgetPlan);
  } else {
    doCall(runs.doForgetList);
  }
  doShowSummary(action);
}

void ActionController::doEnterDefineStep(int action) {
  doCall(action == Backup ? runs.doForgetPlan : runs.doRemovePartRows);
}

void ActionController::doRefreshSummary() {
  const bool runPage = mainTab == ErasePage || (mainTab == BackupPage && BackupTab == RunStep) ||
                       (mainTab == RestorePage && RestoreTab == RunStep);
  if (runPage) doShowSummary(mainTab - BackupPage);
}

void ActionController::doShowSummary(int action) {
  if (mainTab < BackupPage || mainTab > ErasePage) return;
  state_.ActionPage = action;
  grids_.clearPage(action);
  if (action == Backup) {
    grids_.PBErrorList[0] = "&Verify Report";
    grids_.doClearReport();
  }
  desktop_.doYield();
  if (!runs.summary) return;
  bool first = true;
  for (const std::string& line : runs.summary(action)) {
    grids_.doEventMessage(line, !first);
    first = false;
  }
}

}  // namespace korvenal
