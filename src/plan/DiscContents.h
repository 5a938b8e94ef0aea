#pragma once

#include <string>

#include "job/Job.h"
#include "plan/Plan.h"

namespace korvenal {

/// Columns of `vsDContents`.
enum DiscContentsColumn : int {
  DiscContentsName = 0,  ///< path on disc, as it is burned
  DiscContentsSize = 1,
  DiscContentsDate = 2,
  DiscContentsNote = 3,
  DiscContentsSource = 4,
  DiscContentsColumns = 5,
};

/// What goes on one disc of a plan, as a table that is read from the plan on demand: a disc may
/// hold a million rows. Row 0 is the header. Job and plan outlive it and stay as they are.
class DiscContents {
 public:
  DiscContents(const Job& job, const Plan& plan) : job_(job), plan_(plan) {}

  /// Disc 1 to 100; another one has no rows.
  void doShowDisc(int disc);
  int disc() const { return disc_; }

  int Rows() const { return end_ - first_ + 1; }
  int Cols() const { return DiscContentsColumns; }
  std::string text(int row, int col) const;

 private:
  std::string header(int col) const;
  std::string note(int planRow) const;

  const Job& job_;
  const Plan& plan_;
  int disc_ = 0;
  int first_ = 0;  ///< plan rows of the disc
  int end_ = 0;    ///< behind its last
};

}  // namespace korvenal
