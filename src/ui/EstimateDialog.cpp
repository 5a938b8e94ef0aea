#include "ui/EstimateDialog.h"

#include <QCheckBox>
#include <QHeaderView>
#include <QPainter>
#include <QSplitter>
#include <QStyledItemDelegate>
#include <QTableView>

#include "platform/Text.h"
#include "ui/DialogParts.h"
#include "ui/DiscBar.h"
#include "ui/Texts.h"

namespace korvenal::ui {

namespace {

/// A disc's bar with its percentage behind it.
class FillDelegate : public QStyledItemDelegate {
 public:
  FillDelegate(const frmEstimateInfo& form, QObject* parent)
      : QStyledItemDelegate(parent), form_(form) {}

  void paint(QPainter* painter, const QStyleOptionViewItem& option,
             const QModelIndex& index) const override {
    QStyleOptionViewItem ground = option;
    initStyleOption(&ground, index);
    const QString text = ground.text;
    ground.text.clear();
    QStyledItemDelegate::paint(painter, ground, index.sibling(-1, -1));
    if (option.state & QStyle::State_Selected)
      painter->fillRect(option.rect, option.palette.highlight());
    const int textWidth = option.fontMetrics.horizontalAdvance(QStringLiteral("100% "));
    const int high = option.fontMetrics.height() * 2 / 3;
    const QRectF bar(option.rect.left() + 4, option.rect.center().y() - high / 2.0,
                     std::max(option.rect.width() - textWidth - 12, 8), high);
    if (option.state & QStyle::State_Selected) {
      painter->setPen(Qt::NoPen);
      painter->setBrush(option.palette.base());
      painter->drawRoundedRect(bar.adjusted(-2, -2, 2, 2), high / 3.0, high / 3.0);
    }
    const int percent = form_.fillPercent(TableModel::tableRow(index));
    paintDiscFill(*painter, bar, option.palette, percent,
                  percent > 100 ? RunDiscState::Failed : RunDiscState::Writing);
    painter->setPen(option.palette.color(
        option.state & QStyle::State_Selected ? QPalette::HighlightedText : QPalette::Text));
    painter->drawText(option.rect.adjusted(0, 0, -4, 0), Qt::AlignRight | Qt::AlignVCenter, text);
  }

 private:
  const frmEstimateInfo& form_;
};

}  // namespace

EstimateDialog::EstimateDialog(frmEstimateInfo& form, QWidget* parent)
    : FormDialog(form, parent),
      form_(form),
      discModel_(form.vsDisc),
      contentsModel_(form.vsDContents) {
  setObjectName(QStringLiteral("frmEstimateInfo"));
  setWindowTitle(toQt(form.caption));
  auto* halves = new QSplitter(this);
  halves->addWidget(discs());
  halves->addWidget(contents());
  halves->setStretchFactor(1, 1);
  halves->setChildrenCollapsible(false);
  chkShowInfo_ = new QCheckBox(tr("&Show this report after each estimate"), this);
  chkShowInfo_->setObjectName(QStringLiteral("chkShowInfo"));
  chkShowPath_ = new QCheckBox(tr("Show source &path"), this);
  chkShowPath_->setObjectName(QStringLiteral("chkShowPath"));
  auto* close = namedButton("pbClose", tr("&Close"), this);
  close->setDefault(true);
  auto* column = new QVBoxLayout(this);
  column->addWidget(totals());
  if (!form.leftOut.empty()) column->addWidget(leftOut());
  column->addWidget(halves, 1);
  column->addLayout(buttonRow({chkShowInfo_, chkShowPath_}, {close}));
  connect(chkShowInfo_, &QCheckBox::clicked, this,
          [this](bool on) { act([this, on] { form_.chkShowInfo = on; }); });
  connect(chkShowPath_, &QCheckBox::clicked, this,
          [this](bool on) { act([this, on] { form_.setShowPath(on); }); });
  connect(close, &QPushButton::clicked, this, [this] { act([this] { form_.pbClose(); }); });
  connect(vsDisc_->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
          [this](const QModelIndex& current) {
            if (!current.isValid()) return;
            act([this, &current] { form_.doSelectDisc(TableModel::tableRow(current)); });
            contentsModel_.refresh();
          });
  resize(fontMetrics().averageCharWidth() * 175, fontMetrics().height() * 34);
  halves->setSizes({width() * 2 / 5, width() * 3 / 5});
  vsDisc_->setFocus();
}

QWidget* EstimateDialog::totals() {
  const QString files = toQt(form_.files);
  QStringList parts = {QStringLiteral("%1 x %2").arg(toQt(form_.discType), toQt(form_.discs)),
                       files == QLatin1String("1") ? tr("1 file") : tr("%1 files").arg(files),
                       toQt(form_.totalSize)};
  if (form_.splitFiles != "0") parts.insert(2, tr("%1 split").arg(toQt(form_.splitFiles)));
  auto* line = new QLabel(parts.join(QStringLiteral("   ")), this);
  line->setObjectName(QStringLiteral("totals"));
  line->setTextFormat(Qt::PlainText);
  QFont large = line->font();
  large.setPointSizeF(large.pointSizeF() * 1.4);
  line->setFont(large);
  return line;
}

/// The first lines about what is not in the estimate; a run tells them all.
QWidget* EstimateDialog::leftOut() {
  constexpr std::size_t Shown = 5;
  QStringList lines;
  for (std::size_t i = 0; i < std::min(form_.leftOut.size(), Shown); ++i)
    lines << toQt(Text::escaped(form_.leftOut[i]));
  if (form_.leftOut.size() > Shown) lines << QStringLiteral("...");
  auto* text = new QLabel(lines.join(QLatin1Char('\n')), this);
  text->setObjectName(QStringLiteral("leftOut"));
  text->setTextFormat(Qt::PlainText);
  text->setWordWrap(true);
  return text;
}

QTableView* EstimateDialog::addTable(const char* name, QAbstractItemModel& model) {
  auto* table = new QTableView(this);
  table->setObjectName(QLatin1String(name));
  // A disc may hold a million rows: all of one height, none of them measured, which is said before
  // there are any.
  table->verticalHeader()->hide();
  table->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  table->verticalHeader()->setDefaultSectionSize(fontMetrics().height() * 3 / 2);
  table->setModel(&model);
  table->setSelectionBehavior(QAbstractItemView::SelectRows);
  table->setSelectionMode(QAbstractItemView::SingleSelection);
  table->setShowGrid(false);
  table->setWordWrap(false);
  table->setTabKeyNavigation(false);
  table->horizontalHeader()->setHighlightSections(false);
  table->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  return table;
}

QWidget* EstimateDialog::discs() {
  const int unit = fontMetrics().averageCharWidth();
  vsDisc_ = addTable("vsDisc", discModel_);
  vsDisc_->setItemDelegateForColumn(EstimateFilled, new FillDelegate(form_, vsDisc_));
  vsDisc_->setColumnWidth(EstimateNumber, unit * 10);
  vsDisc_->setColumnWidth(EstimateLabel, unit * 16);
  vsDisc_->setColumnWidth(EstimateUsed, unit * 11);
  vsDisc_->horizontalHeader()->setSectionResizeMode(EstimateFilled, QHeaderView::Stretch);
  vsDisc_->setMinimumSize(unit * 56, fontMetrics().height() * 12);
  vsDisc_->selectRow(0);
  return vsDisc_;
}

QWidget* EstimateDialog::contents() {
  const int unit = fontMetrics().averageCharWidth();
  vsDContents_ = addTable("vsDContents", contentsModel_);
  vsDContents_->setColumnWidth(DiscContentsName, unit * 44);
  vsDContents_->setColumnWidth(DiscContentsSize, unit * 11);
  vsDContents_->setColumnWidth(DiscContentsDate, unit * 18);
  vsDContents_->setColumnWidth(DiscContentsNote, unit * 14);
  vsDContents_->horizontalHeader()->setStretchLastSection(true);
  vsDContents_->setMinimumWidth(unit * 60);
  return vsDContents_;
}

void EstimateDialog::refresh() {
  discModel_.refresh();
  chkShowInfo_->setChecked(form_.chkShowInfo);
  chkShowPath_->setChecked(form_.chkShowPath());
  vsDContents_->setColumnHidden(DiscContentsSource, !form_.chkShowPath());
}

}  // namespace korvenal::ui
