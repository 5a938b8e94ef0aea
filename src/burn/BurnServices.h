#pragma once

#include "core/ActionState.h"
#include "core/RunGrids.h"
#include "core/RunPage.h"
#include "core/Settings.h"
#include "core/Workspace.h"
#include "device/DeviceSettings.h"
#include "device/LoadPrompt.h"
#include "job/Job.h"
#include "plan/Plan.h"
#include "platform/ArchiveBits.h"
#include "platform/BurnEngine.h"
#include "platform/Clock.h"
#include "platform/Desktop.h"
#include "platform/Files.h"
#include "platform/IndexArchive.h"
#include "records/Records.h"

namespace korvenal {

/// What the subjects of a backup run work with. All of it outlives them.
struct BurnServices {
  ActionState& state;
  BurnEngine& engine;
  Desktop& desktop;
  const Clock& clock;
  Files& files;
  ArchiveBits& bits;
  IndexArchive& archive;
  RunGrids& grids;
  RunPage& page;  ///< of the backup page
  Records& records;
  Settings& settings;
  const DeviceSettings& devices;
  const Workspace& workspace;
  const Job& job;
  Plan& plan;
};

}  // namespace korvenal
