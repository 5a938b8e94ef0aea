#include "ui/RestoreTreeDelegate.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>

namespace korvenal::ui {

namespace {

const QStyle& styleOf(const QStyleOptionViewItem& option) {
  return option.widget != nullptr ? *option.widget->style() : *QApplication::style();
}

/// A level of indentation, which is also the width of an arrow.
int step(const QStyleOptionViewItem& option) {
  return option.fontMetrics.height();
}

}  // namespace

RestoreTreeDelegate::RestoreTreeDelegate(const RestoreTreeModel& model, QObject* parent)
    : QStyledItemDelegate(parent), model_(model) {}

QRect RestoreTreeDelegate::arrowRect(const QStyleOptionViewItem& option, int treeRow) const {
  const QRect& cell = option.rect;
  const int width = step(option);
  const QRect arrow(cell.left() + model_.tree().level(treeRow) * width, cell.top(), width,
                    cell.height());
  return QStyle::visualRect(option.direction, cell, arrow & cell);
}

QStyleOptionViewItem RestoreTreeDelegate::behindArrow(const QStyleOptionViewItem& option,
                                                      int treeRow) const {
  QStyleOptionViewItem rest = option;
  QRect logical = option.rect;
  logical.setLeft(std::min(logical.left() + (model_.tree().level(treeRow) + 1) * step(option),
                           logical.right()));
  rest.rect = QStyle::visualRect(option.direction, option.rect, logical);
  return rest;
}

void RestoreTreeDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                                const QModelIndex& index) const {
  QStyleOptionViewItem plain = option;
  // The whole row is marked; a frame around one of its cells would only confuse.
  plain.state &= ~QStyle::State_HasFocus;
  const int at = model_.treeRow(index.row());
  const QStyle& style = styleOf(option);
  if (index.column() == RestoreSize) {
    // Room between the numbers and the texts of the next column.
    style.drawPrimitive(QStyle::PE_PanelItemViewItem, &plain, painter, option.widget);
    const int gap = option.fontMetrics.averageCharWidth();
    plain.rect =
        QStyle::visualRect(option.direction, option.rect, option.rect.adjusted(0, 0, -gap, 0));
  }
  if (index.column() != RestoreName || at == 0)
    return QStyledItemDelegate::paint(painter, plain, index);

  style.drawPrimitive(QStyle::PE_PanelItemViewItem, &plain, painter, option.widget);
  painter->save();
  painter->setClipRect(option.rect);
  if (model_.hasContents(at)) {
    QStyleOptionViewItem branch = plain;
    branch.rect = arrowRect(option, at);
    branch.state |= QStyle::State_Children | QStyle::State_Item;
    branch.state.setFlag(QStyle::State_Open, !model_.tree().isCollapsed(at));
    style.drawPrimitive(QStyle::PE_IndicatorBranch, &branch, painter, option.widget);
  }
  QStyledItemDelegate::paint(painter, behindArrow(plain, at), index);
  painter->restore();
}

bool RestoreTreeDelegate::editorEvent(QEvent* event, QAbstractItemModel* model,
                                      const QStyleOptionViewItem& option,
                                      const QModelIndex& index) {
  const int at = model_.treeRow(index.row());
  if (index.column() != RestoreName || at == 0) return false;
  const bool pressed =
      event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonDblClick;
  if (pressed || event->type() == QEvent::MouseButtonRelease) {
    const auto* mouse = static_cast<QMouseEvent*>(event);
    if (mouse->button() == Qt::LeftButton && model_.hasContents(at) &&
        arrowRect(option, at).contains(mouse->position().toPoint())) {
      if (pressed) emit arrowClicked(at);
      return true;
    }
  }
  return QStyledItemDelegate::editorEvent(event, model, behindArrow(option, at), index);
}

bool RestoreTreeDelegate::isCut(const QStyleOptionViewItem& option,
                                const QModelIndex& index) const {
  QStyleOptionViewItem item = behindArrow(option, model_.treeRow(index.row()));
  initStyleOption(&item, index);
  const QStyle& style = styleOf(option);
  const int margin = style.pixelMetric(QStyle::PM_FocusFrameHMargin, &item, option.widget) + 1;
  const QRect text = style.subElementRect(QStyle::SE_ItemViewItemText, &item, option.widget);
  return item.fontMetrics.horizontalAdvance(item.text) + 2 * margin > text.width();
}

bool RestoreTreeDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view,
                                    const QStyleOptionViewItem& option, const QModelIndex& index) {
  const int at = model_.treeRow(index.row());
  if (event->type() != QEvent::ToolTip || at == 0 || index.column() != RestoreName ||
      !isCut(option, index)) {
    QToolTip::hideText();
    return true;
  }
  QString path = model_.path(at);
  if (model_.tree().isFolder(at)) path += QStringLiteral(" \\");
  // A path is no markup, whatever it holds.
  QToolTip::showText(event->globalPos(), path.toHtmlEscaped().prepend(QStringLiteral("<qt>")), view,
                     option.rect);
  return true;
}

}  // namespace korvenal::ui
