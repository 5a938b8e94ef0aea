#pragma once

#include <QTableView>
#include <functional>

#include "ui/Page.h"
#include "ui/TableModel.h"

class QToolButton;

namespace korvenal::ui {

/// A table of results: rows are chosen whole, columns fit their content at first, and it follows
/// its end as long as the person has not scrolled away from it.
class GridView : public QTableView {
  Q_OBJECT
 public:
  /// The model is shown and owned.
  GridView(TableModel* model, const QString& name, QWidget* parent = nullptr);

  /// Follows the table. True when something had changed.
  bool refresh();
  /// True: new rows at the end are scrolled into view.
  bool followsEnd = false;
  /// What an empty table says.
  QString hint;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void doFitColumns();

  TableModel* model_;
  bool fitted_ = false;
  int rows_ = 1;  ///< of the table, at the last refresh
};

/// Rows of disc records and backup records: those that tell of failure are seen at a glance.
class RecordModel : public TableModel {
  Q_OBJECT
 public:
  RecordModel(const Table& table, int noteColumn, QObject* parent = nullptr)
      : TableModel(table, parent), noteColumn_(noteColumn) {}

  QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

 private:
  int noteColumn_;
};

/// Lines of the event grid in the colours of their marks.
class EventModel : public TableModel {
  Q_OBJECT
 public:
  EventModel(const RunGrids& grids, int page, QObject* parent = nullptr)
      : TableModel(grids.vsEvent[static_cast<std::size_t>(page)], parent),
        grids_(grids),
        page_(page) {}

  QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

 private:
  const RunGrids& grids_;
  int page_;
};

/// Lines of a report: whatever is no pass is seen at a glance. Hidden rows are left out by the
/// view.
class ReportModel : public TableModel {
  Q_OBJECT
 public:
  /// With `resultColumn` below 0 every line is an error.
  ReportModel(const Table& table, int resultColumn, QObject* parent = nullptr)
      : TableModel(table, parent), resultColumn_(resultColumn) {}

  QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

 private:
  int resultColumn_;
};

}  // namespace korvenal::ui
