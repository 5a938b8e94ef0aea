#include "ui/TableModel.h"

#include "ui/Texts.h"

namespace korvenal::ui {

TableModel::TableModel(const Table& table, QObject* parent)
    : QAbstractTableModel(parent),
      table_(table),
      revision_(table.revision()),
      rows_(table.Rows() - 1),
      cols_(table.Cols()) {}

bool TableModel::refresh() {
  if (revision_ == table_.revision()) return false;
  revision_ = table_.revision();
  if (cols_ != table_.Cols()) {
    beginResetModel();
    cols_ = table_.Cols();
    rows_ = table_.Rows() - 1;
    endResetModel();
    return true;
  }
  const int rows = table_.Rows() - 1;
  if (rows > rows_) {
    beginInsertRows({}, rows_, rows - 1);
    rows_ = rows;
    endInsertRows();
  } else if (rows < rows_) {
    beginRemoveRows({}, rows, rows_ - 1);
    rows_ = rows;
    endRemoveRows();
  }
  if (rows_ > 0 && cols_ > 0) emit dataChanged(index(0, 0), index(rows_ - 1, cols_ - 1));
  if (cols_ > 0) emit headerDataChanged(Qt::Horizontal, 0, cols_ - 1);
  return true;
}

int TableModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : rows_;
}

int TableModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : cols_;
}

QVariant TableModel::data(const QModelIndex& index, int role) const {
  if (role != Qt::DisplayRole && role != Qt::ToolTipRole) return {};
  const QString text = shownText(table_.text(tableRow(index), index.column()));
  return role == Qt::ToolTipRole ? toolTipText(text) : text;
}

QVariant TableModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
  return toQt(table_.text(0, section));
}

}  // namespace korvenal::ui
