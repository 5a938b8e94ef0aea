#include "plan/FileSplitting.h"

#include <algorithm>

#include "core/Workspace.h"
#include "plan/PlanLimits.h"

namespace korvenal {

namespace {

bool isTooLargeForJoliet(const PlanTable::Row& row) {
  return row.type == RowType::File && row.size > Fixed4(LargeFileLimit);
}

void appendPieces(PlanTable& table, std::vector<PlanTable::Row>& rows,
                  const PlanTable::Row& splitFile) {
  const std::int64_t size = splitFile.size.whole();
  std::int64_t end = 0;
  for (std::int32_t number = 1; end < size; ++number) {
    const std::int64_t start = end + 1;
    end = size - end > PieceMax ? end + PieceSize : size;
    rows.push_back(pieceOf(table, splitFile, {number, start, end}));
  }
}

}  // namespace

void makeSplitFile(PlanTable& table, PlanTable::Row& file) {
  file.type = RowType::SplitFile;
  file.own = table.addFolder(
      {.parent = file.folder, .name = file.name, .original = file.original, .source = file.source});
}

PlanTable::Row pieceOf(PlanTable& table, const PlanTable::Row& splitFile,
                       const PlanTable::Range& range) {
  PlanTable::Row piece;
  piece.type = RowType::Piece;
  piece.size = Fixed4(range.end - range.start + 1);
  piece.folder = splitFile.own;
  piece.name = piece.original = splitFile.name;
  piece.range = table.addRange(range);
  return piece;
}

bool cutForJoliet(const ActionState& state, Desktop& desktop, const Job& job, PlanTable& table) {
  if (job.optFileSystem != 0 || job.comboDiscType <= 0) return true;
  if (std::none_of(table.rows().begin(), table.rows().end(), isTooLargeForJoliet)) return true;

  std::vector<PlanTable::Row> rows;
  rows.reserve(table.rows().size());
  for (PlanTable::Row row : table.rows()) {
    const bool cut = isTooLargeForJoliet(row);
    if (cut) makeSplitFile(table, row);
    rows.push_back(row);
    if (!cut) continue;
    appendPieces(table, rows, row);
    desktop.doYield();
    if (state.StopAction) return false;
  }
  table.rows() = std::move(rows);
  return true;
}

}  // namespace korvenal
