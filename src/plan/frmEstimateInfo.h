#pragma once

#include <string>
#include <vector>

#include "job/Job.h"
#include "plan/DiscContents.h"
#include "plan/Plan.h"
#include "platform/Form.h"
#include "platform/Profile.h"
#include "platform/Table.h"

namespace korvenal {

/// Columns of `vsDisc`; the row of disc n is n.
enum EstimateDiscColumn : int {
  EstimateNumber = 0,
  EstimateLabel = 1,  ///< the volume label
  EstimateUsed = 2,
  EstimateFilled = 3,  ///< "97%"; the cell data holds the number for the bar
  EstimateDiscColumns = 4,
};

/// The report of an estimate: the discs, how full they get and what goes on each.
class frmEstimateInfo : public Form {
 public:
  frmEstimateInfo(const Job& job, const Plan& plan, Profile& profile);

  const std::string caption;
  // The fixed labels.
  const std::string discType;
  const std::string discs;  ///< "0" when there is no byte to back up
  const std::string files;
  const std::string splitFiles;
  const std::string totalSize;
  const std::vector<std::string> leftOut;  ///< lines about what the scan had to pass over

  Table vsDisc;
  DiscContents vsDContents;  ///< of the disc selected

  bool chkShowInfo;  ///< show the report after each estimate
  bool chkShowPath() const { return showPath_; }
  /// Shows or hides the column of the source paths.
  void setShowPath(bool on);

  /// Is the report to be opened after an estimate?
  static bool isWanted(const Profile& profile);

  /// The person selects a row of `vsDisc`.
  void doSelectDisc(int disc);
  /// Whole percents of a disc of the job's type that the plan fills; more than 100 when the type
  /// was changed after planning.
  int fillPercent(int disc) const;
  void pbClose() { doCloseBox(); }
  void doCloseBox() override;

 private:
  void fillDiscs();
  std::string labelOf(int disc) const;

  const Job& job_;
  const Plan& plan_;
  Profile& profile_;
  bool showPath_;
};

}  // namespace korvenal
