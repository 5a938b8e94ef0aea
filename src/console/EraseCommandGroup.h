#pragma once

#include <string>

#include "console/Command.h"
#include "console/Session.h"

namespace korvenal::console {

/// The command that erases rewritable discs.
class EraseCommandGroup {
 public:
  explicit EraseCommandGroup(Session& session) : session_(session) {}
  /// The commands refer to this object.
  Commands commands();

 private:
  ExitCode doErase(const std::string& mode);
  ExitCode eraseCode() const;

  Session& session_;
};

}  // namespace korvenal::console
