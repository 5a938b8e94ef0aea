#pragma once

#include <sys/types.h>

#include <set>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/TargetFolder.h"
#include "platform/linux/Descriptor.h"
#include "platform/linux/DiscFiles.h"
#include "platform/linux/PartFile.h"
#include "platform/linux/PieceCopy.h"

namespace korvenal {

/// A target folder by its descriptor. Every path is resolved from there anew and no link is
/// followed on the way, so nothing that is put there meanwhile leads outside. A file in the making
/// stays in the folder that it was begun in, wherever that is moved.
class LinuxTargetFolder : public TargetFolder {
 public:
  /// Without `discs`, which must outlive this, sources are native files only.
  LinuxTargetFolder(Descriptor folder, DiscFiles* discs);

  FileInfo doGetInfo(const std::string& path) const override;
  bool isInUse(const std::string& path) const override;
  FileOutcome doCreateFolderPath(const std::string& path) override;
  FileOutcome doCopyFileProgress(const std::string& source, const std::string& path,
                                 const CopyProgress& progress) override;
  std::unique_ptr<JoinedFile> doBeginJoinedFile(const std::string& path,
                                                FileOutcome& outcome) override;
  FileOutcome doSync() override;
  FileOutcome doTestWriting() override;
  std::vector<std::string> takeMadeFolders() override;
  void doDressFolder(const std::string& path, const FileInfo& look) override;

 private:
  enum class Missing { Fail, Make };

  /// Where an entry stands: its open folder and its name there.
  struct Place {
    int folder = -1;
    std::string name;
    int error = 0;  ///< an errno; the rest is good only with 0
  };
  /// A file system that was written to, by a folder on it that was opened before.
  struct Medium {
    dev_t device = 0;
    Descriptor folder;  ///< none when no folder there could be opened
  };

  Place placeOf(std::string_view path, Missing missing) const;
  int enterParent(std::string_view parent, Missing missing) const;
  int walkTo(std::string_view parent, Missing missing) const;
  int beginFile(const Place& place, PartFile& file);
  void noteFolder(int folder);

  Descriptor folder_;
  DiscFiles* discs_;
  PieceCopy copy_;
  mutable Descriptor parent_;  ///< the folder of the path in hand
  mutable std::vector<std::string> made_;
  std::set<std::pair<dev_t, ino_t>> noted_;  ///< folders that were written to
  std::vector<Medium> mediums_;
  bool unsynced_ = false;  ///< a file was made since the last doSync
};

class LinuxTargetFolders : public TargetFolders {
 public:
  explicit LinuxTargetFolders(DiscFiles* discs) : discs_(discs) {}
  std::unique_ptr<TargetFolder> open(const std::string& path) override;

 private:
  DiscFiles* discs_;
};

}  // namespace korvenal
