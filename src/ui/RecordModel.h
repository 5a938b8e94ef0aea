#pragma once

#include <QAbstractTableModel>
#include <functional>
#include <vector>

#include "platform/Table.h"
#include "records/NoteKind.h"

namespace korvenal::ui {

/// What a table tells of the outcome of its rows.
struct RowJudge {
  int column = -1;  ///< the cell that tells it; -1 for none
  std::function<NoteKind(const std::string& text)> kindOf;

  NoteKind kind(const Table& table, int row) const {
    return column < 0 ? NoteKind::Good : kindOf(table.text(row, column));
  }
};

/// Shows the rows of a table that are not hidden; those that went wrong in colour and with an icon.
/// The table outlives the model.
class RecordModel : public QAbstractTableModel {
  Q_OBJECT
 public:
  explicit RecordModel(const Table& table, RowJudge judge = {}, QObject* parent = nullptr);

  /// Takes over what changed since the last call; next to nothing when nothing did. True when
  /// something had changed. Of a large change it takes a part; the next calls go on.
  bool refresh();
  /// There are rows that no call has taken over yet.
  bool isBehind() const { return seen_ < table_.Rows(); }
  const Table& table() const { return table_; }
  /// Rows that went wrong among those taken over so far, hidden ones too.
  int failures() const { return failures_; }
  int tableRow(const QModelIndex& index) const;
  /// Invalid for a hidden row.
  QModelIndex indexOf(int tableRow) const;

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
  QVariant headerData(int section, Qt::Orientation orientation,
                      int role = Qt::DisplayRole) const override;

 private:
  void doLookOn(std::vector<int>& shown);
  void doCompare();
  void doBeginAnew();
  void doTakeNewRows();

  const Table& table_;
  RowJudge judge_;
  std::uint64_t revision_ = 0;
  std::uint64_t settledRevision_ = 0;
  int seen_ = 1;            ///< rows of the table looked through, with the header
  std::vector<int> shown_;  ///< rows of the table
  int cols_ = 0;
  int failures_ = 0;
};

}  // namespace korvenal::ui
