#pragma once

#include <optional>

#include "device/SetDiscs.h"
#include "platform/Files.h"
#include "restore/DiscInHand.h"
#include "restore/RestorePage.h"

namespace korvenal {

/// Knows the discs of the opened set, and the session on each that the set was burned in.
class DiscRecognition {
 public:
  /// The references outlive this.
  DiscRecognition(const FileView& files, const RestorePage& page) : files_(files), page_(page) {}

  struct Look {
    std::optional<DiscInHand> disc;  ///< the wanted one, when it is that
    SetIdentity another;             ///< known: a disc of that number, but of this other set
  };
  /// Looks whether the disc in the drive is the wanted one of the set.
  Look look(char letter, int number) const;

 private:
  DiscSession sessionOf(char letter, const DiscMatch& match, const std::string& label) const;

  const FileView& files_;
  const RestorePage& page_;
};

}  // namespace korvenal
