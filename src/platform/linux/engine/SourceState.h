#pragma once

#include <sys/stat.h>

#include <cstdint>
#include <string>

#include "platform/Files.h"
#include "platform/linux/Descriptor.h"

namespace korvenal {

/// A source file as it is at one moment.
struct SourceState {
  /// A moment of the file system, to the nanosecond.
  struct Moment {
    std::int64_t seconds = 0;
    std::int64_t nanoseconds = 0;
    bool operator==(const Moment&) const = default;
  };
  /// What a program may change without touching the content; each such change moves `changed`.
  struct Keeping {
    mode_t mode = 0;
    uid_t owner = 0;
    gid_t group = 0;
    nlink_t links = 0;
    bool operator==(const Keeping&) const = default;
  };

  std::int64_t size = 0;  ///< bytes
  Moment modified;
  Moment changed;  ///< no program can put this back
  std::uint64_t inode = 0;
  Keeping keeping;

  static SourceState of(const struct stat& status);
  /// Of one size and modification time.
  bool looksLike(const SourceState& other) const {
    return size == other.size && modified == other.modified;
  }
  FileInfo toInfo() const;
};

/// Opens a source for reading, without waiting for a pipe. An errno and no descriptor when it is
/// no readable regular file; its state otherwise.
Descriptor openSourceFile(const std::string& path, SourceState& state, int& error);

}  // namespace korvenal
