#include "ui/RestoreTreeModel.h"

#include <algorithm>

#include "platform/Paths.h"
#include "ui/Texts.h"

namespace korvenal::ui {

namespace {

constexpr int VisibleColumns = 5;

Qt::CheckState boxOf(RestoreCheck check) {
  switch (check) {
    case RestoreCheck::Checked:
    case RestoreCheck::StillChecked:
      return Qt::Checked;
    case RestoreCheck::Partly:
      return Qt::PartiallyChecked;
    case RestoreCheck::Unchecked:
    case RestoreCheck::StillUnchecked:
      break;
  }
  return Qt::Unchecked;
}

}  // namespace

RestoreTreeModel::RestoreTreeModel(const RestorePage& page, QObject* parent)
    : QAbstractTableModel(parent), page_(page) {}

bool RestoreTreeModel::refresh() {
  const bool loading = page_.IndexLoading;
  // A tree that is being filled changes all the time; it is shown once it stands.
  if (loading && wasLoading_ && rows_.empty()) return false;
  if (loading == wasLoading_ && revision_ == tree().revision()) return false;
  wasLoading_ = loading;
  revision_ = tree().revision();
  take(rowsInView());
  return true;
}

RestoreTreeModel::Rows RestoreTreeModel::rowsInView() const {
  Rows rows;
  const auto count = static_cast<std::uint32_t>(tree().Rows());
  if (page_.IndexLoading || count < 2) return rows;
  rows.reserve(std::max<std::size_t>(rows_.size(), 1024));
  for (std::uint32_t at = 1; at < count;) {
    rows.push_back(at);
    const int row = static_cast<int>(at);
    at = tree().isCollapsed(row) ? tree().item(row).end : at + 1;
  }
  return rows;
}

void RestoreTreeModel::take(Rows rows) {
  // One stretch that came or went keeps the place of the view; anything else is shown anew.
  const auto [before, now] = std::mismatch(rows_.begin(), rows_.end(), rows.begin(), rows.end());
  const auto first = static_cast<int>(before - rows_.begin());
  const auto same =
      static_cast<int>(std::mismatch(rows_.rbegin(), std::make_reverse_iterator(before),
                                     rows.rbegin(), std::make_reverse_iterator(now))
                           .first -
                       rows_.rbegin());
  const int gone = static_cast<int>(rows_.size()) - first - same;
  const int come = static_cast<int>(rows.size()) - first - same;
  if (gone > 0 && come > 0) {
    beginResetModel();
    rows_ = std::move(rows);
    endResetModel();
  } else if (come > 0) {
    beginInsertRows({}, first, first + come - 1);
    rows_ = std::move(rows);
    endInsertRows();
  } else if (gone > 0) {
    beginRemoveRows({}, first, first + gone - 1);
    rows_ = std::move(rows);
    endRemoveRows();
  }
  if (!rows_.empty())
    emit dataChanged(index(0, 0), index(static_cast<int>(rows_.size()) - 1, VisibleColumns - 1));
}

int RestoreTreeModel::treeRow(int row) const {
  if (row < 0 || row >= static_cast<int>(rows_.size())) return 0;
  const auto at = static_cast<int>(rows_[static_cast<std::size_t>(row)]);
  // Between a change of the tree and the refresh that follows, rows may be gone.
  return at < tree().Rows() ? at : 0;
}

int RestoreTreeModel::rowOf(int treeRow) const {
  if (treeRow < 1) return -1;
  const auto behind =
      std::upper_bound(rows_.begin(), rows_.end(), static_cast<std::uint32_t>(treeRow));
  return static_cast<int>(behind - rows_.begin()) - 1;
}

bool RestoreTreeModel::hasContents(int treeRow) const {
  return static_cast<int>(tree().item(treeRow).end) > treeRow + 1;
}

QString RestoreTreeModel::path(int treeRow) const {
  return toQt(Paths::withoutEnd(tree().doGetOriginPath(treeRow)));
}

int RestoreTreeModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int RestoreTreeModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : VisibleColumns;
}

QIcon RestoreTreeModel::icon(int treeRow) const {
  const QString name = toQt(tree().name(treeRow));
  switch (page_.icons) {
    case RestoreIcons::ByType:
      return tree().isFolder(treeRow) ? icons_.folder() : icons_.ofType(name);
    case RestoreIcons::Stock:
      return tree().isFolder(treeRow) ? icons_.folder() : icons_.stock(name);
    case RestoreIcons::None:
      break;
  }
  return {};
}

QVariant RestoreTreeModel::data(const QModelIndex& index, int role) const {
  const int at = treeRow(index.row());
  if (at == 0) return {};
  const bool isName = index.column() == RestoreName;
  switch (role) {
    case Qt::DisplayRole:
      return shownText(tree().text(at, index.column()));
    case Qt::CheckStateRole:
      return isName ? QVariant(boxOf(tree().check(at))) : QVariant();
    case Qt::DecorationRole:
      return isName && page_.icons != RestoreIcons::None ? QVariant(icon(at)) : QVariant();
    case Qt::TextAlignmentRole:
      return QVariant((index.column() == RestoreSize ? Qt::AlignRight : Qt::AlignLeft) |
                      Qt::AlignVCenter);
    default:
      return {};
  }
}

bool RestoreTreeModel::setData(const QModelIndex& index, const QVariant&, int role) {
  const int at = treeRow(index.row());
  if (role != Qt::CheckStateRole || index.column() != RestoreName || at == 0) return false;
  emit boxClicked(at);
  return true;
}

Qt::ItemFlags RestoreTreeModel::flags(const QModelIndex& index) const {
  const Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
  return index.column() == RestoreName ? flags | Qt::ItemIsUserCheckable : flags;
}

QVariant RestoreTreeModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal) return {};
  if (role == Qt::DisplayRole) return toQt(tree().text(0, section));
  if (role == Qt::TextAlignmentRole)
    return QVariant((section == RestoreSize ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
  return {};
}

}  // namespace korvenal::ui
