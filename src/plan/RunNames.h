#pragma once

#include <string>
#include <string_view>

#include "core/Workspace.h"
#include "plan/Plan.h"

namespace korvenal {

/// "yyyy-mm-dd-hh-nn-F", or "-D" for a differential backup, of a moment in local time.
std::string makeRunStamp(UnixTime moment, bool differential);

/// The job name as it may stand in a file's name: what would lead into another folder or cannot
/// be held becomes '_', and it is cut so that the name of the index stays within 255 bytes.
std::string jobNameForFiles(std::string_view jobName);

/// Sets the moment, the stamp, the identity and the names of the index of a run that begins now.
void nameRun(Plan& plan, const Workspace& workspace, std::string_view jobName, UnixTime now);

}  // namespace korvenal
