#pragma once

#include "platform/ArchiveBits.h"
#include "platform/BurnEngine.h"
#include "platform/Clock.h"
#include "platform/Desktop.h"
#include "platform/Files.h"
#include "platform/ImageTrays.h"
#include "platform/IndexArchive.h"
#include "platform/PowerState.h"
#include "platform/TargetFolder.h"
#include "platform/Walker.h"

namespace korvenal {

/// Everything that the program asks of the world around it. All of it outlives the program.
struct Ports {
  Files& files;
  TargetFolders& targets;
  Walker& walker;
  IndexArchive& archive;
  ArchiveBits& archiveBits;
  BurnEngine& engine;
  MountedDevices& devices;
  ImageTrays& trays;
  Desktop& desktop;
  const Clock& clock;
  PowerState& power;
};

}  // namespace korvenal
