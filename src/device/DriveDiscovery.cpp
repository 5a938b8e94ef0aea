#include "device/DriveDiscovery.h"

#include "platform/Text.h"

namespace korvenal {

namespace {

constexpr std::string_view DriveLetterOrder = "CDEFGHIJKLMNOPQRSTUVWXYZ";
constexpr std::int32_t EngineCacheBytes = 67'108'864;
constexpr std::uint8_t DualLayerCode = 18;

std::string_view afterFirst(std::string_view text, char mark) {
  const auto at = text.find(mark);
  return at == std::string_view::npos ? text : text.substr(at + 1);
}

}  // namespace

DriveDiscovery::DriveDiscovery(BurnEngine& engine, MountedDevices& devices, Desktop& desktop,
                               ActionState& state, const DeviceSettings& settings)
    : engine_(engine), devices_(devices), desktop_(desktop), state_(state), settings_(settings) {}

std::int16_t DriveDiscovery::doInitBurner() {
  const std::int16_t ready = engine_.do_InitializeASPI(0, "1", 0, "1");
  if (ready != 0) engine_.do_SetCacheSize(EngineCacheBytes);
  return ready;
}

int DriveDiscovery::doListBurners() {
  DriveNames.fill({});
  int count = 0;
  for (const char letter : DriveLetterOrder) {
    const std::string path = devices_.devicePath(letter);
    if (Text::toUpper(path).find("CDROM") == std::string::npos) continue;
    if (engine_.do_SelectDeviceByLetter(letter) == 0) continue;
    if (engine_.do_DeviceIsBurner() == 0) continue;
    engine_.do_UnlockMedium();
    ++count;
    DriveNames[static_cast<std::size_t>(count)] =
        std::string(1, letter) + ": " + doCleanDriveName(path);
  }
  return count;
}

bool DriveDiscovery::doWritesDvd() {
  bool any = false;
  for (std::uint8_t code = 13; code <= DualLayerCode; ++code)
    any = engine_.do_DeviceCan(code) != 0 || any;
  return any;
}

bool DriveDiscovery::isFound(char letter) const {
  for (const std::string& name : DriveNames)
    if (!name.empty() && name.front() == letter) return true;
  return false;
}

std::string DriveDiscovery::doFindIncapable(int discTypeIndex) {
  std::string incapable;
  for (int i = 0; i < settings_.driveCount(); ++i) {
    const char letter = settings_.letter(i);
    if (engine_.do_SelectDeviceByLetter(letter) == 0) continue;
    const bool qualifies =
        discTypeIndex == 1 ? doWritesDvd() : engine_.do_DeviceCan(DualLayerCode) != 0;
    if (!qualifies) incapable += {letter, ':'};
  }
  return incapable;
}

bool DriveDiscovery::doCheckDevice(int discTypeIndex) {
  if (settings_.DriveLetters.empty()) return false;
  bool usable = true;
  std::string incapable;
  {
    const WaitPointer wait(desktop_);
    // A drive may take its time to answer, and handlers work meanwhile.
    const FlagScope quiet(state_.IgnoreEvents);
    BurnerCount = doInitBurner();
    DriveCount = doListBurners();
    for (int i = 0; usable && i < settings_.driveCount(); ++i)
      usable = isFound(settings_.letter(i));
    if (usable && discTypeIndex > 0) incapable = doFindIncapable(discTypeIndex);
  }
  if (incapable.empty()) return usable;
  if (!state_.IgnoreEvents)
    desktop_.doShowMessage({.text = "Current drive (" + incapable +
                                    ") is not capable of recording data to " +
                                    (discTypeIndex == 1 ? "DVD 4.7GB" : "DVD+R DL") +
                                    ".\nPlease change device setting or change the disc type.",
                            .title = "Error",
                            .icon = MessageIcon::Warning});
  return false;
}

std::string DriveDiscovery::doCleanDriveName(std::string_view devicePath) {
  const std::string upper = Text::toUpper(devicePath);
  std::string_view field = afterFirst(upper, '#');
  field = field.substr(0, field.find('#'));
  std::string name = Text::replaceAll(field, "CDROM", "");
  const bool hasVendor = name.find("VEN_") != std::string::npos;
  for (const std::string_view mark : {"VEN_", "PROD_", "REV_", "&", "_"})
    name = Text::replaceAll(name, mark, " ");
  name = Text::trim(name);
  for (int pass = 0; pass < 3; ++pass) name = Text::replaceAll(name, "  ", " ");
  return hasVendor ? doCutDriveRevision(name) : name;
}

std::string DriveDiscovery::doCutDriveRevision(std::string_view text) {
  text = Text::trim(text.substr(0, text.find('\0')));
  const auto blank = text.rfind(' ');
  // A blank in the first place does not count; trimmed text has none there anyway.
  return std::string(blank == std::string_view::npos || blank == 0 ? text : text.substr(0, blank));
}

}  // namespace korvenal
