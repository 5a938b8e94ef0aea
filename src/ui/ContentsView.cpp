#include "ui/ContentsView.h"

#include <QContextMenuEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>
#include <QScopedValueRollback>
#include <QStyledItemDelegate>
#include <algorithm>

#include "core/Workspace.h"
#include "ui/ContentsModel.h"
#include "ui/Texts.h"
#include "ui/Theme.h"

namespace korvenal::ui {

namespace {

/// Refuses, as they are typed, the characters that no name may hold, but for those that the name
/// brought along from its source.
class NameDelegate : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                        const QModelIndex& index) const override {
    QWidget* editor = QStyledItemDelegate::createEditor(parent, option, index);
    auto* line = qobject_cast<QLineEdit*>(editor);
    if (line == nullptr) return editor;
    line->setObjectName(QStringLiteral("nameEdit"));
    const QString before = index.data(Qt::EditRole).toString();
    connect(line, &QLineEdit::textEdited, line, [line, before](QString text) {
      const int place = line->cursorPosition();
      const auto length = text.size();
      text.removeIf(
          [&before](QChar c) { return toQt(ForbiddenChars).contains(c) && !before.contains(c); });
      if (text.size() == length) return;
      line->setText(text);
      line->setCursorPosition(place - static_cast<int>(length - text.size()));
    });
    return editor;
  }
};

}  // namespace

ContentsView::ContentsView(const Context& context, QWidget* parent)
    : QTableView(parent),
      context_(context),
      model_(new ContentsModel(context.main.job, context.main.jobControls, this)) {
  setObjectName(QStringLiteral("vsContents"));
  setAccessibleName(tr("Items of the backup"));
  model_->mayEdit = [this] { return mayBegin(Command::AddItems, context_.main.state); };
  setModel(model_);
  setItemDelegateForColumn(ContentsName, new NameDelegate(this));
  for (int column = 0; column < ContentsColumns; ++column)
    setColumnHidden(column, column < ContentsName || column > ContentsPath);
  setSelectionBehavior(SelectRows);
  setSelectionMode(SingleSelection);
  setEditTriggers(DoubleClicked | EditKeyPressed);
  setShowGrid(false);
  setAlternatingRowColors(true);
  setTabKeyNavigation(false);
  setDragDropMode(DragDrop);
  setDefaultDropAction(Qt::MoveAction);
  setDragDropOverwriteMode(false);
  verticalHeader()->hide();
  verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  verticalHeader()->setDefaultSectionSize(fontMetrics().height() * 3 / 2);
  horizontalHeader()->setSectionsClickable(true);
  horizontalHeader()->setSortIndicatorShown(true);
  horizontalHeader()->setHighlightSections(false);
  horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  horizontalHeader()->setStretchLastSection(true);
  const int unit = fontMetrics().averageCharWidth();
  setColumnWidth(ContentsName, unit * 32);
  setColumnWidth(ContentsSize, unit * 11);
  setColumnWidth(ContentsTypeName, unit * 20);
  setColumnWidth(ContentsModified, unit * 19);
  setColumnWidth(ContentsSubfolder, unit * 12);

  connect(horizontalHeader(), &QHeaderView::sectionClicked, this, &ContentsView::doSort);
  connect(model_, &ContentsModel::edited, this, [this] { context_.act([] {}); });
  connect(model_, &ContentsModel::filesDropped, this, &ContentsView::filesDropped,
          Qt::QueuedConnection);
  connect(model_, &ContentsModel::rowDragged, this, [this](int from, int to) {
    context_.act([this, from, to] {
      context_.main.job.vsContents.Row = from;
      context_.main.contentsEditing.doMoveTo(to);
    });
  });
  connect(model_, &ContentsModel::nameTyped, this, &ContentsView::doRename, Qt::QueuedConnection);
}

void ContentsView::doSort(int column) {
  if (mayBegin(Command::AddItems, context_.main.state))
    context_.act([this, column] { context_.main.contentsEditing.doSortColumn(column); });
  // The header has moved its arrow by itself, also to a column that does not sort.
  doDrawSortMark();
}

void ContentsView::doDrawSortMark() {
  const SortMark mark = context_.main.contentsEditing.sortMark();
  const Qt::SortOrder order = mark.descending ? Qt::DescendingOrder : Qt::AscendingOrder;
  QHeaderView& header = *horizontalHeader();
  if (header.sortIndicatorSection() != mark.col || header.sortIndicatorOrder() != order)
    header.setSortIndicator(mark.col, order);
}

void ContentsView::doRename(int row, const QString& name) {
  NameEdit end = NameEdit::Restored;
  context_.act([this, row, &name, &end] {
    end = context_.main.contentsEditing.doRename(row, fromQt(name));
  });
  if (end != NameEdit::Duplicated) return;
  setCurrentIndex(model_->index(row - 1, ContentsName));
  doEditName();
}

void ContentsView::doEditName() {
  const QModelIndex at = model_->index(currentIndex().row(), ContentsName);
  if (!at.isValid() || !mayBegin(Command::AddItems, context_.main.state)) return;
  setCurrentIndex(at);
  edit(at);
}

void ContentsView::refresh() {
  const bool changed = model_->refresh();
  doDrawSortMark();
  const int row = context_.main.job.vsContents.Row;
  if (currentIndex().row() == row - 1) {
    if (changed) viewport()->update();
    return;
  }
  const QScopedValueRollback following(following_, true);
  const QModelIndex at = model_->index(row - 1, ContentsName);
  if (row >= 1 && at.isValid()) {
    setCurrentIndex(at);
    scrollTo(at);
  } else {
    setCurrentIndex({});
  }
}

void ContentsView::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
  QTableView::currentChanged(current, previous);
  if (following_ || !current.isValid()) return;
  context_.main.job.vsContents.Row = TableModel::tableRow(current);
  context_.act([] {});
}

void ContentsView::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Delete)
    emit deleteWanted();
  else if (event->key() == Qt::Key_F2 && state() != EditingState)
    doEditName();
  else
    QTableView::keyPressEvent(event);
}

void ContentsView::contextMenuEvent(QContextMenuEvent* event) {
  emit menuWanted(event->globalPos());
}

void ContentsView::paintEvent(QPaintEvent* event) {
  QTableView::paintEvent(event);
  if (model_->rowCount() > 0) return;
  QPainter painter(viewport());
  painter.setPen(Theme::explanation(palette()));
  painter.drawText(viewport()->rect(), Qt::AlignCenter | Qt::TextWordWrap,
                   tr("Drop files and folders here, or press Select Item..."));
}

}  // namespace korvenal::ui
