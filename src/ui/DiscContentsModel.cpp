#include "ui/DiscContentsModel.h"

#include "ui/Texts.h"

namespace korvenal::ui {

void DiscContentsModel::refresh() {
  beginResetModel();
  rows_ = contents_.Rows() - 1;
  endResetModel();
}

int DiscContentsModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : rows_;
}

int DiscContentsModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : contents_.Cols();
}

QVariant DiscContentsModel::data(const QModelIndex& index, int role) const {
  if (role == Qt::TextAlignmentRole && index.column() == DiscContentsSize)
    return QVariant(Qt::AlignRight | Qt::AlignVCenter);
  if (role != Qt::DisplayRole && role != Qt::ToolTipRole) return {};
  return shownText(contents_.text(index.row() + 1, index.column()));
}

QVariant DiscContentsModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
  return toQt(contents_.text(0, section));
}

}  // namespace korvenal::ui
