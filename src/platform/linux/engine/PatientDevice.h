#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/linux/engine/MmcDevice.h"
#include "platform/linux/engine/SlowCalls.h"

namespace korvenal {

/// A drive whose slow answers do not hold the program up. While one is waited for, the drive is
/// occupied: every other call is refused, as if the drive were not held and not ready.
class PatientDevice : public MmcDevice {
 public:
  /// `calls` is shared by all drives and outlives them.
  PatientDevice(std::unique_ptr<MmcDevice> device, SlowCalls& calls)
      : device_(std::move(device)), calls_(calls) {}

  bool isPresent() const override { return device_->isPresent(); }
  std::string refusal() const override { return device_->refusal(); }
  std::string devicePath() const override { return device_->devicePath(); }
  bool isBurner() const override { return device_->isBurner(); }
  bool isOccupied() const override { return calls_.isAtWork(); }

  Tray tray() override;
  void openTray() override;
  void closeTray() override;
  void giveUpWaiting() override { device_->giveUpWaiting(); }
  bool hold(std::string& why) override;
  void release() override;
  bool isHeld() const override { return !isOccupied() && device_->isHeld(); }
  std::vector<int> profiles() override;
  MmcReport report() override;
  std::int64_t read(std::uint32_t first, std::uint32_t count, std::uint8_t* buffer) override;
  void setSpeed(std::int32_t read, std::int32_t write) override;
  /// On the engine's thread already.
  DriveResult erase(EraseKind kind, bool quick, std::int64_t blocks) override {
    return device_->erase(kind, quick, blocks);
  }
  burn::burn_drive* handle() override { return isOccupied() ? nullptr : device_->handle(); }

 private:
  void run(const std::function<void()>& work) {
    if (!isOccupied()) calls_.run(work);
  }

  std::unique_ptr<MmcDevice> device_;
  SlowCalls& calls_;
};

}  // namespace korvenal
