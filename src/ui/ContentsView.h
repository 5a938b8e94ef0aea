#pragma once

#include <QTableView>
#include <string>
#include <vector>

#include "ui/Page.h"

namespace korvenal::ui {

class ContentsModel;

/// The table of the job's items, with its keys, its menu and its drops.
class ContentsView : public QTableView {
  Q_OBJECT
 public:
  explicit ContentsView(const Context& context, QWidget* parent = nullptr);

  /// Follows the items and the row that the program is on.
  void refresh();
  /// Begins to edit the name of the current row.
  void doEditName();

 signals:
  void filesDropped(const std::vector<std::string>& paths);
  void menuWanted(const QPoint& at);
  void deleteWanted();

 protected:
  void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
  void keyPressEvent(QKeyEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  void doSort(int column);
  void doDrawSortMark();
  void doRename(int row, const QString& name);

  Context context_;
  ContentsModel* model_;
  bool following_ = false;  ///< the view itself moves to the program's row
};

}  // namespace korvenal::ui
