#pragma once

#include <functional>
#include <string>

#include "burn/BackgroundWork.h"
#include "burn/DiscTexts.h"
#include "core/ActionState.h"
#include "core/RunGrids.h"
#include "core/RunPage.h"
#include "core/Settings.h"
#include "core/Workspace.h"
#include "device/DeviceSettings.h"
#include "device/LoadPrompt.h"
#include "platform/BurnEngine.h"
#include "platform/Clock.h"
#include "platform/Desktop.h"
#include "records/Records.h"

namespace korvenal {

/// What the erase run works with. All of it outlives it.
struct EraseServices {
  ActionState& state;
  BurnEngine& engine;
  Desktop& desktop;
  const Clock& clock;
  RunGrids& grids;
  RunPage& page;  ///< of the erase page
  Records& records;
  const Settings& settings;
  const DeviceSettings& devices;
  const Workspace& workspace;
};

/// How a press of the erase button ended.
struct EraseResult {
  enum class End {
    Refused,   ///< no usable drive, or an action was at work
    Stopped,   ///< before the first disc, or while discs were worked on
    Finished,  ///< no more discs were offered
  };
  End end = End::Refused;
  int erased = 0;
  int skipped = 0;  ///< blank discs left as they were
  int failed = 0;
};

/// Erases rewritable discs in all drives of the device mode, load after load, until the person
/// offers no more. An erase that has begun runs to its end; a stop takes effect behind it.
class EraseRun {
 public:
  /// What a run asks of subjects beside it; set by the wiring.
  struct Steps {
    std::function<bool(bool anyDisc)> doEnsureDevice;
    std::function<void(int reason, DiscRequest&)> doAskLoadDisc;
  };

  EraseRun(const EraseServices& services, Steps steps);
  EraseRun(const EraseRun&) = delete;
  EraseRun& operator=(const EraseRun&) = delete;

  int optEraseMode = 0;   ///< 0 quick, 1 full
  bool EraseMode = true;  ///< the choice of the mode is enabled

  EraseResult doStartErase();

 private:
  using End = EraseResult::End;
  struct Attempt {
    DiscRecord record;
    bool failed = false;
  };

  End doEraseRun();
  End doEraseLoop();
  void doAskLoadDisc(int reason);
  void doEraseDiscs();
  bool doPass();
  void doEraseOne(char letter);
  void doAttempt(Attempt& attempt);
  void doEraseDisc(Attempt& attempt);
  void doRecord(Attempt& attempt);
  bool isQuick() const { return optEraseMode == 0; }

  EraseServices services_;
  Steps steps_;
  DiscTexts texts_;
  BackgroundWork work_;
  DiscRequest request_;
  EraseResult result_;
};

}  // namespace korvenal
