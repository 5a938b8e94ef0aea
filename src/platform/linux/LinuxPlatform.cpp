#include "platform/linux/LinuxPlatform.h"

namespace korvenal {

LinuxPlatform::LinuxPlatform(const Places& places)
    : nativeFiles_(nullptr),
      shelf_(nativeFiles_, places.imageDrives),
      engine_(clock_, shelf_.drives()),
      discFiles_(engine_),
      files_(&discFiles_),
      targets_(&discFiles_),
      archive_(files_),
      archiveBits_(places.applicationFolder + "ArchiveBits.db") {}

Ports LinuxPlatform::ports(Desktop& desktop) {
  return {.files = files_,
          .targets = targets_,
          .walker = walker_,
          .archive = archive_,
          .archiveBits = archiveBits_,
          .engine = engine_,
          .devices = engine_,
          .trays = shelf_,
          .desktop = desktop,
          .clock = clock_};
}

}  // namespace korvenal
