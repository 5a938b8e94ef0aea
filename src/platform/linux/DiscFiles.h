#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Files.h"
#include "platform/Paths.h"

namespace korvenal {

/// An open file that is read at any place.
class FileStream {
 public:
  virtual ~FileStream() = default;
  /// What the file looks like: kind File, with size, date and permissions.
  virtual const FileInfo& info() const = 0;
  /// Reads up to `bytes` bytes from byte `offset` (from 0) on. The number read: 0 at and behind the
  /// end, fewer than asked only there; a negative errno when the place cannot be read.
  virtual std::int64_t read(std::int64_t offset, char* buffer, std::size_t bytes) = 0;
  /// Copies up to `bytes` bytes from byte `offset` on to where the open file `target` stands,
  /// without bringing them here. The number copied, 0 when these can only be read; a negative errno
  /// of either side.
  virtual std::int64_t copyTo(int /*target*/, std::int64_t /*offset*/, std::size_t /*bytes*/) {
    return 0;
  }
};

/// A tree on the disc in a drive: the newest one, or that of the session that begins at a block.
struct DiscTree {
  DiscTree(char drive) : letter(drive) {}
  DiscTree(const Paths::DrivePath& path) : letter(path.letter), session(path.session) {}

  char letter = 0;
  std::optional<std::uint32_t> session;
};

/// Reads the discs in the drives without mounting them. Disc paths have '\' between components and
/// none at the start; one at the end is ignored; the empty path is the root. Names ignore no case.
class DiscFiles {
 public:
  virtual ~DiscFiles() = default;
  /// Kind Missing also when the drive holds no readable disc, or the disc no such session.
  virtual FileInfo doGetInfo(DiscTree tree, std::string_view discPath) = 0;
  /// Label, file system and room of the loaded disc; nothing when there is none.
  virtual std::optional<VolumeInfo> doGetVolumeInfo(char letter) = 0;
  /// The sessions of the loaded disc that hold a tree, the oldest first.
  virtual std::vector<DiscSession> sessions(char letter) = 0;
  /// Names in the folder, in the order of their bytes; empty on any failure.
  virtual std::vector<std::string> listFolder(DiscTree tree, std::string_view discPath) = 0;
  /// Null when the path is no readable file. The stream stays valid, failing its reads, when the
  /// disc leaves the drive. Files are mostly opened in the order in which they lie on the disc.
  virtual std::unique_ptr<FileStream> open(DiscTree tree, std::string_view discPath) = 0;
};

}  // namespace korvenal
