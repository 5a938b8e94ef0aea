#pragma once

#include <cstdint>
#include <vector>

#include "platform/linux/DiscFiles.h"

namespace korvenal {

/// Copies contents in pieces of FileView::PieceBytes.
class PieceCopy {
 public:
  PieceCopy() : buffer_(static_cast<std::size_t>(FileView::PieceBytes)) {}

  /// Writes the whole source to where the open file `target` stands.
  FileOutcome copy(FileStream& source, int target, const CopyProgress& progress);

 private:
  int copyPiece(FileStream& source, int target, std::int64_t offset, std::int64_t bytes);

  std::vector<char> buffer_;
};

}  // namespace korvenal
