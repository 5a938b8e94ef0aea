#include "core/Leftovers.h"

#include "platform/Paths.h"
#include "platform/Text.h"

namespace korvenal {

namespace {

/// "_KORVEN{Photos(2026-11-22-10-00-F)}.bdx", or its unpacked twin, or an index being read.
bool isIndexFile(const std::string& name) {
  return name == IndexScratchName ||
         (name.starts_with("_KORVEN{") && (name.ends_with(")}.bdx") || name.ends_with(")}.zip")));
}

}  // namespace

void doClearLeftovers(Files& files, const Workspace& workspace, const std::string& shelf) {
  for (const std::string& folder :
       {workspace.applicationFolder, workspace.logFolder, workspace.TempFolder, shelf})
    files.doDeleteTemporaries(folder);
  for (const std::string& name : files.listFolder(workspace.TempFolder))
    if (isIndexFile(name)) files.doDeleteFile(Paths::withEnd(workspace.TempFolder) + name);
}

}  // namespace korvenal
