#pragma once

#include <string>
#include <unordered_map>
#include <unordered_set>

#include "burn/BurnServices.h"
#include "burn/DiscAttempt.h"

namespace korvenal {

/// Reads a burned disc again and compares its files with the plan, by existence and size; the
/// report stands in `vsError`[0]. In a differential backup a file that passed counts as saved.
class Verification {
 public:
  explicit Verification(BurnServices& services) : services_(services) {}

  /// Fills the report and counts what is wrong in the attempt, which is verified afterwards unless
  /// the drive did not come back. With `reset` the tray goes out and in first, so that the drive
  /// reads anew what is on the disc. Cannot be stopped.
  void doVerifyDisc(DiscAttempt& attempt, bool reset);
  /// A new plan: what is known of the pieces of split files no longer holds.
  void doForgetPieces() { passedPieces_.clear(); }

 private:
  void doResetDisc();
  void doVerifyFiles(DiscAttempt& attempt);
  std::string resultOf(const DiscAttempt& attempt, int row, const FileInfo& source) const;
  void doAddVerifyRow(int disc, const std::string& pathOnDisc, const std::string& result,
                      const std::string& source);
  void doMarkSaved(int row, int splitRow, const FileInfo& source);
  bool isWholeFileSaved(int row, int splitRow);
  void doShowPercent(int percent);

  BurnServices& services_;
  /// Row of a split file -> numbers of its pieces that passed.
  std::unordered_map<int, std::unordered_set<int>> passedPieces_;
};

}  // namespace korvenal
