#include "plan/DiscAllocation.h"

#include "core/Workspace.h"
#include "plan/FileSplitting.h"
#include "plan/PlanLimits.h"

namespace korvenal {

namespace {

constexpr std::int64_t MiB = 1048576;

template <std::size_t Count>
std::int64_t listedBytes(const int (&megabytes)[Count], std::int64_t index,
                         std::int64_t defaultIndex) {
  const bool known = index >= 0 && index < static_cast<std::int64_t>(Count);
  return megabytes[known ? index : defaultIndex] * MiB;
}

/// What a row costs on a disc beside the overhead of its entry.
std::int64_t contentBytes(const PlanTable::Row& row) {
  const bool isFolder = row.type == RowType::Folder || row.type == RowType::SplitFile;
  return isFolder ? 0 : row.size.whole();
}

}  // namespace

AllocationRules allocationRules(const Settings& settings, int comboDiscType, bool splitAndSpan) {
  AllocationRules rules;
  rules.capacity = discCapacity(comboDiscType);
  rules.minSplitFile = listedBytes(SplitFileMegabytes, settings.SplitSize, 2);
  rules.minDiscRest = listedBytes(SplitDiscMegabytes, settings.SplitSize2, 5);
  rules.splitAndSpan = splitAndSpan;
  return rules;
}

DiscAllocation::DiscAllocation(const ActionState& state, Desktop& desktop, Plan& plan,
                               const AllocationRules& rules)
    : state_(state),
      desktop_(desktop),
      plan_(plan),
      table_(plan.vsBuffer),
      rules_(rules),
      used_(DiscReserve) {}

DiscAllocation::Outcome DiscAllocation::run() {
  input_.swap(table_.rows());
  table_.rows().reserve(input_.size() + input_.size() / 64 + 16);
  table_.rows().push_back(input_.front());
  next_ = 1;
  while (hasCurrent()) {
    desktop_.doYield();
    if (state_.StopAction) return Outcome::Stopped;
    if (place()) continue;
    if (mayCut())
      cut();
    else if (!goToNextDisc())
      return Outcome::TooManyDiscs;
  }
  plan_.DiscUsed[static_cast<std::size_t>(disc_ - 1)] = Fixed4(used_);
  plan_.TotalDiscs = disc_;
  input_ = {};
  return Outcome::Done;
}

DiscAllocation::Row DiscAllocation::takeCurrent() {
  if (pending_.empty()) return input_[next_++];
  const Row row = pending_.back();
  pending_.pop_back();
  return row;
}

bool DiscAllocation::place() {
  const std::int64_t after = used_ + contentBytes(current()) + EntryOverhead;
  if (after > rules_.capacity) return false;
  Row row = takeCurrent();
  used_ = after;
  row.disc = static_cast<std::uint8_t>(disc_);
  row.discUsed = Fixed4(used_);
  if (row.type != RowType::RepeatedFolder) ++contentRows_;
  table_.rows().push_back(row);
  return true;
}

std::int64_t DiscAllocation::bytesToFill() const {
  const std::int64_t rest = rules_.capacity - used_ - SplitMargin;
  return rest / SectorSize * SectorSize;
}

bool DiscAllocation::mayCut() {
  const Row& row = current();
  if (row.type != RowType::File && row.type != RowType::Piece) return false;
  if (bytesToFill() <= 0) return false;
  // No other disc would ever take it better.
  if (holdsOnlyRepeatedFolders(row)) return true;

  const std::int64_t size = row.size.whole();
  const bool tooLate =
      used_ >= rules_.capacity - rules_.minDiscRest - SplitMargin || size <= rules_.minSplitFile;
  const bool wouldFit =
      !rules_.splitAndSpan && size + EntryOverhead <= rules_.capacity && size < LargeFileLimit;
  return !tooLate && !wouldFit;
}

/// A first piece has the row of its split file above it; that one does not count either.
bool DiscAllocation::holdsOnlyRepeatedFolders(const Row& row) const {
  if (contentRows_ == 0) return true;
  const bool isFirstPiece =
      row.type == RowType::Piece && table_.rows().back().type == RowType::SplitFile;
  return isFirstPiece && contentRows_ == 1;
}

void DiscAllocation::cut() {
  if (current().type == RowType::Piece)
    cutPiece();
  else
    cutFile();
}

void DiscAllocation::cutFile() {
  const std::int64_t first = bytesToFill();
  Row file = takeCurrent();
  makeSplitFile(table_, file);
  pending_.push_back(pieceOf(table_, file, {2, first + 1, file.size.whole()}));
  pending_.push_back(pieceOf(table_, file, {1, 1, first}));
  pending_.push_back(file);
}

void DiscAllocation::cutPiece() {
  const std::int64_t first = bytesToFill();
  Row head = takeCurrent();
  Row tail = head;
  const PlanTable::Range whole = table_.rangeOf(head.range);
  const std::int64_t cutAt = whole.start + first - 1;

  renumberBehind(whole.number + 2);
  table_.rangeOf(head.range).end = cutAt;
  tail.range = table_.addRange({whole.number + 1, cutAt + 1, whole.end});
  tail.size = head.size - Fixed4(first);
  head.size = Fixed4(first);
  pending_.push_back(tail);
  pending_.push_back(head);
}

/// Numbers the pieces of the same file that are still to come.
void DiscAllocation::renumberBehind(std::int32_t number) {
  for (auto row = pending_.rbegin(); row != pending_.rend(); ++row) {
    if (row->type != RowType::Piece) return;
    table_.rangeOf(row->range).number = number++;
  }
  for (std::size_t at = next_; at < input_.size() && input_[at].type == RowType::Piece; ++at)
    table_.rangeOf(input_[at].range).number = number++;
}

bool DiscAllocation::goToNextDisc() {
  plan_.DiscUsed[static_cast<std::size_t>(disc_ - 1)] = Fixed4(used_);
  if (++disc_ > MaxDiscs) return false;
  // A split file's own row moves along with its first piece.
  if (table_.rows().back().type == RowType::SplitFile) {
    pending_.push_back(table_.rows().back());
    table_.rows().pop_back();
  }
  used_ = DiscReserve;
  contentRows_ = 0;
  repeatFolders();
  return true;
}

/// Puts the folders that hold the current row before it, the outermost one first.
void DiscAllocation::repeatFolders() {
  const Row row = current();
  if (row.itemFlag) return;
  const std::size_t before = pending_.size();
  for (PlanTable::Link at = row.folder; at > PlanTable::DiscRoot; at = table_.folder(at).parent) {
    const PlanTable::Folder& folder = table_.folder(at);
    if (folder.name == PlanTable::NoLink) continue;
    Row repeated;
    repeated.type = RowType::RepeatedFolder;
    repeated.folder = folder.parent;
    repeated.name = repeated.original = folder.name;
    repeated.own = at;
    pending_.push_back(repeated);
  }
  if (pending_.size() > before) pending_.back().itemFlag = true;
}

}  // namespace korvenal
