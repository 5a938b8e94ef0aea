#pragma once

#include <functional>

#include "core/ActionState.h"
#include "device/DeviceSettings.h"
#include "device/DriveDiscovery.h"
#include "job/Job.h"
#include "platform/Desktop.h"

namespace korvenal {

/// The device precondition of backup, restore and erase.
class DeviceCheck {
 public:
  /// What the check opens and refreshes; set by the wiring.
  struct Actions {
    std::function<void()> doDevice;          ///< the device settings, modal
    std::function<void()> doRefreshSummary;  ///< of the page in view
  };

  DeviceCheck(ActionState& state, Desktop& desktop, DriveDiscovery& drives,
              const DeviceSettings& settings, const Job& job)
      : state_(state), desktop_(desktop), drives_(drives), settings_(settings), job_(job) {}

  Actions actions;

  /// True when the drives of the device mode are usable; the device settings are offered once when
  /// they are not. With `anyDisc` every type of disc will do, else that of the job. Leaves
  /// `IgnoreEvents` clear.
  bool doEnsureDevice(bool anyDisc);

 private:
  ActionState& state_;
  Desktop& desktop_;
  DriveDiscovery& drives_;
  const DeviceSettings& settings_;
  const Job& job_;
};

}  // namespace korvenal
