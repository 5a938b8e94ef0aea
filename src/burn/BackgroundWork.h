#pragma once

#include <functional>

#include "core/ActionState.h"
#include "platform/BurnEngine.h"
#include "platform/Desktop.h"

namespace korvenal {

/// The waits for what the engine does in the background: they let the front end work and the
/// engine report, until the work has ended. A stop does not end a wait; the work does.
class BackgroundWork {
 public:
  BackgroundWork(ActionState& state, BurnEngine& engine, Desktop& desktop)
      : state_(state), engine_(engine), desktop_(desktop) {}

  /// Sets `TaskDone`, and `TaskError` to the low 16 bits of the code.
  BurnEngine::FinishCallback finished() const;
  /// Starts an erase; false when it did not start. Then `waitUntilDone`.
  bool doEraseDisc(bool quick) const;
  /// Until `TaskDone`; `tick` runs at every turn.
  void waitUntilDone(const std::function<void()>& tick = {}) const;
  /// Until the device is idle.
  void waitUntilIdle() const;

 private:
  void turn() const;

  ActionState& state_;
  BurnEngine& engine_;
  Desktop& desktop_;
};

/// Keeps the tray of the selected drive locked for the time of a scope.
class MediumLock {
 public:
  explicit MediumLock(BurnEngine& engine) : engine_(engine) { engine_.do_LockMedium(); }
  ~MediumLock() { engine_.do_UnlockMedium(); }
  MediumLock(const MediumLock&) = delete;
  MediumLock& operator=(const MediumLock&) = delete;

 private:
  BurnEngine& engine_;
};

}  // namespace korvenal
