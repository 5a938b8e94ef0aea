#include "restore/RestoredRows.h"

namespace korvenal {

void RestoredRows::clear() {
  outcomes_.assign(static_cast<std::size_t>(page_.vsRestore.Rows()), Outcome::Open);
}

bool RestoredRows::isSelected(int row) const {
  const RestoreCheck check = page_.vsRestore.check(row);
  return check == RestoreCheck::Checked ||
         (check == RestoreCheck::Partly && !page_.OnlyRestoreFile);
}

bool RestoredRows::isWanted(int row) const {
  return outcome(row) <= Outcome::Unsafe && isSelected(row);
}

bool RestoredRows::isSelectedFile(int row) const {
  const RestoreKind kind = page_.vsRestore.item(row).kind;
  return (kind == RestoreKind::File || kind == RestoreKind::SplitFile) && isSelected(row);
}

bool RestoredRows::hasPartOn(int row, int disc, int fromPart) const {
  const RestoreTree::Item& item = page_.vsRestore.item(row);
  if (item.kind != RestoreKind::SplitFile || disc < item.firstDisc || disc > item.lastDisc)
    return false;
  const int known = static_cast<int>(item.knownParts);
  for (int part = fromPart; part <= known; ++part)
    if (page_.vsRestore.partDisc(row, part) == disc) return true;
  // An index may tell of fewer parts than there are.
  return known < static_cast<int>(item.parts);
}

RestoreSum RestoredRows::sum() const {
  RestoreSum sum;
  for (int row = 1; row < static_cast<int>(outcomes_.size()); ++row) {
    if (!isSelectedFile(row)) continue;
    ++sum.selected;
    if (outcome(row) == Outcome::Restored) ++sum.restored;
    if (outcome(row) == Outcome::Skipped) ++sum.skipped;
    if (outcome(row) == Outcome::Failed) ++sum.failed;
  }
  return sum;
}

}  // namespace korvenal
