#include "burn/DiscPreparation.h"

#include "burn/DiscTexts.h"
#include "platform/Paths.h"
#include "platform/Text.h"

namespace korvenal {

bool DiscPreparation::doPrepareDisc(DiscAttempt& attempt) const {
  services_.state.TaskDone = false;
  services_.state.TaskError = 0;
  if (attempt.needsErase || attempt.needsFormat) {
    doFormatOrErase(attempt);
  } else if (!attempt.blank) {
    doTakeOverSessions(attempt);
  }
  services_.desktop.doYield();
  return !attempt.discError && isReady(attempt);
}

void DiscPreparation::doFormatOrErase(const DiscAttempt& attempt) const {
  ActionState& state = services_.state;
  services_.grids.doEventMessage(attempt.needsFormat ? "Format disc..."
                                                     : "Quick erase non-empty rewritable disc...");
  // No erase can be broken off: while this flag is set, a stop waits for the end.
  const FlagScope erasing(state.Erasing);
  if (!work_.doEraseDisc(true)) {
    state.TaskError = -1;
    return;
  }
  work_.waitUntilDone();
  if (state.TaskError == 0 && !state.StopAction)
    services_.grids.doEventMessage(attempt.needsFormat ? "Disc formatted successfully."
                                                       : "Quick erase successfully.");
}

void DiscPreparation::doTakeOverSessions(DiscAttempt& attempt) const {
  BurnEngine& engine = services_.engine;
  engine.do_SetReplaceFile(-1);
  const auto volume = services_.files.doGetVolumeInfo(Paths::onDrive(attempt.letter, ""));
  if (!volume) {
    // What is there and cannot be taken over would be lost under a new tree.
    attempt.doFail("Error: Disc is not empty.");
    return;
  }
  if (!isFileSystemWanted(volume->fileSystem)) {
    services_.state.TaskError = -1;
    return;
  }
  attempt.appending = true;
  const bool writeOnceDvd = attempt.type == DiscDvdR || attempt.type == DiscDvdPlusR;
  if (writeOnceDvd && planned(attempt) > Fixed4(LargeFileLimit)) {
    services_.state.TaskError = -1;
    return;
  }
  services_.grids.doEventMessage("Importing previous sessions in disc...");
  const bool imported = engine.do_ImportSession(0, "\\", [this] {
    services_.desktop.doYield();
    return services_.state.StopAction;
  }) != 0;
  if (services_.state.StopAction) return;
  services_.grids.doEventMessage(imported ? "Sessions imported successfully."
                                          : "Sessions import failed.");
  if (imported) return;
  if (const std::string cause = engine.do_GetErrorString(); !cause.empty())
    services_.grids.doEventMessage("*" + cause);
  attempt.doFail("Error: Sessions import failed.");
}

bool DiscPreparation::isFileSystemWanted(const std::string& fileSystem) const {
  const std::string name = Text::toUpper(fileSystem);
  return services_.job.optFileSystem == 0 ? name == "CDFS" : Text::startsWith(name, "UDF");
}

bool DiscPreparation::isReady(DiscAttempt& attempt) const {
  BurnEngine& engine = services_.engine;
  if (services_.state.StopAction) {
    attempt.doStop();
  } else if (services_.state.TaskError != 0) {
    attempt.doFail(attempt.appending    ? "Error: Subsequent session exceed 2GB."
                   : attempt.needsErase ? "Error: Disc erasing failed."
                                        : "Error: Disc file system imcompatiable.");
  } else if (engine.do_SessionsOnDisc() >= 100) {
    attempt.doFail("Error: Disc has exceeded 99 sessions limitation.");
  } else if (services_.plan.TotalDiscs > 1 &&
             planned(attempt) > Fixed4(engine.do_GetFreeBlocksOnDisc() * BlockBytes)) {
    attempt.doFail("Error: Disc free space not enough.");
  } else {
    return true;
  }
  return false;
}

}  // namespace korvenal
