#pragma once

#include <QStyledItemDelegate>

#include "ui/RestoreTreeModel.h"

namespace korvenal::ui {

/// Draws a row of the flat tree as one of a tree: indented by its level, with the arrow of folders
/// before its box, and with its path as a tool tip when the name does not fit.
class RestoreTreeDelegate : public QStyledItemDelegate {
  Q_OBJECT
 public:
  explicit RestoreTreeDelegate(const RestoreTreeModel& model, QObject* parent = nullptr);

  void paint(QPainter* painter, const QStyleOptionViewItem& option,
             const QModelIndex& index) const override;
  bool editorEvent(QEvent* event, QAbstractItemModel* model, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;
  bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                 const QModelIndex& index) override;

 signals:
  /// The person clicked the arrow of a row of the tree.
  void arrowClicked(int treeRow);

 private:
  QRect arrowRect(const QStyleOptionViewItem& option, int treeRow) const;
  QStyleOptionViewItem behindArrow(const QStyleOptionViewItem& option, int treeRow) const;
  bool isCut(const QStyleOptionViewItem& option, const QModelIndex& index) const;

  const RestoreTreeModel& model_;
};

}  // namespace korvenal::ui
