#pragma once

#include "burn/BackgroundWork.h"
#include "burn/BurnServices.h"
#include "burn/DiscAttempt.h"

namespace korvenal {

/// Makes a usable disc ready to take a track: formats it, erases it, or takes over its earlier
/// sessions.
class DiscPreparation {
 public:
  DiscPreparation(BurnServices& services, BackgroundWork& work)
      : services_(services), work_(work) {}

  /// False with the sentence in the attempt when the disc cannot be burned, or at a stop.
  bool doPrepareDisc(DiscAttempt& attempt) const;

 private:
  void doFormatOrErase(const DiscAttempt& attempt) const;
  void doTakeOverSessions(DiscAttempt& attempt) const;
  bool isFileSystemWanted(const std::string& fileSystem) const;
  bool isReady(DiscAttempt& attempt) const;
  Fixed4 planned(const DiscAttempt& attempt) const {
    return services_.plan.doGetDiscSZ(attempt.number);
  }

  BurnServices& services_;
  BackgroundWork& work_;
};

}  // namespace korvenal
