#include "console/EraseCommandGroup.h"

#include "platform/Text.h"

namespace korvenal::console {

Commands EraseCommandGroup::commands() {
  return {{"erase", "quick | full", "erases the rewritable discs in the drives", 1, 1,
           [this](const Arguments& a) { return doErase(a[0]); }}};
}

ExitCode EraseCommandGroup::doErase(const std::string& mode) {
  if (mode != "quick" && mode != "full") return ExitCode::Usage;
  frmMain& main = session_.main;
  if (!mayBegin(korvenal::Command::Next, main.state) || main.state.ActionBusy)
    return session_.fail("Discs cannot be erased now.");
  main.controller.mainTab = ActionController::ErasePage;
  main.erase.optEraseMode = mode == "quick" ? 0 : 1;
  main.controller.doShowSummary(ActionController::Erase);
  main.eraseResult = {};
  main.controller.PBNext(ActionController::Erase);
  return eraseCode();
}

ExitCode EraseCommandGroup::eraseCode() const {
  const EraseResult& result = session_.main.eraseResult;
  switch (result.end) {
    case EraseResult::End::Refused:
      return ExitCode::Failed;
    case EraseResult::End::Stopped:
      return ExitCode::Stopped;
    case EraseResult::End::Finished:
      break;
  }
  session_.screen.line(Text::counted(result.erased, "disc") + " erased.");
  return result.failed == 0
             ? ExitCode::Ok
             : session_.fail(Text::counted(result.failed, "disc") + " could not be erased.");
}

}  // namespace korvenal::console
