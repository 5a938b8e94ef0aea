#include "burn/DiscBurner.h"

#include "platform/FaultList.h"

namespace korvenal {

void DiscBurner::doBurnDisc(DiscAttempt& attempt, DiscRequest& request) {
  services_.grids.doEventMessage("Burning backup disc #" + std::to_string(attempt.number) + "...");
  doSetOptions(attempt);
  doShowAndPost("Collecting disc track information...");
  if (!doCollectTrack(attempt) || !doInsertIndex(attempt) || !doPrepareTrack(attempt)) return;

  services_.engine.do_SetVolumeID(attempt.record.label);
  services_.engine.do_SetVolumeSetID(services_.plan.identity.text());
  services_.grids.doEventMessage(texts_.doSetDriveSpeed(
      attempt.type, {services_.devices.WriteSpeedDVD, services_.devices.WriteSpeedCD},
      DiscTexts::Transfer::Writing));
  services_.state.TaskDone = false;
  services_.state.TaskError = 0;
  monitor_.BurnPhase = 0;
  const int sessionsBefore = services_.engine.do_SessionsOnDisc();
  doShowAndPost("Allocating data buffer...");
  // Every line posted so far was a chance to stop; a burn not begun spoils no disc.
  services_.desktop.doYield();
  if (doLeaveAtStop(attempt)) return;
  if (!doStartBurn(attempt)) return;
  doWaitForBurn();
  doJudge(attempt, sessionsBefore, request);
}

void DiscBurner::doSetOptions(const DiscAttempt& attempt) {
  BurnEngine& engine = services_.engine;
  // These two kinds are never closed: they stay open to anything by their nature.
  const bool staysOpen = attempt.type == DiscDvdRam || attempt.type == DiscDvdPlusRw;
  monitor_.BurnFinalize = !staysOpen && services_.job.FinalizeDisc;
  if (!staysOpen) engine.do_SetFinalizeDisc(monitor_.BurnFinalize ? -1 : 0);
  // What cannot be read is told or asked about when the sources are measured: one file shall not
  // spoil a disc.
  engine.do_SetSkipFileOnError(-1);
  engine.do_SetFileError_Skip(-1);
}

bool DiscBurner::doCollectTrack(DiscAttempt& attempt) {
  changes_.doBeginTry();
  measuring_.doFitSplitFiles(attempt);
  if (layout_.doBuild(attempt) && measuring_.doMeasure(attempt, layout_.files())) return true;
  attempt.doStop();
  return false;
}

bool DiscBurner::doInsertIndex(DiscAttempt& attempt) {
  if (!index_.doInsert(attempt.number, layout_.files().size())) return doLeaveWithoutIndex(attempt);
  // What changed is told by the index of its own disc alone.
  if (index_.isMissing()) measuring_.doTakeOutChanged(layout_.files());
  return true;
}

bool DiscBurner::doLeaveWithoutIndex(DiscAttempt& attempt) const {
  if (doLeaveAtStop(attempt)) return false;
  attempt.doFail("Error: Backup index could not be written.");
  attempt.endsRun = true;
  return false;
}

bool DiscBurner::doPrepareTrack(DiscAttempt& attempt) {
  while (doMakeTrack(attempt)) {
    const std::int64_t excess =
        std::int64_t{monitor_.ImageBlocks} - services_.engine.do_GetFreeBlocksOnDisc() + 1;
    if (excess <= 0) return true;
    if (!doMakeSmaller(attempt, excess)) break;
  }
  return false;
}

bool DiscBurner::doMakeSmaller(DiscAttempt& attempt, std::int64_t excess) {
  // Without a copy of the index nothing on the disc would tell the new size of a grown file: that
  // file goes first.
  if (measuring_.doTakeOutGrown(layout_.files(), excess)) {
    if (!index_.doReplace(attempt.number, layout_.files().size()))
      return doLeaveWithoutIndex(attempt);
    if (index_.isMissing()) measuring_.doTakeOutChanged(layout_.files());
    return true;
  }
  if (index_.doTakeBack(attempt.number)) {
    measuring_.doTakeOutChanged(layout_.files());
    return true;
  }
  if (const std::string room = texts_.roomText(); !room.empty())
    services_.grids.doEventMessage("*" + room);
  attempt.doFail("Error: Disc free space not enough.");
  return false;
}

bool DiscBurner::doMakeTrack(DiscAttempt& attempt) {
  BurnEngine& engine = services_.engine;
  services_.grids.etProgress[0] = {"Creating disc track image...", 0};
  engine.do_SetFaultList(services_.plan.FaultListName, FaultList::Bytes);
  const std::int32_t prepared = engine.do_Prepare([this] {
    services_.desktop.doYield();
    return services_.state.StopAction;
  });
  services_.desktop.doYield();
  if (doLeaveAtStop(attempt)) return false;
  if (prepared <= 0) {
    doTellCause();
    attempt.doFail("Error: Disc track preparation failed.");
    return false;
  }
  monitor_.ImageBlocks = engine.do_GetImageSize();
  if (monitor_.ImageBlocks <= 0) {
    attempt.doFail("Error: Disc image creation failed.");
    return false;
  }
  return true;
}

bool DiscBurner::doStartBurn(DiscAttempt& attempt) {
  BurnLogFile = services_.grids.doGetBurnLogPath("KORV_Error");
  const int started = services_.engine.do_Burn(
      work_.finished(), [&attempt](std::int32_t, std::int32_t) { ++attempt.FileErrorCount; }, 0,
      BurnLogFile);
  if (started != 0) return true;
  doTellCause();
  attempt.doFail("Error: Data buffer allocated failed.");
  return false;
}

void DiscBurner::doTellCause() {
  // The record has room for the sentence alone; which file it was, and why, belongs here.
  if (const std::string cause = services_.engine.do_GetErrorString(); !cause.empty())
    services_.grids.doEventMessage("*" + cause);
}

void DiscBurner::doWaitForBurn() {
  monitor_.start();
  work_.waitUntilDone([this] { monitor_.pump(); });
  monitor_.stop();
}

void DiscBurner::doJudge(DiscAttempt& attempt, int sessionsBefore, DiscRequest& request) {
  BurnEngine& engine = services_.engine;
  Progress& progress =
      services_.grids.etProgress[static_cast<std::size_t>(services_.state.ActionPage)];
  const auto engineSentence = [this] {
    return "Error: " + texts_.doGetDiscErrorText(DiscTexts::Transfer::Writing);
  };
  doTellUnsaved(attempt);
  // A burn that ended well before a stop reached it is a burned disc.
  if (services_.state.TaskError != 0) {
    if (!doLeaveAtStop(attempt)) attempt.doFail(engineSentence());
    return;
  }
  // A disc that is written once must have gained a session.
  const bool rewritable = attempt.record.discType.find("RW") != std::string::npos;
  if (!rewritable && engine.do_SessionsOnDisc() == sessionsBefore) {
    doFailBurn(attempt, "Error: Session creation failed.");
    return;
  }
  progress.bar = 100;
  if (texts_.doFormatSize(DiscTexts::UsedOnDisc, true, 0) == "0 KB") {
    progress.text = "Error";
    doFailBurn(attempt, engineSentence());
    return;
  }
  progress.text = "100%";
  doKeepBurned(attempt, request);
}

void DiscBurner::doTellUnsaved(DiscAttempt& attempt) {
  for (const FileFault& fault : services_.engine.do_GetSkippedFiles()) {
    services_.grids.doEventMessage("*" + fault.source + ": " + fault.reason);
    attempt.padded.insert(fault.discPath);
  }
}

void DiscBurner::doKeepBurned(DiscAttempt& attempt, DiscRequest& request) {
  if (!attempt.padded.empty())
    for (const int row : layout_.files())
      if (attempt.padded.contains(services_.plan.vsBuffer.fileOnDisc(row))) changes_.doLose(row);
  changes_.doKeepTry();
  request.DiscsBurned = attempt.number;
  request.BurnFromDisc = attempt.number + 1;
  attempt.doSucceed();
}

void DiscBurner::doFailBurn(DiscAttempt& attempt, std::string sentence) {
  services_.state.TaskError = -1;
  attempt.doFail(std::move(sentence));
}

bool DiscBurner::doLeaveAtStop(DiscAttempt& attempt) const {
  if (services_.state.StopAction) attempt.doStop();
  return services_.state.StopAction;
}

void DiscBurner::doShowAndPost(const std::string& text) {
  services_.grids.etProgress[0].text = text;
  services_.grids.doEventMessage(text);
}

}  // namespace korvenal
