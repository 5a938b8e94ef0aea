#pragma once

#include <string>

#include "burn/BackgroundWork.h"
#include "burn/BurnMonitor.h"
#include "burn/BurnServices.h"
#include "burn/DiscAttempt.h"
#include "burn/DiscLayout.h"
#include "burn/DiscTexts.h"
#include "burn/IndexOnDisc.h"

namespace korvenal {

/// Burns the track of one disc on a disc that is ready for it, and judges what came of it.
class DiscBurner {
 public:
  DiscBurner(BurnServices& services, DiscTexts& texts, BackgroundWork& work, IndexOnDisc& index)
      : services_(services),
        texts_(texts),
        work_(work),
        index_(index),
        layout_(services),
        monitor_(services.state, services.engine, services.grids, services.clock) {}

  std::string BurnLogFile;  ///< of the last burn; written by the engine

  /// Ends with the note and, at success, `BurnFromDisc` advanced in the request.
  void doBurnDisc(DiscAttempt& attempt, DiscRequest& request);

 private:
  void doSetOptions(const DiscAttempt& attempt);
  bool doInsertIndex(DiscAttempt& attempt);
  bool doPrepareTrack(DiscAttempt& attempt);
  bool doMakeTrack(DiscAttempt& attempt);
  bool isTrackTooLarge() const;
  bool doStartBurn(DiscAttempt& attempt);
  void doTellCause();
  void doWaitForBurn();
  void doJudge(DiscAttempt& attempt, int sessionsBefore, DiscRequest& request);
  void doFailBurn(DiscAttempt& attempt, std::string sentence);
  bool doLeaveAtStop(DiscAttempt& attempt) const;
  void doShowAndPost(const std::string& text);

  BurnServices& services_;
  DiscTexts& texts_;
  BackgroundWork& work_;
  IndexOnDisc& index_;
  DiscLayout layout_;
  BurnMonitor monitor_;
};

}  // namespace korvenal
