#include "ui/ContentsModel.h"

#include <QApplication>
#include <QMimeData>
#include <QUrl>

#include "ui/Texts.h"
#include "ui/Theme.h"

namespace korvenal::ui {

namespace {

const QString RowType = QStringLiteral("application/x-korvenal-item");
const QString FilesType = QStringLiteral("text/uri-list");

/// The path of a local file to its last byte: what is no UTF-8 in it stands percent-encoded in the
/// URL, and would be lost in a text.
std::string nativePath(const QUrl& url) {
  return QByteArray::fromPercentEncoding(url.path(QUrl::FullyEncoded).toLatin1()).toStdString();
}

}  // namespace

ContentsModel::ContentsModel(const Job& job, JobControls& controls, QObject* parent)
    : TableModel(job.vsContents, parent), job_(job), controls_(controls) {}

bool ContentsModel::isMissing(int row) const {
  return table().text(row, ContentsModified) == NotExistingText;
}

QVariant ContentsModel::decoration(int row) const {
  if (isMissing(row)) return Theme::icon(QStringLiteral("dialog-warning"));
  if (table().text(row, ContentsType) == "0") return icons_.folder();
  return icons_.ofType(toQt(table().text(row, ContentsName)));
}

QVariant ContentsModel::data(const QModelIndex& index, int role) const {
  const int row = tableRow(index);
  const int column = index.column();
  switch (role) {
    case Qt::EditRole:
      return column == ContentsName ? toQt(table().text(row, column)) : QVariant();
    case Qt::DecorationRole:
      return column == ContentsName ? decoration(row) : QVariant();
    case Qt::CheckStateRole: {
      const Table::Check check = table().check(row, column);
      if (column != ContentsSubfolder || check == Table::Check::None) return {};
      return check == Table::Check::Ticked ? Qt::Checked : Qt::Unchecked;
    }
    case Qt::ForegroundRole:
      if (isMissing(row) && column == ContentsModified)
        return Theme::discColor(RunDiscState::Failed, QApplication::palette());
      return {};
    case Qt::TextAlignmentRole:
      return column == ContentsSize ? QVariant(Qt::AlignRight | Qt::AlignVCenter) : QVariant();
    case Qt::ToolTipRole:
      if (isMissing(row))
        return toolTipText(tr("%1\nThere is nothing at this path now. The item is left out of a "
                              "backup unless it is there again by then.")
                               .arg(toQt(table().text(row, ContentsPath))));
      return toolTipText(toQt(table().text(row, column == ContentsName ? ContentsPath : column)));
    default:
      return TableModel::data(index, role);
  }
}

bool ContentsModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  if (!mayEdit || !mayEdit()) return false;
  const int row = tableRow(index);
  if (role == Qt::CheckStateRole && index.column() == ContentsSubfolder) {
    controls_.setSubfolder(row, value.toInt() == Qt::Checked);
  } else if (role == Qt::EditRole && index.column() == ContentsName) {
    emit nameTyped(row, value.toString());
    return true;
  } else {
    return false;
  }
  emit edited();
  return true;
}

Qt::ItemFlags ContentsModel::flags(const QModelIndex& index) const {
  // Between the rows and below them is room for drops.
  if (!index.isValid()) return Qt::ItemIsDropEnabled;
  Qt::ItemFlags flags =
      Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsDragEnabled | Qt::ItemIsDropEnabled;
  if (index.column() == ContentsName) flags |= Qt::ItemIsEditable;
  if (index.column() == ContentsSubfolder &&
      table().check(tableRow(index), ContentsSubfolder) != Table::Check::None)
    flags |= Qt::ItemIsUserCheckable;
  return flags;
}

QStringList ContentsModel::mimeTypes() const {
  return {RowType, FilesType};
}

QMimeData* ContentsModel::mimeData(const QModelIndexList& indexes) const {
  auto* data = new QMimeData;
  if (!indexes.isEmpty()) data->setData(RowType, QByteArray::number(tableRow(indexes.front())));
  return data;
}

bool ContentsModel::canDropMimeData(const QMimeData* data, Qt::DropAction, int, int,
                                    const QModelIndex&) const {
  return mayEdit && mayEdit() && (data->hasFormat(RowType) || data->hasUrls());
}

bool ContentsModel::dropMimeData(const QMimeData* data, Qt::DropAction action, int row, int column,
                                 const QModelIndex& parent) {
  if (!canDropMimeData(data, action, row, column, parent)) return false;
  if (data->hasFormat(RowType)) {
    const int from = data->data(RowType).toInt();
    const int behind = job_.vsContents.Rows();
    // Onto a row, in front of one, or below all of them.
    int to = parent.isValid() ? tableRow(parent) : row < 0 ? behind : row + 1;
    if (!parent.isValid() && to > from) --to;
    emit rowDragged(from, std::min(to, behind - 1));
    // The view is not to remove the row that was moved already.
    return false;
  }
  std::vector<std::string> paths;
  for (const QUrl& url : data->urls())
    if (url.isLocalFile()) paths.push_back(nativePath(url));
  if (paths.empty()) return false;
  emit filesDropped(paths);
  return true;
}

}  // namespace korvenal::ui
