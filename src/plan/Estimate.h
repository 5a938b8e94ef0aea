#pragma once

#include <string>

#include "core/ActionState.h"
#include "job/Job.h"
#include "plan/Plan.h"
#include "plan/SourceScan.h"
#include "platform/Desktop.h"

namespace korvenal {

/// Tells how many discs the job needs, without burning anything.
class Estimate {
 public:
  Estimate(ActionState& state, Desktop& desktop, Job& job, Plan& plan, SourceScan& scan)
      : state_(state), desktop_(desktop), job_(job), plan_(plan), scan_(scan) {}

  std::string EstimateDisc;  ///< the sentence; valid while `Job::estimateShown`

  /// Plans the job and shows the sentence. Nothing is shown when the scan was stopped or ran over
  /// the limits.
  void pbEstimate();
  /// "CD 700MB x 3  (Total:  1.9 GB, 812 files, 1 file split)".
  std::string doGetEstimateText() const;

 private:
  ActionState& state_;
  Desktop& desktop_;
  Job& job_;
  Plan& plan_;
  SourceScan& scan_;
};

}  // namespace korvenal
