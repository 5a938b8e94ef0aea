#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/Paths.h"

namespace korvenal {

/// The disc that files are taken from.
struct DiscInHand {
  char letter = 0;
  int number = 0;
  std::string label;          ///< "Backup #2"
  std::uint32_t session = 0;  ///< first block of the session that the set was burned in
  bool isOfSet = false;       ///< the session bears the identity of the set

  /// Where a file of the set lies: in the tree of its session.
  std::string pathOf(std::string_view discPath) const {
    return Paths::onDrive(letter, session, discPath);
  }
};

}  // namespace korvenal
