#pragma once

#include <cstdint>

#include "core/ActionState.h"
#include "core/RunGrids.h"
#include "platform/BurnEngine.h"
#include "platform/Clock.h"

namespace korvenal {

/// Turns the block counter of a running burn into phases and percent, twice a second, and is the
/// one place where a stop reaches the engine. It runs in the wait for the burn, between `start`
/// and `stop`.
class BurnMonitor {
 public:
  static constexpr std::int64_t IntervalMilliseconds = 500;

  BurnMonitor(ActionState& state, BurnEngine& engine, RunGrids& grids, const Clock& clock)
      : state_(state), engine_(engine), grids_(grids), clock_(clock) {}

  std::int32_t ImageBlocks = 0;  ///< size of the track
  bool BurnFinalize = false;     ///< the disc will take no more sessions
  std::int16_t BurnPhase = 0;    ///< 1: setting up announced, 2: writing announced

  /// The burn has started.
  void start();
  void stop() { running_ = false; }
  /// Called at every turn of the wait; ticks when the interval has passed.
  void pump();
  void TIMER_Timer();

 private:
  Progress& progress() { return grids_.etProgress[static_cast<std::size_t>(state_.ActionPage)]; }
  void doAbort();
  void doAnnounceSetUp();
  void doShowPercent(int percent);
  void doAnnounceEnd();

  ActionState& state_;
  BurnEngine& engine_;
  RunGrids& grids_;
  const Clock& clock_;
  bool running_ = false;
  std::int64_t lastTick_ = 0;
};

}  // namespace korvenal
