#include "erase/EraseRun.h"

namespace korvenal {

namespace {

constexpr int EraseIndex = 2;  ///< of the erase page in the grids of the runs
constexpr int FirstDisc = 0;   ///< reasons of the prompt
constexpr int MoreDiscs = 1;

}  // namespace

EraseRun::EraseRun(const EraseServices& services, Steps steps)
    : services_(services),
      steps_(std::move(steps)),
      texts_(services.engine),
      work_(services.state, services.engine, services.desktop) {}

EraseResult EraseRun::doStartErase() {
  ActionState& state = services_.state;
  if (state.ActionBusy || state.ActionRunning) return {};
  state.ActionPage = EraseIndex;
  if (!steps_.doEnsureDevice(true)) return {};
  const FlagScope running(state.ActionRunning);
  const FlagScope busy(state.ActionBusy);
  result_ = {};
  result_.end = doEraseRun();
  return result_;
}

EraseResult::End EraseRun::doEraseRun() {
  ActionState& state = services_.state;
  services_.page = {.buttonsVisible = false, .pbStopVisible = true};
  EraseMode = false;
  state.WorkerMode = WorkerErase;
  state.StopAction = false;
  state.TaskError = 0;
  const End end = doEraseLoop();
  if (state.StopAction) services_.grids.doEventMessage("Action stop by user.");
  EraseMode = true;
  services_.page = {};
  return end;
}

EraseResult::End EraseRun::doEraseLoop() {
  ActionState& state = services_.state;
  {
    const FlagScope first(request_.FirstPrompt);
    doAskLoadDisc(FirstDisc);
  }
  if (state.StopAction) return End::Stopped;
  while (true) {
    services_.page.pbStopEnabled = true;
    doEraseDiscs();
    services_.page.pbStopEnabled = true;
    services_.desktop.doYield();
    if (state.StopAction) return End::Stopped;
    doAskLoadDisc(MoreDiscs);
    // The prompt is the usual end: no more discs are offered.
    if (state.StopAction) return End::Finished;
  }
}

void EraseRun::doAskLoadDisc(int reason) {
  services_.state.WorkerMode = WorkerErase;
  steps_.doAskLoadDisc(reason, request_);
}

void EraseRun::doEraseDiscs() {
  while (doPass()) {
  }
  services_.state.DiscInWork = false;
  services_.engine.do_ClearAll();
  services_.desktop.doYield();
}

bool EraseRun::doPass() {
  ActionState& state = services_.state;
  BurnEngine& engine = services_.engine;
  int discs = 0;
  for (int drive = 0; drive < services_.devices.driveCount(); ++drive) {
    const char letter = services_.devices.letter(drive);
    engine.do_ClearAll();
    engine.do_SetBurnProof(-1);
    engine.do_SetPerformOPC(-1);
    if (engine.do_SelectDeviceByLetter(letter) == 0) continue;
    if (state.StopAction) return false;
    if (engine.do_TestUnitReady() != 0) {
      ++discs;
      doEraseOne(letter);
      state.DiscInWork = false;
      services_.page.DiscInHand = 0;
    }
    if (state.StopAction) return false;
  }
  // Trays stand open behind their discs, so that the next pass finds nothing to do.
  return discs != 0;
}

void EraseRun::doEraseOne(char letter) {
  ActionState& state = services_.state;
  Attempt attempt;
  attempt.record.drive = std::string(1, letter) + ":";
  services_.grids.doEventMessage("Select drive (" + attempt.record.drive + ")");
  state.DiscInWork = true;
  services_.page.DiscInHand = services_.grids.vsOutput[EraseIndex].Rows();
  services_.page.DriveInHand = letter;
  services_.grids.doEventMessage("Checking disc in drive (" + attempt.record.drive + ")...");
  attempt.record.eraseMode = isQuick() ? "Quick-erase" : "Full-erase";
  state.TaskDone = false;
  state.TaskError = 0;
  if (state.StopAction) return;

  doAttempt(attempt);
  work_.waitUntilIdle();
  doRecord(attempt);
  services_.engine.do_UnlockMedium();
  services_.engine.do_EjectMedium();
  if (services_.settings.PlaySound)
    services_.desktop.doPlaySound(services_.workspace.binFolder + "CHIMES.WAV");
  if (!state.StopAction)
    services_.grids.doEventMessage((attempt.failed ? "*" : "") + attempt.record.note);
}

void EraseRun::doAttempt(Attempt& attempt) {
  DiscRecord& record = attempt.record;
  const auto fail = [&attempt](const std::string& note) {
    attempt.record.note = note;
    attempt.failed = true;
  };
  const std::uint8_t type = services_.engine.do_DiscIs();
  if (type == DiscNone) {
    record.discType = "Unknown";
    return fail("Error: Unknown disc type.");
  }
  if (services_.engine.do_Erasable() == 0) {
    record.discType = doGetDiscTypeName(type);
    return fail("Error: Disc is not erasable.");
  }
  record.discType = texts_.discText(type);
  services_.grids.doEventMessage("Disc type:  " + record.discType);
  if (request_.SkipBlankDiscs && texts_.doIsDiscBlank(type)) {
    record.note = "Skip blank disc.";
    ++result_.skipped;
    return;
  }
  services_.grids.doEventMessage(std::string("Start ") + (isQuick() ? "quick" : "full") +
                                 " erasing disc...");
  doEraseDisc(attempt);
}

void EraseRun::doEraseDisc(Attempt& attempt) {
  ActionState& state = services_.state;
  const MediumLock lock(services_.engine);
  // While this flag is set, a stop waits for the end.
  const FlagScope erasing(state.Erasing);
  if (!work_.doEraseDisc(isQuick())) {
    attempt.record.note = "Failed: Unable to erase disc.";
    attempt.failed = true;
    return;
  }
  work_.waitUntilDone();
  attempt.failed = state.TaskError != 0;
  attempt.record.note = attempt.failed
                            ? "Error: " + texts_.doGetDiscErrorText(DiscTexts::Transfer::Writing)
                            : "Success.";
  if (!attempt.failed) ++result_.erased;
}

void EraseRun::doRecord(Attempt& attempt) {
  if (attempt.failed) ++result_.failed;
  attempt.record.outputTime = Dates::displayShort(services_.clock.now());
  Table& output = services_.grids.vsOutput[EraseIndex];
  const int row = output.addRow(attempt.record.columns());
  output.Row = row;
  services_.page.DiscInHand = 0;
  services_.records.doAddDiscLogRow(EraseIndex, row);
}

}  // namespace korvenal
