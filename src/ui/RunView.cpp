#include "ui/RunView.h"

#include <QCheckBox>
#include <QLabel>
#include <QMenu>
#include <QProgressBar>
#include <QTabWidget>
#include <QToolButton>
#include <QVBoxLayout>

#include "core/GridTitles.h"
#include "core/TableExport.h"
#include "ui/GridView.h"
#include "ui/Texts.h"

namespace korvenal::ui {

namespace {

constexpr int RecordNote = 7;
constexpr int ReportResult = 1;
constexpr int AllAreErrors = -1;

/// A mnemonic and what a tab says: '&' in a label stays as it is given.
QString countedCaption(const std::string& caption, int errors) {
  const QString text = toQt(caption);
  return errors > 0 ? QStringLiteral("%1  (%2)").arg(text).arg(errors) : text;
}

}  // namespace

RunView::RunView(int action, const Context& context, QWidget* parent)
    : Page(context, parent),
      action_(action),
      strip_(new DiscStrip(this)),
      tabs_(new QTabWidget(this)) {
  const QString number = QString::number(action);
  RunGrids& grids = main().grids;
  tabs_->setObjectName(QStringLiteral("RunTab") + number);
  vsEvent_ = new GridView(new EventModel(grids, action), QStringLiteral("vsEvent") + number, this);
  vsEvent_->followsEnd = true;
  vsOutput_ = new GridView(new RecordModel(grids.vsOutput[at()], RecordNote),
                           QStringLiteral("vsOutput") + number, this);
  vsOutput_->hint = tr("Every disc of the run gets a line here.");
  tabs_->addTab(withMenu(vsEvent_, "PBEventLog", grids.vsEvent[at()],
                         [this] { return toQt(EventTitles[at()]); }),
                tr("&Events"));
  tabs_->addTab(withMenu(vsOutput_, "PBDiscLog", grids.vsOutput[at()],
                         [this] { return toQt(OutputTitles[at()]); }),
                tr("Disc &record"));
  if (action != ActionController::Erase) tabs_->addTab(reportTab(), {});
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->addWidget(strip_);
  column->addWidget(tabs_, 1);
  column->addWidget(progressRow());
  if (action == ActionController::Backup)
    connect(vsOutput_, &QTableView::doubleClicked, this,
            [this](const QModelIndex& index) { doShowReport(TableModel::tableRow(index)); });
}

QWidget* RunView::withMenu(GridView* grid, const char* menuName, const Table& table,
                           std::function<QString()> title) {
  auto* whole = new QWidget(this);
  auto* button = new QToolButton(whole);
  button->setObjectName(QLatin1String(menuName) + QString::number(action_));
  button->setIcon(Theme::icon(QStringLiteral("document-save-as")));
  button->setToolTip(tr("Saves or prints this list"));
  button->setAccessibleName(button->toolTip());
  button->setPopupMode(QToolButton::InstantPopup);
  button->setAutoRaise(true);
  button->setFocusPolicy(Qt::TabFocus);
  auto* menu = new QMenu(button);
  menu->addAction(Theme::icon(QStringLiteral("document-save-as")), tr("Save to a Text File..."),
                  this, [this, &table] {
                    if (!mayBegin(Command::ExportGrid, main().state)) return;
                    act([this, &table] { main().doExport(table); });
                  });
  menu->addAction(Theme::icon(QStringLiteral("document-print")), tr("Print..."), this,
                  [this, &table, title = std::move(title)] {
                    if (!mayBegin(Command::ExportGrid, main().state)) return;
                    act([this, &table, &title] { main().doPrint(table, fromQt(title())); });
                  });
  button->setMenu(menu);
  menus_.push_back(button);
  auto* row = new QHBoxLayout(whole);
  row->addWidget(grid, 1);
  row->addWidget(button, 0, Qt::AlignTop);
  return whole;
}

QWidget* RunView::reportTab() {
  RunGrids& grids = main().grids;
  const int resultColumn = action_ == ActionController::Backup ? ReportResult : AllAreErrors;
  vsError_ = new GridView(new ReportModel(grids.vsError[at()], resultColumn),
                          QStringLiteral("vsError%1").arg(action_), this);
  vsError_->hint = action_ == ActionController::Backup
                       ? tr("The report of the disc verified last is shown here; a double click on "
                            "a disc record shows that disc's.")
                       : tr("No errors.");
  QWidget* whole = withMenu(vsError_, "PBErrorList", grids.vsError[at()],
                            [this] { return toQt(ErrorTitles[at()]); });
  if (action_ != ActionController::Backup) return whole;
  OnlyShowErrorFile_ = new QCheckBox(tr("&Only show error files"), whole);
  OnlyShowErrorFile_->setObjectName(QStringLiteral("OnlyShowErrorFile"));
  connect(OnlyShowErrorFile_, &QCheckBox::clicked, this, [this](bool on) {
    act([this, on] {
      main().grids.OnlyShowErrorFile = on;
      main().grids.doFilterReport();
    });
  });
  auto* outer = new QWidget(this);
  auto* column = new QVBoxLayout(outer);
  column->setContentsMargins(0, 0, 0, 0);
  column->addWidget(whole, 1);
  auto* foot = new QHBoxLayout;
  foot->setContentsMargins(fontMetrics().averageCharWidth(), 0, 0, fontMetrics().height() / 3);
  foot->addWidget(OnlyShowErrorFile_);
  column->addLayout(foot);
  return outer;
}

QWidget* RunView::progressRow() {
  ProgressPanel_ = new QWidget(this);
  ProgressPanel_->setObjectName(QStringLiteral("ProgressPanel%1").arg(action_));
  auto* row = new QHBoxLayout(ProgressPanel_);
  row->setContentsMargins(0, 0, 0, 0);
  etProgress_ = new QLabel(ProgressPanel_);
  etProgress_->setObjectName(QStringLiteral("etProgress%1").arg(action_));
  etProgress_->setTextFormat(Qt::PlainText);
  bar_ = new QProgressBar(ProgressPanel_);
  bar_->setRange(0, 100);
  bar_->setTextVisible(false);
  row->addWidget(etProgress_, 2);
  row->addWidget(bar_, 3);
  // Its place stays when it goes: nothing below it jumps.
  QSizePolicy policy = ProgressPanel_->sizePolicy();
  policy.setRetainSizeWhenHidden(true);
  ProgressPanel_->setSizePolicy(policy);
  return ProgressPanel_;
}

void RunView::doShowReport(int record) {
  if (record < 1 || !mayBegin(Command::ShowReport, main().state)) return;
  act([this, record] { main().grids.doShowDiscReport(record); });
  constexpr int ReportTab = 2;
  tabs_->setCurrentIndex(ReportTab);
}

std::vector<RunDisc> RunView::discs() const {
  const bool atThisPage = main().state.ActionPage == action_;
  const RunFacts facts{.records = main().grids.vsOutput[at()],
                       .progress = main().grids.etProgress[at()],
                       .pace = pace_,
                       .DiscInWork = atThisPage && main().state.DiscInWork};
  switch (action_) {
    case ActionController::Backup:
      if (!main().backup.PreparedForRun) return {};
      return backupDiscs(main().plan, main().backup.request().BurnFromDisc, facts);
    case ActionController::Restore:
      return restoreDiscs(main().restorePage.RestoreDiscList, main().restorePage.RestoreDiscIndex,
                          facts);
    default:
      return eraseDiscs(facts);
  }
}

void RunView::refreshDiscs() {
  const std::vector<RunDisc> now = discs();
  if (now == shown_) return;
  shown_ = now;
  std::vector<DiscFill> fills;
  for (const RunDisc& disc : now)
    fills.push_back({toQt(disc.label), disc.percent, disc.state, toQt(disc.text)});
  strip_->setDiscs(fills);
}

void RunView::refreshProgress() {
  const Progress& progress = main().grids.etProgress[at()];
  pace_.feed(progress.bar, main().steadyMilliseconds());
  ProgressPanel_->setVisible(main().runPages[at()].ProgressPanel);
  const QString text = fontMetrics().elidedText(toQt(progress.text), Qt::ElideMiddle,
                                                std::max(etProgress_->width(), 1));
  if (etProgress_->text() != text) etProgress_->setText(text);
  bar_->setValue(progress.bar);
}

int RunView::countErrors() {
  const Table& report = main().grids.vsError[at()];
  // A report of a million lines grows line by line: only the new ones are looked at.
  if (report.Rows() <= reportRows_) reportRows_ = 1;
  if (reportRows_ == 1) reportErrors_ = 0;
  for (; reportRows_ < report.Rows(); ++reportRows_)
    if (action_ == ActionController::Restore || report.text(reportRows_, ReportResult) != "PASS")
      ++reportErrors_;
  return reportErrors_;
}

void RunView::refreshTabs() {
  vsEvent_->refresh();
  vsOutput_->refresh();
  const bool idle = mayBegin(Command::ExportGrid, main().state);
  for (QToolButton* menu : menus_) menu->setEnabled(idle);
  if (vsError_ == nullptr) return;
  constexpr int ReportTab = 2;
  if (vsError_->refresh() || tabs_->tabText(ReportTab).isEmpty()) {
    const int errors = countErrors();
    tabs_->setTabText(ReportTab, countedCaption(main().grids.PBErrorList[at()], errors));
    tabs_->setTabIcon(ReportTab,
                      errors > 0 ? Theme::icon(QStringLiteral("dialog-warning")) : QIcon());
  }
  if (OnlyShowErrorFile_ != nullptr) {
    OnlyShowErrorFile_->setChecked(main().grids.OnlyShowErrorFile);
    OnlyShowErrorFile_->setEnabled(main().runPages[at()].OnlyShowErrorFileEnabled);
  }
}

void RunView::refresh() {
  refreshProgress();
  refreshDiscs();
  refreshTabs();
}

}  // namespace korvenal::ui
