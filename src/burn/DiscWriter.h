#pragma once

#include "burn/BackgroundWork.h"
#include "burn/BurnServices.h"
#include "burn/DiscAttempt.h"
#include "burn/DiscBurner.h"
#include "burn/DiscCheck.h"
#include "burn/DiscPreparation.h"
#include "burn/DiscTexts.h"
#include "burn/Verification.h"

namespace korvenal {

/// What went wrong in a run so far.
struct RunFaults {
  int discs = 0;        ///< attempts that failed
  int files = 0;        ///< files that are not on their disc, or not whole
  int notVerified = 0;  ///< discs burned that could not be read again
  int missed = 0;       ///< what the job names and the scan could not take, see `Plan`
};

/// Writes the next planned discs to whatever discs are loaded in the drives of the device mode,
/// and leaves a record of every attempt.
class DiscWriter {
 public:
  explicit DiscWriter(BurnServices& services);

  std::int16_t DiscErrorCount = 0;  ///< failed discs of this run
  RunFaults faults;

  /// One load of the drives: pass after pass, until the plan is done, no drive took a disc, a stop,
  /// or the limit of failed discs (`TaskError` is then set). Begins with disc `BurnFromDisc`; a
  /// failed disc does not advance it.
  void doWriteDiscs(DiscRequest& request);
  /// Zeroes what is counted for one run.
  void doClearCounts();
  /// The plan is another one now.
  void doForgetPlan();
  /// The set is burned from its first disc on.
  void doBeginSet();
  /// Before the first disc: makes sure that there is the index that the plan wants. False when
  /// there is none and the person does not want to burn without it, or at a stop.
  bool doEnsureIndex() { return index_.doEnsure(); }

 private:
  enum class Next { Drive, Leave };

  bool doPass(DiscRequest& request);
  void doResetEngine();
  Next doWriteDisc(char letter, DiscRequest& request);
  void doAttemptDisc(DiscAttempt& attempt, DiscRequest& request);
  std::string labelOf(int number) const;
  void doSettle(DiscAttempt& attempt);
  void doRecord(DiscAttempt& attempt);
  bool isErrorLimitReached(const DiscAttempt& attempt);
  std::int64_t errorLimit() const;

  BurnServices& services_;
  DiscTexts texts_;
  BackgroundWork work_;
  SourceChanges changes_;
  DiscCheck check_;
  DiscPreparation preparation_;
  IndexOnDisc index_;
  DiscBurner burner_;
  Verification verification_;
  bool resetBeforeVerify_ = false;  ///< once set, holds for the rest of a load
};

}  // namespace korvenal
