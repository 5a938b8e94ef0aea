#include "burn/DiscWriter.h"

#include "platform/Text.h"

namespace korvenal {

namespace {

constexpr std::size_t LabelBytes = 16;

/// Discs whose drive must read their table of contents anew before it tells what was burned.
bool needsReset(std::uint8_t type) {
  return type == DiscDvdPlusRw || type == DiscDvdPlusR || type == DiscDvdPlusRDl;
}

int lostFilesOn(int disc, const PlanTable& table) {
  int lost = 0;
  for (int at = 1; at < table.Rows(); ++at) {
    const PlanTable::Row& row = table.row(at);
    if (row.disc == disc && row.lost && !isFolderOnDisc(row.type)) ++lost;
  }
  return lost;
}

}  // namespace

DiscWriter::DiscWriter(BurnServices& services)
    : services_(services),
      texts_(services.engine),
      work_(services.state, services.engine, services.desktop),
      changes_(services.plan),
      check_(services, texts_),
      preparation_(services, work_),
      index_(services),
      burner_(services, texts_, work_, index_, changes_),
      verification_(services, changes_) {}

void DiscWriter::doForgetPlan() {
  changes_.doForget();
  verification_.doForgetPieces();
  index_.doForgetPlan();
}

void DiscWriter::doBeginSet() {
  changes_.doRestart();
  verification_.doForgetPieces();
}

void DiscWriter::doClearCounts() {
  DiscErrorCount = 0;
  faults = {};
}

void DiscWriter::doWriteDiscs(DiscRequest& request) {
  resetBeforeVerify_ = false;
  while (doPass(request)) {
  }
  services_.state.DiscInWork = false;
  services_.page.DiscInHand = 0;
  services_.engine.do_ClearAll();
  services_.desktop.doYield();
}

bool DiscWriter::doPass(DiscRequest& request) {
  ActionState& state = services_.state;
  int discs = 0;
  for (int drive = 0; drive < services_.devices.driveCount(); ++drive) {
    const char letter = services_.devices.letter(drive);
    doResetEngine();
    if (services_.engine.do_SelectDeviceByLetter(letter) == 0) continue;
    if (!state.StopAction && services_.engine.do_TestUnitReady() != 0) {
      ++discs;
      if (doWriteDisc(letter, request) == Next::Leave) return false;
    }
    state.DiscInWork = false;
    if (state.StopAction) return false;
  }
  return !state.StopAction && state.TaskError == 0 && discs != 0 &&
         request.BurnFromDisc <= services_.plan.TotalDiscs;
}

void DiscWriter::doResetEngine() {
  BurnEngine& engine = services_.engine;
  engine.do_ClearAll();
  engine.do_SetJolietFS(-1);
  engine.do_SetUDFBridge(0);
  engine.do_SetBurnProof(-1);
  engine.do_SetPerformOPC(-1);
  engine.do_SetReplaceFile(0);
  engine.do_SetTestWrite(0);
  services_.grids.etProgress[0] = {};
}

DiscWriter::Next DiscWriter::doWriteDisc(char letter, DiscRequest& request) {
  ActionState& state = services_.state;
  DiscAttempt attempt;
  attempt.letter = letter;
  attempt.number = request.BurnFromDisc;
  attempt.record.drive = std::string(1, letter) + ":";
  attempt.record.action = "Backup";
  attempt.record.jobName = services_.job.txJobName;
  attempt.record.label = labelOf(attempt.number);
  services_.page.DiscInHand = attempt.number;
  services_.page.DriveInHand = letter;

  services_.grids.doEventMessage("Select drive (" + attempt.record.drive +
                                 ") to burn backup disc #" + std::to_string(attempt.number));
  state.DiscInWork = true;
  services_.grids.doEventMessage("Checking disc in drive (" + attempt.record.drive + ")...");
  if (state.StopAction) return Next::Leave;

  doAttemptDisc(attempt, request);

  if (attempt.discError) request.FailedDrives += letter;
  // Read while the disc is still in the drive.
  const bool onlyDisc = attempt.success && services_.plan.TotalDiscs == 1;
  const Fixed4 freeBytes =
      onlyDisc ? Fixed4(services_.engine.do_GetFreeBlocksOnDisc() * BlockBytes) : Fixed4(0);
  doSettle(attempt);
  doRecord(attempt);
  services_.engine.do_UnlockMedium();
  services_.engine.do_EjectMedium();
  if (!state.StopAction || attempt.success) {
    services_.grids.doEventMessage((attempt.discError ? "*" : "") + attempt.record.note);
    if (freeBytes > Fixed4(0))
      services_.grids.doEventMessage("Disc free space remaining:  " +
                                     texts_.doFormatSize(DiscTexts::GivenSize, true, freeBytes));
  }
  state.TaskError = attempt.endsRun ? -1 : 0;
  if (attempt.endsRun || isErrorLimitReached(attempt)) return Next::Leave;
  return request.BurnFromDisc > services_.plan.TotalDiscs ? Next::Leave : Next::Drive;
}

void DiscWriter::doAttemptDisc(DiscAttempt& attempt, DiscRequest& request) {
  if (!check_.isWritable(attempt)) return;
  const MediumLock lock(services_.engine);
  if (!check_.isLargeEnough(attempt)) return;
  if (needsReset(attempt.type)) resetBeforeVerify_ = true;
  if (!check_.isUsable(attempt) || !check_.hasRoom(attempt)) return;
  if (!preparation_.doPrepareDisc(attempt)) return;
  burner_.doBurnDisc(attempt, request);
}

std::string DiscWriter::labelOf(int number) const {
  if (services_.plan.IndexOnDiscs) return "Backup #" + std::to_string(number);
  return Text::doMidBytes(services_.job.txJobName, 1, LabelBytes);
}

void DiscWriter::doSettle(DiscAttempt& attempt) {
  work_.waitUntilIdle();
  services_.engine.do_ClearAll();
  services_.desktop.doYield();
  if (attempt.FileErrorCount > 0) {
    attempt.FileErrorCount = 0;
    services_.files.doDeleteFile(burner_.BurnLogFile);
  }
  if (attempt.success && !services_.state.StopAction)
    verification_.doVerifyDisc(attempt, resetBeforeVerify_ || attempt.appending);
  // A disc that was not read has no report, least of all that of the disc before it.
  if (!attempt.verified) services_.grids.doClearReport();

  faults.discs += attempt.discError ? 1 : 0;
  // A disc that was not read again lacks what its burn left out all the same.
  if (attempt.success && !attempt.verified) {
    attempt.FileErrorCount = lostFilesOn(attempt.number, services_.plan.vsBuffer);
    attempt.doNoteFileErrors();
  }
  faults.files += attempt.FileErrorCount;
  faults.notVerified += attempt.success && !attempt.verified ? 1 : 0;
}

void DiscWriter::doRecord(DiscAttempt& attempt) {
  attempt.record.outputTime = Dates::displayShort(services_.clock.now());
  Table& output = services_.grids.vsOutput[0];
  const int row = output.addRow(attempt.record.columns());
  output.Row = row;
  services_.grids.setDiscOf(0, row, attempt.number);
  if (attempt.verified) services_.grids.setVerified(row);
  services_.page.DiscInHand = 0;
  services_.grids.doSaveDiscReport(row);
  services_.records.doAddDiscLogRow(0, row);
}

bool DiscWriter::isErrorLimitReached(const DiscAttempt& attempt) {
  if (!attempt.discError || services_.state.StopAction) return false;
  ++DiscErrorCount;
  // Compared for equality: a limit of 0 is never reached.
  if (DiscErrorCount != errorLimit()) return false;
  services_.grids.doEventMessage("*Action stop: Disc burning error counted " +
                                 std::to_string(DiscErrorCount) + ".");
  services_.state.TaskError = -1;
  return true;
}

std::int64_t DiscWriter::errorLimit() const {
  switch (services_.devices.DeviceMode) {
    case 1:
      return services_.devices.MultiErrorMax;
    case 2:
      return services_.devices.AutoloaderErrorMax;
    default:
      return 0;
  }
}

}  // namespace korvenal
