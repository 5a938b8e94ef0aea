#pragma once

#include <string>

#include "platform/Desktop.h"
#include "restore/RestorePage.h"

namespace korvenal {

/// What a person picks of the tree, and the totals of it. Every operation is linear in the rows.
class RestoreSelection {
 public:
  RestoreSelection(RestorePage& page, Desktop& desktop) : page_(page), desktop_(desktop) {}

  /// Empties the tree, the texts around it, the totals and the list of discs. Yields.
  void doInitRestoreGrid();

  /// A click on the box of a row: a partly checked row becomes checked.
  void doClickRow(int row);
  /// The box of a row has changed to `state`, as the control that shows it cycles.
  void doChangeCheck(int row, RestoreCheck state);
  /// Carries the state of one row down to what lies in it and up to the folders above.
  void doPropagateCheck(int row);

  void doSelectAllRows();
  /// Unchecks every row.
  void doSelectNone();
  /// Checks exactly the rows whose name matches the pattern ('*', '?'), with all they hold.
  /// Returns the number of rows that matched.
  int doSelectMatching(const std::string& pattern);
  /// Row by row, without propagation; partly checked rows stay.
  void pbInvertSelection();
  void pbExpand();
  void pbCollapse();

  void doSetRestoreButtons();
  /// Writes the sentence about the selection.
  void doShowRestoreTotals();

 private:
  void setRow(int row, RestoreCheck state);
  void doCountFile(int row, bool add);
  void gatherFolders();
  void propagateUp(int row, RestoreCheck state);
  bool hasSiblingUnlike(int row, RestoreCheck state) const;
  void showChanges();

  RestorePage& page_;
  Desktop& desktop_;
};

}  // namespace korvenal
