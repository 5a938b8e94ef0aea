#include "restore/RestoreProgress.h"

#include <algorithm>

#include "platform/Files.h"

namespace korvenal {

void RestoreProgress::doRestoreProgress(std::int64_t pieces) {
  if (RestoreBytesTotal < RestoreBytesDone)
    RestoreBytesTotal = RestoreBytesDone + Fixed4(FileView::PieceBytes);
  const double done = RestoreBytesDone.toDouble() +
                      static_cast<double>(pieces) * static_cast<double>(FileView::PieceBytes);
  const double total = RestoreBytesTotal.toDouble();
  const int percent = total > 0 ? static_cast<int>(std::min(done / total * 100, 100.0)) : 0;
  shown_.bar = std::max(shown_.bar, percent);
  shown_.bytesDone = static_cast<std::int64_t>(std::min(done, total));
  shown_.bytesTotal = static_cast<std::int64_t>(total);
  desktop_.doYield();
}

void RestoreProgress::doFinishFile() {
  RestoreBytesDone = RestoreBytesNext;
  doRestoreProgress(0);
}

}  // namespace korvenal
