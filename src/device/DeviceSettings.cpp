#include "device/DeviceSettings.h"

#include <string_view>

namespace korvenal {

namespace {

constexpr std::string_view Section = "Devices";
constexpr std::string_view ModeTexts[] = {"Single-drive", "Multiple-drive", "Autoloader"};

/// Values outside `first` to `last` become `otherwise`.
struct Range {
  std::int64_t last;
  std::int64_t otherwise;
  std::int64_t first = 0;
};

constexpr Range ModeRange{2, 0};
constexpr Range FlagRange{1, 1};
constexpr Range ErrorMaxRange{5, 1, 1};
constexpr Range DriveCountRange{5, 5};
constexpr std::int64_t LastCdSpeed = 29;
constexpr std::int64_t LastDvdSpeed = 13;

std::int64_t readNumber(const Profile& profile, std::string_view key, std::string_view fallback,
                        Range range) {
  const std::int64_t value = profile.doReadProfile(Section, key, fallback, 10);
  return value < range.first || value > range.last ? range.otherwise : value;
}

std::string numbered(std::string_view key, std::size_t number) {
  return std::string(key) + std::to_string(number);
}

/// The letter of a stored name and ':'; empty when it names no drive.
std::string letterText(std::string_view name) {
  if (name.empty()) return {};
  char letter = name.front();
  if (letter >= 'a' && letter <= 'z') letter = static_cast<char>(letter - 'a' + 'A');
  if (letter < 'A' || letter > 'Z') return {};
  return {letter, ':'};
}

}  // namespace

void DeviceSettings::doReadDvcData(const Profile& profile) {
  DeviceMode = readNumber(profile, "dvcType", "0", ModeRange);
  ReadSpeedCD = readNumber(profile, "dvcReadCD", "0", {LastCdSpeed, 0});
  WriteSpeedCD = readNumber(profile, "dvcWriteCD", "0", {LastCdSpeed, 1});
  ReadSpeedDVD = readNumber(profile, "dvcReadDVD", "0", {LastDvdSpeed, 0});
  WriteSpeedDVD = readNumber(profile, "dvcWriteDVD", "0", {LastDvdSpeed, 1});

  SingleDrive = profile.doReadProfile(Section, "dvcS_Name", "");
  SingleEject = readNumber(profile, "dvcS_Eject", "1", FlagRange);
  SingleSkipEjectFirst = readNumber(profile, "dvcS_SkipEjectFirst", "1", FlagRange);

  MultiDriveCount = readNumber(profile, "dvcM_Drives", "1", DriveCountRange);
  for (std::size_t i = 0; i < MultiDrive.size(); ++i)
    MultiDrive[i] = profile.doReadProfile(Section, numbered("dvcM_Name", i + 1), "");
  MultiErrorMax = readNumber(profile, "dvcM_ErrorMax", "1", ErrorMaxRange);
  MultiEject = readNumber(profile, "dvcM_Eject", "1", FlagRange);
  MultiSkipEjectFirst = readNumber(profile, "dvcM_SkipEjectFirst", "0", FlagRange);

  AutoloaderDrive = profile.doReadProfile(Section, "dvcAL_Name", "");
  AutoloaderErrorMax = readNumber(profile, "dvcAL_ErrorMax", "1", ErrorMaxRange);
  AutoloaderBadDisc = readNumber(profile, "dvcAL_BadDisc", "1", FlagRange);
  for (std::size_t i = 0; i < AutoloaderCommand.size(); ++i)
    AutoloaderCommand[i] = profile.doReadProfile(Section, numbered("dvcAL_Command", i), "");

  doBuildDriveLetters();
}

void DeviceSettings::doWriteDvcData(Profile& profile) const {
  std::vector<ProfileEntry> entries;
  const auto write = [&entries](const std::string& key, const std::string& value) {
    entries.push_back({std::string(Section), key, value});
  };
  const auto writeNumber = [&write](const std::string& key, std::int64_t value) {
    write(key, std::to_string(value));
  };
  writeNumber("dvcType", DeviceMode);
  writeNumber("dvcReadCD", ReadSpeedCD);
  writeNumber("dvcWriteCD", WriteSpeedCD);
  writeNumber("dvcReadDVD", ReadSpeedDVD);
  writeNumber("dvcWriteDVD", WriteSpeedDVD);

  write("dvcS_Name", SingleDrive);
  writeNumber("dvcS_Eject", SingleEject);
  writeNumber("dvcS_SkipEjectFirst", SingleSkipEjectFirst);

  for (std::size_t i = 0; i < MultiDrive.size(); ++i)
    write(numbered("dvcM_Name", i + 1), MultiDrive[i]);
  writeNumber("dvcM_ErrorMax", MultiErrorMax);
  writeNumber("dvcM_Eject", MultiEject);
  writeNumber("dvcM_SkipEjectFirst", MultiSkipEjectFirst);

  write("dvcAL_Name", AutoloaderDrive);
  writeNumber("dvcAL_ErrorMax", AutoloaderErrorMax);
  writeNumber("dvcAL_BadDisc", AutoloaderBadDisc);
  for (std::size_t i = 0; i < AutoloaderCommand.size(); ++i)
    write(numbered("dvcAL_Command", i), AutoloaderCommand[i]);
  profile.doWriteProfiles(entries);
}

void DeviceSettings::doBuildDriveLetters() {
  DriveLetters.clear();
  switch (DeviceMode) {
    case 1:
      for (const std::string& drive : MultiDrive) DriveLetters += letterText(drive);
      break;
    case 2:
      DriveLetters = letterText(AutoloaderDrive);
      break;
    default:
      DriveLetters = letterText(SingleDrive);
      break;
  }
  const bool knownMode = DeviceMode >= 0 && DeviceMode < std::ssize(ModeTexts);
  DeviceName = knownMode ? ModeTexts[DeviceMode] : ModeTexts[0];
  if (!DriveLetters.empty()) DeviceName += " (" + DriveLetters + ")";
}

}  // namespace korvenal
