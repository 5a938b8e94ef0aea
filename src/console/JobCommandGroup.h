#pragma once

#include <optional>
#include <string>
#include <vector>

#include "console/Command.h"
#include "console/ControlTable.h"
#include "console/Session.h"

namespace korvenal::console {

/// Commands that make, store and set the backup job; its items have their own.
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
  ExitCode doSet(const Arguments& arguments);
  /// Nothing when the control is not among these.
  std::optional<ExitCode> doSetAmong(const std::vector<Control>& controls,
                                     const Arguments& arguments);
  ExitCode doSetSubfolder(const std::string& name, const std::string& value);

  /// Nobody is there to name a file for the job at hand: a list of commands that wants it kept
  /// has saved it.
  void doDropWhenUnattended();

  Session& session_;
};

}  // namespace korvenal::console
