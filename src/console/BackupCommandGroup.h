#pragma once

#include "console/Command.h"
#include "console/Session.h"

namespace korvenal::console {

/// Commands that plan and run the backup.
class BackupCommandGroup {
 public:
  explicit BackupCommandGroup(Session& session) : session_(session) {}
  /// The commands refer to this object.
  Commands commands();

 private:
  ExitCode doEstimate(const Arguments& arguments);
  ExitCode doBackup(const Arguments& arguments);
  /// The contents of the discs of the estimate at hand.
  void doShowDetails();
  ExitCode backupCode() const;
  /// Writes what "--tsv" and "--json" ask for.
  ExitCode doExport(const Options& options, ExitCode code);

  Session& session_;
};

}  // namespace korvenal::console
