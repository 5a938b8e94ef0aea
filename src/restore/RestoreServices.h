#pragma once

#include "core/ActionState.h"
#include "core/RunGrids.h"
#include "core/RunPage.h"
#include "core/Settings.h"
#include "core/Workspace.h"
#include "device/DeviceSettings.h"
#include "platform/BurnEngine.h"
#include "platform/Clock.h"
#include "platform/Desktop.h"
#include "platform/Files.h"
#include "platform/IndexArchive.h"
#include "platform/TargetFolder.h"
#include "records/Records.h"
#include "restore/RestorePage.h"

namespace korvenal {

/// Index of the restore page in the grids of the runs.
inline constexpr int RestorePageIndex = 1;

/// What the subjects of a restore run work with. All of it outlives them.
struct RestoreServices {
  ActionState& state;
  BurnEngine& engine;
  Desktop& desktop;
  const Clock& clock;
  Files& files;  ///< native folders and the discs in the drives
  IndexArchive& archive;
  TargetFolders& targets;
  RunGrids& grids;
  RunPage& runPage;  ///< of the restore page
  Records& records;
  const Settings& settings;
  const DeviceSettings& devices;
  const Workspace& workspace;
  RestorePage& page;

  Progress& progress() const { return grids.etProgress[RestorePageIndex]; }
};

}  // namespace korvenal
