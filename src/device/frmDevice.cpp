#include "device/frmDevice.h"

#include <algorithm>

#include "core/Workspace.h"
#include "platform/Text.h"

namespace korvenal {

namespace {

std::vector<std::string> speedChoices(int fastest) {
  std::vector<std::string> choices = {"Max.", "High", "Medium", "Low"};
  for (int multiple = fastest; multiple >= 2; multiple -= 2)
    choices.push_back(std::to_string(multiple) + "x");
  return choices;
}

}  // namespace

const std::vector<std::string>& frmDevice::speedChoicesCD() {
  static const std::vector<std::string> choices = speedChoices(52);
  return choices;
}

const std::vector<std::string>& frmDevice::speedChoicesDVD() {
  static const std::vector<std::string> choices = speedChoices(20);
  return choices;
}

frmDevice::frmDevice(DeviceServices services) : services_(services) {
  const DeviceSettings& settings = services_.settings;
  OptDevice = static_cast<int>(settings.DeviceMode);
  ReadSpeedCD = static_cast<int>(settings.ReadSpeedCD);
  WriteSpeedCD = static_cast<int>(settings.WriteSpeedCD);
  ReadSpeedDVD = static_cast<int>(settings.ReadSpeedDVD);
  WriteSpeedDVD = static_cast<int>(settings.WriteSpeedDVD);
  chkSingleEject = settings.SingleEject == 1;
  chkSSkipEjectFirst = settings.SingleSkipEjectFirst == 1;
  chkMultiEject = settings.MultiEject == 1;
  chkMSkipEjectFirst = settings.MultiSkipEjectFirst == 1;
  MultiErrorMax = static_cast<int>(settings.MultiErrorMax);
  AutoloaderErrorMax = static_cast<int>(settings.AutoloaderErrorMax);
  AutoloaderBadDisc = settings.AutoloaderBadDisc == 1;
  AutoloaderCommand = settings.AutoloaderCommand;
}

void frmDevice::doActivate() {
  const DeviceSettings& settings = services_.settings;
  doFillDriveLists();
  doChooseLetters(settings.SingleDrive, settings.MultiDrive, settings.AutoloaderDrive);
  // There is nothing to choose: a first start needs no more than OK. The mode of drives that are
  // chosen stays, whatever is there now.
  if (services_.drives.DriveCount == 1 && settings.DriveLetters.empty()) {
    OptDevice = 0;
    if (settings.SingleDrive.empty()) singleDrive = 1;
  }
  doRepaint();
}

void frmDevice::doFillDriveLists() {
  const WaitPointer wait(services_.desktop);
  const FlagScope filling(filling_);
  services_.drives.BurnerCount = services_.drives.doInitBurner();
  services_.drives.DriveCount = services_.drives.doListBurners();
  driveChoices = {"Nil"};
  for (const std::string& name : services_.drives.DriveNames)
    if (!name.empty()) driveChoices.push_back(name);
}

void frmDevice::doChooseLetters(const std::string& single, const std::array<std::string, 5>& multi,
                                const std::string& autoloader) {
  singleDrive = takeLetter(single, absentSingle_);
  for (std::size_t i = 0; i < multiDrive.size(); ++i)
    multiDrive[i] = takeLetter(multi[i], absentMulti_[i]);
  AL01 = takeLetter(autoloader, absentAutoloader_);
}

int frmDevice::takeLetter(const std::string& letter, std::string& absent) const {
  const int choice = choiceOf(letter);
  absent = choice == 0 ? letter : std::string();
  return choice;
}

std::array<std::string, 5> frmDevice::multiLetters() const {
  std::array<std::string, 5> letters;
  for (std::size_t i = 0; i < letters.size(); ++i)
    letters[i] = chosenLetter(multiDrive[i], absentMulti_[i]);
  return letters;
}

int frmDevice::choiceOf(const std::string& letter) const {
  const std::string wanted = Text::toUpper(letter.substr(0, 1));
  for (std::size_t i = 1; i < driveChoices.size() && !wanted.empty(); ++i)
    if (driveChoices[i].front() == wanted.front()) return static_cast<int>(i);
  return 0;
}

std::string frmDevice::letterOf(int choice) const {
  if (choice < 1 || choice >= static_cast<int>(driveChoices.size())) return {};
  return driveChoices[static_cast<std::size_t>(choice)].substr(0, 1);
}

void frmDevice::pbRefresh() {
  if (services_.state.ActionRunning) return;
  {
    const FlagScope running(services_.state.ActionRunning);
    refreshEnabled = false;
    const std::string single = chosenLetter(singleDrive, absentSingle_);
    const std::string autoloader = chosenLetter(AL01, absentAutoloader_);
    const std::array<std::string, 5> multi = multiLetters();
    doFillDriveLists();
    doChooseLetters(single, multi, autoloader);
    refreshEnabled = true;
  }
  const int count = services_.drives.DriveCount;
  std::string text = "No CD/DVD drive connected.";
  if (count > 0) {
    text = "This system has " + std::to_string(count) + " CD/DVD drive" + (count > 1 ? "s" : "") +
           " connected.";
    for (std::size_t i = 1; i < driveChoices.size(); ++i) text += "\n" + driveChoices[i];
  }
  services_.desktop.doShowMessage(
      {.text = text, .title = "Drive Information", .icon = MessageIcon::Information});
  doRepaint();
}

void frmDevice::doCheckSingleEject(bool on) {
  chkSingleEject = on;
  if (!on) chkSSkipEjectFirst = false;
}

void frmDevice::doCheckSingleSkipFirst(bool on) {
  chkSSkipEjectFirst = on;
  if (on) chkSingleEject = true;
}

void frmDevice::doCheckMultiEject(bool on) {
  chkMultiEject = on;
  if (!on) chkMSkipEjectFirst = false;
}

void frmDevice::doCheckMultiSkipFirst(bool on) {
  chkMSkipEjectFirst = on;
  if (on) chkMultiEject = true;
}

void frmDevice::doSetCommand(std::size_t command, const std::string& text) {
  AutoloaderCommand[command] = Text::firstBytes(text, Profile::BufferChars - 1);
}

void frmDevice::doDriveTray(int choice, bool close) {
  const std::string letter = letterOf(choice);
  if (letter.empty()) return;
  const WaitPointer wait(services_.desktop);
  if (services_.engine.do_SelectDeviceByLetter(letter.front()) == 0) return;
  if (close) {
    services_.engine.do_LoadMedium();
  } else {
    services_.engine.do_UnlockMedium();
    services_.engine.do_EjectMedium();
  }
}

bool frmDevice::isImageDrive(int choice) const {
  const std::string letter = letterOf(choice);
  return !letter.empty() && services_.trays.isImageDrive(letter.front());
}

void frmDevice::doSaveAndClose() {
  // A drive may be slow to answer; until then the lists show less than is chosen.
  if (!filling_ && doSaveDevices()) doClose();
}

bool frmDevice::doSaveDevices() {
  if (OptDevice == 1 && !doCheckMultiDrives()) return false;
  doWriteSettings();
  return true;
}

bool frmDevice::doCheckMultiDrives() {
  const std::array<std::string, 5> letters = multiLetters();
  const auto placeOf = [&letters](auto list) {
    return static_cast<std::size_t>(list - letters.begin());
  };
  if (std::count(letters.begin(), letters.end(), "") > std::ssize(letters) - 2) {
    doFocus(placeOf(std::find(letters.begin(), letters.end(), "")));
    const Answer answer = services_.desktop.doShowMessage(
        {.text = "Please select at least two drives in \"Multiple-drive\" mode.\n"
                 "Do you want to change to \"Single-drive\" mode?",
         .title = gProductName,
         .icon = MessageIcon::Warning,
         .buttons = MessageButtons::YesNo});
    if (answer == Answer::Yes) OptDevice = 0;
    doRepaint();
    return false;
  }
  for (auto second = letters.begin(); second != letters.end(); ++second) {
    if (second->empty() || std::find(letters.begin(), second, *second) == second) continue;
    doFocus(placeOf(second));
    services_.desktop.doShowMessage(
        {.text = "Drive name duplicated.", .title = "Error", .icon = MessageIcon::Stop});
    return false;
  }
  return true;
}

void frmDevice::doFocus(std::size_t list) {
  focusedMultiDrive = static_cast<int>(list);
  doRepaint();
}

void frmDevice::doWriteSettings() {
  const WaitPointer wait(services_.desktop);
  DeviceSettings& settings = services_.settings;
  settings.DeviceMode = OptDevice;
  settings.ReadSpeedCD = ReadSpeedCD;
  settings.WriteSpeedCD = WriteSpeedCD;
  settings.ReadSpeedDVD = ReadSpeedDVD;
  settings.WriteSpeedDVD = WriteSpeedDVD;
  settings.SingleDrive = chosenLetter(singleDrive, absentSingle_);
  settings.SingleEject = chkSingleEject ? 1 : 0;
  settings.SingleSkipEjectFirst = chkSSkipEjectFirst ? 1 : 0;
  settings.MultiDrive = multiLetters();
  settings.MultiErrorMax = MultiErrorMax;
  settings.MultiEject = chkMultiEject ? 1 : 0;
  settings.MultiSkipEjectFirst = chkMSkipEjectFirst ? 1 : 0;
  settings.AutoloaderDrive = chosenLetter(AL01, absentAutoloader_);
  settings.AutoloaderErrorMax = AutoloaderErrorMax;
  settings.AutoloaderBadDisc = AutoloaderBadDisc ? 1 : 0;
  settings.AutoloaderCommand = AutoloaderCommand;
  settings.doWriteDvcData(services_.profile);
  // The stored values count from here on, mended as at every start.
  settings.doReadDvcData(services_.profile);
}

}  // namespace korvenal
