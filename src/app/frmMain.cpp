#include "app/frmMain.h"

#include "core/TableExport.h"
#include "core/frmDefault.h"
#include "device/frmDevice.h"
#include "job/frmCreateItem.h"

namespace korvenal {

frmMain::frmMain(const Ports& ports, const Workspace& places)
    : ports_(ports),
      workspace(places),
      profile(ports.files, workspace.gSettingsFile),
      settings(profile),
      grids(state, ports.desktop, ports.clock, ports.files, workspace),
      ownFileFaults(state, ports.desktop, grids),
      records(ports.files, ports.desktop, grids, workspace),
      drives(ports.engine, ports.devices, ports.desktop, state, deviceSettings),
      prompt(state, ports.desktop, grids, ports.engine, ports.trays, drives, deviceSettings),
      deviceCheck(state, ports.desktop, drives, deviceSettings, job),
      jobControls(state, drives, job),
      newJob(state, settings, drives, grids, job),
      jobFile({state, ports.desktop, ports.files, workspace, profile, newJob}, job),
      addItems({state, ports.desktop, ports.files, workspace, profile}, job),
      contentsEditing(state, ports.desktop, job),
      sourceScan({state, settings, workspace, ports.desktop, ports.clock, ports.files, ports.walker,
                  ports.archiveBits, ports.archive, grids, [this] { return ownFiles(); }},
                 job, plan),
      estimate({state, ports.desktop, profile,
                [this](int discType) { return drives.doCheckDevice(discType); }},
               job, plan, sourceScan),
      backup({state, ports.engine, ports.desktop, ports.clock, ports.files, ports.archiveBits,
              ports.archive, grids, runPages[ActionController::Backup], records, settings,
              deviceSettings, workspace, job, plan},
             backupSteps()),
      restorePage(ports.desktop),
      selection(restorePage, ports.desktop),
      find(restorePage, ports.desktop),
      indexOpening(
          {state, ports.desktop, ports.files, ports.archive, settings, deviceSettings, workspace},
          restorePage, selection,
          [this](int reason, DiscRequest& request) { prompt.doAskLoadDisc(reason, request); }),
      restore({state, ports.engine, ports.desktop, ports.clock, ports.files, ports.archive,
               ports.targets, grids, runPages[ActionController::Restore], records, settings,
               deviceSettings, workspace, restorePage},
              restoreSteps()),
      erase({state, ports.engine, ports.desktop, ports.clock, grids,
             runPages[ActionController::Erase], records, settings, deviceSettings, workspace},
            eraseSteps()),
      controller(state, ports.engine, ports.desktop, grids, runPages) {
  doWire();
}

OwnFiles frmMain::ownFiles() const {
  return {.folders = {workspace.applicationFolder, workspace.TempFolder},
          .shelf = ports_.trays.shelf(),
          .discs = ports_.trays.discFiles(),
          .written = ports_.trays.writtenFiles()};
}

BackupRun::Steps frmMain::backupSteps() {
  return {
      .doEnsureDevice = [this](bool anyDisc) { return deviceCheck.doEnsureDevice(anyDisc); },
      .doScanFiles = [this](frmAddFiles& worker) { sourceScan.doScanFiles(worker); },
      .doAskLoadDisc = [this](int reason,
                              DiscRequest& request) { prompt.doAskLoadDisc(reason, request); },
      .doShowJob =
          [this] { controller.doShowStep(ActionController::Backup, ActionController::DefineStep); },
  };
}

RestoreRun::Steps frmMain::restoreSteps() {
  return {
      .doEnsureDevice = [this](bool anyDisc) { return deviceCheck.doEnsureDevice(anyDisc); },
      .doAskLoadDisc = [this](int reason,
                              DiscRequest& request) { prompt.doAskLoadDisc(reason, request); },
      .doBrowseTarget = [this] { indexOpening.doBrowseTarget(); },
      .doShowSelection =
          [this] {
            controller.doShowStep(ActionController::Restore, ActionController::DefineStep);
          },
  };
}

EraseRun::Steps frmMain::eraseSteps() {
  return {
      .doEnsureDevice = [this](bool anyDisc) { return deviceCheck.doEnsureDevice(anyDisc); },
      .doAskLoadDisc = [this](int reason,
                              DiscRequest& request) { prompt.doAskLoadDisc(reason, request); },
  };
}

void frmMain::doWire() {
  records.onFault = profile.onFault = [this](const std::string& path, const std::string& text) {
    ownFileFaults.doTell(path, text);
  };
  prompt.doDevice = [this] { doDevice(); };
  deviceCheck.actions.doDevice = [this] { doDevice(); };
  deviceCheck.actions.doRefreshSummary = [this] { controller.doShowSummary(state.ActionPage); };
  controller.runs.start[ActionController::Backup] = [this] {
    const AwakeScope awake(ports_.power, "A backup is at work.");
    backupResult = backup.doStartBackup();
  };
  controller.runs.start[ActionController::Restore] = [this] {
    const AwakeScope awake(ports_.power, "A restore is at work.");
    restoreResult = restore.doStartRestore();
  };
  controller.runs.start[ActionController::Erase] = [this] {
    const AwakeScope awake(ports_.power, "Discs are being erased.");
    eraseResult = erase.doStartErase();
  };
  controller.runs.summary = [this](int action) { return summaryLines(action); };
  controller.runs.doForgetPlan = [this] { backup.PreparedForRun = false; };
  controller.runs.doRemovePartRows = [this] { restore.doRemovePartRows(); };
  controller.runs.doForgetList = [this] { restorePage.PreparedForRun = false; };
}

void frmMain::doLoad() {
  ports_.desktop.doYield();
  controller.mainTab = ActionController::StartPage;
  records.doReadDiscLog();
  records.doReadRecent();
  settings.doReadInitData();
  const std::string wanted = workspace.TempFolder;
  workspace.doCheckTempFolder(ports_.files, wanted);
  workspace.doCheckFolders(ports_.files);
  deviceSettings.doReadDvcData(profile);
  ports_.desktop.doYield();
}

void frmMain::doFirstActivate() {
  constexpr int AnyDisc = 0;
  if (!drives.doCheckDevice(AnyDisc)) doDevice();
}

void frmMain::doSettleFirstDrive() {
  if (!deviceSettings.DriveLetters.empty()) return;
  doFirstActivate();
  if (!job.hasItems() && !job.Modified) newJob.doTakeDiscType();
}

void frmMain::doUnload() {
  const WaitPointer wait(ports_.desktop);
  sourceScan.doDeleteRunFiles();
  grids.doDeleteRunLogs();
  settings.doSaveInitData();
}

void frmMain::doDevice() {
  const std::string letters = deviceSettings.DriveLetters;
  const std::int64_t mode = deviceSettings.DeviceMode;
  const bool inRun = state.ActionBusy;
  doShowDevice();
  const bool changed = letters != deviceSettings.DriveLetters || mode != deviceSettings.DeviceMode;
  if (changed && !inRun) doTakeDevices();
}

/// What the page in view says of the drives holds for the new ones. A run checks them itself.
void frmMain::doTakeDevices() {
  constexpr int AnyDisc = 0;
  if (controller.mainTab == ActionController::BackupPage)
    drives.doCheckDevice(job.comboDiscType);
  else if (controller.mainTab == ActionController::RestorePage)
    drives.doCheckDevice(AnyDisc);
  controller.doRefreshSummary();
}

void frmMain::doShowDevice() {
  const FlagScope ignore(state.IgnoreEvents);
  const FlagScope busy(state.ActionBusy);
  frmDevice form(
      {state, ports_.desktop, ports_.engine, drives, deviceSettings, profile, ports_.trays});
  ports_.desktop.doShowModal(form);
}

void frmMain::doDefault() {
  const FlagScope ignore(state.IgnoreEvents);
  const FlagScope busy(state.ActionBusy);
  frmDefault form(settings, ports_.desktop);
  ports_.desktop.doShowModal(form);
}

void frmMain::doShowHelp(const std::string& topic) {
  const std::string page = workspace.helpPage(topic);
  if (ports_.files.doFileExists(page)) ports_.desktop.doOpenOutside(page);
}

void frmMain::doShowPageHelp() {
  switch (controller.mainTab) {
    case ActionController::StartPage:
      return doShowHelp("Start Page");
    case ActionController::BackupPage:
      return doShowHelp("Backup Window");
    case ActionController::RestorePage:
      return doShowHelp("Restore Window");
    case ActionController::ErasePage:
      return doShowHelp("Erase Rewritable Disc");
    default:
      return doShowHelp("Contents");
  }
}

void frmMain::doOpenExplorer() {
  if (ports_.desktop.doOpenOutside(workspace.homeFolder)) return;
  const FlagScope ignore(state.IgnoreEvents);
  ports_.desktop.doShowMessage({.text = "Unable to open Windows Explorer.", .title = "Error"});
}

void frmMain::PBAddFiles() {
  if (!mayBegin(Command::AddItems, state)) return;
  const FlagScope ignore(state.IgnoreEvents);
  frmBrowse form({ports_.desktop, ports_.files, profile, addItems, browserSize},
                 workspace.homeFolder);
  ports_.desktop.doShowModal(form);
}

void frmMain::pbCreateItem() {
  if (!mayBegin(Command::AddItems, state)) return;
  const FlagScope ignore(state.IgnoreEvents);
  frmCreateItem form(addItems, job, ports_.desktop);
  ports_.desktop.doShowModal(form);
}

void frmMain::doImportM3U() {
  if (mayBegin(Command::AddItems, state)) addItems.doImportM3U();
}

void frmMain::doExport(const Table& table) {
  FileOutcome outcome;
  {
    // The table stays as it is until all of it is written.
    const FlagScope running(state.ActionRunning);
    outcome = doExportGrid(ports_.desktop, ports_.files, table);
  }
  if (outcome) return;
  const FlagScope ignore(state.IgnoreEvents);
  ports_.desktop.doShowMessage({.text = "The text file could not be written.\n" + outcome.text,
                                .title = "Error",
                                .icon = MessageIcon::Stop});
}

void frmMain::doPrint(const Table& table, const std::string& title) {
  doPrintGrid(ports_.desktop, ports_.clock, table, title);
}

void frmMain::doShowMainPage(int page) {
  controller.mainTab = page;
  job.onBackupPage = page == ActionController::BackupPage;
}

bool frmMain::doChangeTask(int kind) {
  if (!mayBegin(Command::GoToStart, state) || !jobFile.doQuerySaveJob()) return false;
  switch (kind) {
    case BackupTask:
      doTask01();
      return true;
    case RestoreTask:
      if (doTask02()) doLoadDisc();
      return true;
    case ScheduleTask:
      doTask03();
      return true;
    case EraseTask:
      doTaskErase();
      return true;
    default:
      break;
  }
  {
    const WaitPointer wait(ports_.desktop);
    sourceScan.doDeleteRunFiles();
    grids.doDeleteRunLogs();
    plan.vsBuffer.clear();
    selection.doInitRestoreGrid();
    job.vsContents.clearData();
    job.doMarkChanged(false);
    ports_.desktop.doYield();
  }
  doShowMainPage(ActionController::StartPage);
  ports_.desktop.doYield();
  return true;
}

void frmMain::doTask01(bool keepPage) {
  if (controller.mainTab == ActionController::BackupPage && !keepPage) return;
  doShowMainPage(ActionController::BackupPage);
  controller.doShowStep(ActionController::Backup, ActionController::DefineStep);
  newJob.doNewJob();
  ports_.desktop.doYield();
}

void frmMain::doEditJob() {
  doShowMainPage(ActionController::BackupPage);
  if (controller.BackupTab != ActionController::DefineStep)
    controller.doShowStep(ActionController::Backup, ActionController::DefineStep);
}

void frmMain::doNewJob() {
  if (!mayBegin(Command::NewJob, state) || !jobFile.doQuerySaveJob()) return;
  constexpr bool KeepPage = true;
  doTask01(KeepPage);
}

void frmMain::doOpenJob() {
  if (!mayBegin(Command::OpenJob, state)) return;
  if (controller.mainTab != ActionController::BackupPage) doTask01();
  doEditJob();
  jobFile.doLoadJob({});
}

void frmMain::doSaveJob() {
  if (mayBegin(Command::SaveJob, state)) jobFile.doSaveJob();
}

void frmMain::doOpenRecentJob(int row) {
  const std::string file = records.recentJobFile(row);
  if (file.empty() || !mayBegin(Command::OpenJob, state)) return;
  doEditJob();
  jobFile.doLoadJob(file);
}

void frmMain::doTask03() {
  doShowMainPage(ActionController::SchedulePage);
  ports_.desktop.doYield();
}

bool frmMain::doTask02() {
  if (controller.mainTab == ActionController::RestorePage) return false;
  restorePage.txRestoreTo = profile.doReadProfile("Restore", "Target", "");
  if (!ports_.files.doFolderExists(restorePage.txRestoreTo)) restorePage.txRestoreTo.clear();
  selection.doInitRestoreGrid();
  restorePage.doSetDefaults(settings);
  doShowMainPage(ActionController::RestorePage);
  controller.doShowStep(ActionController::Restore, ActionController::DefineStep);
  return true;
}

void frmMain::doLoadDisc() {
  constexpr bool AskForDisc = true;
  if (mayBegin(Command::ChangePage, state)) indexOpening.doReadBackupIndex(AskForDisc);
  selection.doSetRestoreButtons();
  ports_.desktop.doYield();
}

void frmMain::doTaskErase() {
  if (controller.mainTab != ActionController::ErasePage) {
    erase.optEraseMode = 0;
    doShowMainPage(ActionController::ErasePage);
    controller.doShowSummary(ActionController::Erase);
  }
  ports_.desktop.doYield();
}

std::vector<std::string> frmMain::summaryLines(int action) {
  switch (action) {
    case ActionController::Backup:
      return backupSummary(job, deviceSettings);
    case ActionController::Restore:
      return restoreSummary(restoreFacts(), deviceSettings);
    default:
      return eraseSummary(erase.optEraseMode == 0, deviceSettings);
  }
}

RestoreSummary frmMain::restoreFacts() const {
  const auto mode = static_cast<std::size_t>(restorePage.RestoreOpt);
  const auto volume = restorePage.txRestoreTo.empty()
                          ? std::nullopt
                          : ports_.files.doGetVolumeInfo(restorePage.txRestoreTo);
  return {
      .jobName = restorePage.txJobName,
      .hasSelection = restorePage.SelectedCount > 0,
      .selectionText = restorePage.vsBackupInfo[2],
      .modeText = RestoreOptTexts[mode],
      .SkipSystem = restorePage.SkipSystem,
      .SkipOpen = restorePage.SkipOpen,
      .OnlyRestoreFile = restorePage.OnlyRestoreFile,
      .target = restorePage.txRestoreTo,
      .freeBytes = volume ? std::optional(volume->freeBytes) : std::nullopt,
      .mountPoint = volume ? volume->mountPoint : std::string(),
  };
}

}  // namespace korvenal
