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

void DiscRestore::doBeginRestore() {
  files_.doBeginRestore();
  target_ = targetAtHand();
}

DiscRestore::Target DiscRestore::targetAtHand() const {
  const std::string& path = services_.page.txRestoreTo;
  const FileInfo info = services_.files.doGetInfo(path);
  return info.kind == FileInfo::Kind::Folder ? Target{path, info.inode} : Target();
}

void DiscRestore::doBeginRun(bool goesOn) {
  DiscErrorCount = 0;
  // Some file systems number a folder anew that nobody has open.
  held_ = services_.targets.open(services_.page.txRestoreTo);
  if (goesOn && held_ != nullptr) files_.doGoOn(*held_);
}

void DiscRestore::doEndRun() {
  if (isListDone()) faults.files += files_.doGiveUpOpenRows();
  files_.doEndRun(isTargetThere() ? held_.get() : nullptr);
  held_.reset();
}

void DiscRestore::doPassNeedlessDiscs() {
  std::string passed;
  int count = 0;
  for (; !isListDone() && !files_.isNeeded(wantedDisc()); ++services_.page.RestoreDiscIndex) {
    services_.desktop.doYield();
    if (!files_.hasPartsInVain(wantedDisc())) continue;
    passed += (count++ > 0 ? ", #" : "#") + std::to_string(wantedDisc());
  }
  if (count == 0) return;
  services_.grids.doEventMessage(
      (count > 1 ? "Backup discs " : "Backup disc ") + passed + (count > 1 ? " are" : " is") +
      " no longer needed: only parts of files that are not restored lie there.");
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
  if (isListDone()) return;
  files_.doBegin();
  doSetUpEngine();
  services_.grids.doEventMessage("Checking backup disc...");
  const auto target = services_.targets.open(services_.page.txRestoreTo);
  if (target == nullptr) {
    services_.grids.doEventMessage("*Please select where you want the files to be restored.");
    state.TaskError = -1;
  } else if (!isTargetThere()) {
    // A disk that went away leaves the folder behind that it was mounted on.
    services_.grids.doEventMessage("*Action stop: " + services_.page.txRestoreTo +
                                   ": Another folder stands there now.");
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
    services_.grids.doEventMessage("*Backup disc #" + std::to_string(wanted) +
                                   " belongs to another backup: " + look.another.shown() + ".");
  return look.disc;
}

bool DiscRestore::isStillThere(const DiscInHand& disc) const {
  if (services_.engine.do_TestUnitReady() == 0) return false;
  const auto found = discs_.look(disc.letter, disc.number).disc;
  return found && found->session == disc.session;
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
  // A disc that is surely of the set has no more to bring; its files are told one by one.
  if (count.found == 0 && count.wanted > 0 && !attempt.disc.isOfSet) {
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
  attempt.counts =
      files_.doRestoreFiles(attempt.disc, target, [&] { return isStillThere(attempt.disc); });
  faults.files += attempt.counts.errors;
  doSync(attempt, target);
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

/// What the medium did not take is not restored, whatever the system said while it was written.
void DiscRestore::doSync(Attempt& attempt, TargetFolder& target) {
  files_.progress.doShowFile("Waiting until all is written...");
  FileOutcome outcome;
  services_.desktop.doAside([&] { outcome = target.doSync(); });
  if (outcome) return;
  files_.doDistrustDisc();
  attempt.counts.targetFault = outcome.text;
  services_.state.TaskError = -1;
}

void DiscRestore::doJudge(Attempt& attempt) {
  const RestoreCounts& counts = attempt.counts;
  if (services_.state.StopAction) {
    attempt.record.note = "Action stop by user.";
  } else if (counts.diskFull) {
    doFail(attempt, "Failed: Insufficient HDD space.");
  } else if (!counts.targetFault.empty()) {
    doFail(attempt, "Failed: Nothing can be written: " + counts.targetFault + ".");
  } else if (counts.discGone) {
    doFail(attempt, "Failed: The disc left the drive.");
  } else {
    const bool nothing =
        files_.progress.RestoreBytesDone == Fixed4() && attempt.counts.nothingDone();
    if (counts.errors == 0) attempt.record.note = nothing ? "No file restored." : "Success.";
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
  // A disc that went away is asked for again: what counts is what became of its files.
  if (attempt.failed && !attempt.counts.discGone) ++faults.discs;
  if (!state.StopAction) grids.doEventMessage((attempt.failed ? "*" : "") + attempt.record.note);
  if (attempt.counts.diskFull) {
    grids.doEventMessage("*Action stop: Insufficient HDD space.");
    return Next::EndRun;
  }
  if (!attempt.counts.targetFault.empty()) {
    state.TaskError = -1;
    grids.doEventMessage("*Action stop: " + services_.page.txRestoreTo + ": " +
                         attempt.counts.targetFault + ".");
    return Next::EndRun;
  }
  state.TaskError = 0;
  doPassNeedlessDiscs();
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
