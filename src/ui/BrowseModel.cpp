#include "ui/BrowseModel.h"

#include <algorithm>

#include "core/SizeText.h"
#include "platform/Clock.h"
#include "ui/Texts.h"

namespace korvenal::ui {

BrowseModel::BrowseModel(frmBrowse& form, Desktop& desktop, QObject* parent)
    : QAbstractTableModel(parent), form_(form), desktop_(desktop) {
  connect(&thumbnails_, &Thumbnails::made, this, &BrowseModel::showMade);
  fill();
}

void BrowseModel::fill() {
  shown_.clear();
  for (std::size_t at = 0; at < form_.entries().size(); ++at)
    if (filter_.isEmpty() || toQt(form_.entries()[at].name).contains(filter_, Qt::CaseInsensitive))
      shown_.push_back(at);
}

void BrowseModel::refresh() {
  beginResetModel();
  thumbnails_.forgetWanted();
  fill();
  endResetModel();
}

void BrowseModel::refreshTicks() {
  if (!shown_.empty())
    emit dataChanged(index(0, NameColumn), index(rowCount() - 1, NameColumn), {Qt::CheckStateRole});
}

void BrowseModel::setFilter(const QString& text) {
  filter_ = text;
  refresh();
}

void BrowseModel::setThumbnails(bool on) {
  withThumbnails_ = on;
  thumbnails_.forgetWanted();
  refreshTicks();
}

const frmBrowse::Entry& BrowseModel::entry(const QModelIndex& index) const {
  return form_.entries()[shown_[static_cast<std::size_t>(index.row())]];
}

int BrowseModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(shown_.size());
}

int BrowseModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : Columns;
}

QIcon BrowseModel::icon(const frmBrowse::Entry& entry) const {
  if (entry.isFolder()) return icons_.folder();
  const QString name = toQt(entry.name);
  // Only files: reading a pipe would wait for ever.
  if (withThumbnails_ && entry.info.kind == FileInfo::Kind::File) {
    const QIcon picture = thumbnails_.of(toQt(form_.pathOf(entry)));
    if (!picture.isNull()) return picture;
  }
  return icons_.ofType(name);
}

QString BrowseModel::text(const frmBrowse::Entry& entry, int column) const {
  switch (column) {
    case SizeColumn:
      return entry.isFolder() ? QString() : toQt(formatSizeText(entry.info.size, true));
    case TypeColumn:
      return toQt(desktop_.doGetTypeName(entry.name, entry.isFolder()));
    case ModifiedColumn:
      return toQt(Dates::displayShort(entry.info.modified));
    default:
      return toQt(entry.name);
  }
}

QVariant BrowseModel::data(const QModelIndex& index, int role) const {
  // A folder may be listed anew while the view still draws the old one.
  const auto row = static_cast<std::size_t>(index.row());
  if (row >= shown_.size() || shown_[row] >= form_.entries().size()) return {};
  const frmBrowse::Entry& at = entry(index);
  switch (role) {
    case Qt::DisplayRole:
      return text(at, index.column());
    case Qt::ToolTipRole:
      return index.column() == NameColumn ? QVariant(toolTipText(toQt(at.name))) : QVariant();
    case Qt::DecorationRole:
      return index.column() == NameColumn ? QVariant(icon(at)) : QVariant();
    case Qt::CheckStateRole:
      if (index.column() != NameColumn) return {};
      return at.ticked ? Qt::Checked : Qt::Unchecked;
    case Qt::TextAlignmentRole:
      return index.column() == SizeColumn ? QVariant(Qt::AlignRight | Qt::AlignVCenter)
                                          : QVariant();
    default:
      return {};
  }
}

bool BrowseModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  if (role != Qt::CheckStateRole || index.column() != NameColumn) return false;
  emit ticked(shown_[static_cast<std::size_t>(index.row())], value.toInt() == Qt::Checked);
  return true;
}

QVariant BrowseModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
  const QString headers[] = {tr("Name"), tr("Size"), tr("Type"), tr("Modified")};
  return headers[section];
}

Qt::ItemFlags BrowseModel::flags(const QModelIndex& index) const {
  const Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
  return index.column() == NameColumn ? flags | Qt::ItemIsUserCheckable : flags;
}

void BrowseModel::showMade(const QString& path) {
  const auto found = std::find_if(shown_.begin(), shown_.end(), [this, &path](std::size_t at) {
    return toQt(form_.pathOf(form_.entries()[at])) == path;
  });
  if (found == shown_.end()) return;
  const QModelIndex at = index(static_cast<int>(found - shown_.begin()), NameColumn);
  emit dataChanged(at, at, {Qt::DecorationRole});
}

}  // namespace korvenal::ui
