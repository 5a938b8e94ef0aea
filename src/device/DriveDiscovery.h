#pragma once

#include <array>
#include <string>
#include <string_view>

#include "core/ActionState.h"
#include "device/DeviceSettings.h"
#include "platform/BurnEngine.h"
#include "platform/Desktop.h"

namespace korvenal {

/// Finds the burners of the machine and checks the chosen ones.
class DriveDiscovery {
 public:
  DriveDiscovery(BurnEngine& engine, MountedDevices& devices, Desktop& desktop, ActionState& state,
                 const DeviceSettings& settings);

  /// Display names, slot 1 upward; slot 0 stays empty: "E: VENDOR PRODUCT".
  std::array<std::string, 26> DriveNames;
  int DriveCount = 0;
  std::int16_t BurnerCount = 0;

  /// Brings the engine up, as before each look at the drives; nonzero: ready.
  std::int16_t doInitBurner();
  /// Fills DriveNames; the number of burners.
  int doListBurners();
  /// True when all drives of the mode are there and can write the disc type (index of
  /// `comboDiscType`). Tells which cannot, unless `IgnoreEvents` is set.
  bool doCheckDevice(int discTypeIndex);

  /// True when the selected drive writes any kind of DVD. All codes are asked.
  bool doWritesDvd();

  /// "VENDOR PRODUCT" of a device path of the CD-ROM class.
  static std::string doCleanDriveName(std::string_view devicePath);
  /// The text before its last blank.
  static std::string doCutDriveRevision(std::string_view text);

 private:
  bool isFound(char letter) const;
  /// The chosen drives that cannot write the disc type: "E:F:".
  std::string doFindIncapable(int discTypeIndex);

  BurnEngine& engine_;
  MountedDevices& devices_;
  Desktop& desktop_;
  ActionState& state_;
  const DeviceSettings& settings_;
};

}  // namespace korvenal
