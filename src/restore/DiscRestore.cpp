#include "restore/DiscRestore.h"

#include "device/DiscNames.h"
#include "platform/Paths.h"
#include "platform/Text.h"

namespace korvenal {

DiscRestore::DiscRestore(const RestoreServices& services)
    : services_(services),
      texts_(services.engine),
      discs_(services.files, services.page),
      files_(services) {}

void DiscRestore::doBeginRun() {
  DiscErrorCount = 0;
  files_.doForgetSplitFile();
}

bool DiscRestore::isListDone() const {
  return services_.page.RestoreDiscIndex >= services_.page.discsWanted();
}

bool DiscRestore::isOver() const {
  return services_.state.StopAction || services_.state.TaskError != 0 || isListDone();
}

int DiscRestore::wantedDisc() const {
  return services_.page.RestoreDiscList[static_cast<std::size_t>(services_.page.RestoreDiscIndex)];
}

void DiscRestore::doSetUpEngine() {
  constexpr int On = -1, Off = 0;
  services_.engine.do_ClearAll();
  services_.engine.do_SetJolietFS(On);
  services_.engine.do_SetUDFBridge(Off);
  services_.engine.do_SetPerformOPC(On);
}

void DiscRestore::doRestoreDiscs() {
  ActionState& state = services_.state;
  state.StopAction = false;
  state.TaskError = 0;
  files_.doBegin();
  doSetUpEngine();
  services_.grids.doEventMessage("Checking backup disc...");
  const auto target = services_.targets.open(services_.page.txRestoreTo);
  if (target == nullptr) {
    services_.grids.doEventMessage("*Please select where you want the files to be restored.");
    state.TaskError = -1;
  }

  bool anyMatch = false;
  while (!isOver()) {
    const int wanted = wantedDisc();
    const int before = services_.page.RestoreDiscIndex;
    anyMatch = doPassOverDrives(*target) || anyMatch;
    state.DiscInWork = false;
    // A new pass looks for the next disc; the same one is asked for.
    if (isOver() || services_.page.RestoreDiscIndex != before) continue;
    if (!anyMatch)
      services_.grids.doEventMessage("*Backup disc #" + std::to_string(wanted) +
                                     "  is not loaded.");
    break;
  }
  services_.runPage.DiscInHand = 0;
  services_.engine.do_ClearAll();
  services_.desktop.doYield();
}

bool DiscRestore::doPassOverDrives(TargetFolder& target) {
  bool found = false;
  for (const char letter : drivesInOrder()) {
    // Looked up for each drive: the one before may have brought the disc that was wanted.
    services_.progress() = {std::string(1, letter) + ":  " + DiscNames::labelOf(wantedDisc()), 0};
    services_.desktop.doYield();
    if (services_.engine.do_SelectDeviceByLetter(letter) == 0) continue;
    if (services_.state.StopAction) break;
    const auto disc = findWantedIn(letter);
    if (!disc) continue;
    found = true;
    if (doRestoreDisc(*disc, target) == Next::EndRun) break;
  }
  return found;
}

std::string DiscRestore::drivesInOrder() const {
  std::string letters;
  for (int i = 0; i < services_.devices.driveCount(); ++i) letters += services_.devices.letter(i);
  const auto index = Paths::asDrivePath(services_.page.IndexPath);
  const std::size_t at = index ? letters.find(index->letter) : std::string::npos;
  if (at != std::string::npos) letters = index->letter + letters.erase(at, 1);
  return letters;
}

std::optional<DiscInHand> DiscRestore::findWantedIn(char letter) {
  if (services_.engine.do_TestUnitReady() == 0) return std::nullopt;
  const int wanted = wantedDisc();
  const DiscRecognition::Look look = discs_.look(letter, wanted);
  if (look.another.isKnown())
    services_.grids.doEventMessage("* Backup disc #" + std::to_string(wanted) +
                                   " belongs to another backup: " + look.another.shown() + ".");
  return look.disc;
}

DiscRestore::Next DiscRestore::doRestoreDisc(const DiscInHand& disc, TargetFolder& target) {
  ActionState& state = services_.state;
  const std::string drive(1, disc.letter);
  services_.grids.doEventMessage("Select drive (" + drive + ":) to restore from backup disc #" +
                                 std::to_string(disc.number));
  state.DiscInWork = true;
  services_.grids.doEventMessage("Checking disc in drive (" + drive + ":)...");
  Attempt attempt;
  attempt.disc = disc;
  attempt.record.drive = drive + ":";
  attempt.record.action = "Restore";
  attempt.record.jobName = services_.page.txJobName;
  attempt.record.label = disc.label;
  services_.runPage.DiscInHand = services_.page.RestoreDiscIndex + 1;
  services_.runPage.DriveInHand = disc.letter;
  if (state.StopAction) return Next::EndRun;
  if (!doTryDisc(attempt, target)) return Next::EndRun;
  doCompleteNote(attempt);
  doRecord(attempt);
  return doAfterDisc(attempt);
}

bool DiscRestore::doTryDisc(Attempt& attempt, TargetFolder& target) {
  BurnEngine& engine = services_.engine;
  std::uint8_t type = engine.do_DiscIs();
  if (type == DiscNone) {
    attempt.record.discType = "Unknown";
    doFail(attempt, "Error: Unknown disc type.");
    return true;
  }
  engine.do_LockMedium();
  attempt.record.discType = texts_.discText(type);
  services_.grids.doEventMessage("Disc type:  " + attempt.record.discType);
  files_.progress.clear();
  const WantedCount count = files_.doCountWanted(attempt.disc);
  if (count.found > 0 && count.found < count.wanted &&
      !doConfirmMissing(attempt.disc.number, count))
    return false;
  if (count.found == 0) {
    doFail(attempt, "Error: Nothing to be restored in the disc.");
    engine.do_UnlockMedium();
    return true;
  }
  services_.grids.doEventMessage(
      texts_.doSetDriveSpeed(type, {services_.devices.ReadSpeedDVD, services_.devices.ReadSpeedCD},
                             DiscTexts::Transfer::Reading));
  services_.grids.doEventMessage(std::string("Start restoring file") +
                                 (count.found > 1 ? "s" : "") + " from backup disc #" +
                                 std::to_string(attempt.disc.number) + "...");
  attempt.counts = files_.doRestoreFiles(attempt.disc, target);
  faults.files += attempt.counts.errors;
  doJudge(attempt);
  engine.do_UnlockMedium();
  return true;
}

bool DiscRestore::doConfirmMissing(int disc, const WantedCount& count) {
  const Answer answer = services_.desktop.doShowMessage(
      {.text = std::to_string(count.wanted - count.found) + " of " +
               Text::counted(count.wanted, "file") +
               " not found in this disc,  do you want to continue the restore action?",
       .title = "Backup disc #" + std::to_string(disc),
       .icon = MessageIcon::Question,
       .buttons = MessageButtons::YesNo});
  if (answer == Answer::Yes) return true;
  services_.state.StopAction = true;
  services_.runPage.pbStopEnabled = false;
  return false;
}

void DiscRestore::doFail(Attempt& attempt, const std::string& note) {
  attempt.failed = true;
  attempt.record.note = note;
}

void DiscRestore::doJudge(Attempt& attempt) {
  const ActionState& state = services_.state;
  if (state.StopAction) {
    attempt.record.note = "Action stop by user.";
  } else if (files_.progress.RestoreBytesDone == Fixed4() && attempt.counts.nothingDone()) {
    if (!attempt.counts.onlyLostParts) return doFail(attempt, "No file restored.");
    // Asking for it again would bring nothing either.
    if (attempt.counts.errors == 0) attempt.record.note = "No file restored.";
    ++services_.page.RestoreDiscIndex;
  } else if (state.TaskError != 0) {
    doFail(attempt, attempt.counts.diskFull ? "Failed: Insufficient HDD space." : "Failed.");
  } else {
    if (attempt.counts.errors == 0) attempt.record.note = "Success.";
    ++services_.page.RestoreDiscIndex;
  }
}

void DiscRestore::doCompleteNote(Attempt& attempt) const {
  if (services_.state.StopAction || attempt.failed) return;
  std::string& note = attempt.record.note;
  const auto add = [&note](int count, const char* outcome) {
    if (count > 0) note += " " + Text::counted(count, "file") + outcome;
  };
  add(attempt.counts.restored, " restored.");
  add(attempt.counts.skipped, " skipped.");
  add(attempt.counts.errors, " error.");
  note = Text::trim(note);
}

void DiscRestore::doRecord(Attempt& attempt) {
  attempt.record.outputTime = Dates::displayShort(services_.clock.now());
  Table& records = services_.grids.vsOutput[RestorePageIndex];
  const int row = records.addRow(attempt.record.columns());
  services_.grids.setDiscOf(RestorePageIndex, row, services_.runPage.DiscInHand);
  services_.runPage.DiscInHand = 0;
  services_.records.doAddDiscLogRow(RestorePageIndex, row);
  services_.progress() = {};
  services_.engine.do_UnlockMedium();
  if (ejectsAfterDisc()) services_.engine.do_EjectMedium();
}

DiscRestore::Next DiscRestore::doAfterDisc(const Attempt& attempt) {
  ActionState& state = services_.state;
  RunGrids& grids = services_.grids;
  if (attempt.failed) ++faults.discs;
  if (!state.StopAction) grids.doEventMessage((attempt.failed ? "*" : "") + attempt.record.note);
  if (attempt.counts.diskFull) {
    grids.doEventMessage("*Action stop: Insufficient HDD space.");
    return Next::EndRun;
  }
  state.TaskError = 0;
  if (attempt.failed && !state.StopAction && ++DiscErrorCount == errorMaximum()) {
    // One wording serves burning and restoring alike.
    grids.doEventMessage("*Action stop: Disc burning error counted " +
                         std::to_string(errorMaximum()) + ".");
    state.TaskError = -1;
    return Next::EndRun;
  }
  state.DiscInWork = false;
  return isListDone() || state.StopAction ? Next::EndRun : Next::Drive;
}

bool DiscRestore::ejectsAfterDisc() const {
  const DeviceSettings& devices = services_.devices;
  if (devices.DeviceMode == 0) return devices.SingleEject != 0;
  return devices.DeviceMode == 1 && devices.MultiEject != 0;
}

std::int64_t DiscRestore::errorMaximum() const {
  const DeviceSettings& devices = services_.devices;
  if (devices.DeviceMode == 1) return devices.MultiErrorMax;
  return devices.DeviceMode == 2 ? devices.AutoloaderErrorMax : 0;
}

}  // namespace korvenal
