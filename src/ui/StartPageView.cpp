#include "ui/StartPageView.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QMenu>
#include <QTabWidget>
#include <QToolButton>
#include <QVBoxLayout>

#include "core/GridTitles.h"
#include "core/Workspace.h"
#include "ui/DialogParts.h"
#include "ui/GridView.h"
#include "ui/TaskCard.h"
#include "ui/Texts.h"
#include "ui/Theme.h"

namespace korvenal::ui {

namespace {

constexpr int RecentNote = 6;
constexpr int LogNote = 7;
constexpr int BackupKind = 2;
constexpr int RestoreKindOfPage = 3;
constexpr int ScheduleKind = 4;
constexpr int EraseKind = 5;

}  // namespace

StartPageView::StartPageView(const Context& context, QWidget* parent) : Page(context, parent) {
  auto* title = new QLabel(toQt(gProductName), this);
  QFont large = title->font();
  large.setPointSizeF(large.pointSizeF() * 1.8);
  title->setFont(large);
  auto* column = new QVBoxLayout(this);
  const int margin = fontMetrics().height();
  column->setContentsMargins(margin, margin, margin, margin / 2);
  column->setSpacing(margin * 2 / 3);
  column->addWidget(title);
  column->addWidget(taskBar());
  column->addWidget(options());
  column->addWidget(records(), 1);
}

QWidget* StartPageView::taskBar() {
  auto* whole = new QWidget(this);
  auto* grid = new QGridLayout(whole);
  grid->setContentsMargins(0, 0, 0, 0);
  grid->setSpacing(fontMetrics().height() * 2 / 3);
  struct Task {
    const char* key;
    const char* icon;
    QString title;
    QString explanation;
  };
  const Task tasks[] = {{"TASK01", "tools-media-optical-burn", tr("Backup to Disc"),
                         tr("Edit backup job and burn backup data to discs.")},
                        {"TASK02", "document-revert", tr("Restore from Disc"),
                         tr("Read backup index and restore data from backup discs.")},
                        {"TASK04", "tools-media-optical-erase", tr("Erase Rewritable Disc"),
                         tr("Erase CD-RW, DVD-RW, or DVD+RW discs.")},
                        {"TASK03", "appointment-new", tr("Backup Scheduler"),
                         tr("See the list of automatic backups.")}};
  int place = 0;
  for (const Task& task : tasks) {
    auto* card =
        new TaskCard(Theme::icon(QLatin1String(task.icon)), task.title, task.explanation, whole);
    card->setObjectName(QLatin1String(task.key));
    connect(card, &QAbstractButton::clicked, this,
            [this, key = QString::fromLatin1(task.key)] { doKey(key); });
    grid->addWidget(card, place / 2, place % 2);
    tasks_.push_back(card);
    ++place;
  }
  return whole;
}

void StartPageView::doKey(const QString& key) {
  const QString upper = key.toUpper();
  const int kind = upper == QStringLiteral("TASK01")   ? BackupKind
                   : upper == QStringLiteral("TASK02") ? RestoreKindOfPage
                   : upper == QStringLiteral("TASK03") ? ScheduleKind
                                                       : EraseKind;
  act([this, kind] { main().doChangeTask(kind); });
}

QWidget* StartPageView::options() {
  auto* whole = new QWidget(this);
  auto* row = new QHBoxLayout(whole);
  row->setContentsMargins(0, 0, 0, 0);
  playSound_ = new QCheckBox(tr("&Play sound when an action ends"), whole);
  playSound_->setObjectName(QStringLiteral("OPChk0"));
  systemTray_ = new QCheckBox(tr("&Keep in the notification area when closed"), whole);
  systemTray_->setObjectName(QStringLiteral("OPChk1"));
  systemTray_->setEnabled(context().hasTray);
  if (!context().hasTray) systemTray_->setToolTip(tr("This desktop has no notification area."));
  row->addWidget(playSound_);
  row->addSpacing(fontMetrics().averageCharWidth() * 3);
  row->addWidget(systemTray_);
  row->addStretch();
  connect(playSound_, &QCheckBox::clicked, this, [this](bool on) {
    act([this, on] {
      main().settings.PlaySound = on;
      main().settings.doSaveInitData();
    });
  });
  connect(systemTray_, &QCheckBox::clicked, this,
          [this](bool on) { act([this, on] { context().setSystemTray(on); }); });
  return whole;
}

void StartPageView::doSyncRow(const GridView& grid, Table& table) {
  const QModelIndex at = grid.currentIndex();
  table.Row = at.isValid() ? TableModel::tableRow(at) : 0;
}

QMenu* StartPageView::recentMenu() {
  auto* menu = new QMenu(this);
  Records& records = main().records;
  const auto add = [this, menu, &records](const char* icon, const QString& text,
                                          std::function<void()> wish) {
    return menu->addAction(Theme::icon(QLatin1String(icon)), text, this,
                           [this, &records, wish = std::move(wish)] {
                             doSyncRow(*vsRecent_, records.vsRecent);
                             act(wish);
                           });
  };
  QAction* open = add("document-open", tr("&Open Job"),
                      [this, &records] { main().doOpenRecentJob(records.vsRecent.Row); });
  QAction* remove =
      add("edit-delete", tr("&Delete Record"), [&records] { records.doDeleteRecentRow(); });
  QAction* clear =
      add("edit-clear-all", tr("&Clear All Records"), [&records] { records.doClearRecent(); });
  QAction* print = add("document-print", tr("&Print..."),
                       [this, &records] { main().doPrint(records.vsRecent, RecentBackupTitle); });
  QAction* save = add("document-save-as", tr("&Save to a Text File..."),
                      [this, &records] { main().doExport(records.vsRecent); });
  connect(menu, &QMenu::aboutToShow, this, [this, &records, open, remove, clear, print, save] {
    doSyncRow(*vsRecent_, records.vsRecent);
    const bool rows = records.vsRecent.hasData();
    const bool current = rows && records.vsRecent.Row > 0;
    open->setEnabled(current && !records.recentJobFile(records.vsRecent.Row).empty());
    remove->setEnabled(current);
    for (QAction* action : {clear, print, save}) action->setEnabled(rows);
  });
  return menu;
}

QMenu* StartPageView::logMenu() {
  auto* menu = new QMenu(this);
  Records& records = main().records;
  const auto add = [this, menu, &records](const char* icon, const QString& text,
                                          std::function<void()> wish) {
    return menu->addAction(Theme::icon(QLatin1String(icon)), text, this,
                           [this, &records, wish = std::move(wish)] {
                             doSyncRow(*vsLog_, records.vsLog);
                             act(wish);
                           });
  };
  QAction* print = add("document-print", tr("&Print..."),
                       [this, &records] { main().doPrint(records.vsLog, DiscRecordTitle); });
  QAction* save = add("document-save-as", tr("&Save to a Text File..."),
                      [this, &records] { main().doExport(records.vsLog); });
  QAction* remove =
      add("edit-delete", tr("&Delete Record"), [&records] { records.doDeleteLogRow(); });
  QAction* clear =
      add("edit-clear-all", tr("&Clear All Records"), [&records] { records.doClearLog(); });
  connect(menu, &QMenu::aboutToShow, this, [this, &records, print, save, remove, clear] {
    doSyncRow(*vsLog_, records.vsLog);
    for (QAction* action : {print, save, clear}) action->setEnabled(records.vsLog.hasData());
    remove->setEnabled(records.vsLog.hasData() && records.vsLog.Row > 0);
  });
  return menu;
}

QWidget* StartPageView::recordTab(GridView* grid, const char* name, QMenu* menu) {
  auto* whole = new QWidget(this);
  auto* button = new QToolButton(whole);
  button->setObjectName(QLatin1String(name));
  menu->setObjectName(QLatin1String(name) + QStringLiteral("Menu"));
  button->setIcon(Theme::icon(QStringLiteral("view-more")));
  button->setToolTip(tr("What can be done with these records"));
  button->setAccessibleName(button->toolTip());
  button->setPopupMode(QToolButton::InstantPopup);
  button->setAutoRaise(true);
  button->setFocusPolicy(Qt::TabFocus);
  button->setMenu(menu);
  grid->setContextMenuPolicy(Qt::CustomContextMenu);
  connect(grid, &QWidget::customContextMenuRequested, this,
          [grid, menu](const QPoint& at) { menu->popup(grid->viewport()->mapToGlobal(at)); });
  auto* row = new QHBoxLayout(whole);
  row->addWidget(grid, 1);
  row->addWidget(button, 0, Qt::AlignTop);
  return whole;
}

QWidget* StartPageView::records() {
  Records& records = main().records;
  vsRecent_ =
      new GridView(new RecordModel(records.vsRecent, RecentNote), QStringLiteral("vsRecent"), this);
  vsRecent_->hint = tr("Backups that you make are listed here.");
  vsLog_ = new GridView(new RecordModel(records.vsLog, LogNote), QStringLiteral("vsLog"), this);
  vsLog_->hint = tr("Discs that are written, read or erased are listed here.");
  auto* tabs = new QTabWidget(this);
  tabs->setObjectName(QStringLiteral("RecordTab"));
  tabs->addTab(recordTab(vsRecent_, "pbRecent", recentMenu()), tr("Recent &backups"));
  tabs->addTab(recordTab(vsLog_, "pbLog", logMenu()), tr("Disc &record"));
  connect(vsRecent_, &QTableView::doubleClicked, this, [this](const QModelIndex& index) {
    act([this, &index] { main().doOpenRecentJob(TableModel::tableRow(index)); });
  });
  return tabs;
}

void StartPageView::refresh() {
  const bool idle = mayBegin(Command::GoToStart, main().state);
  for (QWidget* task : tasks_) task->setEnabled(idle);
  playSound_->setChecked(main().settings.PlaySound);
  systemTray_->setChecked(main().settings.SystemTray);
  vsRecent_->refresh();
  vsLog_->refresh();
}

}  // namespace korvenal::ui
