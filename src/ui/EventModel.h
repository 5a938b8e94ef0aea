#pragma once

#include "core/RunGrids.h"
#include "ui/RecordModel.h"

namespace korvenal::ui {

/// The events of a run in their colours.
class EventModel : public RecordModel {
  Q_OBJECT
 public:
  EventModel(const RunGrids& grids, int page, QObject* parent = nullptr);

  QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

 private:
  const RunGrids& grids_;
  int page_;
};

}  // namespace korvenal::ui
