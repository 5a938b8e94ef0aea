#pragma once

#include <atomic>
#include <string>
#include <vector>

#include "platform/linux/engine/GrabbedDrive.h"
#include "platform/linux/engine/MmcDevice.h"

namespace korvenal {

/// A drive behind a device node, through the burning library.
class LibburnDevice : public MmcDevice {
 public:
  /// The node's name in /dev, "sr0".
  explicit LibburnDevice(std::string node);
  /// A file that plays a drive, "stdio:/path": it has no tray and says nothing of itself.
  struct Address {
    std::string text;
  };
  explicit LibburnDevice(Address address) : address_(std::move(address.text)) {}

  bool isPresent() const override;
  std::string refusal() const override;
  std::string devicePath() const override;
  bool isBurner() const override;
  Tray tray() override;
  void openTray() override;
  void closeTray() override;
  void giveUpWaiting() override { waiting_ = false; }
  bool hold(std::string& why) override;
  void release() override { grabbed_.reset(); }
  bool isHeld() const override { return grabbed_ != nullptr; }
  std::vector<int> profiles() override;
  MmcReport report() override;
  std::int64_t read(std::uint32_t first, std::uint32_t count, std::uint8_t* buffer) override;
  void setSpeed(std::int32_t read, std::int32_t write) override;
  DriveResult erase(EraseKind kind, bool quick, std::int64_t blocks) override;
  burn::burn_drive* handle() override { return handleOf(grabbed_); }

 private:
  /// What the drive says of itself in the system's table.
  std::string said(const std::string& what) const;

  std::string node_;     ///< empty when a file plays the drive
  std::string address_;  ///< as the library takes it
  GrabbedDrive grabbed_;
  std::atomic<bool> waiting_ = false;  ///< for a disc in the closed tray
};

}  // namespace korvenal
