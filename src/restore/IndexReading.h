#pragma once

#include <optional>
#include <string>

#include "core/Workspace.h"
#include "platform/Desktop.h"
#include "platform/Files.h"
#include "platform/IndexArchive.h"

namespace korvenal {

/// Reads index files, packed or plain, from native paths and from discs. All that it works with
/// outlives it.
class IndexReading {
 public:
  struct Content {
    std::string name;  ///< of the file in the archive; the path of a file that is not packed
    std::string text;
  };

  IndexReading(Desktop& desktop, Files& files, IndexArchive& archive, const Workspace& workspace)
      : desktop_(desktop), files_(files), archive_(archive), workspace_(workspace) {}

  /// Nothing when the file cannot be read, is no index by its beginning, or is too large for one.
  std::optional<Content> doRead(const std::string& path) const;

 private:
  std::optional<std::string> doExtract(const std::string& path) const;
  std::optional<std::string> doReadText(const std::string& path) const;

  Desktop& desktop_;
  Files& files_;
  IndexArchive& archive_;
  const Workspace& workspace_;
};

}  // namespace korvenal
