#include "platform/linux/PieceCopy.h"

#include <algorithm>
#include <cerrno>

#include "platform/linux/SystemFiles.h"

namespace korvenal {

int PieceCopy::copyPiece(FileStream& source, int target, std::int64_t offset, std::int64_t bytes) {
  const std::int64_t sent = source.copyTo(target, offset, static_cast<std::size_t>(bytes));
  if (sent < 0) return static_cast<int>(-sent);
  const std::int64_t rest = bytes - sent;
  if (rest == 0) return 0;
  const std::int64_t got =
      source.read(offset + sent, buffer_.data(), static_cast<std::size_t>(rest));
  // Fewer bytes than the disc promised are no success.
  if (got != rest) return got < 0 ? static_cast<int>(-got) : EIO;
  return SystemFiles::writeFully(target, buffer_.data(), static_cast<std::size_t>(got));
}

FileOutcome PieceCopy::copy(FileStream& source, int target, const CopyProgress& progress) {
  const std::int64_t size = source.info().size.whole();
  for (std::int64_t done = 0; done < size;) {
    const auto wanted = std::min(size - done, FileView::PieceBytes);
    const int error = copyPiece(source, target, done, wanted);
    if (error != 0) return SystemFiles::outcomeOf(error);
    done += wanted;
    if (wanted == FileView::PieceBytes && progress && progress(done / FileView::PieceBytes))
      return {FileOutcome::Stopped, {}};
  }
  return {};
}

}  // namespace korvenal
