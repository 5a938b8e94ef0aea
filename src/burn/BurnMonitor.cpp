#include "burn/BurnMonitor.h"

namespace korvenal {

void BurnMonitor::start() {
  running_ = true;
  lastTick_ = clock_.steadyMilliseconds();
}

void BurnMonitor::pump() {
  if (!running_) return;
  const std::int64_t now = clock_.steadyMilliseconds();
  if (now - lastTick_ < IntervalMilliseconds) return;
  lastTick_ = now;
  TIMER_Timer();
}

void BurnMonitor::TIMER_Timer() {
  if (state_.TaskError != 0 || state_.StopAction) {
    doAbort();
    return;
  }
  const std::int64_t written = engine_.do_GetBlocksWritten();
  if (written == 0) {
    doAnnounceSetUp();
    return;
  }
  if (ImageBlocks <= 0) {
    ImageBlocks = engine_.do_GetImageSize();
    return;
  }
  progress().bytesDone = written * BlockBytes;
  progress().bytesTotal = std::int64_t{ImageBlocks} * BlockBytes;
  const int percent = static_cast<int>(written * 100 / ImageBlocks);
  if (percent != 0) doShowPercent(percent);
}

void BurnMonitor::doAbort() {
  running_ = false;
  BurnPhase = 0;
  // A burn that failed by itself is told of when it is judged.
  if (!state_.StopAction) return;
  progress().text = "Stop action, please wait...";
  grids_.doEventMessage("Stop action...");
  engine_.do_AbortBurn();
}

void BurnMonitor::doAnnounceSetUp() {
  if (BurnPhase >= 1) return;
  BurnPhase = 1;
  progress() = {"Setting up disc track...", 0};
  grids_.doEventMessage("Setting up disc track...");
}

void BurnMonitor::doShowPercent(int percent) {
  if (BurnPhase < 2) {
    BurnPhase = 2;
    grids_.doEventMessage("Start writing data to disc...");
  }
  progress().bar = percent;
  if (percent == 100) {
    doAnnounceEnd();
  } else {
    progress().text = std::to_string(percent) + "%";
  }
}

void BurnMonitor::doAnnounceEnd() {
  running_ = false;
  BurnPhase = 0;
  const std::string text = BurnFinalize ? "Finalizing disc..." : "Closing session...";
  progress().text = text;
  grids_.doEventMessage(text);
}

}  // namespace korvenal
