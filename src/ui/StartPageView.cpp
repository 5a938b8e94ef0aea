#include "ui/StartPageView.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QShortcut>
#include <QVBoxLayout>

#include "core/GridTitles.h"
#include "ui/DialogParts.h"
#include "ui/GridMenu.h"
#include "ui/RecordTable.h"
#include "ui/RecordTabs.h"
#include "ui/TaskCard.h"
#include "ui/Texts.h"
#include "ui/Theme.h"

namespace korvenal::ui {

namespace {

constexpr int RecentNoteColumn = 6;
constexpr int LogNoteColumn = 7;

}  // namespace

StartPageView::StartPageView(const Context& context, QWidget* parent) : Page(context, parent) {
  auto* title = new QLabel(toQt(gProductName), this);
  QFont large = title->font();
  large.setPointSizeF(large.pointSizeF() * 1.6);
  large.setBold(true);
  title->setFont(large);
  auto* grid = new QGridLayout;
  grid->setSpacing(fontMetrics().height() / 2);
  doBuildTaskBar(*grid);
  auto* column = new QVBoxLayout(this);
  column->setSpacing(fontMetrics().height() / 2);
  column->addWidget(title);
  column->addLayout(grid);
  column->addWidget(options());
  column->addWidget(records(), 1);
}

void StartPageView::doBuildTaskBar(QGridLayout& grid) {
  struct Entry {
    const char* key;
    QString name;
    QString explanation;
    const char* icon;
    int kind;
  };
  const Entry entries[] = {
      {"TASK01", tr("Backup to Disc"), tr("Edit backup job and burn backup data to discs."),
       "tools-media-optical-burn", BackupTask},
      {"TASK02", tr("Restore from Disc"),
       tr("Read backup index and restore data from backup discs."), "document-revert", RestoreTask},
      {"TASK03", tr("Backup Scheduler"), tr("View the next automatic backups."), "appointment-new",
       ScheduleTask},
      {"TASK04", tr("Erase Rewritable Disc"), tr("Erase CD-RW, DVD-RW, or DVD+RW discs."),
       "tools-media-optical-erase", EraseTask},
  };
  for (const Entry& entry : entries) {
    auto* card =
        new TaskCard(entry.name, entry.explanation, Theme::icon(QLatin1String(entry.icon)), this);
    card->setObjectName(QLatin1String(entry.key));
    connect(card, &TaskCard::clicked, this,
            [this, kind = entry.kind] { act([this, kind] { main().doChangeTask(kind); }); });
    const int place = static_cast<int>(cards_.size());
    grid.addWidget(card, place / 2, place % 2);
    cards_.push_back(card);
  }
}

QWidget* StartPageView::options() {
  auto* group = new QGroupBox(tr("Options"), this);
  const std::array<QString, 2> texts = {tr("&Play sound when a disc or an action is done"),
                                        tr("&Keep in the tray when the window is closed")};
  const std::array<std::function<void(bool)>, 2> setters = {
      [this](bool on) { main().settings.PlaySound = on; },
      [this](bool on) { context().setSystemTray(on); }};
  auto* line = new QGridLayout(group);
  for (std::size_t at = 0; at < texts.size(); ++at) {
    OPChk_[at] = new QCheckBox(texts[at], group);
    OPChk_[at]->setObjectName(QStringLiteral("OPChk%1").arg(at));
    connect(OPChk_[at], &QCheckBox::clicked, this,
            [this, set = setters[at]](bool on) { doSetOption(set, on); });
    line->addWidget(OPChk_[at], 0, static_cast<int>(at));
    line->setColumnStretch(static_cast<int>(at), 1);
  }
  noTray_ = explanationLabel(tr("This desktop has no tray."), group);
  line->addWidget(noTray_, 1, 1);
  return group;
}

void StartPageView::doSetOption(const std::function<void(bool)>& set, bool on) {
  act([this, &set, on] {
    set(on);
    main().settings.doSaveInitData();
  });
}

QWidget* StartPageView::records() {
  tabs_ = new RecordTabs(QStringLiteral("RecordTab"), this);
  doBuildRecent();
  doBuildLog();
  return tabs_;
}

void StartPageView::doBuildRecent() {
  Table& recent = main().records.vsRecent;
  vsRecent_ = new RecordTable(
      recent, new RecordModel(recent, {RecentNoteColumn, noteKind}),
      {.widths = {19, 24, 9, 11, 14, 6},
       .emptyText = tr("Your backups will be listed here. Press Backup to Disc to make the first."),
       .follows = RecordTable::Follows::Current},
      this);
  vsRecent_->setObjectName(QStringLiteral("vsRecent"));
  const auto hasRows = [&recent] { return recent.hasData(); };
  const auto hasCurrent = [&recent] { return recent.Row > 0; };
  pbRecent_ = new GridMenu(
      QStringLiteral("pbRecent"),
      {{tr("&Open Job"), QStringLiteral("document-open"), [this] { doOpenRecent(0); }, hasCurrent,
        QKeySequence(Qt::Key_Return)},
       {tr("&Delete"), QStringLiteral("edit-delete"),
        [this] { main().records.doDeleteRecentRow(); }, hasCurrent, QKeySequence::Delete},
       {tr("&Clear All..."),
        QStringLiteral("edit-clear-all"),
        [this] { main().records.doClearRecent(); },
        hasRows,
        {}},
       {tr("&Print..."),
        QStringLiteral("document-print"),
        [this, &recent] { main().doPrint(recent, RecentBackupTitle); },
        hasRows,
        {}},
       {tr("&Save to Text File..."),
        QStringLiteral("document-export"),
        [this, &recent] { main().doExport(recent); },
        hasRows,
        {}}},
      context(), this);
  constexpr int DeleteItem = 2;
  connect(new QShortcut(QKeySequence::Delete, vsRecent_, nullptr, nullptr, Qt::WidgetShortcut),
          &QShortcut::activated, this, [this] { pbRecent_->doChoose(DeleteItem); });
  connect(vsRecent_, &RecordTable::rowOpened, this, [this](int row) { doOpenRecent(row); });
  tabs_->addTable(vsRecent_, *vsRecent_, *pbRecent_, tr("&Recent Backups"));
}

void StartPageView::doBuildLog() {
  Table& log = main().records.vsLog;
  vsLog_ = new RecordTable(
      log, new RecordModel(log, {LogNoteColumn, noteKind}),
      {.widths = {7, 12, 18, 9, 18, 14, 16},
       .emptyText = tr("Every disc that was written, read or erased will be listed here."),
       .follows = RecordTable::Follows::Current},
      this);
  vsLog_->setObjectName(QStringLiteral("vsLog"));
  const auto hasRows = [&log] { return log.hasData(); };
  const auto hasCurrent = [&log] { return log.Row > 0 && log.hasData(); };
  pbLog_ =
      new GridMenu(QStringLiteral("pbLog"),
                   {{tr("&Print..."),
                     QStringLiteral("document-print"),
                     [this, &log] { main().doPrint(log, DiscRecordTitle); },
                     hasRows,
                     {}},
                    {tr("&Save to Text File..."),
                     QStringLiteral("document-export"),
                     [this, &log] { main().doExport(log); },
                     hasRows,
                     {}},
                    {tr("&Delete"), QStringLiteral("edit-delete"),
                     [this] { main().records.doDeleteLogRow(); }, hasCurrent, QKeySequence::Delete},
                    {tr("&Clear All..."),
                     QStringLiteral("edit-clear-all"),
                     [this] { main().records.doClearLog(); },
                     hasRows,
                     {}}},
                   context(), this);
  constexpr int DeleteItem = 3;
  connect(new QShortcut(QKeySequence::Delete, vsLog_, nullptr, nullptr, Qt::WidgetShortcut),
          &QShortcut::activated, this, [this] { pbLog_->doChoose(DeleteItem); });
  tabs_->addTable(vsLog_, *vsLog_, *pbLog_, tr("&Disc Record"));
}

/// Row 0 stands for the current one.
void StartPageView::doOpenRecent(int row) {
  act([this, row] { main().doOpenRecentJob(row > 0 ? row : main().records.vsRecent.Row); });
}

void StartPageView::refresh() {
  const bool atRest = mayBegin(Command::GoToStart, main().state);
  for (TaskCard* card : cards_) card->setEnabled(atRest);
  const bool tray = context().hasTray;
  OPChk_[0]->setChecked(main().settings.PlaySound);
  OPChk_[1]->setChecked(main().settings.SystemTray);
  OPChk_[1]->setEnabled(tray);
  noTray_->setVisible(!tray);
  vsRecent_->refresh();
  vsLog_->refresh();
  pbRecent_->refresh();
  pbLog_->refresh();
}

}  // namespace korvenal::ui
