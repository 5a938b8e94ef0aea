#pragma once

#include <optional>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "plan/Plan.h"
#include "platform/Files.h"

namespace korvenal {

/// What became of a plan's sources since the scan. A source is burned as it is when its disc is
/// prepared: its row then tells that size and date. A row whose source cannot be saved is lost. All
/// pieces of a split file are of one state of it, or the file is lost as a whole.
class SourceChanges {
 public:
  explicit SourceChanges(Plan& plan) : plan_(plan) {}

  /// The plan is another one now.
  void doForget();
  /// The set is burned from its first disc on: all rows are again as they were scanned.
  void doRestart();
  /// A disc is about to be made: what an earlier try in vain found no longer holds.
  void doBeginTry();
  /// The disc of this try was burned: what was found holds.
  void doKeepTry();

  /// A file is burned as it is now.
  void doChange(int row, const FileInfo& now);
  /// The source of the row, or the split file that it belongs to, cannot be saved.
  void doLose(int row);

  /// Before the pieces of a split file go into a layout: takes the file as it is now, when its size
  /// fits the pieces that were planned and none was burned yet. False when it does not.
  bool doFitPieces(int splitRow, const FileInfo& now);
  /// A piece is about to be burned of this state. False when others are of another one.
  bool doJoinState(int splitRow, const FileInfo& state);

  /// The row that a piece belongs to; the row itself for any other.
  int fileRowOf(int row) const;
  /// The row has another size than at the scan, and the index of disc 1 does not tell so.
  bool isUntoldByFirst(int row) const;
  /// Bytes that the row has grown by since the scan; negative when it has shrunk.
  Fixed4 growth(int row) const;

 private:
  /// A row as the scan had it.
  struct Scanned {
    Fixed4 size;
    UnixTime modified = 0;
    std::int64_t end = 0;  ///< of a piece: its last byte
  };

  PlanTable& table() const { return plan_.vsBuffer; }
  void doRemember(int row);
  void doTakeBack(int row);
  void doMark(int row, bool lost);
  int lastPieceOf(int splitRow) const;

  Plan& plan_;
  std::unordered_map<int, Scanned> scanned_;  ///< of the rows that changed
  std::unordered_map<int, FileInfo> states_;  ///< split file -> the state of its burned pieces
  // Of the try at hand.
  std::unordered_set<int> changedNow_;
  std::vector<int> lostNow_;
  std::unordered_map<int, FileInfo> statesNow_;
};

}  // namespace korvenal
