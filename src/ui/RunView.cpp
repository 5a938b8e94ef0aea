#include "ui/RunView.h"

#include <QCheckBox>
#include <QLabel>
#include <QProgressBar>
#include <QTabBar>
#include <QVBoxLayout>

#include "core/GridTitles.h"
#include "platform/Text.h"
#include "ui/DiscBar.h"
#include "ui/EventModel.h"
#include "ui/GridMenu.h"
#include "ui/RecordTable.h"
#include "ui/RecordTabs.h"
#include "ui/RunTexts.h"
#include "ui/Texts.h"
#include "ui/Theme.h"

namespace korvenal::ui {

namespace {

constexpr int BarSteps = 100;  ///< of a percent
constexpr int NoteColumn = 7;
constexpr int ResultColumn = 1;
constexpr int RestoreErrorColumn = 3;

/// A caption of the program as the text of a tab: '&' marks its first letter only.
QString tabText(const QString& caption) {
  const bool marked = caption.startsWith(QLatin1Char('&'));
  QString text = marked ? caption.mid(1) : caption;
  text.replace(QLatin1Char('&'), QStringLiteral("&&"));
  return marked ? QLatin1Char('&') + text : text;
}

RowJudge errorJudge(bool backup) {
  if (!backup) return {RestoreErrorColumn, [](const std::string&) { return NoteKind::Bad; }};
  return {ResultColumn, [](const std::string& result) {
            return Text::equalsIgnoreCase(result, "PASS") ? NoteKind::Good : NoteKind::Bad;
          }};
}

}  // namespace

RunView::RunView(int action, const Context& context, QWidget* parent)
    : Page(context, parent),
      action_(action),
      discs_(new DiscStrip(this)),
      tabs_(new RecordTabs(QStringLiteral("RunTab%1").arg(action), this)) {
  doBuildEvents();
  doBuildRecords();
  if (hasErrors()) doBuildErrors();

  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->addWidget(discs_);
  column->addLayout(progressLine());
  column->addWidget(tabs_, 1);
  clock_.start();
}

/// Erasing has no errors of files.
bool RunView::hasErrors() const {
  return action_ != ActionController::Erase;
}

QLayout* RunView::progressLine() {
  ProgressPanel_ = new QWidget(this);
  ProgressPanel_->setObjectName(QStringLiteral("ProgressPanel%1").arg(action_));
  etProgress_ = new QLabel(ProgressPanel_);
  etProgress_->setObjectName(QStringLiteral("etProgress%1").arg(action_));
  etProgress_->setTextFormat(Qt::PlainText);
  // A long file name does not widen the window.
  etProgress_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  pace_ = new QLabel(ProgressPanel_);
  bar_ = new QProgressBar(ProgressPanel_);
  bar_->setObjectName(QStringLiteral("progressBar%1").arg(action_));
  bar_->setRange(0, 100 * BarSteps);
  bar_->setTextVisible(false);
  bar_->setMaximumHeight(fontMetrics().height() * 2 / 3);
  way_.setTargetObject(bar_);
  way_.setPropertyName("value");
  way_.setDuration(DiscBar::WayMilliseconds);
  auto* texts = new QHBoxLayout;
  texts->addWidget(etProgress_, 1);
  texts->addWidget(pace_);
  auto* column = new QVBoxLayout(ProgressPanel_);
  column->setContentsMargins(0, 0, 0, 0);
  column->addLayout(texts);
  column->addWidget(bar_);
  auto* holder = new QVBoxLayout;
  holder->addWidget(ProgressPanel_);
  return holder;
}

void RunView::addTab(Tab& tab, QWidget* content, const QString& caption) {
  tab.index = tabs_->addTable(content, *tab.table, *tab.menu, caption);
}

void RunView::doBuildEvents() {
  const auto at = static_cast<std::size_t>(action_);
  Table& events = main().grids.vsEvent[at];
  events_.table = new RecordTable(events, new EventModel(main().grids, action_),
                                  {.widths = {12}, .emptyText = {}}, this);
  events_.table->setObjectName(QStringLiteral("vsEvent%1").arg(action_));
  events_.menu =
      new GridMenu(QStringLiteral("PBEventLog%1").arg(action_),
                   saveAndPrint(context(), events, EventTitles[at],
                                [this] { return mayBegin(Command::ExportGrid, main().state); }),
                   context(), this);
  addTab(events_, events_.table, tr("Eve&nts"));
}

void RunView::doBuildRecords() {
  const auto at = static_cast<std::size_t>(action_);
  Table& records = main().grids.vsOutput[at];
  records_.table = new RecordTable(
      records, new RecordModel(records, {NoteColumn, noteKind}),
      {.widths = {8, isBackup() || action_ == ActionController::Restore ? 8 : 14, 20, 10, 16, 14,
                  18},
       .emptyText = isBackup() ? tr("Every disc that is written leaves a line here. A "
                                    "double click on it shows the report of its files.")
                               : tr("Every disc that is worked on leaves a line here.")},
      this);
  records_.table->setObjectName(QStringLiteral("vsOutput%1").arg(action_));
  records_.menu =
      new GridMenu(QStringLiteral("PBDiscLog%1").arg(action_),
                   saveAndPrint(context(), records, OutputTitles[at],
                                [this] { return mayBegin(Command::ExportGrid, main().state); }),
                   context(), this);
  addTab(records_, records_.table, tr("&Disc Record"));
  if (isBackup())
    connect(records_.table, &RecordTable::rowOpened, this, [this](int row) { doShowReport(row); });
}

void RunView::doBuildErrors() {
  const auto at = static_cast<std::size_t>(action_);
  Table& errors = main().grids.vsError[at];
  auto* content = new QWidget(this);
  const QString empty = isBackup() ? tr("The files of a disc stand here after it was read again.")
                                   : tr("Files that could not be restored would stand here.");
  errors_.table = new RecordTable(
      errors, new RecordModel(errors, errorJudge(isBackup())),
      {.widths = isBackup() ? std::vector{34, 26} : std::vector{8, 4, 14, 40}, .emptyText = empty},
      content);
  errors_.table->setObjectName(QStringLiteral("vsError%1").arg(action_));
  errors_.menu =
      new GridMenu(QStringLiteral("PBErrorList%1").arg(action_),
                   saveAndPrint(context(), errors, ErrorTitles[at],
                                [this] { return mayBegin(Command::ExportGrid, main().state); }),
                   context(), this);
  auto* column = new QVBoxLayout(content);
  column->setContentsMargins(0, 0, 0, 0);
  if (isBackup()) {
    OnlyShowErrorFile_ = new QCheckBox(tr("&Only show files with errors"), content);
    OnlyShowErrorFile_->setObjectName(QStringLiteral("OnlyShowErrorFile"));
    connect(OnlyShowErrorFile_, &QCheckBox::clicked, this, [this](bool on) {
      act([this, on] {
        main().grids.OnlyShowErrorFile = on;
        main().grids.doFilterReport();
      });
    });
    auto* line = new QHBoxLayout;
    line->setContentsMargins(fontMetrics().averageCharWidth(), fontMetrics().height() / 4, 0, 0);
    line->addWidget(OnlyShowErrorFile_);
    column->addLayout(line);
  }
  column->addWidget(errors_.table);
  addTab(errors_, content, QString());
  connect(errors_.table, &RecordTable::refreshed, this, [this] { doMarkErrors(); });
}

void RunView::doShowReport(int row) {
  if (row < 1 || !mayBegin(Command::ShowReport, main().state)) return;
  act([this, row] { main().grids.doShowDiscReport(row); });
  tabs_->setCurrentIndex(errors_.index);
  errors_.table->setFocus();
}

void RunView::refresh() {
  doRefreshProgress();
  events_.table->refresh();
  records_.table->refresh();
  doMarkTab(records_, tr("&Disc Record"), records_.table->failures());
  if (hasErrors()) doRefreshErrors();
  for (const Tab* tab : {&events_, &records_, &errors_})
    if (tab->menu != nullptr) tab->menu->refresh();
}

void RunView::doRefreshProgress() {
  const auto at = static_cast<std::size_t>(action_);
  const Progress& progress = main().grids.etProgress[at];
  const bool moving = progress.bytesDone < progress.bytesTotal;
  runPace_.update(clock_.elapsed(), moving ? progress.bytesDone : 0,
                  moving ? progress.bytesTotal : 0);
  const RunProgress now{progress, runPace_};
  std::vector<DiscFill> fills;
  for (const RunDisc& disc : runDiscs(main(), action_)) fills.push_back(discFill(disc, now));
  discs_->setDiscs(fills);

  ProgressPanel_->setVisible(main().runPages[at].ProgressPanel);
  if (!main().runPages[at].ProgressPanel) return;
  const QString text = toQt(progress.text);
  etProgress_->setText(
      etProgress_->fontMetrics().elidedText(text, Qt::ElideMiddle, etProgress_->width()));
  etProgress_->setAccessibleName(text);
  pace_->setText(moving ? paceText(now) : QString());
  const int wanted =
      moving ? static_cast<int>(progress.bytesDone * 100 * BarSteps / progress.bytesTotal)
             : progress.bar * BarSteps;
  if (way_.state() == QAbstractAnimation::Running && way_.endValue().toInt() == wanted) return;
  way_.stop();
  if (wanted <= bar_->value()) return bar_->setValue(wanted);
  way_.setStartValue(bar_->value());
  way_.setEndValue(wanted);
  way_.start();
}

void RunView::doRefreshErrors() {
  errors_.table->refresh();
  doMarkErrors();
  const RunPage& page = main().runPages[static_cast<std::size_t>(action_)];
  if (OnlyShowErrorFile_ == nullptr) return;
  OnlyShowErrorFile_->setChecked(main().grids.OnlyShowErrorFile);
  OnlyShowErrorFile_->setEnabled(page.OnlyShowErrorFileEnabled);
}

void RunView::doMarkErrors() {
  doMarkTab(errors_, toQt(main().grids.PBErrorList[static_cast<std::size_t>(action_)]),
            errors_.table->failures());
}

/// Failures are seen on the tab, whichever tab is open.
void RunView::doMarkTab(const Tab& tab, const QString& caption, int failures) {
  QString text = tabText(caption);
  if (failures > 0) text += QStringLiteral(" (%1)").arg(failures);
  if (tabs_->tabText(tab.index) == text) return;
  tabs_->setTabText(tab.index, text);
  tabs_->setTabIcon(tab.index,
                    failures > 0 ? Theme::icon(QStringLiteral("dialog-error")) : QIcon());
  tabs_->tabBar()->setTabTextColor(
      tab.index, failures > 0 ? Theme::discColor(RunDiscState::Failed, palette()) : QColor());
}

}  // namespace korvenal::ui
