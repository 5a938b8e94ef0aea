#pragma once

#include <thread>

#include "platform/PowerState.h"
#include "platform/linux/Descriptor.h"

namespace korvenal {

/// Asks the login service over the system's message bus ("Inhibitor Locks" of systemd-logind). The
/// service holds the lock for as long as the descriptor is open that it answers with. It is asked
/// on a thread, because a bus may take its time; no lock outlives the process.
class LoginPowerState : public PowerState {
 public:
  LoginPowerState() = default;
  ~LoginPowerState() override { allowSleep(); }

  void stayAwake(const std::string& why) override;
  void allowSleep() override;

 private:
  std::thread asking_;
  Descriptor lock_;  ///< of the thread while it is at work
};

}  // namespace korvenal
