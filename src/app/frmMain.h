#pragma once

#include <string>
#include <vector>

#include "app/ActionController.h"
#include "app/RunSummary.h"
#include "burn/BackupRun.h"
#include "burn/DeviceCheck.h"
#include "core/ActionState.h"
#include "core/OwnFileFaults.h"
#include "core/RunGrids.h"
#include "core/RunPage.h"
#include "core/Settings.h"
#include "core/Workspace.h"
#include "device/DeviceSettings.h"
#include "device/DriveDiscovery.h"
#include "device/LoadPrompt.h"
#include "erase/EraseRun.h"
#include "job/AddItems.h"
#include "job/ContentsEditing.h"
#include "job/Job.h"
#include "job/JobControls.h"
#include "job/JobFile.h"
#include "job/NewJob.h"
#include "job/frmBrowse.h"
#include "plan/Estimate.h"
#include "plan/Plan.h"
#include "plan/SourceScan.h"
#include "platform/Ports.h"
#include "platform/Profile.h"
#include "records/Records.h"
#include "restore/IndexOpening.h"
#include "restore/RestoreFind.h"
#include "restore/RestorePage.h"
#include "restore/RestoreRun.h"
#include "restore/RestoreSelection.h"

namespace korvenal {

/// What the bar of pages asks for.
enum Task : int {
  StartTask = 1,
  BackupTask = 2,
  RestoreTask = 3,
  ScheduleTask = 4,
  EraseTask = 5,
};

/// The program: builds every subject, in the order in which they need each other, and ties their
/// wishes together. Front ends reach the subjects here; `mayBegin` tells what they may begin when.
class frmMain {
 public:
  /// The workspace's TempFolder is the private scratch folder wanted; empty for none.
  frmMain(const Ports& ports, const Workspace& workspace);
  frmMain(const frmMain&) = delete;
  frmMain& operator=(const frmMain&) = delete;

 private:
  Ports ports_;

 public:
  // What a program has one of.
  ActionState state;
  Workspace workspace;
  Profile profile;
  Settings settings;
  RunGrids grids;
  RunPages runPages;
  OwnFileFaults ownFileFaults;
  Records records;

  // Drives.
  DeviceSettings deviceSettings;
  DriveDiscovery drives;
  LoadPrompt prompt;
  DeviceCheck deviceCheck;

  // Backup.
  Job job;
  JobControls jobControls;
  NewJob newJob;
  JobFile jobFile;
  AddItems addItems;
  ContentsEditing contentsEditing;
  Plan plan;
  SourceScan sourceScan;
  Estimate estimate;
  BackupRun backup;
  BackupResult backupResult;  ///< how the last press of the backup button ended

  // Restore.
  RestorePage restorePage;
  RestoreSelection selection;
  RestoreFind find;
  IndexOpening indexOpening;
  RestoreRun restore;
  RestoreResult restoreResult;  ///< how the last press of the restore button ended

  // Erase.
  EraseRun erase;
  EraseResult eraseResult;  ///< how the last press of the erase button ended

  ActionController controller;
  BrowserSize browserSize;

  /// Start-up: folders, settings, devices and records are read. The start page is in view.
  void doLoad();
  /// The first activation, once the front end is on the screen: the device settings open by
  /// themselves when no drive that is there has been chosen.
  void doFirstActivate();
  /// The same for a front end that comes up without drives, before something needs one to have been
  /// chosen: nothing when one is, whether it is there or not. The new job in hand takes to it.
  void doSettleFirstDrive();
  /// Shutdown: the working files of the last run go, the settings are written.
  void doUnload();
  /// The device settings, modal.
  void doDevice();
  /// The default options, modal.
  void doDefault();

  /// A page of the help, outside of the program. Nothing when the help is not installed.
  void doShowHelp(const std::string& topic);
  /// The help about the main page in view (F1).
  void doShowPageHelp();
  /// The home folder in the desktop's file manager.
  void doOpenExplorer();

  // What the backup page opens, modal; nothing while an action runs.

  /// The browser that picks items.
  void PBAddFiles();
  /// The form for an item made by hand.
  void pbCreateItem();

  /// Reads a play list into the job.
  void doImportM3U();

  /// Writes a table to a text file that is asked for; tells when that fails.
  void doExport(const Table& table);
  /// Prints a table under its title.
  void doPrint(const Table& table, const std::string& title);
  /// The steady clock of the program.
  std::int64_t steadyMilliseconds() const { return ports_.clock.steadyMilliseconds(); }

  // Main pages.

  /// Turns to the page of a `Task`. A job that was changed is asked about first, since leaving its
  /// page drops it. False: refused.
  bool doChangeTask(int kind);
  /// The backup page. A new job unless that page is in view; at the step that defines the job
  /// unless `keepPage`.
  void doTask01(bool keepPage = false);
  /// The restore page, its options as the defaults say. False when it was in view already.
  bool doTask02();
  /// `pbLoaddisc`: reads the index of the first disc, which is asked for when it is not there.
  void doLoadDisc();
  /// The schedule page.
  void doTask03();
  /// The erase page, in quick mode when the page was another one.
  void doTaskErase();
  /// The backup page, at the step that defines the job. The job stays as it is.
  void doEditJob();

  /// `PBNewJob`: a new job in place of the one in view, which is asked about when it was changed.
  void doNewJob();
  /// `PBOpenJob`: a job from its file, with the backup page in view.
  void doOpenJob();
  /// `PBSaveJob`.
  void doSaveJob();
  /// Opens the job of a row of `vsRecent`. Nothing for a row whose job file is gone.
  void doOpenRecentJob(int row);

 private:
  OwnFiles ownFiles() const;
  BackupRun::Steps backupSteps();
  RestoreRun::Steps restoreSteps();
  EraseRun::Steps eraseSteps();
  void doWire();
  void doShowDevice();
  void doTakeDevices();
  void doShowMainPage(int page);
  std::vector<std::string> summaryLines(int action);
  RestoreSummary restoreFacts() const;
};

}  // namespace korvenal
