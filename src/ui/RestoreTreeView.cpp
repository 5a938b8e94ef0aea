#include "ui/RestoreTreeView.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>
#include <QScopedValueRollback>

#include "ui/RestoreTreeDelegate.h"
#include "ui/Theme.h"

namespace korvenal::ui {

RestoreTreeView::RestoreTreeView(const Context& context, QWidget* parent)
    : QTableView(parent), context_(context), model_(context.main.restorePage) {
  setObjectName(QStringLiteral("vsRestore"));
  setAccessibleName(tr("Items of the backup"));
  auto* delegate = new RestoreTreeDelegate(model_, this);
  setModel(&model_);
  setItemDelegate(delegate);
  setSelectionBehavior(SelectRows);
  setSelectionMode(SingleSelection);
  setEditTriggers(NoEditTriggers);
  setShowGrid(false);
  setWordWrap(false);
  setTextElideMode(Qt::ElideMiddle);
  setTabKeyNavigation(false);
  setHorizontalScrollMode(ScrollPerPixel);
  setCornerButtonEnabled(false);
  setContextMenuPolicy(Qt::ActionsContextMenu);

  const QFontMetrics metrics = fontMetrics();
  verticalHeader()->hide();
  verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  verticalHeader()->setDefaultSectionSize(metrics.height() + metrics.height() / 3);
  QHeaderView* columns = horizontalHeader();
  columns->setHighlightSections(false);
  columns->setSectionResizeMode(RestoreName, QHeaderView::Stretch);
  const int letter = metrics.averageCharWidth();
  columns->setMinimumSectionSize(6 * letter);
  columns->resizeSection(RestoreDisc, 8 * letter);
  columns->resizeSection(RestoreSize, 11 * letter);
  columns->resizeSection(RestoreType, 17 * letter);
  columns->resizeSection(RestoreModified, 18 * letter);

  connect(&model_, &RestoreTreeModel::boxClicked, this, &RestoreTreeView::doTick);
  connect(delegate, &RestoreTreeDelegate::arrowClicked, this, &RestoreTreeView::doToggle);
  connect(this, &QTableView::activated, this,
          [this](const QModelIndex& index) { doToggle(model_.treeRow(index.row())); });
}

bool RestoreTreeView::mayChange() const {
  return mayBegin(Command::ChangePage, context_.main.state);
}

void RestoreTreeView::refresh() {
  const QScopedValueRollback draws(drawing_, true);
  model_.refresh();
  const int row = model_.rowOf(tree().Row);
  if (row == currentIndex().row()) return;
  setCurrentIndex(row < 0 ? QModelIndex() : model_.index(row, RestoreName));
}

void RestoreTreeView::doShowCurrent() {
  const QModelIndex current = currentIndex();
  if (current.isValid() && !viewport()->rect().contains(visualRect(current)))
    scrollTo(current, PositionAtCenter);
}

void RestoreTreeView::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
  QTableView::currentChanged(current, previous);
  if (!drawing_ && current.isValid()) tree().Row = model_.treeRow(current.row());
}

void RestoreTreeView::doTick(int treeRow) {
  if (treeRow == 0 || !mayChange()) return;
  context_.act([this, treeRow] {
    tree().Row = treeRow;
    context_.main.selection.doClickRow(treeRow);
  });
}

void RestoreTreeView::doCollapse(int treeRow, bool collapsed) {
  context_.act([this, treeRow, collapsed] {
    const bool hidden =
        tree().Row > treeRow && tree().Row < static_cast<int>(tree().item(treeRow).end);
    // A row that goes out of sight is no longer the current one.
    if (collapsed && hidden) tree().Row = treeRow;
    tree().setCollapsed(treeRow, collapsed);
  });
}

void RestoreTreeView::doToggle(int treeRow) {
  if (treeRow == 0 || !mayChange() || !model_.hasContents(treeRow)) return;
  doCollapse(treeRow, !tree().isCollapsed(treeRow));
}

void RestoreTreeView::doGoTo(int treeRow) {
  const int row = model_.rowOf(treeRow);
  if (row >= 0) setCurrentIndex(model_.index(row, RestoreName));
}

void RestoreTreeView::doLeft(int treeRow) {
  if (model_.hasContents(treeRow) && !tree().isCollapsed(treeRow))
    doToggle(treeRow);
  else
    doGoTo(static_cast<int>(tree().item(treeRow).parent));
}

void RestoreTreeView::doRight(int treeRow) {
  if (!model_.hasContents(treeRow)) return;
  if (tree().isCollapsed(treeRow))
    doToggle(treeRow);
  else
    doGoTo(treeRow + 1);
}

void RestoreTreeView::keyPressEvent(QKeyEvent* event) {
  const int at = model_.treeRow(currentIndex().row());
  const bool plain = (event->modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier)) == 0;
  const bool mirrored = isRightToLeft();
  if (plain && at != 0) {
    switch (event->key()) {
      case Qt::Key_Space:
        return doTick(at);
      case Qt::Key_Left:
        return mirrored ? doRight(at) : doLeft(at);
      case Qt::Key_Right:
        return mirrored ? doLeft(at) : doRight(at);
      case Qt::Key_Plus:
        return tree().isCollapsed(at) ? doToggle(at) : void();
      case Qt::Key_Minus:
        return tree().isCollapsed(at) ? void() : doToggle(at);
      default:
        break;
    }
  }
  const QString text = event->text();
  if (plain && model_.rowCount() > 0 && !text.isEmpty() && text.front().isPrint() &&
      text.front() != QLatin1Char(' ')) {
    emit typed(text);
    return;
  }
  QTableView::keyPressEvent(event);
}

QModelIndex RestoreTreeView::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) {
  // Rows are what one moves by, as in a tree.
  if (action == MoveHome) modifiers |= Qt::ControlModifier;
  if (action == MoveEnd) modifiers |= Qt::ControlModifier;
  return QTableView::moveCursor(action, modifiers);
}

void RestoreTreeView::paintEvent(QPaintEvent* event) {
  QTableView::paintEvent(event);
  if (model_.rowCount() > 0) return;
  QPainter painter(viewport());
  painter.setPen(Theme::explanation(palette()));
  const int margin = fontMetrics().height();
  const QString hint = context_.main.restorePage.IndexLoading
                           ? tr("The backup index is being read.")
                           : tr("What the backup holds will be listed here.");
  painter.drawText(viewport()->rect().adjusted(margin, margin, -margin, -margin),
                   Qt::AlignCenter | Qt::TextWordWrap, hint);
}

}  // namespace korvenal::ui
