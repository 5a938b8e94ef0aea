#pragma once

#include <string>

#include "platform/Files.h"

namespace korvenal {

inline const std::string gProductName = "Korvenal to DVD 2.0";
/// Characters that job names and item names may not hold; the dot is among them on purpose.
inline const std::string ForbiddenChars = "./\\:*?\"<>|";
inline const std::string KitFileName = "_RestoreKit_Installer.exe";
/// The name below `TempFolder` of an index while it is read.
inline const std::string IndexScratchName = "KorvenalIndex.txt";
/// Bytes: the largest file that goes on a disc whole.
inline constexpr std::int64_t LargeFileLimit = 2147483648;

/// Where the program keeps its files. All folder paths end in '/'.
struct Workspace {
  std::string applicationFolder;
  std::string binFolder;  ///< "BIN": chime, pictures, restore kit
  std::string homeFolder;
  std::string gSettingsFile;
  std::string gRecentFile;
  std::string gDiscLogFile;
  std::string gHelpFile;         ///< the first page of the help; the other topics lie beside it
  std::string TempFolder;        ///< private scratch of runs
  std::string AutoloaderFolder;  ///< named only, never made
  std::string logFolder;         ///< "LOG": one report a disc of the run
  std::string scratchFolder;     ///< "TMP": extraction of an index

  /// The page of a help topic: "Backup Window" is "backup-window.html" beside `gHelpFile`.
  std::string helpPage(const std::string& topic) const;
  /// The report of the n-th record of the run, from 1.
  std::string runLog(int n) const { return logFolder + "$" + std::to_string(n) + ".log"; }

  /// All paths below an application folder. `temporary` is the private temporary folder wanted
  /// (see `doCheckTempFolder`).
  static Workspace below(const std::string& applicationFolder, const std::string& binFolder,
                         const std::string& homeFolder);

  /// Settles TempFolder: the wanted private folder; else "TEMP" below the application folder; else
  /// the application folder itself.
  void doCheckTempFolder(Files& files, const std::string& wanted);
  /// Makes the folders that are missing; nothing is ever emptied.
  void doCheckFolders(Files& files) const;
};

}  // namespace korvenal
