#include "console/LoadDiscDialog.h"

#include "console/CommandLine.h"
#include "console/DiscKinds.h"
#include "platform/DiscType.h"
#include "platform/Text.h"

namespace korvenal::console {

namespace {

constexpr const char* Help =
    "  ok, stop, eject DRIVE, close DRIVE, from DISC, skipblank 0|1, device; for image drives\n"
    "  also "
    "blank DRIVE [TYPE], insert DRIVE FILE, out DRIVE, shelf\n";

}  // namespace

void LoadDiscDialog::run(bool mayAgree) {
  doShowPrompt();
  if (answers_.agreesToAll()) {
    if (mayAgree) form_.pbOK();
    // Nobody is there to load a disc: asking again would go on for ever.
    if (!form_.isClosed()) form_.pbStop();
  }
  std::string line;
  while (!form_.isClosed()) {
    if (answers_.isAttended() && answers_.ask("  [OK] [Stop] [?] > ", line))
      doAct(line);
    else
      form_.pbStop();
  }
}

void LoadDiscDialog::doShowPrompt() {
  screen_.line(form_.DESC[0]);
  if (!form_.DiscInfo.empty()) screen_.line("  " + form_.DiscInfo);
  if (!form_.MissingDisc.empty()) screen_.warning("  " + form_.MissingDisc);
  if (form_.BackupDiscShown) {
    std::string range = "  " + form_.DESC[1] + " " + std::to_string(form_.FromDisc);
    if (form_.ToDiscShown) range += " " + form_.DESC[2] + " " + std::to_string(form_.ToDisc);
    screen_.line(range);
  }
  if (form_.ckSkipBlankShown)
    screen_.line(std::string("  skipblank = ") + (form_.ckSkipBlank ? "1" : "0"));
  doShowDrives();
}

void LoadDiscDialog::doShowDrives() {
  for (int row = 0; row < frmLoadDisc::MaxDrives; ++row) {
    const std::string& drive = form_.vsDrive.text(row + 1, 0);
    if (drive.empty()) continue;
    std::string text = "  " + drive + " " + form_.vsDrive.text(row + 1, 1);
    if (form_.isImageDrive(row)) text += ": " + discDescription(form_.discInTray(row));
    if (form_.isTrayOpen(row)) text += " (tray open)";
    screen_.line(text);
  }
}

void LoadDiscDialog::doShowShelf() {
  for (const ShelfDisc& found : form_.discsOnShelf())
    screen_.line("  " + found.disc.file + ": " + discDescription(found.disc));
}

int LoadDiscDialog::rowOf(const std::string& drive) const {
  const char letter = driveLetter(drive);
  for (int row = 0; row < frmLoadDisc::MaxDrives; ++row) {
    const std::string& name = form_.vsDrive.text(row + 1, 0);
    if (!name.empty() && name[0] == letter) return row;
  }
  return -1;
}

void LoadDiscDialog::doAct(const std::string& line) {
  const std::vector<std::string> words = parseCommandLine(line).words;
  if (words.empty()) return;
  const std::string verb = Text::toLower(words[0]);
  if (verb == "ok") {
    form_.pbOK();
  } else if (verb == "stop" || verb == "cancel") {
    form_.pbStop();
  } else if (verb == "device") {
    form_.pbSetDevice();
    doShowPrompt();
  } else if (verb == "shelf") {
    doShowShelf();
  } else if (verb == "from" && words.size() == 2) {
    const std::int64_t disc = Text::toInteger(words[1]);
    if (disc >= 1 && disc <= form_.discChoices) form_.doChooseFromDisc(static_cast<int>(disc));
    doShowPrompt();
  } else if (verb == "skipblank" && words.size() == 2 && form_.ckSkipBlankShown) {
    form_.ckSkipBlank = words[1] == "1";
    doShowPrompt();
  } else if (doActOnDrive(words)) {
    doShowDrives();
  } else {
    screen_.raw(Help);
  }
}

void LoadDiscDialog::doInsertBlank(int row, const std::string& typeName) {
  std::uint8_t type = typeName.empty() ? form_.blankType() : discTypeCode(typeName);
  if (typeName.empty() && type == DiscNone) type = DiscDvdR;
  if (type == DiscNone)
    screen_.line("  The disc types are " + discTypeNames() + ".");
  else
    form_.doInsertBlank(row, type);
}

bool LoadDiscDialog::doActOnDrive(const std::vector<std::string>& words) {
  const int row = words.size() < 2 ? -1 : rowOf(words[1]);
  if (row < 0) return false;
  const std::string verb = Text::toLower(words[0]);
  const std::string argument = words.size() > 2 ? words[2] : std::string();
  if (!form_.isImageDrive(row) && (verb == "out" || verb == "insert" || verb == "blank")) {
    screen_.line("  That is no image drive.");
  } else if (verb == "eject") {
    form_.multiEject(row);
  } else if (verb == "close") {
    form_.multiClose(row);
  } else if (verb == "out") {
    form_.doTakeOut(row);
  } else if (verb == "insert") {
    form_.doInsertFromShelf(row, argument);
  } else if (verb == "blank") {
    doInsertBlank(row, argument);
  } else {
    return false;
  }
  return true;
}

}  // namespace korvenal::console
