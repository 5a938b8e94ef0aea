#pragma once

#include <QAbstractTableModel>

#include "platform/Table.h"

namespace korvenal::ui {

/// Shows a table of texts. Row 0 of the table is the header, so row r of the model is row r + 1
/// there. The table outlives the model; `refresh` follows what became of it.
class TableModel : public QAbstractTableModel {
  Q_OBJECT
 public:
  explicit TableModel(const Table& table, QObject* parent = nullptr);

  /// Takes over what changed since the last call; next to nothing when nothing did. Selection and
  /// place of views stay. True when something had changed.
  bool refresh();
  const Table& table() const { return table_; }
  static int tableRow(const QModelIndex& index) { return index.row() + 1; }

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
  QVariant headerData(int section, Qt::Orientation orientation,
                      int role = Qt::DisplayRole) const override;

 private:
  const Table& table_;
  std::uint64_t revision_ = 0;
  int rows_ = 0;
  int cols_ = 0;
};

}  // namespace korvenal::ui
