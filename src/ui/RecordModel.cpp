#include "ui/RecordModel.h"

#include <QApplication>
#include <algorithm>

#include "ui/Texts.h"
#include "ui/Theme.h"

namespace korvenal::ui {

RecordModel::RecordModel(const Table& table, RowJudge judge, QObject* parent)
    : QAbstractTableModel(parent), table_(table), judge_(std::move(judge)), cols_(table.Cols()) {
  doLookThrough(shown_);
  revision_ = table_.revision();
}

void RecordModel::doLookThrough(std::vector<int>& shown) {
  shown.clear();
  failures_ = 0;
  for (int row = 1; row < table_.Rows(); ++row) {
    if (!table_.isRowHidden(row)) shown.push_back(row);
    if (judge_.kind(table_, row) == NoteKind::Bad) ++failures_;
  }
}

bool RecordModel::refresh() {
  if (revision_ == table_.revision()) return false;
  revision_ = table_.revision();
  std::vector<int> shown;
  doLookThrough(shown);
  const std::size_t common = std::min(shown.size(), shown_.size());
  const bool grownOrCut = std::equal(
      shown.begin(), shown.begin() + static_cast<std::ptrdiff_t>(common), shown_.begin());
  if (cols_ != table_.Cols() || !grownOrCut) {
    beginResetModel();
    cols_ = table_.Cols();
    shown_ = std::move(shown);
    endResetModel();
    return true;
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
  return true;
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
    return toQt(table_.text(row, index.column()));
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
