#pragma once

#include <memory>
#include <string>

namespace burn {
struct burn_drive;
struct burn_drive_info;
}  // namespace burn

namespace korvenal {

struct DriveRelease {
  void operator()(burn::burn_drive_info* list) const;
};
/// A drive as the burning library holds it: exclusively, until this goes.
using GrabbedDrive = std::unique_ptr<burn::burn_drive_info, DriveRelease>;

/// `address` is a device node or "stdio:" and a file. Null when the drive cannot be had.
GrabbedDrive grabDrive(const std::string& address);
burn::burn_drive* handleOf(const GrabbedDrive& drive);

}  // namespace korvenal
