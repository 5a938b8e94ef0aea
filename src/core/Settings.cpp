#include "core/Settings.h"

#include <string_view>

namespace korvenal {

namespace {

constexpr int NumberDigits = 10;  ///< the longest number that a key holds

bool readFlag(const Profile& profile, std::string_view section, std::string_view key,
              bool fallback) {
  return profile.doReadProfile(section, key, fallback ? "1" : "0", NumberDigits) == 1;
}

std::int64_t readNumber(const Profile& profile, std::string_view section, std::string_view key,
                        std::int64_t fallback) {
  return profile.doReadProfile(section, key, std::to_string(fallback), NumberDigits);
}

/// A list index: above `last` it is the fallback.
std::int64_t readIndex(const Profile& profile, std::string_view section, std::string_view key,
                       std::int64_t last, std::int64_t fallback) {
  const std::int64_t index = readNumber(profile, section, key, fallback);
  return index > last ? fallback : index;
}

std::string flagText(bool flag) {
  return flag ? "1" : "0";
}

}  // namespace

void Settings::doReadInitData() {
  PlaySound = readFlag(profile_, "Action", "PlaySound", true);
  SystemTray = readFlag(profile_, "Action", "SystemTray", false);

  SplitFile = readFlag(profile_, "Backup", "SplitFile", false);
  Finalize = readFlag(profile_, "Backup", "Finalize", false);
  AutoErase = readFlag(profile_, "Backup", "AutoErase", false);
  SkipError = readFlag(profile_, "Backup", "SkipError", true);
  ExcludeTopFolder = readFlag(profile_, "Backup", "ExcludeTopFolder", true);
  ExcludeEmptyFolder = readFlag(profile_, "Backup", "ExcludeEmptyFolder", true);
  FileSystem = readIndex(profile_, "Backup", "FileSystem", 1, 0);
  SplitSize = readIndex(profile_, "Backup", "SplitSize", std::size(SplitFileMegabytes) - 1, 2);
  SplitSize2 = readIndex(profile_, "Backup", "SplitSize2", std::size(SplitDiscMegabytes) - 1, 5);

  Default = readIndex(profile_, "Restore", "Default", 3, 1);
  SkipSystem = readFlag(profile_, "Restore", "SkipSystem", true);
  SkipOpen = readFlag(profile_, "Restore", "SkipOpen", true);

  constexpr MainWindowPlace FirstPlace;
  MainWin.State = readNumber(profile_, "MainWin", "State", FirstPlace.State);
  MainWin.Left = readNumber(profile_, "MainWin", "Left", FirstPlace.Left);
  MainWin.Top = readNumber(profile_, "MainWin", "Top", FirstPlace.Top);
  MainWin.Width = readNumber(profile_, "MainWin", "Width", FirstPlace.Width);
  MainWin.Height = readNumber(profile_, "MainWin", "Height", FirstPlace.Height);
}

void Settings::doSaveInitData() {
  profile_.doWriteProfiles({
      {"Action", "PlaySound", flagText(PlaySound)},
      {"Action", "SystemTray", flagText(SystemTray)},

      {"Backup", "Finalize", flagText(Finalize)},
      {"Backup", "SplitFile", flagText(SplitFile)},
      {"Backup", "AutoErase", flagText(AutoErase)},
      {"Backup", "ExcludeTopFolder", flagText(ExcludeTopFolder)},
      {"Backup", "ExcludeEmptyFolder", flagText(ExcludeEmptyFolder)},
      {"Backup", "SplitSize", std::to_string(SplitSize)},
      {"Backup", "SplitSize2", std::to_string(SplitSize2)},
      {"Backup", "SkipError", flagText(SkipError)},
      {"Backup", "FileSystem", std::to_string(FileSystem)},

      {"Restore", "Default", std::to_string(Default)},
      {"Restore", "SkipSystem", flagText(SkipSystem)},
      {"Restore", "SkipOpen", flagText(SkipOpen)},

      {"MainWin", "State", std::to_string(MainWin.State)},
      {"MainWin", "Left", std::to_string(MainWin.Left)},
      {"MainWin", "Top", std::to_string(MainWin.Top)},
      {"MainWin", "Width", std::to_string(MainWin.Width)},
      {"MainWin", "Height", std::to_string(MainWin.Height)},
  });
}

}  // namespace korvenal
