#include "core/OwnFileFaults.h"

#include "core/Workspace.h"

namespace korvenal {

void OwnFileFaults::doTell(const std::string& path, const std::string& text) {
  if (!told_.insert(path).second || quiet) return;
  const bool inRun = state_.ActionRunning && state_.ActionBusy;
  if (inRun) return grids_.doEventMessage("*" + text);
  const FlagScope ignore(state_.IgnoreEvents);
  desktop_.doShowMessage({.text = text, .title = gProductName, .icon = MessageIcon::Warning});
}

}  // namespace korvenal
