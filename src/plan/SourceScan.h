#pragma once

#include <string>

#include "core/frmAddFiles.h"
#include "job/Job.h"
#include "plan/BackupIndex.h"
#include "plan/Expansion.h"
#include "plan/Plan.h"
#include "plan/SourceScanServices.h"

namespace korvenal {

/// Turns the job into a plan: what is to be burned, in which order, and on which disc. Runs inside
/// the worker dialog, for a backup and for an estimate (`Plan::ScanMode`).
class SourceScan {
 public:
  SourceScan(const SourceScanServices& services, const Job& job, Plan& plan);

  /// Makes `plan` anew. It is whole afterwards, or `vsBuffer` is empty: nothing to back up, or,
  /// with `StopAction` set, stopped or, with `LimitExceeded` as well, over the limits. Sets
  /// `TaskDone`.
  void doScanFiles(frmAddFiles& worker);

  /// Deletes the working files of the index that the last scan left, when they exist.
  void doDeleteRunFiles();

 private:
  enum class Outcome { Whole, Empty, Stopped };

  void prepare();
  Outcome makePlan(frmAddFiles& worker);
  Outcome expand(frmAddFiles& worker);
  Outcome arrange(frmAddFiles& worker);
  Outcome allocate();
  void addHeadRows();
  PlanTable::Row headRow(const std::string& name, const std::string& source);
  Outcome complete();
  void tellLimit(const std::string& text);

  SourceScanServices services_;
  const Job& job_;
  Plan& plan_;
  BackupIndex index_;
  bool splitAndSpan_ = true;
};

}  // namespace korvenal
