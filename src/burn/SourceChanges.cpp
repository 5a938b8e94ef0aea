#include "burn/SourceChanges.h"

namespace korvenal {

namespace {

/// True when nothing says that the content is another one.
bool isOneState(const FileInfo& a, const FileInfo& b) {
  return a.size == b.size && a.modified == b.modified &&
         a.modifiedNanoseconds == b.modifiedNanoseconds && a.changed == b.changed &&
         a.changedNanoseconds == b.changedNanoseconds;
}

}  // namespace

void SourceChanges::doForget() {
  scanned_.clear();
  states_.clear();
  doKeepTry();
}

void SourceChanges::doRestart() {
  while (!scanned_.empty()) doTakeBack(scanned_.begin()->first);
  for (int row = 1; row < table().Rows(); ++row) {
    if (!table().row(row).lost) continue;
    table().row(row).lost = false;
    plan_.IndexOutdated = true;
  }
  doForget();
}

void SourceChanges::doBeginTry() {
  for (const int row : changedNow_) doTakeBack(row);
  for (const int row : lostNow_) doMark(row, false);
  changedNow_.clear();
  lostNow_.clear();
  statesNow_.clear();
}

void SourceChanges::doKeepTry() {
  changedNow_.clear();
  lostNow_.clear();
  states_.merge(statesNow_);
  statesNow_.clear();
}

void SourceChanges::doRemember(int row) {
  const PlanTable::Row& known = table().row(row);
  const std::int64_t end = known.type == RowType::Piece ? table().range(row).end : 0;
  if (scanned_.try_emplace(row, Scanned{known.size, known.modified, end}).second)
    changedNow_.insert(row);
  // The row of the index itself has no line in it.
  if (row != 1 || !plan_.IndexOnDiscs) plan_.IndexOutdated = true;
}

void SourceChanges::doTakeBack(int row) {
  const auto known = scanned_.find(row);
  if (known == scanned_.end()) return;
  PlanTable::Row& changed = table().row(row);
  changed.size = known->second.size;
  changed.modified = known->second.modified;
  if (changed.type == RowType::Piece) table().rangeOf(changed.range).end = known->second.end;
  scanned_.erase(known);
  plan_.IndexOutdated = true;
}

void SourceChanges::doChange(int row, const FileInfo& now) {
  doRemember(row);
  PlanTable::Row& changed = table().row(row);
  changed.size = now.size;
  changed.modified = now.modified;
}

void SourceChanges::doLose(int row) {
  row = fileRowOf(row);
  if (table().row(row).lost) return;
  lostNow_.push_back(row);
  doMark(row, true);
}

void SourceChanges::doMark(int row, bool lost) {
  table().row(row).lost = lost;
  plan_.IndexOutdated = true;
  if (table().row(row).type != RowType::SplitFile) return;
  for (int at = row + 1; at < table().Rows(); ++at) {
    PlanTable::Row& below = table().row(at);
    if (below.type != RowType::Piece && below.type != RowType::RepeatedFolder) break;
    if (below.type == RowType::Piece) below.lost = lost;
  }
}

bool SourceChanges::doFitPieces(int splitRow, const FileInfo& now) {
  const auto burned = states_.find(splitRow);
  if (burned != states_.end()) return isOneState(burned->second, now);
  PlanTable::Row& split = table().row(splitRow);
  if (now.size == split.size && (!split.dated || now.modified == split.modified)) return true;
  const int last = lastPieceOf(splitRow);
  const PlanTable::Range& piece = table().range(last);
  if (now.size < Fixed4(piece.start) || now.size > Fixed4(piece.end)) return false;
  if (now.size != split.size) {
    doRemember(last);
    PlanTable::Row& row = table().row(last);
    table().rangeOf(row.range).end = now.size.whole();
    row.size = now.size - Fixed4(piece.start - 1);
  }
  doChange(splitRow, now);
  return true;
}

bool SourceChanges::doJoinState(int splitRow, const FileInfo& state) {
  const auto burned = states_.find(splitRow);
  if (burned != states_.end()) return isOneState(burned->second, state);
  return isOneState(statesNow_.try_emplace(splitRow, state).first->second, state);
}

int SourceChanges::fileRowOf(int row) const {
  if (table().row(row).type != RowType::Piece) return row;
  while (row > 1 && table().row(row).type != RowType::SplitFile) --row;
  return row;
}

int SourceChanges::lastPieceOf(int splitRow) const {
  int last = splitRow;
  for (int at = splitRow + 1; at < table().Rows(); ++at) {
    const RowType type = table().row(at).type;
    if (type != RowType::Piece && type != RowType::RepeatedFolder) break;
    if (type == RowType::Piece) last = at;
  }
  return last;
}

bool SourceChanges::isUntoldByFirst(int row) const {
  // The index of disc 1 was written behind what changed before it.
  return growth(row) != Fixed4(0) && table().row(fileRowOf(row)).disc != 1;
}

Fixed4 SourceChanges::growth(int row) const {
  const auto known = scanned_.find(row);
  return known == scanned_.end() ? Fixed4(0) : table().row(row).size - known->second.size;
}

}  // namespace korvenal
