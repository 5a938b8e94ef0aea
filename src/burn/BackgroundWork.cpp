#include "burn/BackgroundWork.h"

namespace korvenal {

BurnEngine::FinishCallback BackgroundWork::finished() const {
  return [&state = state_](std::int32_t code, std::int32_t) {
    state.TaskDone = true;
    state.TaskError = static_cast<std::int16_t>(code & 0xFFFF);
  };
}

bool BackgroundWork::doEraseDisc(bool quick) const {
  return engine_.do_EraseDisc(quick ? -1 : 0, finished()) != 0;
}

void BackgroundWork::waitUntilDone(const std::function<void()>& tick) const {
  while (!state_.TaskDone) {
    turn();
    if (tick) tick();
  }
}

void BackgroundWork::waitUntilIdle() const {
  while (engine_.do_GetState() != 0) turn();
}

void BackgroundWork::turn() const {
  engine_.do_Deliver();
  desktop_.doRest();
}

}  // namespace korvenal
