#pragma once

#include <sys/types.h>

#include <string_view>
#include <vector>

#include "platform/TargetFolder.h"
#include "platform/linux/Descriptor.h"
#include "platform/linux/DiscFiles.h"

namespace korvenal {

/// A target folder by its descriptor. Every path is resolved from there anew and no link is
/// followed on the way, so nothing that is put there meanwhile leads outside, and no file lands in
/// a folder that was moved away.
class LinuxTargetFolder : public TargetFolder {
 public:
  /// Without `discs`, which must outlive this, sources are native files only.
  LinuxTargetFolder(Descriptor folder, DiscFiles* discs);

  FileInfo doGetInfo(const std::string& path) const override;
  bool isInUse(const std::string& path) const override;
  FileOutcome doCreateFolderPath(const std::string& path) override;
  FileOutcome doDeleteFile(const std::string& path) override;
  /// The partial target of a failure or a stop is dated 1970, so that it counts as older than any
  /// source from then on.
  FileOutcome doCopyFileProgress(const std::string& source, const std::string& path,
                                 const CopyProgress& progress) override;
  /// A partial target as above.
  FileOutcome doAppendFileProgress(const std::string& source, const std::string& path,
                                   const CopyProgress& progress) override;

 private:
  enum class Missing { Fail, Make };

  /// Where an entry stands: its open folder and its name there.
  struct Place {
    int folder = -1;
    std::string name;
    int error = 0;  ///< an errno; the rest is good only with 0
  };

  Place placeOf(std::string_view path, Missing missing) const;
  int enterParent(std::string_view parent, Missing missing) const;
  int walkTo(std::string_view parent, Missing missing) const;
  int openForCopy(const std::string& path, Descriptor& target);
  int openForAppend(const std::string& path, Descriptor& target);
  int copyPiece(FileStream& source, int target, std::int64_t offset, std::int64_t bytes);
  FileOutcome copyContent(FileStream& source, int target, const CopyProgress& progress);

  Descriptor folder_;
  DiscFiles* discs_;
  std::vector<char> buffer_;
  mutable Descriptor parent_;  ///< the folder of the path in hand
};

class LinuxTargetFolders : public TargetFolders {
 public:
  explicit LinuxTargetFolders(DiscFiles* discs) : discs_(discs) {}
  std::unique_ptr<TargetFolder> open(const std::string& path) override;

 private:
  DiscFiles* discs_;
};

}  // namespace korvenal
