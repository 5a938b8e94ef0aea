#pragma once

#include "console/Command.h"
#include "console/Session.h"

namespace korvenal::console {

/// Commands that open a backup index, pick files of it and bring them back.
class RestoreCommandGroup {
 public:
  explicit RestoreCommandGroup(Session& session) : session_(session) {}
  /// The commands refer to this object.
  Commands commands();

 private:
  ExitCode doIndex(const Arguments& arguments);
  ExitCode doList(const Arguments& arguments);
  ExitCode doSelect(const Arguments& arguments);
  ExitCode doInvert();
  ExitCode doFind(const Arguments& arguments);
  ExitCode doRestore(const Arguments& arguments);
  ExitCode restoreCode() const;

  /// An index is open and its selection may change. False, told, otherwise.
  bool beginSelection();
  std::string rowText(int row) const;

  Session& session_;
};

}  // namespace korvenal::console
