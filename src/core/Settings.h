#pragma once

#include <cstdint>
#include <string>

#include "platform/Profile.h"

namespace korvenal {

/// Section MainWin: how the main window stood at the last exit, as stored. The window itself
/// decides which of these values it can use.
struct MainWindowPlace {
  std::int64_t State = 2;  ///< 0 normal, 1 minimized, 2 maximized
  std::int64_t Left = 0, Top = 0, Width = 12000, Height = 9000;  ///< twips
};

/// The persistent options of the program, in memory under the names of their keys. Numbers are
/// list indices.
class Settings {
 public:
  explicit Settings(Profile& profile) : profile_(profile) {}

  // Section Action.
  bool PlaySound = true;
  bool SystemTray = false;
  // Section Backup: defaults of new jobs, and rules of the scan.
  bool SplitFile = false;  ///< true: a new job splits no file if possible
  bool Finalize = false;
  bool AutoErase = false;
  bool SkipError = true;
  bool ExcludeTopFolder = true;
  bool ExcludeEmptyFolder = true;
  std::int64_t FileSystem = 0;  ///< 0 Joliet, 1 UDF 1.50
  std::int64_t SplitSize = 2;   ///< index into SplitFileMegabytes
  std::int64_t SplitSize2 = 5;  ///< index into SplitDiscMegabytes
  // Section Restore.
  std::int64_t Default = 1;  ///< index of the restore mode
  bool SkipSystem = true;
  bool SkipOpen = true;
  MainWindowPlace MainWin;

  /// Reads all of the above and applies the range rules; only upper bounds are mended, so a
  /// negative index stays and whoever looks up a list must expect it.
  void doReadInitData();
  /// Writes the same keys in their order.
  void doSaveInitData();

  Profile& profile() { return profile_; }

 private:
  Profile& profile_;
};

/// "the file is larger than", in MiB, by list index.
inline constexpr int SplitFileMegabytes[] = {5,   10,  20,  30,  40,  50, 100,
                                             200, 300, 400, 500, 600, 700};
/// "and the disc space remaining is more than", in MiB, by list index.
inline constexpr int SplitDiscMegabytes[] = {1,  2,  3,   4,   5,   10,  20, 30,
                                             40, 50, 100, 200, 300, 400, 500};

}  // namespace korvenal
