#pragma once

#include <cstdint>

#include "core/RunGrids.h"
#include "platform/Desktop.h"
#include "platform/Fixed4.h"

namespace korvenal {

/// How far the restore from the disc in hand has come, in bytes.
class RestoreProgress {
 public:
  RestoreProgress(Progress& shown, Desktop& desktop) : shown_(shown), desktop_(desktop) {}

  Fixed4 RestoreBytesTotal;  ///< wanted from the disc
  Fixed4 RestoreBytesDone;   ///< finished, at the last finished file
  Fixed4 RestoreBytesNext;   ///< the same with the file under way

  void clear() { RestoreBytesTotal = RestoreBytesDone = RestoreBytesNext = Fixed4(); }
  void doShowFile(const std::string& caption) { shown_.text = caption; }
  /// Shows the bytes done and so many copied pieces of the file under way. Yields.
  void doRestoreProgress(std::int64_t pieces);
  /// The file under way is over, one way or the other. Yields.
  void doFinishFile();

 private:
  Progress& shown_;
  Desktop& desktop_;
};

}  // namespace korvenal
