#pragma once

#include <array>
#include <functional>
#include <string>
#include <vector>

#include "core/ActionState.h"
#include "core/RunGrids.h"
#include "core/RunPage.h"
#include "platform/BurnEngine.h"
#include "platform/Desktop.h"

namespace korvenal {

/// What a person can begin in the main window.
enum class Command {
  ChangePage,      ///< a main page or a step of a page
  GoToStart,       ///< `PBSTART`
  NewJob,          ///< `PBNewJob`
  OpenJob,         ///< `PBOpenJob`
  SaveJob,         ///< `PBSaveJob`
  AddItems,        ///< `PBAddFiles`, `pbCreateItem`
  ChangeOption,    ///< an option of the job that other texts hang on (`comboDiscType`)
  Next,            ///< `PBNext`
  ShowReport,      ///< the report of a disc, by its record
  ChangeSettings,  ///< the device settings and the default options, unless a run asks for them
  ExportGrid,      ///< export or print of a run's grids
  Close,
};

/// The one table of what may begin in which state. Runs work in loops that let handlers in, so
/// menus, buttons and handlers all ask here.
bool mayBegin(Command command, const ActionState& state);

/// The pages of the main window and their steps, from a button to its run.
class ActionController {
 public:
  enum MainPage : int {
    StartPage = 0,
    BackupPage = 1,
    RestorePage = 2,
    ErasePage = 3,
    SchedulePage = 4,
  };
  enum Step : int { DefineStep = 0, RunStep = 2 };
  /// Actions, and the index of their buttons and grids.
  enum Action : int { Backup = 0, Restore = 1, Erase = 2 };

  /// What stands behind the pages; set by the wiring. Empty ones do nothing.
  struct Runs {
    std::array<std::function<void()>, 3> start;  ///< the run of an action
    /// The lines that open the run page of an action.
    std::function<std::vector<std::string>(int action)> summary;
    std::function<void()> doForgetPlan;      ///< a visit of the backup run page begins or ends
    std::function<void()> doRemovePartRows;  ///< the selection of a restore is shown again
    std::function<void()> doForgetList;      ///< a visit of the restore run page begins
  };

  ActionController(ActionState& state, BurnEngine& engine, Desktop& desktop, RunGrids& grids,
                   RunPages& pages)
      : state_(state), engine_(engine), desktop_(desktop), grids_(grids), pages_(pages) {}

  Runs runs;
  int mainTab = StartPage;
  int BackupTab = DefineStep;
  int RestoreTab = DefineStep;

  /// On to the run step, or from there into the run.
  void PBNext(int action);
  /// Back to the step that defines the work; from the erase page to the start page.
  void PBBack(int action);
  /// Asks the action at work to stop; only a flag, which every loop tests. Does nothing while the
  /// button is disabled: verification, for one, is not stopped.
  void pbStop(int action);
  /// The captions of `PBNext`: what a press does next.
  std::string nextCaption(int action) const;

  /// Shows a step of the backup or restore page; refused while an action runs.
  bool doShowStep(int action, int step);
  /// The opening lines of the run page in view anew; nothing when another page is.
  void doRefreshSummary();
  /// Empties the run page of an action and fills in its opening lines.
  void doShowSummary(int action);

 private:
  int stepOf(int action) const { return action == Backup ? BackupTab : RestoreTab; }
  void doEnterRunStep(int action);
  void doEnterDefineStep(int action);

  ActionState& state_;
  BurnEngine& engine_;
  Desktop& desktop_;
  RunGrids& grids_;
  RunPages& pages_;
};

}  // namespace korvenal
