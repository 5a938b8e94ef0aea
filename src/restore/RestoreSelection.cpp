#include "restore/RestoreSelection.h"

#include <algorithm>

#include "core/SizeText.h"
#include "platform/Text.h"
#include "platform/Walker.h"

namespace korvenal {

void RestoreSelection::doInitRestoreGrid() {
  page_.vsBackupIndex = "Backup Index";
  page_.vsBackupIndexBar = 0;
  page_.vsRestore.clear();
  page_.vsBackupInfo = {};
  page_.SelectedCount = page_.SelectedFiles = 0;
  page_.SelectedBytes = {};
  page_.FindText.clear();
  page_.FindRow = 0;
  page_.RestoreDiscList.clear();
  page_.RestoreDiscIndex = 0;
  page_.PreparedForRun = false;
  page_.txJobName.clear();
  page_.setName.clear();
  doSetRestoreButtons();
  desktop_.doYield();
}

void RestoreSelection::doClickRow(int row) {
  const bool checked = page_.vsRestore.check(row) == RestoreCheck::Checked;
  // A partly checked row does not count yet, so a change to checked counts it once.
  doChangeCheck(row, checked ? RestoreCheck::Unchecked : RestoreCheck::Checked);
}

void RestoreSelection::doChangeCheck(int row, RestoreCheck state) {
  if (row < 1 || row >= page_.vsRestore.Rows()) return;
  if (state == RestoreCheck::Partly || state == RestoreCheck::StillUnchecked) {
    // The propagation takes this back at once: the row did not count before.
    ++page_.SelectedCount;
    doCountFile(row, true);
    state = RestoreCheck::Unchecked;
  } else if (state == RestoreCheck::StillChecked) {
    state = RestoreCheck::Checked;
  }
  page_.vsRestore.setCheck(row, state);
  doPropagateCheck(row);
  showChanges();
}

void RestoreSelection::doPropagateCheck(int row) {
  RestoreTree& tree = page_.vsRestore;
  const bool checked = tree.check(row) == RestoreCheck::Checked;
  const RestoreCheck state = checked ? RestoreCheck::Checked : RestoreCheck::Unchecked;
  page_.SelectedCount += checked ? 1 : -1;
  doCountFile(row, checked);
  if (tree.isFolder(row)) {
    const int end = static_cast<int>(tree.item(row).end);
    for (int below = row + 1; below < end; ++below) setRow(below, state);
  }
  propagateUp(row, state);
}

void RestoreSelection::propagateUp(int row, RestoreCheck state) {
  RestoreTree& tree = page_.vsRestore;
  while (tree.level(row) > 0) {
    if (state != RestoreCheck::Partly && hasSiblingUnlike(row, state)) state = RestoreCheck::Partly;
    const int parent = static_cast<int>(tree.item(row).parent);
    if (parent == 0) return;
    setRow(parent, state);
    row = parent;
  }
}

bool RestoreSelection::hasSiblingUnlike(int row, RestoreCheck state) const {
  const RestoreTree& tree = page_.vsRestore;
  const int level = tree.level(row);
  for (int above = row - 1; above > 0 && tree.level(above) >= level; --above)
    if (tree.level(above) == level && tree.check(above) != state) return true;
  int below = static_cast<int>(tree.item(row).end);
  for (; below < tree.Rows() && tree.level(below) == level;
       below = static_cast<int>(tree.item(below).end))
    if (tree.check(below) != state) return true;
  return false;
}

void RestoreSelection::setRow(int row, RestoreCheck state) {
  RestoreTree& tree = page_.vsRestore;
  const RestoreCheck before = tree.check(row);
  if (before == state) return;
  tree.setCheck(row, state);
  // Only checked rows count.
  if (before != RestoreCheck::Checked && state != RestoreCheck::Checked) return;
  const bool add = state == RestoreCheck::Checked;
  page_.SelectedCount += add ? 1 : -1;
  doCountFile(row, add);
}

void RestoreSelection::doCountFile(int row, bool add) {
  if (page_.vsRestore.isFolder(row)) return;
  const Fixed4 size = page_.vsRestore.item(row).size;
  page_.SelectedFiles += add ? 1 : -1;
  if (add)
    page_.SelectedBytes += size;
  else
    page_.SelectedBytes -= size;
}

void RestoreSelection::doSelectAllRows() {
  const WaitPointer wait(desktop_);
  for (int row = 1; row < page_.vsRestore.Rows(); ++row) setRow(row, RestoreCheck::Checked);
  showChanges();
}

void RestoreSelection::doSelectNone() {
  const WaitPointer wait(desktop_);
  for (int row = 1; row < page_.vsRestore.Rows(); ++row) setRow(row, RestoreCheck::Unchecked);
  showChanges();
}

int RestoreSelection::doSelectMatching(const std::string& pattern) {
  const WaitPointer wait(desktop_);
  RestoreTree& tree = page_.vsRestore;
  int matched = 0;
  int checkedUntil = 0;  // rows before this lie in a folder that matched
  for (int row = 1; row < tree.Rows(); ++row) {
    const bool matches = matchesPattern(tree.name(row), pattern);
    if (matches) ++matched;
    const bool checked = matches || row < checkedUntil;
    if (checked && tree.isFolder(row))
      checkedUntil = std::max(checkedUntil, static_cast<int>(tree.item(row).end));
    setRow(row, checked ? RestoreCheck::Checked : RestoreCheck::Unchecked);
  }
  gatherFolders();
  showChanges();
  return matched;
}

void RestoreSelection::gatherFolders() {
  RestoreTree& tree = page_.vsRestore;
  // From the bottom up, so that the folders inside are settled first.
  for (int row = tree.Rows() - 1; row > 0; --row) {
    const int end = static_cast<int>(tree.item(row).end);
    if (!tree.isFolder(row) || end == row + 1) continue;
    RestoreCheck state = tree.check(row + 1);
    for (int below = row + 1; below < end && state != RestoreCheck::Partly;
         below = static_cast<int>(tree.item(below).end))
      if (tree.check(below) != state) state = RestoreCheck::Partly;
    setRow(row, state);
  }
}

void RestoreSelection::pbInvertSelection() {
  const WaitPointer wait(desktop_);
  for (int row = 1; row < page_.vsRestore.Rows(); ++row) {
    const RestoreCheck state = page_.vsRestore.check(row);
    if (state == RestoreCheck::Partly) continue;
    setRow(row, state == RestoreCheck::Checked ? RestoreCheck::Unchecked : RestoreCheck::Checked);
  }
  showChanges();
}

void RestoreSelection::pbExpand() {
  const WaitPointer wait(desktop_);
  page_.vsRestore.setAllCollapsed(false);
  if (page_.vsRestore.Row == 0 && page_.vsRestore.hasData()) page_.vsRestore.Row = 1;
}

void RestoreSelection::pbCollapse() {
  const WaitPointer wait(desktop_);
  page_.vsRestore.setAllCollapsed(true);
  if (page_.vsRestore.Row == 0 && page_.vsRestore.hasData()) page_.vsRestore.Row = 1;
}

void RestoreSelection::doSetRestoreButtons() {
  page_.selectButtonsEnabled = page_.vsRestore.hasData();
  page_.pbFindNextEnabled = page_.selectButtonsEnabled && !page_.FindText.empty();
}

void RestoreSelection::doShowRestoreTotals() {
  page_.vsBackupInfo[2] = "Restore selected:  " + Text::counted(page_.SelectedFiles, "file") +
                          ", " + formatSizeText(page_.SelectedBytes, true) + ".";
}

void RestoreSelection::showChanges() {
  doSetRestoreButtons();
  doShowRestoreTotals();
}

}  // namespace korvenal
