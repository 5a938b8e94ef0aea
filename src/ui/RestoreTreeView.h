#pragma once

#include <QTableView>

#include "ui/Page.h"
#include "ui/RestoreTreeModel.h"

namespace korvenal::ui {

/// The tree of an index on the restore page: boxes, arrows, keys. What is open, ticked and current
/// stands in the tree itself.
class RestoreTreeView : public QTableView {
  Q_OBJECT
 public:
  explicit RestoreTreeView(const Context& context, QWidget* parent = nullptr);

  void refresh();
  /// Brings the current row into view, in the middle unless it is in view already.
  void doShowCurrent();

 signals:
  /// The person typed these characters at the tree.
  void typed(const QString& text);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
  QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;

 private:
  RestoreTree& tree() const { return context_.main.restorePage.vsRestore; }
  void doTick(int treeRow);
  void doToggle(int treeRow);
  void doCollapse(int treeRow, bool collapsed);
  void doGoTo(int treeRow);
  void doLeft(int treeRow);
  void doRight(int treeRow);
  bool mayChange() const;

  Context context_;
  RestoreTreeModel model_;
  bool drawing_ = false;  ///< the current row is being drawn, not chosen
};

}  // namespace korvenal::ui
