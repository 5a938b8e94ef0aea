#include "job/ContentsEditing.h"

#include <algorithm>
#include <numeric>

#include "core/Workspace.h"
#include "job/ItemFacts.h"
#include "job/TypedText.h"
#include "platform/Fixed4.h"
#include "platform/Text.h"

namespace korvenal {

namespace {

/// The number of KB that a size text stands for.
double kilobytes(const std::string& text) {
  const double number = Fixed4::parse(Text::replaceAll(text, ",", "")).toDouble();
  if (Text::endsWith(text, "MB")) return number * 1024;
  if (Text::endsWith(text, "GB")) return number * 1048576;
  return number;
}

bool isSortable(int col) {
  return col == ContentsName || col == ContentsSize || col == ContentsModified;
}

/// Calls `use` with what the items sort by, a key a row from row 1: numbers for sizes, else texts
/// in which case does not count.
template <typename Use>
auto withSortKeys(const Table& contents, int col, const Use& use) {
  if (col == ContentsSize) {
    std::vector<double> sizes;
    for (int row = 1; row < contents.Rows(); ++row)
      sizes.push_back(kilobytes(contents.text(row, col)));
    return use(sizes);
  }
  std::vector<std::string> texts;
  for (int row = 1; row < contents.Rows(); ++row)
    texts.push_back(Text::toUpper(contents.text(row, col)));
  return use(texts);
}

/// The rows from 1 in the order of their keys.
template <typename Key>
std::vector<int> sortedRows(const std::vector<Key>& keys, bool descending) {
  std::vector<int> order(keys.size());
  std::iota(order.begin(), order.end(), 1);
  std::stable_sort(order.begin(), order.end(), [&](int a, int b) {
    const Key& first = keys[static_cast<std::size_t>((descending ? b : a) - 1)];
    const Key& second = keys[static_cast<std::size_t>((descending ? a : b) - 1)];
    return first < second;
  });
  return order;
}

}  // namespace

JobCommands ContentsEditing::doUpdateJobCommands() const {
  const Table& contents = job_.vsContents;
  const int last = contents.Rows() - 1;
  const bool current = isRow(contents.Row);
  return {.items = contents.hasData(),
          .moveUp = current && contents.Row > 1,
          .moveDown = current && contents.Row != last,
          .randomize = last > 1};
}

std::string ContentsEditing::typedName(int row, std::string_view typed) const {
  const std::string& before = job_.vsContents.text(row, ContentsName);
  std::string refused = ForbiddenChars;
  std::erase_if(refused, [&before](char c) { return before.find(c) != std::string::npos; });
  return std::string(Text::trim(typedText(typed, refused)));
}

NameEdit ContentsEditing::doRename(int row, std::string_view typed) {
  Table& contents = job_.vsContents;
  if (!isRow(row)) return NameEdit::Restored;
  const std::string name = typedName(row, typed);
  if (name.empty() || !isItemName(name)) return NameEdit::Restored;
  const std::string folded = Text::toUpper(name);
  for (int other = 1; other < contents.Rows(); ++other) {
    if (other == row || Text::toUpper(contents.text(other, ContentsName)) != folded) continue;
    desktop_.doShowMessage(
        {.text = "Name duplicated!", .title = "Error", .icon = MessageIcon::Stop});
    return NameEdit::Duplicated;
  }
  contents.setText(row, ContentsName, name);
  return NameEdit::Taken;
}

void ContentsEditing::doDeleteItem() {
  Table& contents = job_.vsContents;
  if (!isRow(contents.Row)) return;
  contents.removeRow(contents.Row);
  job_.doMarkChanged(true);
}

void ContentsEditing::doDeleteKey() {
  if (!doUpdateJobCommands().items) return;
  if (isConfirmed({.text = "Do you want to delete selected item?",
                   .title = "Confirm",
                   .icon = MessageIcon::Question,
                   .buttons = MessageButtons::YesNo}))
    doDeleteItem();
}

void ContentsEditing::doClearAllFiles() {
  if (!doUpdateJobCommands().items) return;
  if (!isConfirmed({.text = "Are you sure you want to clear all items in current backup contents?",
                    .title = "Confirm Clear All",
                    .icon = MessageIcon::Question,
                    .buttons = MessageButtons::YesNo,
                    .noPreselected = true}))
    return;
  job_.doMarkChanged(true);
  job_.vsContents.clearData();
}

void ContentsEditing::doMoveUp() {
  if (doUpdateJobCommands().moveUp) doMoveTo(job_.vsContents.Row - 1);
}

void ContentsEditing::doMoveDown() {
  if (doUpdateJobCommands().moveDown) doMoveTo(job_.vsContents.Row + 1);
}

void ContentsEditing::doMoveTo(int to) {
  const int from = job_.vsContents.Row;
  if (!isRow(from) || !isRow(to) || from == to) return;
  job_.vsContents.moveRow(from, to);
  job_.vsContents.Row = to;
  job_.Modified = true;  // the estimate stays: the same items fill the same discs
}

void ContentsEditing::doRandomize() {
  if (!doUpdateJobCommands().randomize) return;
  const WaitPointer wait(desktop_);
  const FlagScope ignore(state_.IgnoreEvents);
  const int count = job_.vsContents.Rows() - 1;
  std::vector<int> order(static_cast<std::size_t>(count));
  std::iota(order.begin(), order.end(), 1);
  std::uniform_int_distribution<int> draw(0, count - 1);
  for (int i = 0; i < count; ++i) {
    desktop_.doYield();
    const int target = draw(random_) - 1;  // the draw 0 leaves the row where it is
    const auto begin = order.begin();
    if (target > i)
      std::rotate(begin + i, begin + i + 1, begin + target + 1);
    else if (target >= 0)
      std::rotate(begin + target, begin + i, begin + i + 1);
  }
  job_.vsContents.arrangeRows(order);
  job_.vsContents.Row = 1;
  job_.Modified = true;  // the estimate stays, as for a move
}

void ContentsEditing::doSortColumn(int col) {
  Table& contents = job_.vsContents;
  if (col == ContentsIcon) col = ContentsName;
  if (!isSortable(col)) return;
  const bool descending = contents.cellData(0, col) == "1";
  contents.setCellData(0, col, descending ? "0" : "1");
  doArrange(withSortKeys(contents, col,
                         [descending](const auto& keys) { return sortedRows(keys, descending); }));
  mark_ = {.col = col, .descending = descending};
  markedRevision_ = contents.revision();
}

bool ContentsEditing::isInOrder(const SortMark& mark) const {
  return withSortKeys(job_.vsContents, mark.col, [&mark](const auto& keys) {
    return mark.descending ? std::is_sorted(keys.rbegin(), keys.rend())
                           : std::is_sorted(keys.begin(), keys.end());
  });
}

SortMark ContentsEditing::sortMark() {
  const Table& contents = job_.vsContents;
  if (mark_.col < 0 || markedRevision_ == contents.revision()) return mark_;
  markedRevision_ = contents.revision();
  if (!contents.hasData() || !isInOrder(mark_)) mark_ = {};
  return mark_;
}

void ContentsEditing::doArrange(const std::vector<int>& order) {
  Table& contents = job_.vsContents;
  const auto current = std::find(order.begin(), order.end(), contents.Row);
  contents.arrangeRows(order);
  if (current != order.end()) contents.Row = static_cast<int>(current - order.begin()) + 1;
}

}  // namespace korvenal
