#include "ui/EventModel.h"

#include <QApplication>

#include "ui/Theme.h"

namespace korvenal::ui {

EventModel::EventModel(const RunGrids& grids, int page, QObject* parent)
    : RecordModel(grids.vsEvent[static_cast<std::size_t>(page)], {}, parent),
      grids_(grids),
      page_(page) {}

QVariant EventModel::data(const QModelIndex& index, int role) const {
  if (role != Qt::ForegroundRole && role != Qt::BackgroundRole)
    return RecordModel::data(index, role);
  const EventStyle style = grids_.styleOf(page_, tableRow(index));
  const QPalette palette = QApplication::palette();
  if (role == Qt::ForegroundRole)
    return index.column() == 0 ? Theme::explanation(palette)
                               : Theme::eventText(style.color, palette);
  const QColor ground = Theme::eventBackground(style.background, palette);
  return ground.isValid() ? QVariant(ground) : QVariant();
}

}  // namespace korvenal::ui
