#pragma once

#include <optional>
#include <string>
#include <vector>

#include "console/Command.h"
#include "console/ControlTable.h"
#include "console/Session.h"

namespace korvenal::console {

/// Commands that make and change the backup job.
class JobCommandGroup {
 public:
  explicit JobCommandGroup(Session& session) : session_(session) {}
  /// The commands refer to this object.
  Commands commands();

 private:
  ExitCode doNew(const Arguments& arguments);
  ExitCode doOpen(const Arguments& arguments);
  ExitCode doSave(const Arguments& arguments);
  ExitCode doShow();
  ExitCode doAdd(const Arguments& arguments);
  ExitCode doCreate(const Arguments& arguments);
  ExitCode doRemove(const Arguments& arguments);
  ExitCode doRename(const Arguments& arguments);
  ExitCode doImport(const Arguments& arguments);
  ExitCode doSet(const Arguments& arguments);
  /// Nothing when the control is not among these.
  std::optional<ExitCode> doSetAmong(const std::vector<Control>& controls,
                                     const Arguments& arguments);
  ExitCode doSetSubfolder(const std::string& name, const std::string& value);

  /// Leads back to the step where the job can be changed. False, told, while an action is at work.
  bool beginEdit();
  /// Nobody is there to name a file for the job at hand: a list of commands that wants it kept
  /// has saved it.
  void doDropWhenUnattended();
  /// The row of the item with this name on disc; 0, told, for none.
  int findItem(const std::string& name);

  Session& session_;
};

}  // namespace korvenal::console
