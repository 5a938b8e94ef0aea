#pragma once

#include <map>
#include <string>

#include "platform/Files.h"

namespace korvenal::test {

/// Files that live in memory: entries that only look like files or folders of any size, and files
/// with a content. Creating a file below `brokenFolder` fails.
class MemoryFiles : public Files {
 public:
  std::map<std::string, FileInfo> looks;
  std::map<std::string, std::string> contents;
  std::string brokenFolder = "/broken/";

  void addFolder(const std::string& path, UnixTime modified = 0);
  void addFile(const std::string& path, std::int64_t size, UnixTime modified = 0);

  FileInfo doGetInfo(const std::string& path) const override;
  std::optional<VolumeInfo> doGetVolumeInfo(const std::string&) const override { return {}; }
  std::optional<std::string> readAll(const std::string& path, std::int64_t maxBytes) const override;
  std::optional<std::string> readPart(const std::string&, std::int64_t,
                                      std::int64_t) const override {
    return {};
  }
  std::vector<std::string> listFolder(const std::string&) const override { return {}; }
  bool doDeleteFile(const std::string& path) override;
  bool doCreateFolderPath(const std::string& path) override;
  bool doRename(const std::string& from, const std::string& to) override;
  void doClearReadOnly(const std::string&) override {}
  std::unique_ptr<FileWriter> doCreateFile(const std::string& path) override;
  FileOutcome writeAll(const std::string& path, std::string_view content) override;
};

}  // namespace korvenal::test
