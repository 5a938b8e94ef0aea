#include "ui/GridView.h"

#include <QApplication>
#include <QHeaderView>
#include <QPainter>
#include <QScrollBar>

#include "app/RunDiscs.h"
#include "ui/Texts.h"
#include "ui/Theme.h"

namespace korvenal::ui {

namespace {

/// Rows that are looked at for the widths of columns.
constexpr int MeasuredRows = 200;

QColor failedColor() {
  return Theme::discColor(DiscState::Failed, QApplication::palette());
}

}  // namespace

GridView::GridView(TableModel* model, const QString& name, QWidget* parent)
    : QTableView(parent), model_(model) {
  model->setParent(this);
  setObjectName(name);
  setModel(model);
  setSelectionBehavior(SelectRows);
  setSelectionMode(SingleSelection);
  setEditTriggers(NoEditTriggers);
  setShowGrid(false);
  setTabKeyNavigation(false);
  setWordWrap(false);
  verticalHeader()->hide();
  verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  verticalHeader()->setDefaultSectionSize(fontMetrics().height() * 7 / 5);
  horizontalHeader()->setHighlightSections(false);
  horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  horizontalHeader()->setStretchLastSection(true);
  horizontalHeader()->setResizeContentsPrecision(MeasuredRows);
}

bool GridView::refresh() {
  const bool atEnd = verticalScrollBar()->value() == verticalScrollBar()->maximum();
  if (!model_->refresh()) return false;
  const Table& table = model_->table();
  for (int column = 0; column < table.Cols(); ++column)
    if (isColumnHidden(column) != table.isColHidden(column))
      setColumnHidden(column, table.isColHidden(column));
  // Lines that are only added leave those before them as they were.
  const int first = table.Rows() > rows_ ? rows_ : 1;
  for (int row = first; row < table.Rows(); ++row)
    if (isRowHidden(row - 1) != table.isRowHidden(row))
      setRowHidden(row - 1, table.isRowHidden(row));
  rows_ = table.Rows();
  if (!table.hasData()) fitted_ = false;
  if (!fitted_ && table.hasData()) doFitColumns();
  if (followsEnd && atEnd) scrollToBottom();
  return true;
}

void GridView::doFitColumns() {
  fitted_ = true;
  resizeColumnsToContents();
  // One long text does not push all others out of sight.
  const int most = fontMetrics().averageCharWidth() * 46;
  for (int column = 0; column < model_->columnCount(); ++column)
    if (columnWidth(column) > most) setColumnWidth(column, most);
}

void GridView::paintEvent(QPaintEvent* event) {
  QTableView::paintEvent(event);
  if (model_->rowCount() > 0 || hint.isEmpty()) return;
  QPainter painter(viewport());
  painter.setPen(Theme::explanation(palette()));
  painter.drawText(viewport()->rect(), Qt::AlignCenter | Qt::TextWordWrap, hint);
}

QVariant RecordModel::data(const QModelIndex& index, int role) const {
  const std::string& note = table().text(tableRow(index), noteColumn_);
  // A finished backup's note names its kind; one that is not says so itself.
  const bool good = isGoodNote(note) || note.empty() || note.back() == '.';
  const bool failed =
      !isGoodNote(note) &&
      (note.rfind("* ", 0) == 0 || note.rfind("Error", 0) == 0 || note.rfind("Failed", 0) == 0 ||
       !good || note.find("error") != std::string::npos);
  if (failed && index.column() == noteColumn_) {
    if (role == Qt::ForegroundRole) return failedColor();
    if (role == Qt::DecorationRole) return Theme::icon(QStringLiteral("dialog-warning"));
  }
  return TableModel::data(index, role);
}

QVariant EventModel::data(const QModelIndex& index, int role) const {
  const EventStyle style = grids_.styleOf(page_, tableRow(index));
  const QPalette palette = QApplication::palette();
  if (role == Qt::ForegroundRole && style.color != EventStyle::Color::Normal)
    return Theme::eventText(style.color, palette);
  if (role == Qt::BackgroundRole) {
    const QColor color = Theme::eventBackground(style.background, palette);
    return color.isValid() ? QVariant(color) : QVariant();
  }
  if (role == Qt::DecorationRole && index.column() == 1 && style.color == EventStyle::Color::Red)
    return Theme::icon(QStringLiteral("dialog-warning"));
  return TableModel::data(index, role);
}

QVariant ReportModel::data(const QModelIndex& index, int role) const {
  const bool failed = resultColumn_ < 0 || table().text(tableRow(index), resultColumn_) != "PASS";
  const int marked = resultColumn_ < 0 ? 0 : resultColumn_;
  if (failed && index.column() == marked) {
    if (role == Qt::ForegroundRole) return failedColor();
    if (role == Qt::DecorationRole) return Theme::icon(QStringLiteral("dialog-warning"));
  }
  return TableModel::data(index, role);
}

}  // namespace korvenal::ui
