#pragma once

#include <string>
#include <vector>

#include "platform/Fixed4.h"

namespace korvenal {

class frmMain;

/// What has become of a disc of a run.
enum class RunDiscState { Planned, Writing, Verified, Failed };

/// One disc of a run as a front end pictures it.
struct RunDisc {
  enum class Work { None, Data, Verifying, Erasing };

  int number = 0;  ///< of the disc in its backup; 0 for a disc that is erased
  char drive = 0;  ///< where it is or was worked on; 0 for none yet
  RunDiscState state = RunDiscState::Planned;
  Work work = Work::None;  ///< while it is worked on
  int percent = 0;         ///< of what is done with it now; -1 when nobody can tell
  Fixed4 bytes;            ///< planned; 0 when not known
  std::string note;        ///< of its last record; empty for none
  bool verified = false;   ///< it was read again after it was burned

  bool operator==(const RunDisc&) const = default;
};

/// The discs of the run page of an action: those of the plan, those that a restore wants in the
/// order of its visits, those that an erase has had.
std::vector<RunDisc> runDiscs(const frmMain& main, int action);

}  // namespace korvenal
