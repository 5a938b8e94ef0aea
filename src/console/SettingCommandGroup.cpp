#include "console/SettingCommandGroup.h"

#include <algorithm>
#include <optional>
#include <set>

#include "console/DiscKinds.h"
#include "core/frmDefault.h"
#include "platform/Text.h"

namespace korvenal::console {

namespace {

struct FlagKey {
  std::string_view name;
  bool Settings::*field;
};
constexpr FlagKey FlagKeys[] = {
    {"PlaySound", &Settings::PlaySound},
    {"SystemTray", &Settings::SystemTray},
    {"SplitFile", &Settings::SplitFile},
    {"Finalize", &Settings::Finalize},
    {"AutoErase", &Settings::AutoErase},
    {"SkipError", &Settings::SkipError},
    {"ExcludeTopFolder", &Settings::ExcludeTopFolder},
    {"ExcludeEmptyFolder", &Settings::ExcludeEmptyFolder},
    {"SkipSystem", &Settings::SkipSystem},
    {"SkipOpen", &Settings::SkipOpen},
};

struct IndexKey {
  std::string_view name;
  std::int64_t Settings::*field;
  int last;
};
constexpr IndexKey IndexKeys[] = {
    {"FileSystem", &Settings::FileSystem, 1},
    {"SplitSize", &Settings::SplitSize, std::ssize(SplitFileMegabytes) - 1},
    {"SplitSize2", &Settings::SplitSize2, std::ssize(SplitDiscMegabytes) - 1},
    {"Default", &Settings::Default, 3},
};

/// Flags of the section Backup that are read where they are used.
struct ProfileFlag {
  std::string_view name;
  std::string_view unset;  ///< its value while it was never written
};
constexpr ProfileFlag ProfileFlags[] = {
    {"Notice", "0"}, {"EstimateInfo", "1"}, {"EstimateShowPath", "0"}};

struct DeviceKey {
  std::string_view name;
  std::int64_t DeviceSettings::*field;
  int first;
  int last;
};
constexpr int LastCdSpeed = 29;
constexpr int LastDvdSpeed = 13;
constexpr DeviceKey DeviceKeys[] = {
    {"dvcType", &DeviceSettings::DeviceMode, 0, 2},
    {"dvcReadCD", &DeviceSettings::ReadSpeedCD, 0, LastCdSpeed},
    {"dvcWriteCD", &DeviceSettings::WriteSpeedCD, 0, LastCdSpeed},
    {"dvcReadDVD", &DeviceSettings::ReadSpeedDVD, 0, LastDvdSpeed},
    {"dvcWriteDVD", &DeviceSettings::WriteSpeedDVD, 0, LastDvdSpeed},
    {"dvcS_Eject", &DeviceSettings::SingleEject, 0, 1},
    {"dvcS_SkipEjectFirst", &DeviceSettings::SingleSkipEjectFirst, 0, 1},
    {"dvcM_ErrorMax", &DeviceSettings::MultiErrorMax, 1, 5},
    {"dvcM_Eject", &DeviceSettings::MultiEject, 0, 1},
    {"dvcM_SkipEjectFirst", &DeviceSettings::MultiSkipEjectFirst, 0, 1},
    {"dvcAL_ErrorMax", &DeviceSettings::AutoloaderErrorMax, 1, 5},
    {"dvcAL_BadDisc", &DeviceSettings::AutoloaderBadDisc, 0, 1},
};

/// The field of a drive by its key; null for any other key.
std::string* driveField(DeviceSettings& settings, const std::string& key) {
  if (key == "dvcS_Name") return &settings.SingleDrive;
  if (key == "dvcAL_Name") return &settings.AutoloaderDrive;
  for (std::size_t i = 0; i < settings.MultiDrive.size(); ++i)
    if (key == "dvcM_Name" + std::to_string(i + 1)) return &settings.MultiDrive[i];
  return nullptr;
}

std::string* commandField(DeviceSettings& settings, const std::string& key) {
  for (std::size_t i = 0; i < settings.AutoloaderCommand.size(); ++i)
    if (key == "dvcAL_Command" + std::to_string(i)) return &settings.AutoloaderCommand[i];
  return nullptr;
}

/// No eject at the first prompt means that there is one at the others: the boxes of a pair follow
/// each other.
void doPairBoxes(DeviceSettings& settings, const std::string& key) {
  if (key == "dvcS_Eject" && settings.SingleEject == 0) settings.SingleSkipEjectFirst = 0;
  if (key == "dvcS_SkipEjectFirst" && settings.SingleSkipEjectFirst == 1) settings.SingleEject = 1;
  if (key == "dvcM_Eject" && settings.MultiEject == 0) settings.MultiSkipEjectFirst = 0;
  if (key == "dvcM_SkipEjectFirst" && settings.MultiSkipEjectFirst == 1) settings.MultiEject = 1;
}

/// The drives of Multiple-drive mode that are chosen; nothing when one is chosen twice.
std::optional<std::size_t> drivesOfMultiMode(const DeviceSettings& settings) {
  std::set<std::string> different;
  std::size_t chosen = 0;
  for (const std::string& drive : settings.MultiDrive) {
    if (drive.empty()) continue;
    ++chosen;
    different.insert(drive);
  }
  return different.size() == chosen ? std::optional(chosen) : std::nullopt;
}

}  // namespace

Commands SettingCommandGroup::commands() {
  return {
      {"default", "[KEY VALUE | reset]",
       "shows the default options, or sets one, e.g. default SplitSize 2", 0, 2,
       [this](const Arguments& a) { return doDefaults(a); }},
      {"device", "KEY VALUE", "sets a device setting, e.g. device dvcS_Name V", 2, 2,
       [this](const Arguments& a) { return doDevice(a[0], a[1]); }},
  };
}

ExitCode SettingCommandGroup::badValue(const std::string& key, const std::string& value) {
  return session_.fail(key + " cannot be \"" + value + "\".");
}

ExitCode SettingCommandGroup::doDefaults(const Arguments& arguments) {
  if (arguments.size() == 2) return doDefault(arguments[0], arguments[1]);
  if (arguments.empty()) return doShowDefaults();
  if (arguments[0] != "reset") return ExitCode::Usage;
  frmDefault form(session_.main.settings, session_.desktop);
  form.pbDefault();
  form.pbOK();
  return ExitCode::Ok;
}

ExitCode SettingCommandGroup::doShowDefaults() {
  const Settings& settings = session_.main.settings;
  const auto show = [this](std::string_view name, const std::string& value) {
    session_.screen.line("  " + std::string(name) + " = " + value);
  };
  for (const FlagKey& key : FlagKeys) show(key.name, settings.*key.field ? "1" : "0");
  for (const IndexKey& key : IndexKeys) show(key.name, std::to_string(settings.*key.field));
  for (const ProfileFlag& key : ProfileFlags)
    show(key.name, session_.main.profile.doReadProfile("Backup", key.name, key.unset));
  return ExitCode::Ok;
}

ExitCode SettingCommandGroup::doDefault(const std::string& key, const std::string& value) {
  Settings& settings = session_.main.settings;
  const auto flag = parseFlag(value);
  for (const FlagKey& known : FlagKeys) {
    if (known.name != key) continue;
    if (!flag) return badValue(key, value);
    settings.*known.field = *flag;
    settings.doSaveInitData();
    return ExitCode::Ok;
  }
  for (const IndexKey& known : IndexKeys) {
    if (known.name != key) continue;
    const auto index = parseNumber(value, 0, known.last);
    if (!index) return badValue(key, value);
    settings.*known.field = *index;
    settings.doSaveInitData();
    return ExitCode::Ok;
  }
  for (const ProfileFlag& known : ProfileFlags) {
    if (known.name != key) continue;
    if (!flag) return badValue(key, value);
    session_.main.profile.doWriteProfile("Backup", key, value);
    return ExitCode::Ok;
  }
  return session_.fail("There is no default option " + key + ".");
}

std::optional<std::string> SettingCommandGroup::driveOf(const std::string& value) {
  if (value.empty() || Text::equalsIgnoreCase(value, "Nil")) return std::string();
  DriveDiscovery& drives = session_.main.drives;
  drives.BurnerCount = drives.doInitBurner();
  drives.DriveCount = drives.doListBurners();
  const char letter = driveLetter(value);
  const bool found =
      std::any_of(drives.DriveNames.begin(), drives.DriveNames.end(),
                  [letter](const std::string& name) { return !name.empty() && name[0] == letter; });
  return found ? std::optional(std::string(1, letter)) : std::nullopt;
}

ExitCode SettingCommandGroup::doDevice(const std::string& key, const std::string& value) {
  if (key == "ImageDrives" || key == "Feeder") return doImageDrives(key, value);
  DeviceSettings changed = session_.main.deviceSettings;
  if (std::string* drive = driveField(changed, key)) {
    const auto letter = driveOf(value);
    if (!letter) return badValue(key, value);
    *drive = *letter;
    return doTakeDevice(changed);
  }
  if (std::string* command = commandField(changed, key)) {
    *command = value;
    return doTakeDevice(changed);
  }
  for (const DeviceKey& known : DeviceKeys) {
    if (known.name != key) continue;
    const auto number = parseNumber(value, known.first, known.last);
    if (!number) return badValue(key, value);
    changed.*known.field = *number;
    doPairBoxes(changed, key);
    return doTakeDevice(changed);
  }
  return session_.fail("There is no device setting " + key + ".");
}

ExitCode SettingCommandGroup::doTakeDevice(const DeviceSettings& changed) {
  constexpr int MultiMode = 1;
  frmMain& main = session_.main;
  if (!mayBegin(korvenal::Command::ChangePage, main.state) || main.state.ActionBusy)
    return session_.fail("The device settings cannot be changed now.");
  const auto drives = drivesOfMultiMode(changed);
  if (changed.DeviceMode == MultiMode && !drives) return session_.fail("Drive name duplicated.");
  // The settings come one by one here, so what is missing is only told.
  if (changed.DeviceMode == MultiMode && *drives < 2)
    session_.screen.line("Multiple-drive mode needs two drives at least.");
  changed.doWriteDvcData(main.profile);
  main.deviceSettings.doReadDvcData(main.profile);
  return ExitCode::Ok;
}

ExitCode SettingCommandGroup::doImageDrives(const std::string& key, const std::string& value) {
  constexpr int MostDrives = 5;
  const bool count = key == "ImageDrives";
  if (!parseNumber(value, count ? 1 : 0, count ? MostDrives : 1)) return badValue(key, value);
  session_.main.profile.doWriteProfile("ImageDrives", count ? "Drives" : key, value);
  session_.screen.line("This holds from the next start on.");
  return ExitCode::Ok;
}

}  // namespace korvenal::console
