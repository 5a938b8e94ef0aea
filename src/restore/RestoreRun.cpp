#include "restore/RestoreRun.h"

#include "platform/Paths.h"
#include "platform/Text.h"

namespace korvenal {

namespace {

/// More visits than this no backup of a hundred discs can ask for.
constexpr std::size_t MaxVisits = 10000;

}  // namespace

RestoreRun::RestoreRun(const RestoreServices& services, Steps steps)
    : services_(services),
      steps_(std::move(steps)),
      recognition_(services_.files, services_.page),
      discs_(services_) {}

RestoreResult RestoreRun::doStartRestore() {
  ActionState& state = services_.state;
  RestorePage& page = services_.page;
  if (state.ActionBusy || state.ActionRunning) return {};
  state.ActionPage = RestorePageIndex;
  if (isRefused()) return {};
  discs_.faults = {};
  // With another target nothing is restored yet.
  if (!page.PreparedForRun || !discs_.isTargetThere()) goesOn_ = false;
  if (!page.PreparedForRun && !doCollect()) {
    const bool stopped = state.StopAction;
    if (stopped) services_.grids.doEventMessage("Action stop by user.");
    return {stopped ? End::Stopped : End::Failed, {}, {}};
  }
  // A finished run starts over; a stopped one goes on.
  if (!goesOn_) doBeginRestore();
  const FlagScope running(state.ActionRunning);
  const FlagScope busy(state.ActionBusy);
  const End end = doRunRestore();
  goesOn_ = end != End::Finished && discs_.isTargetThere();
  return {end, discs_.faults, discs_.sum()};
}

void RestoreRun::doBeginRestore() {
  services_.page.RestoreDiscIndex = 0;
  services_.grids.doForgetDiscs(RestorePageIndex);
  services_.grids.doClearReport(RestorePageIndex);
  discs_.doBeginRestore();
}

bool RestoreRun::isRefused() {
  RestorePage& page = services_.page;
  if (page.SelectedCount == 0) {
    doRefuse("No file selected to be restored.", "Error");
    if (steps_.doShowSelection) steps_.doShowSelection();
    return true;
  }
  if (page.txRestoreTo.empty() || !services_.files.doFolderExists(page.txRestoreTo)) {
    page.txRestoreTo.clear();
    doRefuse("Please select where you want the files to be restored.", gProductName);
    if (steps_.doShowSelection) steps_.doShowSelection();
    if (steps_.doBrowseTarget) steps_.doBrowseTarget();
    return true;
  }
  return !steps_.doEnsureDevice(true);
}

void RestoreRun::doRefuse(const std::string& text, const std::string& title) {
  services_.desktop.doShowMessage({.text = text, .title = title, .icon = MessageIcon::Stop});
}

bool RestoreRun::doCollect() {
  ActionState& state = services_.state;
  state.StopAction = false;
  state.TaskError = 0;
  const FlagScope running(state.ActionRunning);
  services_.grids.doEventMessage("Start restore action.");
  services_.grids.doEventMessage("Collecting selected files information...");
  services_.page.PreparedForRun = doGetRestoreDisc();
  if (!services_.page.PreparedForRun) doRemovePartRows();
  return services_.page.PreparedForRun;
}

bool RestoreRun::doGetRestoreDisc() {
  const WaitPointer wait(services_.desktop);
  RestorePage& page = services_.page;
  page.RestoreDiscList.clear();
  page.RestoreDiscIndex = 0;
  for (int row = 1; row < page.vsRestore.Rows(); ++row) {
    if (services_.state.StopAction) return false;
    services_.desktop.doYield();
    if (!doAddDiscs(row)) {
      services_.grids.doEventMessage("*Backup index file format error.");
      return false;
    }
  }
  if (!page.RestoreDiscList.empty()) return true;
  doRefuse("No file selected to be restored.", "Error");
  return false;
}

bool RestoreRun::doAddDiscs(int row) {
  const RestoreTree& tree = services_.page.vsRestore;
  std::vector<int>& discs = services_.page.RestoreDiscList;
  if (tree.isFolder(row) || tree.check(row) != RestoreCheck::Checked) return true;
  const auto add = [&discs](int disc) {
    if (discs.empty() || discs.back() != disc) discs.push_back(disc);
  };
  const RestoreTree::Item& item = tree.item(row);
  if (item.firstDisc == item.lastDisc)
    add(item.disc);
  else
    for (int disc = item.firstDisc; disc <= item.lastDisc; ++disc) add(disc);
  return discs.size() <= MaxVisits;
}

void RestoreRun::doRemovePartRows() {
  services_.page.PreparedForRun = false;
}

RestoreResult::End RestoreRun::doRunRestore() {
  ActionState& state = services_.state;
  RunPage& page = services_.runPage;
  services_.progress() = {};
  page = {
      .buttonsVisible = false, .ProgressPanel = true, .pbStopVisible = true, .pbStopEnabled = true};
  state.WorkerMode = WorkerRestore;
  state.StopAction = false;
  state.TaskError = 0;
  discs_.doBeginRun(goesOn_);
  const End end = doRestoreLoop();
  state.DiscInWork = false;
  discs_.doEndRun();
  if (end == End::Finished) {
    services_.page.RestoreDiscIndex = 0;
    services_.grids.doEventMessage("Restore action finished.");
  }
  if (state.StopAction) services_.grids.doEventMessage("Action stop by user.");
  doTellSum();
  page = {};
  return end;
}

/// The last line of a run: every file that was selected is in one of its counts.
void RestoreRun::doTellSum() {
  const RestoreSum sum = discs_.sum();
  const int open = sum.selected - sum.restored - sum.skipped - sum.failed;
  services_.grids.doEventMessage(
      (sum.isAllWell() ? "" : "*") + Text::counted(sum.selected, "file") +
      " selected: " + std::to_string(sum.restored) + " restored, " + std::to_string(sum.skipped) +
      " skipped, " + std::to_string(sum.failed) + " failed" +
      (open > 0 ? ", " + std::to_string(open) + " not done yet." : "."));
}

bool RestoreRun::isFirstDiscInDrive() const {
  const RestorePage& page = services_.page;
  const bool begins = page.RestoreDiscList.front() == 1;
  const bool oneDrive = services_.devices.DeviceMode != 1;
  const auto index = Paths::asDrivePath(page.IndexPath);
  return begins && (page.discsWanted() == 1 || oneDrive) && index &&
         services_.files.doFileExists(page.IndexPath) &&
         recognition_.look(index->letter, 1).disc.has_value();
}

RestoreResult::End RestoreRun::doRestoreLoop() {
  ActionState& state = services_.state;
  RestorePage& page = services_.page;
  discs_.doPassNeedlessDiscs();
  if (page.RestoreDiscIndex < page.discsWanted() && !isFirstDiscInDrive()) {
    const FlagScope first(request_.FirstPrompt);
    doAskLoadDisc(0);
  }
  while (!state.StopAction) {
    discs_.doRestoreDiscs();
    services_.desktop.doYield();
    if (state.StopAction) break;
    if (state.TaskError != 0) return End::Failed;
    doPlayChime();
    if (page.RestoreDiscIndex >= page.discsWanted()) return End::Finished;
    doAskLoadDisc(1);
  }
  return End::Stopped;
}

void RestoreRun::doAskLoadDisc(int reason) {
  services_.state.WorkerMode = WorkerRestore;
  request_.RestoreDiscList = services_.page.RestoreDiscList;
  request_.RestoreDiscIndex = services_.page.RestoreDiscIndex;
  request_.setName = services_.page.setName;
  request_.wantedSet = {"", services_.page.identity, services_.page.isSetUnmarked};
  steps_.doAskLoadDisc(reason, request_);
}

void RestoreRun::doPlayChime() {
  if (services_.settings.PlaySound)
    services_.desktop.doPlaySound(services_.workspace.binFolder + "CHIMES.WAV");
}

}  // namespace korvenal
