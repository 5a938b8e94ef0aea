#pragma once

#include <set>

#include "device/DeviceSettings.h"
#include "device/DriveDiscovery.h"
#include "device/MemoryTrays.h"
#include "support/FakeEngine.h"
#include "support/Workbench.h"

namespace korvenal::test {

/// The engine in memory, with drives that cannot do everything.
class PlainEngine : public FakeEngine {
 public:
  using FakeEngine::FakeEngine;
  std::map<char, std::set<std::uint8_t>> capabilities;  ///< of the drives named; others can all
  std::set<char> readers;                               ///< drives that write nothing
  std::vector<std::string> trayCalls;                   ///< "eject V"

  int do_SelectDeviceByLetter(char letter) override {
    selected = letter;
    return FakeEngine::do_SelectDeviceByLetter(letter);
  }
  int do_DeviceIsBurner() override { return readers.contains(selected) ? 0 : 1; }
  int do_DeviceCan(std::uint8_t code) override {
    const auto known = capabilities.find(selected);
    return known == capabilities.end() || known->second.contains(code) ? 1 : 0;
  }
  void do_EjectMedium() override {
    trayCalls.push_back(std::string("eject ") + selected);
    FakeEngine::do_EjectMedium();
  }
  void do_LoadMedium() override {
    trayCalls.push_back(std::string("load ") + selected);
    FakeEngine::do_LoadMedium();
  }

 private:
  char selected = 0;
};

class FakeDevices : public MountedDevices {
 public:
  std::map<char, std::string> paths;
  std::string devicePath(char letter) override {
    const auto found = paths.find(letter);
    return found == paths.end() ? "" : found->second;
  }
};

/// A machine with drives; `doConnect` adds one.
struct DeviceBench : Workbench {
  PlainEngine engine{clock};
  FakeDevices devices;
  DeviceSettings device;
  DriveDiscovery drives{engine, devices, desktop, state, device};

  void doConnect(char letter) {
    engine.drives[letter] = {};
    devices.paths[letter] =
        "SCSI#CDROM&VEN_Maker&PROD_Writer_" + std::string(1, letter) + "&REV_1.0#sr0";
  }
  /// Multiple-drive mode for two letters and more, Single-drive mode for one.
  void doChoose(const std::string& letters) {
    device.DeviceMode = letters.size() > 1 ? 1 : 0;
    device.SingleDrive = letters;
    for (std::size_t i = 0; i < letters.size(); ++i) device.MultiDrive[i] = letters[i];
    device.doBuildDriveLetters();
  }
};

}  // namespace korvenal::test
