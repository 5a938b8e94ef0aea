#include "burn/BackupRun.h"

#include "burn/frmNotice.h"
#include "platform/Text.h"

namespace korvenal {

namespace {

constexpr std::int64_t DvdBytes = 4'689'297'408;
constexpr std::int64_t CdBytes = 720'183'296;
constexpr int NoteColumn = 6;
constexpr int BackupPageIndex = 0;  ///< of the backup page in the grids of the runs
const std::string Title = "Burn Backup";

/// The disc that is one size smaller than the type, when it takes the bytes; empty for none.
std::string smallerDisc(int comboDiscType, Fixed4 bytes) {
  if (comboDiscType == 2 && bytes < Fixed4(DvdBytes)) return "DVD";
  if (comboDiscType == 1 && bytes < Fixed4(CdBytes)) return "CD";
  return {};
}

}  // namespace

BackupRun::BackupRun(const BurnServices& services, Steps steps)
    : services_(services), steps_(std::move(steps)), texts_(services.engine), writer_(services_) {}

BackupResult BackupRun::doStartBackup() {
  ActionState& state = services_.state;
  if (isRefused()) return {};
  const FlagScope busy(state.ActionBusy);
  state.ActionPage = BackupPageIndex;  // a stopped run goes on after a visit of other pages
  state.StopAction = false;            // from here on every stop counts
  if (!steps_.doEnsureDevice(false)) return {};

  writer_.doClearCounts();
  if (const auto end = doCollect()) return {*end, {}};
  const Plan& plan = services_.plan;
  // A finished run starts over; a stopped one goes on behind the last disc it burned.
  if (request_.DiscsBurned == plan.TotalDiscs) request_.DiscsBurned = 0;
  if (request_.DiscsBurned == 0) {
    services_.grids.doForgetDiscs(BackupPageIndex);
    writer_.doBeginSet();
  }
  if (plan.TotalSize == Fixed4(0) || plan.TotalDiscs == 0 || plan.TotalFiles == 0) {
    doRefuse("No file need to be backup.", MessageIcon::Warning);
    return {End::NothingToDo, {.missed = plan.missed}};
  }
  // A stop during the summary; the run would clear the flag.
  if (state.StopAction) {
    services_.grids.doEventMessage("Action stop by user.");
    return {End::Stopped, {}};
  }
  const FlagScope running(state.ActionRunning);
  const End end = doRunBackup();
  RunFaults faults = writer_.faults;
  faults.missed = plan.missed;
  return {end, faults};
}

bool BackupRun::isRefused() {
  if (services_.state.LimitExceeded) {
    doRefuse("Backup size has exceeded the limitations of this software, unable to backup.",
             MessageIcon::Stop);
    return true;
  }
  if (!services_.job.hasItems()) {
    doRefuse("Backup data contents is empty, unable to backup.", MessageIcon::Stop);
    if (steps_.doShowJob) steps_.doShowJob();
    return true;
  }
  return services_.state.ActionBusy;
}

void BackupRun::doRefuse(const std::string& text, MessageIcon icon) {
  services_.desktop.doShowMessage(
      {.text = text, .title = Title, .icon = icon, .buttons = MessageButtons::Ok});
}

std::optional<BackupResult::End> BackupRun::doCollect() {
  ActionState& state = services_.state;
  if (!PreparedForRun) doScan();
  const FlagScope running(state.ActionRunning);
  if (!state.StopAction && !state.LimitExceeded) {
    PreparedForRun = true;
    doBackupSummary();
    if (services_.plan.TotalFiles == 0)
      services_.grids.doEventMessage("*No file need to be backup.");
    return {};
  }
  services_.plan.vsBuffer.clear();
  if (state.StopAction) services_.grids.doEventMessage("Action stop by user.");
  if (!state.LimitExceeded) return End::Stopped;
  services_.grids.doEventMessage("*Error: Exceeded backup limitations.");
  return End::LimitExceeded;
}

void BackupRun::doScan() {
  ActionState& state = services_.state;
  request_ = {};
  writer_.doForgetPlan();
  services_.plan.clearTotals();
  services_.plan.ScanMode = 0;
  state.TaskError = 0;
  state.LimitExceeded = false;
  services_.grids.doEventMessage("Start backup action.");
  services_.grids.doEventMessage("Collecting backup data information...");
  if (state.StopAction) return;
  state.WorkerMode = WorkerReadIndex;  // for the worker dialog: scan for a backup
  const FlagScope modal(state.IgnoreEvents);
  frmAddFiles worker(state, services_.desktop, steps_.doScanFiles);
  services_.desktop.doShowModal(worker);
}

void BackupRun::doBackupSummary() {
  const Plan& plan = services_.plan;
  RunGrids& grids = services_.grids;
  std::string files =
      "?" + services_.job.backupTypeText() + " backup:  " + Text::counted(plan.TotalFiles, "file");
  if (plan.TotalSplits > 0) files += ", " + Text::counted(plan.TotalSplits, "file") + " split";
  grids.doEventMessage(files);
  grids.doEventMessage("?Total size:  " +
                       texts_.doFormatSize(DiscTexts::GivenSize, true, plan.TotalSize));
  if (plan.TotalSize == Fixed4(0)) {
    grids.doEventMessage("?Disc required:  0");
    return;
  }
  grids.doEventMessage("?Disc required:  " + services_.job.discTypeText() + "  x " +
                       std::to_string(plan.TotalDiscs));
  grids.doEventMessage(std::string("?Burn backup index:  ") + (plan.IndexOnDiscs ? "YES" : "NO"));
}

BackupResult::End BackupRun::doRunBackup() {
  ActionState& state = services_.state;
  RunPage& page = services_.page;
  services_.grids.etProgress[0] = {};
  page = {
      .buttonsVisible = false, .ProgressPanel = true, .pbStopVisible = true, .pbStopEnabled = true};
  state.WorkerMode = WorkerBurn;
  state.StopAction = false;
  state.TaskError = 0;
  doShowNotice();
  const End end = state.StopAction ? End::Stopped : doBurnDiscSet();
  if (state.StopAction && end != End::Finished)
    services_.grids.doEventMessage("Action stop by user.");
  page = {};
  return end;
}

void BackupRun::doShowNotice() {
  Profile& profile = services_.settings.profile();
  if (!frmNotice::isWanted(profile)) return;
  {
    const FlagScope modal(services_.state.IgnoreEvents);
    frmNotice notice(services_.state, profile);
    services_.desktop.doShowModal(notice);
  }
  services_.desktop.doYield();
}

BackupResult::End BackupRun::doBurnDiscSet() {
  services_.workspace.doCheckFolders(services_.files);
  request_.TotalDiscs = services_.plan.TotalDiscs;
  request_.comboDiscType = services_.job.comboDiscType;
  request_.setName = services_.job.txJobName + " (" + services_.plan.RunStamp + ")";
  doSetSizeHint();
  if (request_.DiscsBurned == 0 && !writer_.doEnsureIndex())
    return services_.state.StopAction ? End::Stopped : End::ErrorLimit;
  {
    const FlagScope first(request_.FirstPrompt);
    steps_.doAskLoadDisc(0, request_);
  }
  writer_.DiscErrorCount = 0;
  return doBurnLoads();
}

BackupResult::End BackupRun::doBurnLoads() {
  ActionState& state = services_.state;
  for (bool first = true;; first = false) {
    if (state.StopAction) {
      services_.grids.doEventMessage("Action stop by user.");
      return End::Stopped;
    }
    // Before the first disc, so that a crash leaves a trace.
    if (first) doAddRecentRecord();
    services_.page.pbStopEnabled = true;
    writer_.doWriteDiscs(request_);
    services_.page.pbStopEnabled = false;
    services_.desktop.doYield();
    // Before the stop: one that came when the last disc was done has nothing left to stop.
    const bool allDone = request_.DiscsBurned >= services_.plan.TotalDiscs;
    if (state.StopAction && !allDone) return End::Stopped;
    if (state.TaskError != 0 && !allDone) return End::ErrorLimit;
    doPlayChime();
    if (allDone) {
      doFinish();
      return End::Finished;
    }
    state.WorkerMode = WorkerBurn;
    steps_.doAskLoadDisc(2, request_);
  }
}

void BackupRun::doFinish() {
  request_.DiscsBurned = 0;
  services_.state.StopAction = false;  // it came too late to stop anything
  services_.grids.doEventMessage("Backup action finished.");
  Table& recent = services_.records.vsRecent;
  if (!recent.hasData()) return;
  recent.setText(1, NoteColumn, services_.job.backupTypeText() + " backup.");
  services_.records.doSaveRecentBackup();
}

void BackupRun::doSetSizeHint() {
  request_.SizeHint.clear();
  const Plan& plan = services_.plan;
  const Fixed4 lastDisc = plan.doGetDiscSZ(plan.TotalDiscs);
  const std::string smaller = smallerDisc(services_.job.comboDiscType, lastDisc);
  const bool onlyDisc = plan.TotalDiscs == 1;
  // A differential backup of one disc is usually small; it gets no advice.
  if (smaller.empty() || (onlyDisc && services_.job.isDifferential())) return;
  request_.SizeHint = std::string(onlyDisc ? "This" : "Last") + " disc only need " +
                      texts_.doFormatSize(DiscTexts::GivenSize, true, lastDisc) + ", may use a " +
                      smaller + " disc instead.";
}

void BackupRun::doAddRecentRecord() {
  const Plan& plan = services_.plan;
  const Job& job = services_.job;
  services_.records.doAddRecent(
      {Dates::displayShort(services_.clock.now()), job.txJobName, std::to_string(plan.TotalFiles),
       texts_.doFormatSize(DiscTexts::GivenSize, true, plan.TotalSize), job.discTypeText(),
       std::to_string(plan.TotalDiscs), "* Uncompleted.", job.JobFile});
}

void BackupRun::doPlayChime() {
  if (services_.settings.PlaySound)
    services_.desktop.doPlaySound(services_.workspace.binFolder + "CHIMES.WAV");
}

}  // namespace korvenal
