#include "ui/BrowseModel.h"

#include <algorithm>

#include "core/SizeText.h"
#include "platform/Clock.h"
#include "ui/Texts.h"

namespace korvenal::ui {

namespace {

constexpr std::size_t EntriesAtOnce = 20'000;  ///< some milliseconds

}  // namespace

BrowseModel::BrowseModel(frmBrowse& form, Desktop& desktop, QObject* parent)
    : QAbstractTableModel(parent), form_(form), desktop_(desktop) {
  connect(&thumbnails_, &Thumbnails::made, this, &BrowseModel::showMade);
  more_.setSingleShot(true);
  connect(&more_, &QTimer::timeout, this, &BrowseModel::doTakeMore);
  refresh();
}

bool BrowseModel::isWanted(const frmBrowse::Entry& entry) const {
  return filter_.isEmpty() || toQt(entry.name).contains(filter_, Qt::CaseInsensitive);
}

/// Adds the entries in view among the next ones that were not seen yet.
void BrowseModel::doLookOn(std::vector<std::size_t>& shown) {
  const std::size_t end = std::min(form_.entries().size(), seen_ + EntriesAtOnce);
  for (; seen_ < end; ++seen_)
    if (isWanted(form_.entries()[seen_])) shown.push_back(seen_);
  if (isBehind()) more_.start();
}

void BrowseModel::refresh() {
  beginResetModel();
  thumbnails_.forgetWanted();
  pictured_.clear();
  shown_.clear();
  seen_ = 0;
  doLookOn(shown_);
  endResetModel();
}

void BrowseModel::doTakeMore() {
  std::vector<std::size_t> more;
  doLookOn(more);
  if (more.empty()) return;
  const int before = rowCount();
  beginInsertRows({}, before, before + static_cast<int>(more.size()) - 1);
  shown_.insert(shown_.end(), more.begin(), more.end());
  endInsertRows();
}

void BrowseModel::finish() {
  while (isBehind()) {
    doTakeMore();
    desktop_.doYield();
  }
}

void BrowseModel::refreshTicks() {
  emit looksChanged();
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
    const QString path = toQt(form_.pathOf(entry));
    pictured_.insert(path, static_cast<std::size_t>(&entry - form_.entries().data()));
    const QIcon picture = thumbnails_.of(path);
    if (!picture.isNull()) return picture;
  }
  return icons_.ofType(name);
}

QString BrowseModel::text(const frmBrowse::Entry& entry, int column) const {
  switch (column) {
    case SizeColumn:
      return entry.isFolder() ? QString() : toQt(formatSizeText(entry.info.size, true));
    case TypeColumn:
      return toQt(desktop_.doGetTypeName(std::string(entry.name), entry.isFolder()));
    case ModifiedColumn:
      return toQt(Dates::displayShort(entry.info.modified));
    default:
      return shownText(entry.name);
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
      return index.column() == NameColumn ? QVariant(toolTipText(shownText(at.name))) : QVariant();
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
  emit dataChanged(index, index, {Qt::CheckStateRole});
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
  const auto asked = pictured_.constFind(path);
  if (asked == pictured_.constEnd()) return;
  const auto found = std::lower_bound(shown_.begin(), shown_.end(), *asked);
  if (found == shown_.end() || *found != *asked) return;
  const QModelIndex at = index(static_cast<int>(found - shown_.begin()), NameColumn);
  emit dataChanged(at, at, {Qt::DecorationRole});
}

}  // namespace korvenal::ui
