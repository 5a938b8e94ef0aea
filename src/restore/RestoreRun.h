#pragma once

#include <functional>

#include "device/LoadPrompt.h"
#include "restore/DiscRestore.h"
#include "restore/RestoreServices.h"

namespace korvenal {

/// How a press of the restore button ended.
struct RestoreResult {
  enum class End {
    Refused,  ///< nothing was begun; a message told why, or an action was at work
    Stopped,
    Failed,  ///< too many discs failed, or the target is full
    Finished,
  };
  End end = End::Refused;
  RestoreFaults faults;
  RestoreSum sum;  ///< of the whole restore, the runs before a stop included

  bool isAllWell() const {
    return end == End::Finished && faults.discs == 0 && faults.files == 0 && sum.isAllWell();
  }
};

/// A restore from the press of the button to its last disc. The discs wanted are listed once for a
/// selection; a stopped restore goes on, at the next press, with the disc where it ended.
class RestoreRun {
 public:
  /// What a run asks of subjects beside it; set by the wiring. All but the first two may be empty.
  struct Steps {
    std::function<bool(bool anyDisc)> doEnsureDevice;
    std::function<void(int reason, DiscRequest&)> doAskLoadDisc;
    std::function<void()> doBrowseTarget;   ///< asks for the target folder
    std::function<void()> doShowSelection;  ///< leads back to the first step of the page
  };

  RestoreRun(const RestoreServices& services, Steps steps);
  RestoreRun(const RestoreRun&) = delete;
  RestoreRun& operator=(const RestoreRun&) = delete;

  RestoreResult doStartRestore();

  /// Lists the discs that the selection needs, in visiting order. A disc wanted again after
  /// another stands in the list twice. False when stopped, or when the index wants more visits
  /// than any backup can.
  bool doGetRestoreDisc();
  /// The selection is to change: the list of discs no longer holds.
  void doRemovePartRows();

 private:
  using End = RestoreResult::End;

  bool isRefused();
  void doRefuse(const std::string& text, const std::string& title);
  void doBeginRestore();
  bool doCollect();
  bool doAddDiscs(int row);
  End doRunRestore();
  End doRestoreLoop();
  void doAskLoadDisc(int reason);
  bool isFirstDiscInDrive() const;
  void doTellSum();
  void doPlayChime();

  RestoreServices services_;
  Steps steps_;
  DiscRequest request_;
  DiscRecognition recognition_;
  bool goesOn_ = false;  ///< the last run of the restore did not reach its end
  DiscRestore discs_;
};

}  // namespace korvenal
