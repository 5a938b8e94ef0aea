#include "platform/linux/engine/GrabbedDrive.h"

#include <libburn/libburn.h>

namespace korvenal {

void DriveRelease::operator()(burn::burn_drive_info* list) const {
  burn::burn_drive_release(list[0].drive, 0);
  burn::burn_drive_info_free(list);
}

GrabbedDrive grabDrive(const std::string& address) {
  std::string copy = address;  // the library takes a changeable string
  burn::burn_drive_info* list = nullptr;
  if (burn::burn_drive_scan_and_grab(&list, copy.data(), 0) != 1) return nullptr;
  return GrabbedDrive(list);
}

burn::burn_drive* handleOf(const GrabbedDrive& drive) {
  return drive ? drive.get()[0].drive : nullptr;
}

}  // namespace korvenal
