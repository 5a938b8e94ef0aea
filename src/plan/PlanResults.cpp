#include "plan/PlanResults.h"

#include <string>

namespace korvenal {

namespace {

/// True when the lower row holds the folder's path anywhere in its own. The row of an entry of the
/// folder does; for all others the paths decide, as texts: any occurrence counts.
bool lowerRowHolds(const PlanTable& table, const PlanTable::Row& folder, int folderRow,
                   const PlanTable::Row& lower, int lowerRow) {
  if (lower.folder == folder.own) return true;
  return table.nameOnDisc(lowerRow).find(table.nameOnDisc(folderRow)) != std::string::npos;
}

}  // namespace

void countPlan(Plan& plan) {
  PlanTable& table = plan.vsBuffer;
  PlanTable::Row* splitFile = nullptr;
  for (int at = 2; at < table.Rows(); ++at) {
    PlanTable::Row& row = table.row(at);
    switch (row.type) {
      case RowType::File:
        ++plan.TotalFiles;
        break;
      case RowType::SplitFile:
        ++plan.TotalFiles;
        ++plan.TotalSplits;
        splitFile = &row;
        break;
      case RowType::Piece: {
        const PlanTable::Range piece = table.rangeOf(row.range);
        if (splitFile != nullptr && piece.end == splitFile->size.whole())
          splitFile->range = table.addRange({piece.number, splitFile->disc, row.disc});
        break;
      }
      default:
        break;
    }
  }
}

void doRemoveEmptyFolders(PlanTable& table) {
  // From the bottom up, the rows that stay gather at the end of the table.
  int kept = table.Rows();
  for (int at = table.Rows() - 1; at >= 1; --at) {
    const PlanTable::Row row = table.row(at);
    const bool isFolder = row.type == RowType::Folder || row.type == RowType::RepeatedFolder;
    if (isFolder) {
      if (kept == table.Rows()) continue;
      const PlanTable::Row& lower = table.row(kept);
      if (lower.disc != row.disc || !lowerRowHolds(table, row, at, lower, kept)) continue;
    }
    table.row(--kept) = row;
  }
  table.rows().erase(table.rows().begin() + 1, table.rows().begin() + kept);
}

}  // namespace korvenal
