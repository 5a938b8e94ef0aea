#pragma once

#include <functional>
#include <string>
#include <vector>

#include "job/JobControls.h"
#include "ui/FileIcons.h"
#include "ui/TableModel.h"

namespace korvenal::ui {

/// The items of the job as a table that is edited in place: names, and the boxes of folders. Rows
/// move by drag; files dropped from elsewhere become items.
class ContentsModel : public TableModel {
  Q_OBJECT
 public:
  ContentsModel(const Job& job, JobControls& controls, QObject* parent = nullptr);

  /// May the items be changed now?
  std::function<bool()> mayEdit;

  QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
  bool setData(const QModelIndex& index, const QVariant& value, int role) override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;
  Qt::DropActions supportedDropActions() const override { return Qt::MoveAction | Qt::CopyAction; }
  QStringList mimeTypes() const override;
  QMimeData* mimeData(const QModelIndexList& indexes) const override;
  bool canDropMimeData(const QMimeData* data, Qt::DropAction action, int row, int column,
                       const QModelIndex& parent) const override;
  bool dropMimeData(const QMimeData* data, Qt::DropAction action, int row, int column,
                    const QModelIndex& parent) override;

 signals:
  /// A change of the person's has been taken into the job.
  void edited();
  /// A name was typed. It is taken behind the edit, once the field is closed: what it leads to may
  /// be a question.
  void nameTyped(int tableRow, const QString& name);
  /// Native paths, to be handled behind the drop.
  void filesDropped(const std::vector<std::string>& paths);
  /// A row was dragged to the place of another.
  void rowDragged(int from, int to);

 private:
  bool isMissing(int row) const;
  QVariant decoration(int row) const;

  const Job& job_;
  JobControls& controls_;
  FileIcons icons_;
};

}  // namespace korvenal::ui
