#pragma once

#include "core/frmAddFiles.h"
#include "job/Job.h"
#include "plan/Plan.h"
#include "plan/SourceScanServices.h"

namespace korvenal {

/// For jobs that are not to split files if possible: asks about every file that goes on no disc
/// whole, in the order of the rows.
class LargeFiles {
 public:
  enum class Outcome {
    Done,
    SplitAll,  ///< the person wants files split after all
    Stopped,   ///< the person ended the action
  };

  LargeFiles(const SourceScanServices& services, const Job& job, Plan& plan)
      : services_(services), job_(job), plan_(plan) {}

  /// Takes the rows of skipped files out, and their sizes off `TotalSize`.
  Outcome check(frmAddFiles& worker);

 private:
  /// Why the file must be split; empty when it need not.
  std::string reasonToSplit(int row) const;
  int ask(int row, const std::string& reason);

  const SourceScanServices& services_;
  const Job& job_;
  Plan& plan_;
};

}  // namespace korvenal
