#pragma once

#include <functional>
#include <string>

#include "core/ActionState.h"
#include "job/Job.h"
#include "plan/Plan.h"
#include "plan/SourceScan.h"
#include "platform/Desktop.h"
#include "platform/Profile.h"

namespace korvenal {

/// Tells how many discs the job needs, without burning anything.
class Estimate {
 public:
  struct Services {
    ActionState& state;
    Desktop& desktop;
    Profile& profile;
    /// Can the drives write the disc type (index of `comboDiscType`)? Tells when they cannot.
    std::function<bool(int discType)> doCheckDevice;
  };

  Estimate(Services services, Job& job, Plan& plan, SourceScan& scan)
      : services_(std::move(services)), job_(job), plan_(plan), scan_(scan) {}

  std::string EstimateDisc;  ///< the sentence; valid while `Job::estimateShown`

  /// Plans the job, shows the sentence, suggests another disc type when that is clearly better,
  /// and opens the report when the person wants to see it each time. Nothing is shown when the
  /// scan was stopped or ran over the limits.
  void pbEstimate();
  /// The report; nothing without an estimate at hand.
  void pbEstimateInfo();
  /// "CD 700MB x 3  (Total:  1.9 GB, 812 files, 1 file split)".
  std::string doGetEstimateText() const;

 private:
  /// False: stopped, or over the limits.
  bool doPlan();
  /// True when the person wants another disc type that the job must be planned anew for.
  bool doSuggestDiscType();
  bool isAgreed(const std::string& question);
  void doTakeDiscType(int index);

  Services services_;
  Job& job_;
  Plan& plan_;
  SourceScan& scan_;
};

}  // namespace korvenal
