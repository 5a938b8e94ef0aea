#pragma once

#include <string>

#include "platform/TargetFolder.h"
#include "restore/RestoreServices.h"

namespace korvenal {

/// A file about to be restored.
struct RestoredFile {
  std::string path;      ///< in the target folder, as a disc path
  std::string shown;     ///< the same as the native path that a person sees
  Fixed4 size;           ///< bytes
  std::string modified;  ///< 14 digits; empty when unknown
};

/// Decides what becomes of files that already stand in the target folder.
class ExistingFiles {
 public:
  explicit ExistingFiles(const RestoreServices& services) : services_(services) {}

  /// Takes the mode of the page; "replace all" holds until the next call.
  void doBegin() { ExistingMode = services_.page.RestoreOpt; }
  /// True when an existing file may be replaced without a question.
  bool replacesUnasked() const {
    return ExistingMode == ExistingReplaceAll || ExistingMode == ExistingReplaceOlder;
  }
  /// True when the file is to be written. May ask; a cancel sets `StopAction`.
  bool mayWrite(const TargetFolder& target, const RestoredFile& file);

 private:
  bool doAsk(const FileInfo& existing, const RestoredFile& file);

  const RestoreServices& services_;
  int ExistingMode = ExistingAsk;
};

}  // namespace korvenal
