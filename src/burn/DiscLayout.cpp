#include "burn/DiscLayout.h"

#include "platform/Paths.h"

namespace korvenal {

namespace {

constexpr int RowsPerStep = 10;
constexpr std::int64_t GiB = 1'073'741'824;

/// The row of the index leads the table; the index goes on each disc in a way of its own.
int firstRow(const Plan& plan) {
  return plan.IndexOnDiscs ? 2 : 1;
}

int rowsOnDisc(const Plan& plan, int disc) {
  const PlanTable& table = plan.vsBuffer;
  int count = 0;
  for (int row = firstRow(plan); row < table.Rows(); ++row)
    if (table.row(row).disc == disc) ++count;
  return count;
}

}  // namespace

DiscPlace placeOnDisc(std::string_view discPath) {
  if (!discPath.empty() && discPath.back() == Paths::DiscSeparator) discPath.remove_suffix(1);
  const std::size_t last = discPath.rfind(Paths::DiscSeparator);
  if (last == std::string_view::npos) return {"\\", std::string(discPath)};
  return {std::string(discPath.substr(0, last)), std::string(discPath.substr(last + 1))};
}

bool DiscLayout::doBuild(DiscAttempt& attempt) {
  const PlanTable& table = services_.plan.vsBuffer;
  const int all = rowsOnDisc(services_.plan, attempt.number);
  int done = 0;
  int splitRow = 0;
  attempt.files = 0;
  files_.clear();
  for (int row = firstRow(services_.plan); row < table.Rows(); ++row) {
    const RowType type = table.row(row).type;
    // The file that the pieces below belong to; its own row may be on an earlier disc.
    if (type == RowType::SplitFile) splitRow = row;
    if (table.row(row).disc != attempt.number) continue;
    const bool folder = isFolderOnDisc(type);
    if (!folder) ++attempt.files;
    if (folder && !table.row(row).lost) {
      doAddFolder(row);
    } else if (!table.row(row).lost) {
      doAddFile(row, splitRow);
    }
    if (++done % RowsPerStep != 0) continue;
    doShowPercent(done, all);
    if (services_.state.StopAction) return false;
  }
  return !services_.state.StopAction;
}

void DiscLayout::doAddFolder(int row) const {
  const PlanTable& table = services_.plan.vsBuffer;
  const DiscPlace place = placeOnDisc(table.nameOnDisc(row));
  // A folder made again on a later disc is as private there as it is on the first.
  services_.engine.do_CreateDirLike(place.parent, place.name, table.sourceFolder(row));
}

void DiscLayout::doAddFile(int row, int splitRow) {
  const PlanTable& table = services_.plan.vsBuffer;
  const std::string source = table.sourcePath(row);
  files_.push_back(row);
  const DiscPlace place = placeOnDisc(table.fileOnDisc(row));
  services_.engine.do_SetPlannedSource(plannedSource(row, splitRow, source));
  if (table.row(row).type != RowType::Piece) {
    services_.engine.do_InsertFileWithName(place.parent, source, place.name, "", 0, 0, 0, 0);
    return;
  }
  const PlanTable::Range& range = table.range(row);
  const std::int64_t length = range.end - range.start + 1;
  services_.engine.do_InsertFileWithName(place.parent, source, place.name, "", -1,
                                         (range.start - 1) / BlockBytes, length % GiB,
                                         length / GiB);
}

PlannedSource DiscLayout::plannedSource(int row, int splitRow, const std::string& source) const {
  const PlanTable& table = services_.plan.vsBuffer;
  // Pieces carry neither the size nor the date of the whole file.
  const PlanTable::Row& file =
      table.row(table.row(row).type == RowType::Piece && splitRow != 0 ? splitRow : row);
  PlannedSource planned{.size = file.size.whole(), .modified = {}};
  // The program's own file on disc 1 bears a date that is not that of its source.
  const bool ownFile = source == services_.workspace.binFolder + KitFileName;
  if (file.dated && !ownFile) planned.modified = file.modified;
  return planned;
}

void DiscLayout::doShowPercent(int done, int all) const {
  const int percent = static_cast<int>(std::int64_t{done} * 100 / all);
  services_.grids.etProgress[0] = {std::to_string(percent) + "%", percent};
  services_.desktop.doYield();
}

}  // namespace korvenal
