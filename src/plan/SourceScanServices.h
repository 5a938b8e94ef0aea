#pragma once

#include <functional>

#include "core/ActionState.h"
#include "core/RunGrids.h"
#include "core/Settings.h"
#include "core/Workspace.h"
#include "plan/OwnFiles.h"
#include "platform/ArchiveBits.h"
#include "platform/Clock.h"
#include "platform/Desktop.h"
#include "platform/Files.h"
#include "platform/IndexArchive.h"
#include "platform/Walker.h"

namespace korvenal {

/// What planning needs of the rest of the program. All of it outlives the scan.
struct SourceScanServices {
  ActionState& state;
  const Settings& settings;
  const Workspace& workspace;
  Desktop& desktop;
  const Clock& clock;
  Files& files;
  Walker& walker;
  ArchiveBits& archiveBits;
  IndexArchive& archive;
  RunGrids& grids;
  std::function<OwnFiles()> ownFiles = {};  ///< as they are now; asked once a scan
};

}  // namespace korvenal
