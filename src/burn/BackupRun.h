#pragma once

#include <functional>
#include <optional>
#include <string>

#include "burn/BurnServices.h"
#include "burn/DiscWriter.h"
#include "core/frmAddFiles.h"

namespace korvenal {

/// How a press of the backup button ended.
struct BackupResult {
  enum class End {
    Refused,        ///< nothing was begun; a message told why, or an action was at work
    NothingToDo,    ///< no file needs to be backed up
    LimitExceeded,  ///< the plan passed the limits of the program
    Stopped,
    ErrorLimit,  ///< too many discs failed, or there is no index
    Finished,
  };
  End end = End::Refused;
  RunFaults faults;
};

/// A backup from the press of the button to its last disc. Sources are scanned once for a visit of
/// the run page; a stopped backup goes on, at the next press, with the disc where it ended.
class BackupRun {
 public:
  /// What a run asks of subjects beside it; set by the wiring.
  struct Steps {
    std::function<bool(bool anyDisc)> doEnsureDevice;
    frmAddFiles::Work doScanFiles;
    std::function<void(int reason, DiscRequest&)> doAskLoadDisc;
    std::function<void()> doShowJob;  ///< leads back to the first step of the page; may be empty
  };

  BackupRun(const BurnServices& services, Steps steps);
  BackupRun(const BackupRun&) = delete;
  BackupRun& operator=(const BackupRun&) = delete;

  /// `vsBuffer` holds a plan of the job as it is. Cleared by whoever leads back to the job.
  bool PreparedForRun = false;

  BackupResult doStartBackup();

  /// Discs done, and what the prompt is told.
  const DiscRequest& request() const { return request_; }

 private:
  using End = BackupResult::End;

  bool isRefused();
  void doRefuse(const std::string& text, MessageIcon icon);
  std::optional<End> doCollect();
  void doScan();
  void doBackupSummary();
  End doRunBackup();
  void doShowNotice();
  End doBurnDiscSet();
  End doBurnLoads();
  void doFinish();
  void doSetSizeHint();
  void doAddRecentRecord();
  void doPlayChime();

  BurnServices services_;
  Steps steps_;
  DiscRequest request_;
  DiscTexts texts_;
  DiscWriter writer_;
};

}  // namespace korvenal
