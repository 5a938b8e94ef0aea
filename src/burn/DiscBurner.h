#pragma once

#include <string>

#include "burn/BackgroundWork.h"
#include "burn/BurnMonitor.h"
#include "burn/BurnServices.h"
#include "burn/DiscAttempt.h"
#include "burn/DiscLayout.h"
#include "burn/DiscTexts.h"
#include "burn/IndexOnDisc.h"
#include "burn/SourceMeasuring.h"

namespace korvenal {

/// Burns the track of one disc on a disc that is ready for it, and judges what came of it.
class DiscBurner {
 public:
  /// All arguments outlive this.
  DiscBurner(BurnServices& services, DiscTexts& texts, BackgroundWork& work, IndexOnDisc& index,
             SourceChanges& changes)
      : services_(services),
        texts_(texts),
        work_(work),
        index_(index),
        changes_(changes),
        layout_(services),
        measuring_(services, changes),
        monitor_(services.state, services.engine, services.grids, services.clock) {}

  std::string BurnLogFile;  ///< of the last burn; written by the engine

  /// Ends with the note and, at success, `BurnFromDisc` advanced in the request.
  void doBurnDisc(DiscAttempt& attempt, DiscRequest& request);

 private:
  void doSetOptions(const DiscAttempt& attempt);
  bool doCollectTrack(DiscAttempt& attempt);
  bool doInsertIndex(DiscAttempt& attempt);
  bool doLeaveWithoutIndex(DiscAttempt& attempt) const;
  bool doPrepareTrack(DiscAttempt& attempt);
  bool doMakeTrack(DiscAttempt& attempt);
  bool doMakeSmaller(DiscAttempt& attempt, std::int64_t excess);
  bool doStartBurn(DiscAttempt& attempt);
  void doTellCause();
  void doWaitForBurn();
  void doTellUnsaved(DiscAttempt& attempt);
  void doKeepBurned(DiscAttempt& attempt, DiscRequest& request);
  void doJudge(DiscAttempt& attempt, int sessionsBefore, DiscRequest& request);
  void doFailBurn(DiscAttempt& attempt, std::string sentence);
  bool doLeaveAtStop(DiscAttempt& attempt) const;
  void doShowAndPost(const std::string& text);

  BurnServices& services_;
  DiscTexts& texts_;
  BackgroundWork& work_;
  IndexOnDisc& index_;
  SourceChanges& changes_;
  DiscLayout layout_;
  SourceMeasuring measuring_;
  BurnMonitor monitor_;
};

}  // namespace korvenal
