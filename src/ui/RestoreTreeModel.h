#pragma once

#include <QAbstractTableModel>
#include <cstdint>
#include <vector>

#include "restore/RestorePage.h"
#include "ui/FileIcons.h"

namespace korvenal::ui {

/// The rows of the restore tree that no collapsed folder hides, as a flat table: tables of a
/// million rows come up at once, trees do not. Everything it shows lives in the restore page,
/// which outlives the model. Rows of the tree count from 1, those of the model from 0.
class RestoreTreeModel : public QAbstractTableModel {
  Q_OBJECT
 public:
  explicit RestoreTreeModel(const RestorePage& page, QObject* parent = nullptr);

  /// Takes over what changed since the last call; next to nothing when nothing did. While an index
  /// is being read there are no rows. True when something had changed.
  bool refresh();

  const RestoreTree& tree() const { return page_.vsRestore; }
  /// The row of the tree behind a row of the model; 0 for none.
  int treeRow(int row) const;
  /// The row of the model that shows a row of the tree or, when that is hidden, the collapsed
  /// folder it lies in. -1 for none.
  int rowOf(int treeRow) const;
  /// A folder that holds something, so it can be collapsed.
  bool hasContents(int treeRow) const;
  /// The path that the item had when it was backed up, without a separator at its end.
  QString path(int treeRow) const;

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
  bool setData(const QModelIndex& index, const QVariant& value, int role) override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;
  QVariant headerData(int section, Qt::Orientation orientation,
                      int role = Qt::DisplayRole) const override;

 signals:
  /// The person clicked the box of a row of the tree. Nothing has changed yet.
  void boxClicked(int treeRow);

 private:
  using Rows = std::vector<std::uint32_t>;

  Rows rowsInView() const;
  void take(Rows rows);
  QIcon icon(int treeRow) const;

  const RestorePage& page_;
  std::uint64_t revision_ = 0;
  bool wasLoading_ = false;
  Rows rows_;  ///< rows of the tree, ascending
  FileIcons icons_;
};

}  // namespace korvenal::ui
