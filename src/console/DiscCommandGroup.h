#pragma once

#include "console/Command.h"
#include "console/Session.h"

namespace korvenal::console {

/// Commands about drives and the discs in them.
class DiscCommandGroup {
 public:
  explicit DiscCommandGroup(Session& session) : session_(session) {}
  /// The commands refer to this object.
  Commands commands();

 private:
  ExitCode doDrives();
  ExitCode doDisc(const Arguments& arguments);
  ExitCode doList();
  ExitCode doNew(char drive, const Arguments& arguments);
  ExitCode doInsert(char drive, const std::string& file);
  ExitCode doEject(char drive);
  /// Takes out what lies in the tray. False, told, when that is not possible.
  bool doEmptyTray(char drive);

  Session& session_;
};

}  // namespace korvenal::console
