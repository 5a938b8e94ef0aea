#pragma once

#include <string>

#include "platform/Files.h"

namespace korvenal {

/// The archive bit of files: set on every file until it is cleared, and set again as soon as the
/// file's size, modification time, change time or inode differ from what they were then. It is kept
/// in a store of the program's own; users' files are never written to.
class ArchiveBits {
 public:
  virtual ~ArchiveBits() = default;
  /// `info` is what the path looks like now. True also when the store cannot be read.
  virtual bool doHasArchiveBit(const std::string& path, const FileInfo& info) = 0;
  /// Remembers the file as saved, with `info` as it looked when it was saved, which need not be how
  /// it looks now. Failures leave the bit set.
  virtual void doClearArchiveBit(const std::string& path, const FileInfo& info) = 0;
  /// Brackets many calls so that they are stored together; a crash between loses only bits that
  /// are then still set.
  virtual void begin() = 0;
  virtual void commit() = 0;
};

}  // namespace korvenal
