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

/// "$12.log"
bool isReport(const std::string& name) {
  constexpr std::string_view Head = "$", Tail = ".log";
  if (name.size() <= Head.size() + Tail.size() || !name.starts_with(Head) || !name.ends_with(Tail))
    return false;
  const std::string_view number =
      std::string_view(name).substr(Head.size(), name.size() - Head.size() - Tail.size());
  return number.find_first_not_of("0123456789") == std::string_view::npos;
}

template <typename IsOwn>
void doClear(Files& files, const std::string& folder, IsOwn isOwn) {
  for (const std::string& name : files.listFolder(folder))
    if (isOwn(name)) files.doDeleteFile(Paths::withEnd(folder) + name);
}

}  // namespace

void doClearLeftovers(Files& files, const Workspace& workspace, const std::string& shelf) {
  for (const std::string& folder :
       {workspace.applicationFolder, workspace.logFolder, workspace.TempFolder, shelf})
    files.doDeleteTemporaries(folder);
  doClear(files, workspace.TempFolder, isIndexFile);
  doClear(files, workspace.logFolder, isReport);
}

}  // namespace korvenal
