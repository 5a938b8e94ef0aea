#pragma once

#include <string>
#include <string_view>

#include "core/ActionState.h"
#include "device/DriveDiscovery.h"
#include "job/Job.h"

namespace korvenal {

/// Bytes that a filter list may have.
inline constexpr std::size_t MaxFilterBytes = 260;

/// A job name without what neither a file nor a disc can have in a name; dots stay, since a job is
/// also named after its file.
std::string cleanJobName(std::string_view text);
/// A filter list from outside, within its length.
std::string cleanFilter(std::string_view text);

/// The controls of the backup page: what a person can set, with the rules of each. A setter that
/// returns bool refuses what is no choice of its list, and changes nothing then.
class JobControls {
 public:
  JobControls(ActionState& state, DriveDiscovery& drives, Job& job)
      : state_(state), drives_(drives), job_(job) {}

  /// Forbidden characters and line ends are dropped, as they are refused when typed.
  void setJobName(std::string_view text);
  bool setBackupType(int option);
  /// Tells at once when the drives cannot write the disc type; the choice stands all the same.
  bool setDiscType(int index);
  bool setFileSystem(int option);
  bool setSplitAndSpan(int option);
  /// "20 MB", or the number alone; one of the list.
  bool setFileSize(std::string_view text);
  bool setDiscSize(std::string_view text);
  void setFinalizeDisc(bool on);
  void setAutoErase(bool on);
  void setSkipError(bool on);
  void setBurnBackupIndex(bool on);
  void setBurnRestoreKit(bool on);

  void setInclude(std::string_view text);
  void setExclude(std::string_view text);
  /// The person leaves the field: excluding everything was a slip of the hand.
  void doLeaveExclude();
  /// Off is "0" days; on starts with 90.
  void setDateFilter(bool on);
  /// Days as typed: the whole number that the text begins with.
  void setDays(std::string_view text);
  /// Boxes 0 to 3.
  bool setAttribute(int box, bool on);

  /// The box of a folder item; false for rows that have none.
  bool setSubfolder(int row, bool on);

 private:
  ActionState& state_;
  DriveDiscovery& drives_;
  Job& job_;
};

}  // namespace korvenal
