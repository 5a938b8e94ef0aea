#pragma once

#include <array>
#include <string>

#include "platform/Profile.h"

namespace korvenal {

/// The section Devices of the settings: which drives are used and how. Speeds are list indices.
struct DeviceSettings {
  std::int64_t DeviceMode = 0;  ///< 0 Single-drive, 1 Multiple-drive, 2 Autoloader
  std::int64_t ReadSpeedCD = 0, WriteSpeedCD = 0, ReadSpeedDVD = 0, WriteSpeedDVD = 0;
  std::string SingleDrive;
  std::int64_t SingleEject = 1, SingleSkipEjectFirst = 1;
  std::int64_t MultiDriveCount = 1;  ///< read only, without effect
  std::array<std::string, 5> MultiDrive;
  std::int64_t MultiErrorMax = 1, MultiEject = 1, MultiSkipEjectFirst = 0;
  std::string AutoloaderDrive;
  std::int64_t AutoloaderErrorMax = 1, AutoloaderBadDisc = 1;
  std::array<std::string, 5> AutoloaderCommand;

  /// The drives of the mode, two characters each: letter and ':'.
  std::string DriveLetters;
  /// "Single-drive (V:)".
  std::string DeviceName;

  int driveCount() const { return static_cast<int>(DriveLetters.size() / 2); }
  char letter(int index) const { return DriveLetters[static_cast<std::size_t>(index) * 2]; }

  /// Reads all keys, mends what is out of range and builds DriveLetters and DeviceName.
  void doReadDvcData(const Profile& profile);
  /// Writes the keys of all three modes in their order.
  void doWriteDvcData(Profile& profile) const;
  /// Builds DriveLetters and DeviceName from the fields.
  void doBuildDriveLetters();
};

}  // namespace korvenal
