#include "plan/NameShortening.h"

#include "platform/Text.h"

namespace korvenal {

bool NameShortening::run() {
  for (int row = 1; row < table_.Rows(); ++row) {
    desktop_.doYield();
    if (state_.StopAction) return false;
    const PlanTable::Row& entry = table_.row(row);
    if (entry.type == RowType::File && entry.itemFlag) continue;
    const std::string_view name = table_.textOf(entry.name);
    if (name.size() <= MaxComponentBytes) continue;

    const std::string base(name);
    const std::string component = shortened(base);
    rename(row, component);
    if (entry.type == RowType::Folder) renameFollowing(row, base, component);
  }
  if (counter_ > 0) table_.settleRenames();
  return true;
}

std::string NameShortening::shortened(const std::string& component) {
  ++counter_;
  std::string result(Text::firstBytes(component, 50));
  result += "-" + plan_.RunStamp + "-" + Text::zeroPadded(counter_, 6) + "-";
  return result.append(Text::lastBytes(component, 10));
}

void NameShortening::rename(int row, const std::string& component) {
  PlanTable::Row& entry = table_.row(row);
  entry.name = table_.addText(component);
  if (entry.own != PlanTable::NoLink) table_.folder(entry.own).name = entry.name;
}

/// The rows behind the folder's contents follow as well, up to the first whose path does not hold
/// the old component. It can stand in their last component only: the folders above them were
/// shortened before and are too short for it.
void NameShortening::renameFollowing(int folderRow, const std::string& base,
                                     const std::string& component) {
  for (int row = rowBehind(folderRow); row < table_.Rows(); row = rowBehind(row)) {
    std::string name(table_.textOf(table_.row(row).name));
    const std::size_t hit = name.find(base);
    if (hit == std::string::npos) return;
    rename(row, name.replace(hit, base.size(), component));
  }
}

/// The first row that does not lie in the folder of this row; the next row for a file.
int NameShortening::rowBehind(int row) {
  if (table_.row(row).own == PlanTable::NoLink) return row + 1;
  if (rowBehind_.empty()) findRowsBehind();
  return rowBehind_[static_cast<std::size_t>(row)];
}

void NameShortening::findRowsBehind() {
  rowBehind_.resize(static_cast<std::size_t>(table_.Rows()));
  std::vector<int> open;  // rows of the folders that hold the current row
  const auto closeTo = [&](PlanTable::Link folder, int row) {
    while (!open.empty() && table_.row(open.back()).own != folder) {
      rowBehind_[static_cast<std::size_t>(open.back())] = row;
      open.pop_back();
    }
  };
  for (int row = 1; row < table_.Rows(); ++row) {
    closeTo(table_.row(row).folder, row);
    if (table_.row(row).own != PlanTable::NoLink) open.push_back(row);
  }
  closeTo(PlanTable::NoLink, table_.Rows());
}

}  // namespace korvenal
