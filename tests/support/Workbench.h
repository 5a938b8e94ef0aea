#pragma once

#include "core/ActionState.h"
#include "core/RunGrids.h"
#include "core/Settings.h"
#include "core/Workspace.h"
#include "platform/Profile.h"
#include "platform/linux/LinuxFiles.h"
#include "support/ManualClock.h"
#include "support/ScriptedDesktop.h"
#include "support/TempDir.h"

namespace korvenal::test {

/// The stores and ports that most subjects stand on, in a private folder.
struct Workbench {
  TempDir folder;
  LinuxFiles files{nullptr};
  ScriptedDesktop desktop;
  ManualClock clock;
  ActionState state;
  Workspace workspace = Workspace::below(folder.makeFolder("app"), folder.makeFolder("bin"),
                                         folder.makeFolder("home"));
  Profile profile{files, workspace.gSettingsFile};
  Settings settings{profile};
  RunGrids grids{state, desktop, clock, files, workspace};

  Workbench() { workspace.doCheckFolders(files); }
};

}  // namespace korvenal::test
