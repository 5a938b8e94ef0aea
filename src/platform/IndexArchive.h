#pragma once

#include <functional>
#include <string>

namespace korvenal {

/// Zip archives of one file with a password (traditional PKWARE encryption, which every unpacker
/// reads). Packing and unpacking work beside the caller, who runs `pump` meanwhile (a yield; none
/// when empty) and returns when the work is done.
class IndexArchive {
 public:
  using Pump = std::function<void()>;

  virtual ~IndexArchive() = default;
  /// Packs the native file into a new private archive, as an entry with the file's own name and no
  /// path. 0 on success; on failure no archive stays.
  virtual int compress(const std::string& archive, const std::string& file,
                       const std::string& password, const Pump& pump = {}) = 0;
  /// Unpacks the single entry of an archive (a native path or a path on a drive) to a new private
  /// file at `file`. No more than `maxBytes` are written. The archive is read in pieces, with
  /// `pump` between them. 0 on success; on failure no file stays.
  virtual int extract(const std::string& archive, const std::string& file,
                      const std::string& password, long long maxBytes, const Pump& pump = {}) = 0;
  /// The name of the single entry; empty when the file is no such archive. Reads its end only.
  virtual std::string entryName(const std::string& archive) = 0;
  /// Tells a zip archive from plain text by its first bytes.
  virtual bool isArchive(const std::string& path) = 0;
};

}  // namespace korvenal
