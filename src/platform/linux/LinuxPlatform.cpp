#include "platform/linux/LinuxPlatform.h"

namespace korvenal {

namespace {

std::vector<Drive*> allOf(const std::vector<std::unique_ptr<Drive>>& real,
                          const ImageShelf& shelf) {
  std::vector<Drive*> drives;
  for (const auto& drive : real) drives.push_back(drive.get());
  for (Drive* drive : shelf.drives()) drives.push_back(drive);
  return drives;
}

}  // namespace

LinuxPlatform::LinuxPlatform(const Places& places)
    : nativeFiles_(nullptr, places.applicationFolder),
      shelf_(nativeFiles_, places.imageDrives),
      realDrives_(makeMmcDrives(slowCalls_)),
      engine_(clock_, allOf(realDrives_, shelf_), slowCalls_),
      discFiles_(engine_),
      files_(&discFiles_, places.applicationFolder),
      targets_(&discFiles_),
      archive_(files_),
      archiveBits_(places.applicationFolder + "ArchiveBits.db") {}

LinuxPlatform::~LinuxPlatform() {
  // The front end is gone by now.
  slowCalls_.setPump({});
}

Ports LinuxPlatform::ports(Desktop& desktop) {
  slowCalls_.setPump([&desktop] { desktop.doYield(); });
  return {.files = files_,
          .targets = targets_,
          .walker = walker_,
          .archive = archive_,
          .archiveBits = archiveBits_,
          .engine = engine_,
          .devices = engine_,
          .trays = shelf_,
          .desktop = desktop,
          .clock = clock_,
          .power = power_};
}

}  // namespace korvenal
