#include "burn/DeviceCheck.h"

namespace korvenal {

bool DeviceCheck::doEnsureDevice(bool anyDisc) {
  const int discType = anyDisc ? 0 : job_.comboDiscType;
  state_.IgnoreEvents = false;
  if (drives_.doCheckDevice(discType)) return true;

  const std::string before = settings_.DriveLetters;
  if (actions.doDevice) actions.doDevice();
  if (settings_.DriveLetters != before && actions.doRefreshSummary) actions.doRefreshSummary();

  // From here on the check tells nothing of its own.
  const FlagScope quiet(state_.IgnoreEvents);
  if (settings_.DriveLetters.empty()) {
    desktop_.doShowMessage({.text = "Drive not ready, unable to run the action.",
                            .title = "Device Error",
                            .icon = MessageIcon::Stop,
                            .buttons = MessageButtons::Ok});
    return false;
  }
  return drives_.doCheckDevice(discType);
}

}  // namespace korvenal
