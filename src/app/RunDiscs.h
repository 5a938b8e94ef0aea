#pragma once

#include <string>
#include <vector>

#include "core/RunGrids.h"
#include "core/RunPace.h"
#include "plan/Plan.h"

namespace korvenal {

/// What has become of a disc of a run.
enum class DiscState { Planned, Writing, Verified, Failed };

/// A disc of a run as it is shown.
struct RunDisc {
  std::string label;  ///< "Backup #2"
  int percent = 0;
  DiscState state = DiscState::Planned;
  std::string text;

  bool operator==(const RunDisc&) const = default;
};

/// What the discs of a run are told from.
struct RunFacts {
  const Table& records;  ///< `vsOutput` of the page
  const Progress& progress;
  const RunPace& pace;
  bool DiscInWork = false;
};

/// The discs of a backup, one after the other. `current` is the number of the next disc to write.
std::vector<RunDisc> backupDiscs(const Plan& plan, int current, const RunFacts& facts);
/// The discs that a restore visits; the first `done` of them are finished.
std::vector<RunDisc> restoreDiscs(const std::vector<int>& wanted, int done, const RunFacts& facts);
/// The attempts of an erase run, and the one at work.
std::vector<RunDisc> eraseDiscs(const RunFacts& facts);

/// A note that tells of success. Only these count as good.
bool isGoodNote(const std::string& note);

}  // namespace korvenal
