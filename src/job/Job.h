#pragma once

#include <array>
#include <string>

#include "core/DiscTypes.h"
#include "platform/Table.h"

namespace korvenal {

/// Columns of `vsContents`.
enum ContentsColumn : int {
  ContentsType = 0,  ///< "1" file, "0" folder
  ContentsIcon = 1,
  ContentsName = 2,  ///< the name on disc
  ContentsSize = 3,
  ContentsTypeName = 4,
  ContentsModified = 5,
  ContentsSubfolder = 6,  ///< check state only
  ContentsPath = 7,       ///< native path of the source
  ContentsColumns = 13,
};

/// Header cells of `vsContents` that carry the job's options in its file.
enum ContentsHeaderCell : int {
  HeaderProduct = 0,
  HeaderJobName = 8,
  HeaderInclude = 10,
  HeaderExclude = 11,
  HeaderOptions = 12,
};

/// A job takes so many items.
inline constexpr int MaxItems = 10'000;
/// The longest date filter.
inline constexpr int MaxFilterDays = 9999;
/// Text of the date column for a source that is not there.
inline const std::string NotExistingText = "<Not Existing>";
inline const std::string NewJobName = "New Backup";

inline const std::string FileSystemTexts[] = {"Joliet", "UDF 1.50"};

/// A backup job as its page shows it: the items and the options, under the names of the controls.
struct Job {
  Job();

  Table vsContents;

  std::string txJobName;
  int optBackupType = 0;  ///< 0 Full, 1 Differential
  bool chkDateFilter = false;
  std::string txDateFilter = "0";  ///< days; "0" is off
  std::array<bool, 4> chkAttribute{true, true, true,
                                   true};  ///< read-only, hidden, system, compressed
  std::string comboInclude = "*";
  std::string comboExclude;
  int comboDiscType = 0;    ///< index into DiscTypeTexts
  int optFileSystem = 0;    ///< index into FileSystemTexts
  int optSplitAndSpan = 1;  ///< 0 don't split if possible, 1 split and span
  std::string FileSize = "20 MB";
  std::string DiscSize = "10 MB";
  bool FinalizeDisc = false;
  bool AutoErase = false;
  bool SkipError = true;
  bool BurnBackupIndex = true;
  bool BurnRestoreKit = false;

  bool Modified = false;
  bool SavedOnce = false;
  std::string JobFile;         ///< native path; empty for a job never saved
  bool estimateShown = false;  ///< an estimate of just these contents is at hand
  bool onBackupPage = true;  ///< the page of the job is in view; only then is a change asked about

  bool hasItems() const { return vsContents.hasData(); }
  bool isDifferential() const { return optBackupType == 1; }
  /// "Full" or "Differential".
  std::string backupTypeText() const { return isDifferential() ? "Differential" : "Full"; }
  const std::string& discTypeText() const { return discTypeTextOf(comboDiscType); }

  /// The caption of the third options tab.
  std::string splitTabText() const {
    return std::string("Split-and-Span ") + (optSplitAndSpan == 0 ? "= OFF" : "= ON");
  }

  /// Gives `vsContents` its 13 columns, the header texts and the hidden columns. Rows stay, and so
  /// do the hidden header cells, which carry the job's options while it is saved and loaded.
  void doInitContents();
  /// True sets `Modified` and drops the estimate, which holds only for the contents it was made
  /// for; false clears `Modified`.
  void doMarkChanged(bool changed);
  void doSetEstimated(bool shown) { estimateShown = shown; }
};

}  // namespace korvenal
