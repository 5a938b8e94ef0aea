#pragma once

#include <string>
#include <unordered_map>
#include <unordered_set>

#include "burn/BurnServices.h"
#include "burn/DiscAttempt.h"
#include "burn/SourceChanges.h"

namespace korvenal {

/// Reads a burned disc again and compares its files with the plan, by existence and size; the
/// report stands in `vsError`[0]. A file that was burned whole, but in another size than it had at
/// the scan, has a row that says so and is no error. In a differential backup a file that stands on
/// the disc counts as saved in the state that was burned.
class Verification {
 public:
  Verification(BurnServices& services, const SourceChanges& changes)
      : services_(services), changes_(changes) {}

  /// Fills the report and counts what is wrong in the attempt, which is verified afterwards unless
  /// the drive did not come back. With `reset` the tray goes out and in first, so that the drive
  /// reads anew what is on the disc. Cannot be stopped.
  void doVerifyDisc(DiscAttempt& attempt, bool reset);
  /// A new plan: what is known of the pieces of split files no longer holds.
  void doForgetPieces() { passedPieces_.clear(); }

 private:
  void doResetDisc();
  void doVerifyFiles(DiscAttempt& attempt);
  struct Result {
    std::string text;
    bool saved = false;
  };

  Result resultOf(const DiscAttempt& attempt, int row) const;
  void doAddVerifyRow(int disc, const std::string& pathOnDisc, const std::string& result,
                      const std::string& source);
  void doMarkSaved(const DiscAttempt& attempt, int row, int splitRow);
  bool isWholeFileSaved(int row, int splitRow);
  void doShowPercent(int percent);

  BurnServices& services_;
  const SourceChanges& changes_;
  /// Row of a split file -> numbers of its pieces that passed.
  std::unordered_map<int, std::unordered_set<int>> passedPieces_;
};

}  // namespace korvenal
