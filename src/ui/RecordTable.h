#pragma once

#include <QTableView>
#include <QTimer>
#include <vector>

#include "ui/RecordModel.h"

class QMenu;

namespace korvenal::ui {

/// A table of records in view. Whoever looks at its end stays there as it grows; whoever looks
/// elsewhere keeps the place.
class RecordTable : public QTableView {
  Q_OBJECT
 public:
  enum class Follows {
    End,      ///< new rows come at the end
    Current,  ///< the current row is the table's own `Row`, both ways
  };
  struct Look {
    std::vector<int> widths;  ///< by column, in characters; the last one in view takes the rest
    QString emptyText;        ///< shown instead of rows
    Follows follows = Follows::End;
  };

  /// The model becomes the table's own. The table of texts outlives both.
  RecordTable(Table& table, RecordModel* model, Look look, QWidget* parent = nullptr);

  /// A large change comes in by and by, whenever the program has time; `refreshed` tells of it.
  void refresh();
  int failures() const { return model_->failures(); }
  void setEmptyText(const QString& text);
  /// Opens below a right click and the menu key. Not owned.
  void setMenu(QMenu* menu);

 signals:
  /// A double click or Enter on a row of the table.
  void rowOpened(int tableRow);
  void refreshed();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void doHideColumns();
  void doFollow();
  void doShowCurrent();

  Table& table_;
  RecordModel* model_;
  Look look_;
  QTimer more_;            ///< goes on with a large change
  bool following_ = true;  ///< the end of the table is in view
  bool drawing_ = false;   ///< the selection is being drawn, not made by the person
};

}  // namespace korvenal::ui
