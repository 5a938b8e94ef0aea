#pragma once

#include "console/Command.h"
#include "console/Session.h"

namespace korvenal::console {

/// Commands that bring items into the job, name and order them, and take them out.
class ItemCommandGroup {
 public:
  explicit ItemCommandGroup(Session& session) : session_(session) {}
  /// The commands refer to this object.
  Commands commands();

 private:
  enum class Way { Picked, Dropped };

  ExitCode doAdd(const Arguments& arguments, Way way);
  ExitCode doBrowse(const Arguments& arguments);
  ExitCode doCreate(const Arguments& arguments);
  ExitCode doImport(const Arguments& arguments);
  ExitCode doRemove(const Arguments& arguments);
  ExitCode doClear();
  ExitCode doRename(const Arguments& arguments);
  ExitCode doSort(const Arguments& arguments);
  ExitCode doRandomize();
  ExitCode doMove(const Arguments& arguments);
  /// How a list of so many wanted items ended.
  ExitCode addedCode(int rowsBefore, std::size_t wanted) const;

  Session& session_;
};

}  // namespace korvenal::console
