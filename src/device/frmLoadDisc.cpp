#include "device/frmLoadDisc.h"

#include <algorithm>

#include "core/DiscTypes.h"
#include "core/TableHeaders.h"
#include "device/frmPickDisc.h"
#include "platform/Paths.h"
#include "platform/Text.h"

namespace korvenal {

namespace {

enum LoadReason : int { ReasonFirst = 0, ReasonContinue = 1, ReasonMark = 2 };
enum Mode : int { SingleMode = 0, MultiMode = 1, AutoloaderMode = 2 };

/// The two codes of a CD-RW.
constexpr std::uint8_t CdRwCodes[] = {3, 15};

std::string prefixOf(int reason) {
  switch (reason) {
    case ReasonContinue:
      return "Please unload disc and reload ";
    case ReasonMark:
      return "Please unload and mark backup disc, reload ";
    default:
      return "Please load ";
  }
}

std::string verbOf(int reason) {
  switch (reason) {
    case ReasonContinue:
      return "continue";
    case ReasonMark:
      return "";
    default:
      return "start";
  }
}

}  // namespace

frmLoadDisc::frmLoadDisc(LoadDiscServices services, DiscRequest& request, int reason)
    : services_(std::move(services)),
      request_(request),
      feeder_(services_.trays),
      hand_(services_.trays, request, services_.state.WorkerMode),
      purpose_(services_.state.WorkerMode),
      loadReason_(reason) {
  const DeviceSettings& settings = services_.settings;
  if (settings.DeviceMode == SingleMode) {
    ejectAtPrompt_ = settings.SingleEject == 1;
    skipFirstEject_ = request_.FirstPrompt && settings.SingleSkipEjectFirst == 1;
  } else if (settings.DeviceMode == MultiMode) {
    ejectAtPrompt_ = settings.MultiEject == 1;
    skipFirstEject_ = request_.FirstPrompt && settings.MultiSkipEjectFirst == 1;
  }
  for (const char letter : services_.keptDrives) feeder_.doKeep(letter);
  setHeaders(vsDrive, {"Drive", "Model"});
  vsDrive.setRows(MaxDrives + 1);
  doBuildPrompt();
}

void frmLoadDisc::doBuildPrompt() {
  deviceMode = static_cast<int>(services_.settings.DeviceMode);
  trayButtonsShown = deviceMode == MultiMode;
  traysToUse_ = 0;
  const std::string prefix = prefixOf(loadReason_);
  switch (purpose_) {
    case WorkerBurn:
      doBuildBurnPrompt(prefix);
      break;
    case WorkerRestore:
      doBuildRestorePrompt(prefix);
      break;
    case WorkerErase:
      ckSkipBlankShown = true;
      ckSkipBlank = request_.SkipBlankDiscs;
      DESC[0] = prefix + "rewritable disc into drive, then press [OK] button to " +
                verbOf(loadReason_) + " erasing.";
      break;
    default:
      DESC[0] =
          "Please load the first backup disc (Backup #1) into drive, then press [OK] button to "
          "read "
          "backup index.";
      pbStopCaption = "&Cancel";
      traysToUse_ = 1;
      break;
  }
}

void frmLoadDisc::doBuildBurnPrompt(const std::string& prefix) {
  const int total = request_.TotalDiscs;
  const int next = std::max(1, std::min(request_.DiscsBurned + 1, total));
  discChoices = std::max(1, total);
  FromDisc = next;
  ToDisc = std::max(next, std::min(next + modeDrives() - 1, total));
  traysToUse_ = ToDisc - FromDisc + 1;
  BackupDiscShown = true;
  ToDiscShown = modeDrives() != 1 && total != 1;
  DESC[1] = ToDiscShown ? "Burn backup disc # from" : "Burn backup disc #";
  DESC[2] = ToDiscShown ? "to" : "";
  DESC[0] = prefix + (total >= 2 ? "empty " : "") + "backup disc (" +
            discTypeTextOf(request_.comboDiscType) +
            ") into drive, then press [OK] button to burn backup data to disc.";
  DiscInfo = request_.SizeHint;
}

void frmLoadDisc::doBuildRestorePrompt(const std::string& prefix) {
  std::string names;
  for (int i = 1; i <= modeDrives(); ++i) {
    const int disc = request_.restoreDisc(request_.RestoreDiscIndex + i);
    if (disc == 0) continue;
    ++traysToUse_;
    if (!names.empty()) names += ", ";
    names += "Backup #" + Text::zeroPadded(disc, 2);
  }
  // A backup of one disc: it is usually in the drive already, its index was read from it.
  if (request_.RestoreDiscList == std::vector<int>{1}) traysToUse_ = 0;
  DESC[0] = prefix + "the backup disc (" + names +
            ") into drive, then press [OK] button to restore backup data from disc.";
}

void frmLoadDisc::doFillDrives() {
  const FlagScope busy(busy_);
  services_.drives.DriveCount = services_.drives.doListBurners();
  vsDrive.clearData();
  driveButtons.fill({});
  driveCount_ = 0;
  std::string letters;
  const DeviceSettings& settings = services_.settings;
  for (int i = 0; i < settings.driveCount() && driveCount_ < MaxDrives; ++i) {
    for (const std::string& name : services_.drives.DriveNames) {
      if (name.size() < 2 || name.front() != settings.letter(i)) continue;
      vsDrive.addRow(
          {name.substr(0, 2), std::string(Text::trim(std::string_view(name).substr(2)))});
      driveButtons[static_cast<std::size_t>(driveCount_++)].shown = true;
      letters += name.front();
      break;
    }
  }
  vsDrive.setRows(MaxDrives + 1);
  feeder_.doUseDrives(letters);
  doEnableCommands(true);
}

void frmLoadDisc::doActivate() {
  if (activated_) return;
  activated_ = true;
  {
    const FlagScope busy(busy_);
    doShowStatus("Detecting drive...");
    doFillDrives();
    doEnableCommands(false);
    doShowStatus("");
    if (services_.settings.DeviceMode < AutoloaderMode && ejectAtPrompt_ && !skipFirstEject_)
      doEjectTrays();
    if (!cancelRequested_) doFeed();
    traysToUse_ = driveCount_;
  }
  doEnableCommands(true);
  if (cancelRequested_) doGiveUp();
}

void frmLoadDisc::doFeed() {
  switch (purpose_) {
    case WorkerBurn:
      feeder_.doFeedBlanks(request_, FromDisc, ToDisc);
      request_.FailedDrives.clear();
      break;
    case WorkerRestore:
      feeder_.doFeedRestore(request_);
      tellMissing();
      break;
    case WorkerReadIndex:
      feeder_.doFeedIndexDisc();
      break;
    default:  // which discs to erase is a person's choice alone
      break;
  }
}

void frmLoadDisc::tellMissing() {
  MissingDisc.clear();
  // Without a known set any disc of the label would do, and a person knows best where it is.
  if (!request_.wantedSet.identity.isKnown()) return;
  for (const int disc : feeder_.missingDiscs())
    MissingDisc += (MissingDisc.empty() ? "Disc " : " Disc ") + std::to_string(disc) +
                   " of this set is not on the shelf.";
  doRepaint();
}

void frmLoadDisc::doEjectTrays() {
  if (traysToUse_ > 0) {
    const FlagScope busy(busy_);
    const WaitPointer wait(services_.desktop);
    doShowStatus("Please wait...");
    int ejected = 0;
    for (int row = 0; row < driveCount_ && ejected < traysToUse_ && !cancelRequested_; ++row) {
      const char letter = letterOf(row);
      doShowStatus(std::string("Eject Tray (") + letter + ":)...");
      if (services_.engine.do_SelectDeviceByLetter(letter) == 0) continue;
      services_.engine.do_EjectMedium();
      ++ejected;
    }
    doShowStatus("");
  }
  traysToUse_ = driveCount_;
}

void frmLoadDisc::doCloseTrays(bool showMessage) {
  const FlagScope busy(busy_);
  const WaitPointer wait(services_.desktop);
  doShowStatus("Please wait...");
  for (int row = 0; row < driveCount_ && !cancelRequested_; ++row) {
    const char letter = letterOf(row);
    if (showMessage) doShowStatus(std::string("Close Tray (") + letter + ":)...");
    if (services_.engine.do_SelectDeviceByLetter(letter) == 0) continue;
    if (services_.engine.do_TestUnitReady() == 0) services_.engine.do_LoadMedium();
  }
  doShowStatus("");
}

void frmLoadDisc::doDriveTray(char letter, bool close) {
  if (busy_ || letter == 0) return;
  doEnableCommands(false);
  {
    const FlagScope busy(busy_);
    const WaitPointer wait(services_.desktop);
    doShowStatus(std::string(close ? "Close Tray (" : "Eject Tray (") + letter + ":)...");
    if (services_.engine.do_SelectDeviceByLetter(letter) != 0) {
      if (close) {
        services_.engine.do_LoadMedium();
      } else {
        services_.engine.do_UnlockMedium();
        services_.engine.do_EjectMedium();
      }
    }
    doShowStatus("");
  }
  doEnableCommands(true);
  if (cancelRequested_) doGiveUp();
}

void frmLoadDisc::multiEject(int row) {
  doDriveTray(letterOf(row), false);
}
void frmLoadDisc::multiClose(int row) {
  doDriveTray(letterOf(row), true);
}

void frmLoadDisc::pbEject() {
  if (busy_ || !commandsEnabled) return;
  doEnableCommands(false);
  doEjectTrays();
  doEnableCommands(true);
  if (cancelRequested_) doGiveUp();
}

void frmLoadDisc::pbCloseTray() {
  if (busy_ || !commandsEnabled) return;
  doEnableCommands(false);
  doCloseTrays(true);
  doEnableCommands(true);
  if (cancelRequested_) doGiveUp();
}

void frmLoadDisc::pbOK() {
  if (busy_ || !commandsEnabled) return;
  bool ready = false;
  doEnableCommands(false);
  {
    // Busy all along, so that a stop at any yield is only noted and no button acts between.
    const FlagScope busy(busy_);
    if (purpose_ == WorkerBurn) {
      FromDisc = std::clamp(FromDisc, 1, discChoices);
      ToDisc = std::clamp(ToDisc, 1, discChoices);
      if (FromDisc > ToDisc) std::swap(FromDisc, ToDisc);
    }
    cancelRequested_ = false;
    doFeed();
    doCloseTrays(false);
    services_.desktop.doYield();
    ready = doWaitForDisc();
  }
  doEnableCommands(true);
  if (cancelRequested_) {
    services_.state.StopAction = true;
    doClose();
    return;
  }
  if (!ready) return;
  if (purpose_ == WorkerBurn) {
    request_.BurnFromDisc = FromDisc;
    request_.BurnToDisc = ToDisc;
  } else if (purpose_ == WorkerErase) {
    request_.SkipBlankDiscs = ckSkipBlank;
  }
  doClose();
}

bool frmLoadDisc::doWaitForDisc() {
  const FlagScope busy(busy_);
  doShowStatus(purpose_ == WorkerReadIndex ? "Checking disc..." : "Detecting disc...");
  int unusable = 0;
  {
    const WaitPointer wait(services_.desktop);
    for (int row = 0; row < driveCount_ && !cancelRequested_; ++row) {
      if (!isDriveUsable(letterOf(row))) ++unusable;
      services_.desktop.doYield();
    }
  }
  const bool found = unusable < driveCount_;
  if (!found && !cancelRequested_)
    services_.desktop.doShowMessage({.text = "Please make sure the disc is loaded and try again.",
                                     .title = "Disc not Found",
                                     .icon = MessageIcon::Warning});
  doShowStatus("");
  return found;
}

bool frmLoadDisc::isDriveUsable(char letter) {
  if (letter == 0 || services_.engine.do_SelectDeviceByLetter(letter) == 0) return false;
  services_.desktop.doYield();
  if (services_.engine.do_TestUnitReady() == 0) return false;
  if (purpose_ == WorkerErase) doCheckErasable(letter);
  return true;
}

void frmLoadDisc::doCheckErasable(char letter) {
  if (services_.drives.doWritesDvd()) return;
  const std::uint8_t code = services_.engine.do_DiscIs();
  if (std::find(std::begin(CdRwCodes), std::end(CdRwCodes), code) != std::end(CdRwCodes)) return;
  services_.engine.do_EjectMedium();
  services_.desktop.doShowMessage(
      {.text = std::string("Drive (") + letter + ":) can only support the erasing of CD-RW disc.",
       .title = "Error",
       .icon = MessageIcon::Stop});
}

void frmLoadDisc::pbStop() {
  if (!busy_) return doGiveUp();
  cancelRequested_ = true;
  // As every stop button does: a drive that is waited for need not go on.
  services_.engine.do_UnlockMedium();
}

void frmLoadDisc::doCloseBox() {
  pbStop();
}

void frmLoadDisc::doGiveUp() {
  doEnableCommands(false);
  services_.state.StopAction = true;
  doClose();
}

void frmLoadDisc::doChooseFromDisc(int disc) {
  FromDisc = std::clamp(disc, 1, discChoices);
  if (ToDiscShown) ToDisc = FromDisc;
  doRepaint();
}

void frmLoadDisc::pbSetDevice() {
  if (busy_ || !services_.openDeviceSettings) return;
  services_.openDeviceSettings();
  doBuildPrompt();
  doFillDrives();
  doRepaint();
}

bool frmLoadDisc::isForMoreErasing() const {
  return purpose_ == WorkerErase && loadReason_ != ReasonFirst;
}

bool frmLoadDisc::isImageDrive(int row) const {
  const char letter = letterOf(row);
  return letter != 0 && services_.trays.isImageDrive(letter);
}

ImageDisc frmLoadDisc::discInTray(int row) const {
  return isImageDrive(row) ? services_.trays.discIn(letterOf(row)) : ImageDisc{};
}

bool frmLoadDisc::isTrayOpen(int row) const {
  return isImageDrive(row) && services_.trays.isOpen(letterOf(row));
}

std::vector<ShelfDisc> frmLoadDisc::discsOnShelf() const {
  return hand_.discs(FromDisc, driveCount_);
}

int frmLoadDisc::discOfRow(int row) const {
  return std::clamp(FromDisc + row, std::min(FromDisc, ToDisc), std::max(FromDisc, ToDisc));
}

bool frmLoadDisc::doServe(int row, const std::function<TrayResult(char)>& change) {
  if (!isImageDrive(row)) return false;
  const char letter = letterOf(row);
  const TrayResult result = busy_ ? TrayResult{TrayResult::DriveBusy} : change(letter);
  if (result) feeder_.doKeep(letter);
  doRepaint();
  if (result) return true;
  services_.desktop.doShowMessage({.text = trayFaultText(result, services_.trays.shelf()),
                                   .title = "Load Disc",
                                   .icon = MessageIcon::Warning});
  return false;
}

bool frmLoadDisc::doTakeOut(int row) {
  return doServe(row, [this](char letter) {
    if (services_.trays.discIn(letter).file.empty()) return TrayResult{};
    return services_.trays.remove(letter);
  });
}

bool frmLoadDisc::doInsertBlank(int row, std::uint8_t typeCode, std::int64_t blocks) {
  const std::string name = hand_.blankName(typeCode, discOfRow(row));
  return doServe(row, [&](char letter) {
    return services_.trays.insertBlank(letter, typeCode, name, blocks);
  });
}

bool frmLoadDisc::doInsertFromShelf(int row, const std::string& file) {
  return doServe(row, [&](char letter) { return services_.trays.insert(letter, file); });
}

bool frmLoadDisc::doInsertOther(int row) {
  if (busy_ || !isImageDrive(row)) return false;
  frmPickDisc picked(services_.desktop, discsOnShelf(), services_.trays.shelf(),
                     hand_.wanted(discOfRow(row), driveCount_));
  services_.desktop.doShowModal(picked);
  return !picked.file.empty() && doInsertFromShelf(row, picked.file);
}

bool frmLoadDisc::doShowShelf(int row) {
  const std::string file = discInTray(row).file;
  return services_.desktop.doOpenOutside(
      file.empty() ? services_.trays.shelf() : Paths::withEnd(Paths::doGetFolderPart(file)));
}

char frmLoadDisc::letterOf(int row) const {
  if (row < 0 || row >= driveCount_) return 0;
  const std::string& text = vsDrive.text(row + 1, 0);
  return text.empty() ? '\0' : text.front();
}

void frmLoadDisc::doEnableCommands(bool enabled) {
  commandsEnabled = enabled && driveCount_ > 0;
  for (DriveButtons& buttons : driveButtons) buttons.enabled = buttons.shown && commandsEnabled;
  doRepaint();
}

void frmLoadDisc::doShowStatus(const std::string& text) {
  DriveAction = text;
  doRepaint();
  services_.desktop.doYield();
}

}  // namespace korvenal
