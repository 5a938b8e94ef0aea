#include "plan/DiscContents.h"

#include <algorithm>

#include "core/DateText.h"
#include "core/SizeText.h"
#include "core/Workspace.h"

namespace korvenal {

void DiscContents::doShowDisc(int disc) {
  // The rows of a plan lie in the order of their discs.
  const auto& rows = plan_.vsBuffer.rows();
  const auto at = [&rows](int wanted) {
    const auto found =
        std::partition_point(rows.begin() + 1, rows.end(),
                             [wanted](const PlanTable::Row& row) { return row.disc < wanted; });
    return static_cast<int>(found - rows.begin());
  };
  disc_ = disc;
  first_ = disc < 1 ? 1 : at(disc);
  end_ = disc < 1 ? 1 : at(disc + 1);
}

std::string DiscContents::header(int col) const {
  switch (col) {
    case DiscContentsName:
      return "Files name on Disc No." + std::to_string(disc_);
    case DiscContentsSize:
      return "Size";
    case DiscContentsDate:
      return "Modified";
    case DiscContentsNote:
      return "Note";
    case DiscContentsSource:
      return "Source Path";
    default:
      return {};
  }
}

std::string DiscContents::text(int row, int col) const {
  if (row < 0 || row >= Rows()) return {};
  if (row == 0) return header(col);
  const PlanTable& table = plan_.vsBuffer;
  const int at = first_ + row - 1;
  switch (col) {
    case DiscContentsName:
      return table.fileOnDisc(at);
    case DiscContentsSize:
      return formatSizeText(table.row(at).size, true);
    case DiscContentsDate:
      return doGetFileDateString(table.text(at, PlanModified));
    case DiscContentsNote:
      return note(at);
    case DiscContentsSource:
      return table.sourcePath(at);
    default:
      return {};
  }
}

std::string DiscContents::note(int planRow) const {
  const PlanTable& table = plan_.vsBuffer;
  const PlanTable::Row& row = table.row(planRow);
  if (row.type == RowType::SplitFile || row.type == RowType::Piece) return "Split File";
  // The program's own files stand at the head of the plan, the index before the kit.
  const int kitRow = plan_.IndexOnDiscs ? 2 : 1;
  if (plan_.IndexOnDiscs && planRow == 1) return "Backup Index";
  const bool isKit = job_.BurnRestoreKit && planRow == kitRow && row.type == RowType::File &&
                     table.nameOnDisc(planRow) == KitFileName;
  return isKit ? "RestoreKit Installer" : "";
}

}  // namespace korvenal
