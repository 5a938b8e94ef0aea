#include "ui/RecordTable.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QMenu>
#include <QPainter>
#include <QScrollBar>

#include "core/ActionState.h"
#include "ui/Theme.h"

namespace korvenal::ui {

RecordTable::RecordTable(Table& table, RecordModel* model, Look look, QWidget* parent)
    : QTableView(parent), table_(table), model_(model), look_(std::move(look)) {
  model_->setParent(this);
  setModel(model_);
  setSelectionBehavior(SelectRows);
  setSelectionMode(SingleSelection);
  setEditTriggers(NoEditTriggers);
  setShowGrid(false);
  setWordWrap(false);
  setTabKeyNavigation(false);
  setTextElideMode(Qt::ElideMiddle);
  verticalHeader()->hide();
  verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  verticalHeader()->setDefaultSectionSize(fontMetrics().height() * 3 / 2);
  horizontalHeader()->setHighlightSections(false);
  horizontalHeader()->setStretchLastSection(true);
  for (std::size_t col = 0; col < look_.widths.size(); ++col)
    setColumnWidth(static_cast<int>(col), look_.widths[col] * fontMetrics().averageCharWidth());
  doHideColumns();
  more_.setSingleShot(true);
  connect(&more_, &QTimer::timeout, this, &RecordTable::refresh);
  connect(this, &QTableView::doubleClicked, this,
          [this](const QModelIndex& index) { emit rowOpened(model_->tableRow(index)); });
  if (look_.follows == Follows::Current) return;
  connect(verticalScrollBar(), &QScrollBar::valueChanged, this, [this](int value) {
    if (!drawing_) following_ = value >= verticalScrollBar()->maximum();
  });
  connect(verticalScrollBar(), &QScrollBar::rangeChanged, this, [this] { doFollow(); });
}

void RecordTable::doHideColumns() {
  for (int col = 0; col < table_.Cols(); ++col) setColumnHidden(col, table_.isColHidden(col));
}

void RecordTable::doFollow() {
  if (!following_) return;
  const FlagScope drawing(drawing_);
  verticalScrollBar()->setValue(verticalScrollBar()->maximum());
}

void RecordTable::doShowCurrent() {
  const QModelIndex wanted = model_->indexOf(table_.Row);
  if (wanted.isValid() && model_->tableRow(currentIndex()) == table_.Row) return;
  const FlagScope drawing(drawing_);
  setCurrentIndex(wanted);
}

void RecordTable::refresh() {
  const bool scrolledUp = look_.follows == Follows::End && !following_;
  const int place = verticalScrollBar()->value();
  {
    // Rows that go take the scroll place along; that is not the person's doing.
    const FlagScope drawing(drawing_);
    if (!model_->refresh()) return;
  }
  if (model_->isBehind()) more_.start();
  emit refreshed();
  doHideColumns();
  if (look_.follows == Follows::Current) return doShowCurrent();
  if (model_->rowCount() == 0) following_ = true;
  if (scrolledUp) verticalScrollBar()->setValue(place);
  doFollow();
}

void RecordTable::setEmptyText(const QString& text) {
  if (look_.emptyText == text) return;
  look_.emptyText = text;
  viewport()->update();
}

void RecordTable::setMenu(QMenu* menu) {
  setContextMenuPolicy(Qt::CustomContextMenu);
  connect(this, &QWidget::customContextMenuRequested, this,
          [this, menu](const QPoint& place) { menu->popup(viewport()->mapToGlobal(place)); });
}

void RecordTable::paintEvent(QPaintEvent* event) {
  QTableView::paintEvent(event);
  if (model_->rowCount() > 0) return;
  QPainter painter(viewport());
  painter.setPen(Theme::explanation(palette()));
  const int margin = fontMetrics().height();
  painter.drawText(viewport()->rect().adjusted(margin, margin, -margin, -margin),
                   Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap, look_.emptyText);
}

void RecordTable::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
  QTableView::currentChanged(current, previous);
  if (!drawing_ && look_.follows == Follows::Current) table_.Row = model_->tableRow(current);
}

void RecordTable::keyPressEvent(QKeyEvent* event) {
  const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (enter && currentIndex().isValid())
    emit rowOpened(model_->tableRow(currentIndex()));
  else
    QTableView::keyPressEvent(event);
}

}  // namespace korvenal::ui
