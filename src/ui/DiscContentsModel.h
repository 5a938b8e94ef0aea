#pragma once

#include <QAbstractTableModel>

#include "plan/DiscContents.h"

namespace korvenal::ui {

/// What goes on one disc, read from the plan on demand.
class DiscContentsModel : public QAbstractTableModel {
  Q_OBJECT
 public:
  explicit DiscContentsModel(const DiscContents& contents, QObject* parent = nullptr)
      : QAbstractTableModel(parent), contents_(contents), rows_(contents.Rows() - 1) {}

  /// Another disc is in view.
  void refresh();

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
  QVariant headerData(int section, Qt::Orientation orientation,
                      int role = Qt::DisplayRole) const override;

 private:
  const DiscContents& contents_;
  int rows_;
};

}  // namespace korvenal::ui
