#pragma once

#include "core/Workspace.h"
#include "platform/Files.h"

namespace korvenal {

/// Clears what a run of the program that was killed has left in its own folders: half-written
/// files, the working files of backup indexes, and the reports of its discs. Only files that bear
/// the program's own names are touched; burn logs stay. Not to be called while another process of
/// the program is at work there. `shelf` is the folder of the image discs.
void doClearLeftovers(Files& files, const Workspace& workspace, const std::string& shelf);

}  // namespace korvenal
