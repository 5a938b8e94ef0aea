#pragma once

#include <array>
#include <string>

namespace korvenal {

// Titles under which tables are printed. Those of the run pages go by page: 0 backup, 1 restore,
// 2 erase.
inline const std::string DiscRecordTitle = "Disc Record";
inline const std::string RecentBackupTitle = "Recent Backup Record";
inline const std::array<std::string, 3> OutputTitles = {"Backup Disc Record", "Restore Disc Record",
                                                        "Erase Disc Record"};
inline const std::array<std::string, 3> EventTitles = {"Backup Events", "Restore Events",
                                                       "Erase Events"};
inline const std::array<std::string, 2> ErrorTitles = {"Verify Report", "Restore Error Record"};

}  // namespace korvenal
