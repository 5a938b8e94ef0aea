#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Clock.h"
#include "platform/Fixed4.h"
#include "platform/SetIdentity.h"

namespace korvenal {

/// Attribute bits of an entry, by their traditional values.
enum FileAttribute : std::uint32_t {
  AttributeReadOnly = 1,       ///< no write bit at all
  AttributeHidden = 2,         ///< the name begins with '.'
  AttributeSystem = 4,         ///< the immutable attribute
  AttributeVolumeLabel = 8,    ///< never set here
  AttributeFolder = 16,        ///< a folder
  AttributeDevice = 64,        ///< neither a regular file nor a folder
  AttributeCompressed = 2048,  ///< the compressed attribute
};

/// What lies at a path. A link to a regular file or to a folder counts as what it leads to.
struct FileInfo {
  enum class Kind { Missing, File, Folder, Other };
  Kind kind = Kind::Missing;
  Fixed4 size;  ///< bytes; 0 for folders
  UnixTime modified = 0;
  std::int64_t modifiedNanoseconds = 0;  ///< the fraction of a second of `modified`
  /// When anything of it changed last, its permissions included; no program can put it back.
  /// 0 for what lies on a disc.
  UnixTime changed = 0;
  std::int64_t changedNanoseconds = 0;  ///< the fraction of a second of `changed`
  std::uint64_t inode = 0;
  std::uint32_t attributes = 0;   ///< FileAttribute bits
  std::uint32_t permissions = 0;  ///< permission bits (0777)
  std::uint32_t owner = 0;        ///< number of the user that it belongs to
  std::uint32_t group = 0;        ///< number of its group
};

/// Label, file system and room of a volume.
struct VolumeInfo {
  std::string label;
  std::string fileSystem;  ///< "CDFS" for ISO 9660, the UDF name for UDF
  Fixed4 totalBytes;
  Fixed4 freeBytes;
  std::string mountPoint = {};  ///< "/home" of a native path; empty for a disc
};

/// The outcome of an operation on files: code 0 is success, any other the system's error number
/// in the program's terms.
struct FileOutcome {
  static constexpr int DiskFull = 39;  ///< no room left, or the quota is used up
  static constexpr int Stopped = -1;   ///< the progress callback asked to stop
  int code = 0;
  std::string text;  ///< the system's words for the code; empty for success
  explicit operator bool() const { return code == 0; }
};

/// Called after each piece of a long copy with the number of pieces done; true stops the copy.
using CopyProgress = std::function<bool(std::int64_t pieces)>;

/// Files as they can be looked at and read: native paths, and paths on a drive ("V:\a\b", or
/// "V:32\a\b" in the tree of one session), which are read from the disc itself without mounting it.
class FileView {
 public:
  static constexpr std::int64_t PieceBytes = 262144;  ///< a copy reports after each such piece

  virtual ~FileView() = default;

  virtual FileInfo doGetInfo(const std::string& path) const = 0;
  /// Label and file system of the volume that holds the path. Nothing on any failure.
  virtual std::optional<VolumeInfo> doGetVolumeInfo(const std::string& path) const = 0;
  /// The sessions of the disc in the drive of the path, the oldest first, as far as they hold a
  /// tree. Nothing of a path on no drive.
  virtual std::vector<DiscSession> discSessions(const std::string&) const { return {}; }
  /// The whole content; nothing when it cannot be read or is larger than `maxBytes`.
  virtual std::optional<std::string> readAll(const std::string& path,
                                             std::int64_t maxBytes) const = 0;
  /// Up to `bytes` bytes from byte `offset` (from 0) on, fewer only at the end; nothing when they
  /// cannot be read. With this a large file is read in pieces and the caller yields between them.
  virtual std::optional<std::string> readPart(const std::string& path, std::int64_t offset,
                                              std::int64_t bytes) const = 0;
  /// Names in a folder in the order of their bytes, without "." and ".."; empty on any failure.
  virtual std::vector<std::string> listFolder(const std::string& path) const = 0;

  /// True for an existing file or folder (of any kind).
  bool doFileExists(const std::string& path) const {
    return doGetInfo(path).kind != FileInfo::Kind::Missing;
  }
  bool doFolderExists(const std::string& path) const {
    return doGetInfo(path).kind == FileInfo::Kind::Folder;
  }
  /// True when the path leads to something that is no folder; a missing path is no file.
  bool doIsFile(const std::string& path) const {
    const auto kind = doGetInfo(path).kind;
    return kind == FileInfo::Kind::File || kind == FileInfo::Kind::Other;
  }
  /// Bytes of a readable file; 0 for everything else.
  Fixed4 doGetFileSize(const std::string& path) const {
    const FileInfo info = doGetInfo(path);
    return info.kind == FileInfo::Kind::File ? info.size : Fixed4();
  }
};

/// Takes what went wrong with one of the program's own files, as a sentence for the person.
using OwnFileFault = std::function<void(const std::string& path, const std::string& text)>;

/// A file being written from its start. Destroying it closes it.
class FileWriter {
 public:
  virtual ~FileWriter() = default;
  /// False when the bytes did not all arrive; `finish` then fails as well.
  virtual bool write(std::string_view bytes) = 0;
  /// Closes the file; the outcome of everything written.
  virtual FileOutcome finish() = 0;
};

/// The program's own files (settings, records, temporary files): looking, reading and writing.
/// Users' files are only ever looked at through this port, and restored through TargetFolder.
class Files : public FileView {
 public:
  /// True when nothing is left at the path (also when nothing was).
  virtual bool doDeleteFile(const std::string& path) = 0;
  /// Makes the folder with all missing levels, private to the user.
  virtual bool doCreateFolderPath(const std::string& path) = 0;
  /// Replaces `to`.
  virtual bool doRename(const std::string& from, const std::string& to) = 0;
  /// Takes away the read-only state.
  virtual void doClearReadOnly(const std::string& path) = 0;
  /// A new empty file at the path; an older one is replaced. Nothing when it cannot be made.
  virtual std::unique_ptr<FileWriter> doCreateFile(const std::string& path) = 0;
  /// Writes a temporary file beside the target, flushes it and renames it over the target: at any
  /// moment the path holds the old content or the new one.
  virtual FileOutcome writeAll(const std::string& path, std::string_view content) = 0;
  /// Deletes the temporary files that `writeAll` of killed processes left in the folder. Those of
  /// processes at work stay.
  virtual void doDeleteTemporaries(const std::string&) {}
};

}  // namespace korvenal
