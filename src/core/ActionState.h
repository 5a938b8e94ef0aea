#pragma once

#include <cstdint>

namespace korvenal {

/// What the prompt for a disc, the worker dialog and the question about existing files are for.
enum WorkerModeValue : int {
  WorkerBurn = 0,       ///< prompt: burn; worker: add the items picked
  WorkerRestore = 1,    ///< prompt: restore; worker: add the items dropped
  WorkerErase = 2,      ///< prompt: erase; worker: estimate
  WorkerReadIndex = 3,  ///< prompt: read the index; worker: scan for a backup
};

/// The process-wide flags that steer actions. One object, made at start-up and handed to every
/// subject that tests or sets a flag; all on the one thread of the program.
struct ActionState {
  bool ActionRunning = false;  ///< an action or load is at work: pages and job stay as they are
  bool ActionBusy = false;     ///< a run or a settings dialog is open: no second one starts
  bool IgnoreEvents = false;   ///< a modal dialog is open: handlers keep still
  bool StopAction = false;     ///< asks every long loop to end at its next step
  bool LimitExceeded = false;  ///< the plan passed the limits of the program
  bool TaskDone = false;       ///< the worker or the background work has ended
  std::int16_t TaskError = 0;  ///< nonzero: the burn, erase or restore at hand has failed
  int WorkerMode = 0;          ///< a WorkerModeValue, or the answer about an existing file
  bool DiscInWork = false;     ///< a disc is being worked: event lines are shaded
  bool Erasing = false;        ///< an erase is under way: a stop takes effect only after it
  int ActionPage = 0;          ///< 0 backup, 1 restore, 2 erase
};

/// Sets a flag for the time of a scope; afterwards it is as before, so that scopes may nest.
class FlagScope {
 public:
  explicit FlagScope(bool& flag) : flag_(flag), before_(flag) { flag_ = true; }
  ~FlagScope() { flag_ = before_; }
  FlagScope(const FlagScope&) = delete;
  FlagScope& operator=(const FlagScope&) = delete;

 private:
  bool& flag_;
  bool before_;
};

}  // namespace korvenal
