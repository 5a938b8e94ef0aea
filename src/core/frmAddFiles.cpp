#include "core/frmAddFiles.h"

#include "core/Workspace.h"
#include "platform/Text.h"

namespace korvenal {

namespace {

std::string captionOf(int workerMode) {
  switch (workerMode) {
    case 2:
      return "Estimate Disc Required";
    case 3:
      return "Collect Information";
    default:
      return "Add Backup Data";
  }
}

}  // namespace

frmAddFiles::frmAddFiles(ActionState& state, Desktop& desktop, Work work)
    : caption(captionOf(state.WorkerMode)),
      state_(state),
      desktop_(desktop),
      work_(std::move(work)) {
  state_.StopAction = false;
}

void frmAddFiles::doActivate() {
  desktop_.doYield();
  state_.TaskDone = false;
  // A stop that came before the work began is a stop all the same.
  if (!state_.StopAction) work_(*this);
  state_.WorkerMode = 0;
  while (!state_.StopAction && !state_.TaskDone) desktop_.doRest();
  desktop_.doYield();
  doClose();
}

void frmAddFiles::CMD() {
  state_.StopAction = true;
}

void frmAddFiles::doShowLines(const std::string& first, const std::string& second) {
  MsgGrid = {first, second};
  doRepaint();
}

void frmAddFiles::doShowPath(const std::string& path) {
  MsgGrid[1] = path;
  doRepaint();
}

void frmAddFiles::IgnoreUnicode(const std::string& name) {
  desktop_.doYield();
  const Answer answer = desktop_.doShowMessage(
      {.text = Text::escaped(name) +
               "\nItem name contains unsupported unicode character. It will be excluded.",
       .title = gProductName,
       .icon = MessageIcon::Warning,
       .buttons = MessageButtons::OkCancel});
  if (answer == Answer::Cancel) state_.StopAction = true;
}

}  // namespace korvenal
