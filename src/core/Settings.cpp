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

std::string_view flagText(bool flag) {
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
  profile_.doWriteProfile("Action", "PlaySound", flagText(PlaySound));
  profile_.doWriteProfile("Action", "SystemTray", flagText(SystemTray));

  profile_.doWriteProfile("Backup", "Finalize", flagText(Finalize));
  profile_.doWriteProfile("Backup", "SplitFile", flagText(SplitFile));
  profile_.doWriteProfile("Backup", "AutoErase", flagText(AutoErase));
  profile_.doWriteProfile("Backup", "ExcludeTopFolder", flagText(ExcludeTopFolder));
  profile_.doWriteProfile("Backup", "ExcludeEmptyFolder", flagText(ExcludeEmptyFolder));
  profile_.doWriteProfile("Backup", "SplitSize", std::to_string(SplitSize));
  profile_.doWriteProfile("Backup", "SplitSize2", std::to_string(SplitSize2));
  profile_.doWriteProfile("Backup", "SkipError", flagText(SkipError));
  profile_.doWriteProfile("Backup", "FileSystem", std::to_string(FileSystem));

  profile_.doWriteProfile("Restore", "Default", std::to_string(Default));
  profile_.doWriteProfile("Restore", "SkipSystem", flagText(SkipSystem));
  profile_.doWriteProfile("Restore", "SkipOpen", flagText(SkipOpen));

  profile_.doWriteProfile("MainWin", "State", std::to_string(MainWin.State));
  profile_.doWriteProfile("MainWin", "Left", std::to_string(MainWin.Left));
  profile_.doWriteProfile("MainWin", "Top", std::to_string(MainWin.Top));
  profile_.doWriteProfile("MainWin", "Width", std::to_string(MainWin.Width));
  profile_.doWriteProfile("MainWin", "Height", std::to_string(MainWin.Height));
}

}  // namespace korvenal
