#pragma once

#include <array>
#include <string>
#include <vector>

#include "platform/Walker.h"

namespace korvenal {

/// Collects what a scan passes over, so that nothing is left out in silence.
class SkippedEntries {
 public:
  static constexpr std::size_t ShownNames = 10;  ///< paths told of excluded names

  /// What a walk passed over.
  void add(WalkSkip reason, const std::string& path);
  /// An item of the job of which nothing is there.
  void addMissing(const std::string& path) { missing_.push_back(path); }
  /// An item whose name on disc another one has.
  void addTakenName(const std::string& path) { takenNames_.push_back(path); }
  /// Something whose name a disc cannot hold.
  void addExcludedName(const std::string& path);

  /// How much of what the job names is left out: items that are not there or whose names are
  /// taken, folders that cannot be read, names that no disc holds. Pipes, links that the job does
  /// not keep and the program's own files are none of them.
  int missed() const;
  /// A line for each item that is missing or whose name is taken, one with the numbers of each kind
  /// passed over, one for every folder that cannot be read, and the excluded names.
  std::vector<std::string> notes() const;

 private:
  std::string passedOver() const;
  std::string ownFiles() const;

  std::array<int, 8> counts_{};  ///< by WalkSkip
  std::vector<std::string> missing_;
  std::vector<std::string> takenNames_;
  std::vector<std::string> unreadable_;
  std::vector<std::string> excludedNames_;  ///< the first of them
  int excludedCount_ = 0;
  std::vector<std::string> own_;
};

}  // namespace korvenal
