#pragma once

#include "core/Workspace.h"
#include "platform/Files.h"

namespace korvenal {

/// Clears what a run of the program that was killed has left in its own folders: half-written
/// files and the working files of backup indexes. Only files that bear the program's own names are
/// touched; reports of discs and burn logs stay, since a person may want them. Only for who holds
/// the lock of the application folder. `shelf` is the folder of the image discs.
void doClearLeftovers(Files& files, const Workspace& workspace, const std::string& shelf);

}  // namespace korvenal
