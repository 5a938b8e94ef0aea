#pragma once

#include <string>
#include <vector>

#include "platform/SetIdentity.h"

namespace korvenal {

/// A disc that is wanted for a restore.
struct WantedDisc {
  std::string label;      ///< "Backup #2"
  SetIdentity identity;   ///< of the set; where it is unknown any disc of the label will do
  bool unmarked = false;  ///< the set is known to have been burned before sessions bore an identity
};

/// How the sessions of a disc stand to a wanted disc.
struct DiscMatch {
  enum class Kind {
    Other,      ///< none bears the label
    OfSet,      ///< `sessions` holds the one that bears the label and the identity of the set
    ByLabel,    ///< no identity tells; `sessions` holds those that may be of the set, oldest first
    OfAnother,  ///< `sessions` holds the newest one with the label, which is of another set
  };
  Kind kind = Kind::Other;
  std::vector<DiscSession> sessions;
};

/// The newest label of a disc alone decides nothing: other backups may have been appended to it.
/// Sessions without an identity count by their label, as long as all of the disc are such.
DiscMatch matchDisc(const std::vector<DiscSession>& sessions, const WantedDisc& wanted);

}  // namespace korvenal
