#pragma once

#include "platform/Files.h"
#include "platform/linux/DiscFiles.h"

namespace korvenal {

/// Files by their native paths, and by paths on a drive for all that only reads.
class LinuxFiles : public Files {
 public:
  /// Without `discs`, which must outlive this, no path on a drive exists. What is newly written
  /// below `privateFolder`, a native path with '/' at its end, is for the user alone.
  explicit LinuxFiles(DiscFiles* discs, std::string privateFolder = {})
      : discs_(discs), privateFolder_(std::move(privateFolder)) {}

  FileInfo doGetInfo(const std::string& path) const override;
  std::optional<VolumeInfo> doGetVolumeInfo(const std::string& path) const override;
  std::vector<DiscSession> discSessions(const std::string& path) const override;
  std::optional<std::string> readAll(const std::string& path, std::int64_t maxBytes) const override;
  std::optional<std::string> readPart(const std::string& path, std::int64_t offset,
                                      std::int64_t bytes) const override;
  std::vector<std::string> listFolder(const std::string& path) const override;

  bool doDeleteFile(const std::string& path) override;
  bool doCreateFolderPath(const std::string& path) override;
  bool doRename(const std::string& from, const std::string& to) override;
  void doClearReadOnly(const std::string& path) override;
  /// Private to the user.
  std::unique_ptr<FileWriter> doCreateFile(const std::string& path) override;
  /// A link at the path stays one: what it leads to is replaced. An older file's permissions stay.
  FileOutcome writeAll(const std::string& path, std::string_view content) override;
  void doDeleteTemporaries(const std::string& folder) override;

 private:
  DiscFiles* discs_;
  std::string privateFolder_;
};

}  // namespace korvenal
