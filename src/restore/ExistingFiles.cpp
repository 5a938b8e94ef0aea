#include "restore/ExistingFiles.h"

#include "core/DateText.h"
#include "core/SizeText.h"
#include "platform/Clock.h"
#include "platform/Paths.h"
#include "platform/Text.h"
#include "restore/frmReplace.h"

namespace korvenal {

namespace {

ReplaceFile lineOf(const std::string& name, Fixed4 size, const std::string& modified) {
  return {name, formatSizeText(size, true), "Modified date:  " + doGetFileDateString(modified)};
}

}  // namespace

bool ExistingFiles::mayWrite(const TargetFolder& target, const RestoredFile& file) {
  if (ExistingMode == ExistingReplaceAll) return true;
  const FileInfo existing = target.doGetInfo(file.path);
  if (existing.kind == FileInfo::Kind::Missing) return true;
  // A folder is no older state of a file: the writing tells that it is in the way.
  if (existing.kind == FileInfo::Kind::Folder) return true;
  if (ExistingMode == ExistingSkip) return false;
  if (services_.page.SkipOpen && target.isInUse(file.path)) return false;
  if (services_.page.SkipSystem && (existing.attributes & AttributeSystem) != 0) return false;
  // Equal dates are replaced too.
  if (ExistingMode == ExistingReplaceOlder)
    return Text::toInteger(Dates::digits(existing.modified)) <= Text::toInteger(file.modified);
  return doAsk(existing, file);
}

bool ExistingFiles::doAsk(const FileInfo& existing, const RestoredFile& file) {
  ActionState& state = services_.state;
  services_.progress().text = file.shown;
  const std::string name(Paths::doGetFilePart(file.shown));
  {
    const bool wasIgnoring = state.IgnoreEvents;
    state.IgnoreEvents = true;
    frmReplace form(state, name, lineOf(name, existing.size, Dates::digits(existing.modified)),
                    lineOf(name, file.size, file.modified));
    services_.desktop.doShowModal(form);
    state.IgnoreEvents = wasIgnoring;
  }
  if (state.WorkerMode == ReplaceAll) ExistingMode = ExistingReplaceAll;
  if (state.WorkerMode == ReplaceCancel) state.StopAction = true;
  return state.WorkerMode == ReplaceYes || state.WorkerMode == ReplaceAll;
}

}  // namespace korvenal
