#include "ui/RecordModel.h"

#include <QApplication>
#include <algorithm>

#include "ui/Texts.h"
#include "ui/Theme.h"

namespace korvenal::ui {

namespace {

constexpr int RowsAtOnce = 20'000;  ///< a few milliseconds

}  // namespace

RecordModel::RecordModel(const Table& table, RowJudge judge, QObject* parent)
    : QAbstractTableModel(parent),
      table_(table),
      judge_(std::move(judge)),
      revision_(table.revision()),
      settledRevision_(table.settledRevision()),
      cols_(table.Cols()) {
  doLookOn(shown_);
}

/// Adds the rows to show among the next ones that were not seen yet.
void RecordModel::doLookOn(std::vector<int>& shown) {
  const int end = std::min(table_.Rows(), seen_ + RowsAtOnce);
  for (; seen_ < end; ++seen_) {
    if (!table_.isRowHidden(seen_)) shown.push_back(seen_);
    if (judge_.kind(table_, seen_) == NoteKind::Bad) ++failures_;
  }
}

bool RecordModel::refresh() {
  if (revision_ == table_.revision() && !isBehind()) return false;
  const bool onlyGrown = settledRevision_ == table_.settledRevision();
  revision_ = table_.revision();
  settledRevision_ = table_.settledRevision();
  if (onlyGrown)
    doTakeNewRows();
  else if (table_.Rows() <= RowsAtOnce)
    doCompare();
  else
    doBeginAnew();
  return true;
}

void RecordModel::doTakeNewRows() {
  std::vector<int> fresh;
  doLookOn(fresh);
  if (fresh.empty()) return;
  const int before = static_cast<int>(shown_.size());
  beginInsertRows({}, before, before + static_cast<int>(fresh.size()) - 1);
  shown_.insert(shown_.end(), fresh.begin(), fresh.end());
  endInsertRows();
}

void RecordModel::doBeginAnew() {
  beginResetModel();
  cols_ = table_.Cols();
  shown_.clear();
  failures_ = 0;
  seen_ = 1;
  doLookOn(shown_);
  endResetModel();
}

/// Looks through the whole table, and keeps the places of the rows that are where they were.
void RecordModel::doCompare() {
  std::vector<int> shown;
  failures_ = 0;
  seen_ = 1;
  doLookOn(shown);
  const std::size_t common = std::min(shown.size(), shown_.size());
  const bool grownOrCut = std::equal(
      shown.begin(), shown.begin() + static_cast<std::ptrdiff_t>(common), shown_.begin());
  if (cols_ != table_.Cols() || !grownOrCut) {
    beginResetModel();
    cols_ = table_.Cols();
    shown_ = std::move(shown);
    endResetModel();
    return;
  }
  const int before = static_cast<int>(shown_.size());
  const int now = static_cast<int>(shown.size());
  if (now > before) {
    beginInsertRows({}, before, now - 1);
    shown_ = std::move(shown);
    endInsertRows();
  } else if (now < before) {
    beginRemoveRows({}, now, before - 1);
    shown_ = std::move(shown);
    endRemoveRows();
  }
  if (common > 0 && cols_ > 0)
    emit dataChanged(index(0, 0), index(static_cast<int>(common) - 1, cols_ - 1));
}

int RecordModel::tableRow(const QModelIndex& index) const {
  const bool inside = index.isValid() && index.row() < static_cast<int>(shown_.size());
  return inside ? shown_[static_cast<std::size_t>(index.row())] : 0;
}

QModelIndex RecordModel::indexOf(int tableRow) const {
  const auto found = std::lower_bound(shown_.begin(), shown_.end(), tableRow);
  if (found == shown_.end() || *found != tableRow) return {};
  return index(static_cast<int>(found - shown_.begin()), 0);
}

int RecordModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(shown_.size());
}

int RecordModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : cols_;
}

QVariant RecordModel::data(const QModelIndex& index, int role) const {
  const int row = tableRow(index);
  if (role == Qt::DisplayRole || role == Qt::ToolTipRole)
    return shownText(table_.text(row, index.column()));
  const bool told = role == Qt::ForegroundRole || role == Qt::DecorationRole;
  if (!told || index.column() != judge_.column) return {};
  switch (judge_.kind(table_, row)) {
    case NoteKind::Bad:
      if (role == Qt::DecorationRole) return Theme::icon(QStringLiteral("dialog-error"));
      return Theme::discColor(RunDiscState::Failed, QApplication::palette());
    case NoteKind::Undone:
      if (role == Qt::ForegroundRole)
        return Theme::discColor(RunDiscState::Planned, QApplication::palette());
      break;
    case NoteKind::Good:
      break;
  }
  return {};
}

QVariant RecordModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal) return {};
  if (role == Qt::TextAlignmentRole) return QVariant(Qt::AlignLeft | Qt::AlignVCenter);
  return role == Qt::DisplayRole ? QVariant(toQt(table_.text(0, section))) : QVariant();
}

}  // namespace korvenal::ui
