#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "core/Settings.h"
#include "platform/Desktop.h"
#include "platform/Fixed4.h"
#include "platform/SetIdentity.h"
#include "restore/RestoreTree.h"

namespace korvenal {

/// What to do about a file that already stands in the target folder, by index of `RestoreOpt`.
enum ExistingModeValue : int {
  ExistingReplaceAll = 0,
  ExistingAsk = 1,
  ExistingReplaceOlder = 2,
  ExistingSkip = 3,
};
inline const std::string RestoreOptTexts[] = {"Replace ALL", "Ask before replacing existing file",
                                              "Replace existing file if date is older ",
                                              "Skip existing file"};

/// How the rows of the tree are pictured: an icon a type costs too much in large trees.
enum class RestoreIcons { ByType, Stock, None };

/// Everything that the restore page shows and holds, shared by the opening of an index, the
/// selection and the run.
struct RestorePage {
  explicit RestorePage(Desktop& desktop)
      : vsRestore([&desktop](const std::string& name, bool isFolder) {
          return desktop.doGetTypeName(name, isFolder);
        }) {}

  // The index at hand.
  RestoreTree vsRestore;
  std::string vsBackupIndex = "Backup Index";  ///< the line above the tree
  int vsBackupIndexBar = 0;                    ///< its bar, 0 to 100
  /// Facts about the backup, its owner and time, and what is selected.
  std::array<std::string, 3> vsBackupInfo;
  std::string txJobName;
  std::string IndexPath;  ///< where the index was read from
  std::string IndexName;  ///< what it is called on the discs of its set
  std::string setName;    ///< "Photos (2026-11-22-10-00-F)": the set of discs; empty when unknown
  SetIdentity identity;   ///< of the set; unknown when its index is without a date
  bool isSetUnmarked = false;  ///< its first disc is older than identities
  bool IsDifferential = false;
  bool IndexLoading = false;
  int OutlineDepth = 0;  ///< deepest level of the tree
  RestoreIcons icons = RestoreIcons::ByType;

  // The selection.
  std::int32_t SelectedCount = 0;  ///< checked rows, folders included
  std::int32_t SelectedFiles = 0;  ///< checked files
  Fixed4 SelectedBytes;            ///< bytes of the checked files
  std::string FindText;            ///< what was found last
  int FindRow = 0;                 ///< where; 0 for nowhere
  bool FindMatchCase = false;
  bool selectButtonsEnabled = false;  ///< `pbSelectALL`, `pbInvertSelection`, `pbExpand`,
                                      ///< `pbCollapse`, `pbFind`
  bool pbFindNextEnabled = false;

  // The options of a run.
  std::string txRestoreTo;       ///< native path of the target folder
  int RestoreOpt = ExistingAsk;  ///< an ExistingModeValue
  bool SkipOpen = true;
  bool SkipSystem = true;
  bool OnlyRestoreFile = false;  ///< files land in the target folder itself, without folders

  // The run prepared.
  std::vector<int> RestoreDiscList;  ///< disc numbers in visiting order
  int RestoreDiscIndex = 0;          ///< entries finished; the next disc is at this place
  bool PreparedForRun = false;       ///< the list is built for the present selection

  int discsWanted() const { return static_cast<int>(RestoreDiscList.size()); }
  /// The options as a visit of the page begins.
  void doSetDefaults(const Settings& settings) {
    SkipOpen = settings.SkipOpen;
    SkipSystem = settings.SkipSystem;
    OnlyRestoreFile = false;
    RestoreOpt = settings.Default >= ExistingReplaceAll && settings.Default <= ExistingSkip
                     ? static_cast<int>(settings.Default)
                     : ExistingAsk;
  }
};

}  // namespace korvenal
