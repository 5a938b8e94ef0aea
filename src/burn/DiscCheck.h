#pragma once

#include "burn/BurnServices.h"
#include "burn/DiscAttempt.h"
#include "burn/DiscTexts.h"

namespace korvenal {

/// Looks at a loaded disc before anything is done to it. What is found goes into the attempt; each
/// question answered with false has put its sentence there.
class DiscCheck {
 public:
  DiscCheck(BurnServices& services, DiscTexts& texts) : services_(services), texts_(texts) {}

  /// Is this a disc that can be written at all?
  bool isWritable(DiscAttempt& attempt) const;
  /// Can it hold what is planned for it? Names its type in the record.
  bool isLargeEnough(DiscAttempt& attempt) const;
  /// May it be used as it is? Classifies the disc.
  bool isUsable(DiscAttempt& attempt) const;
  /// Can the disk of an image take what is planned for the disc, as the disc is now?
  bool hasRoom(DiscAttempt& attempt) const;

 private:
  /// Nobody wants one disc of a backup erased for the next: it was left in the drive.
  bool holdsEarlierDisc(const DiscAttempt& attempt) const;

  BurnServices& services_;
  DiscTexts& texts_;
};

}  // namespace korvenal
