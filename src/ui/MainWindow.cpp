#include "ui/MainWindow.h"

#include <QActionGroup>
#include <QCloseEvent>
#include <QLabel>
#include <QMenuBar>
#include <QStackedWidget>
#include <QStatusBar>
#include <QToolBar>
#include <QVBoxLayout>

#include "core/Workspace.h"
#include "ui/EraseView.h"
#include "ui/JobView.h"
#include "ui/RestoreView.h"
#include "ui/RunView.h"
#include "ui/ScheduleView.h"
#include "ui/StartPageView.h"
#include "ui/StepBar.h"
#include "ui/Texts.h"
#include "ui/Theme.h"

namespace korvenal::ui {

namespace {

// What the bar of pages asks for.
constexpr int StartKind = 1;
constexpr int BackupKind = 2;
constexpr int RestoreKindOfPage = 3;
constexpr int ScheduleKind = 4;
constexpr int EraseKind = 5;

}  // namespace

MainWindow::MainWindow(frmMain& main, QtDesktop& desktop, const Ports& ports)
    : main_(main),
      desktop_(desktop),
      context_{.main = main,
               .desktop = desktop,
               .files = ports.files,
               .trays = ports.trays,
               .act = [this](const std::function<void()>& wish) { act(wish); },
               .showHelp = [this](const std::string& topic) { doShowHelp(topic); }} {
  setObjectName(QStringLiteral("frmMain"));
  setWindowTitle(toQt(gProductName));
  setWindowIcon(Theme::ownIcon(QStringLiteral("korvenal")));
  setMinimumSize(MinimumWidth, MinimumHeight);
  desktop_.mainWindow = this;
  desktop_.onRefresh = [this] { refresh(); };
  desktop_.dialogs.showHelp = context_.showHelp;
  doBuildPages();
  doBuildPageBar();
  doBuildMenus();
  deviceName_ = new QLabel(this);
  deviceName_->setObjectName(QStringLiteral("DeviceName"));
  statusBar()->addWidget(deviceName_);
  refresh();
}

MainWindow::~MainWindow() {
  desktop_.mainWindow = nullptr;
  desktop_.onRefresh = nullptr;
}

QWidget* MainWindow::steps(int action, Page* define, Page* run) {
  auto* whole = new QWidget(this);
  auto* column = new QVBoxLayout(whole);
  if (define != nullptr) {
    auto* stack = new QStackedWidget(whole);
    stack->addWidget(define);
    stack->addWidget(run);
    stepStacks_[static_cast<std::size_t>(action)] = stack;
    column->addWidget(stack);
    pages_.push_back(define);
  } else {
    column->addWidget(run);
  }
  auto* bar = new StepBar(action, context_, whole);
  column->addWidget(bar);
  pages_.push_back(run);
  pages_.push_back(bar);
  return whole;
}

void MainWindow::doBuildPages() {
  pageStack_ = new QStackedWidget(this);
  auto* start = new StartPageView(context_);
  auto* schedule = new ScheduleView(context_);
  // In the order of the page numbers.
  pageStack_->addWidget(start);
  pageStack_->addWidget(steps(ActionController::Backup, new JobView(context_),
                              new RunView(ActionController::Backup, context_)));
  pageStack_->addWidget(steps(ActionController::Restore, new RestoreView(context_),
                              new RunView(ActionController::Restore, context_)));
  pageStack_->addWidget(steps(ActionController::Erase, nullptr, new EraseView(context_)));
  pageStack_->addWidget(schedule);
  pages_.push_back(start);
  pages_.push_back(schedule);
  setCentralWidget(pageStack_);
}

void MainWindow::doBuildPageBar() {
  auto* bar = new QToolBar(tr("Pages"), this);
  bar->setObjectName(QStringLiteral("cmdAction"));
  bar->setMovable(false);
  bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
  addToolBar(Qt::LeftToolBarArea, bar);
  auto* group = new QActionGroup(this);
  struct Entry {
    QString text;
    const char* icon;
    int kind;
  };
  const Entry entries[] = {{tr("Start"), "go-home", StartKind},
                           {tr("Backup"), "media-optical-recordable", BackupKind},
                           {tr("Restore"), "document-revert", RestoreKindOfPage},
                           {tr("Erase"), "edit-clear", EraseKind},
                           {tr("Schedule"), "appointment-new", ScheduleKind}};
  int number = 0;
  for (const Entry& entry : entries) {
    QAction* action = bar->addAction(Theme::icon(QLatin1String(entry.icon)), entry.text);
    action->setObjectName(QStringLiteral("page%1").arg(number));
    action->setCheckable(true);
    action->setShortcut(QKeySequence(QStringLiteral("Ctrl+%1").arg(++number)));
    action->setToolTip(QStringLiteral("%1 (%2)").arg(
        entry.text, action->shortcut().toString(QKeySequence::NativeText)));
    group->addAction(action);
    connect(action, &QAction::triggered, this,
            [this, kind = entry.kind] { act([this, kind] { main_.doChangeTask(kind); }); });
    pageActions_.push_back(action);
  }
}

void MainWindow::doBuildMenus() {
  QMenu* file = menuBar()->addMenu(tr("&File"));
  newJob_ = file->addAction(Theme::icon(QStringLiteral("document-new")), tr("&New"),
                            QKeySequence::New, this, [this] { act([this] { main_.doNewJob(); }); });
  openJob_ =
      file->addAction(Theme::icon(QStringLiteral("document-open")), tr("&Open..."),
                      QKeySequence::Open, this, [this] { act([this] { main_.doOpenJob(); }); });
  saveJob_ =
      file->addAction(Theme::icon(QStringLiteral("document-save")), tr("&Save..."),
                      QKeySequence::Save, this, [this] { act([this] { main_.doSaveJob(); }); });
  file->addSeparator();
  file->addAction(tr("&Close"), QKeySequence::Close, this, [this] { close(); });
  file->addAction(Theme::icon(QStringLiteral("application-exit")), tr("E&xit"), QKeySequence::Quit,
                  this, [this] { close(); });

  QMenu* action = menuBar()->addMenu(tr("&Action"));
  for (QAction* page : pageActions_) action->addAction(page);

  QMenu* settings = menuBar()->addMenu(tr("&Settings"));
  settings->addAction(Theme::icon(QStringLiteral("drive-optical")), tr("&Device Settings..."), this,
                      [this] { act([this] { main_.doDevice(); }); });
  settings->addAction(Theme::icon(QStringLiteral("preferences-system")), tr("De&fault Options..."),
                      this, [this] { act([this] { main_.doDefault(); }); });

  QMenu* help = menuBar()->addMenu(tr("&Help"));
  help->addAction(Theme::icon(QStringLiteral("help-contents")), tr("&Contents"),
                  QKeySequence::HelpContents, this, [this] { doShowHelp("Contents"); });
  help->addAction(Theme::icon(QStringLiteral("help-about")), tr("&About"), this,
                  [this] { doShowAbout(); });
}

void MainWindow::act(const std::function<void()>& wish) {
  wish();
  refresh();
}

void MainWindow::refresh() {
  const ActionController& controller = main_.controller;
  pageStack_->setCurrentIndex(controller.mainTab);
  // Step pages bear the numbers 0 and 2.
  stepStacks_[0]->setCurrentIndex(controller.BackupTab == ActionController::RunStep ? 1 : 0);
  stepStacks_[1]->setCurrentIndex(controller.RestoreTab == ActionController::RunStep ? 1 : 0);
  const bool atRest = mayBegin(Command::GoToStart, main_.state);
  for (std::size_t page = 0; page < pageActions_.size(); ++page) {
    pageActions_[page]->setChecked(static_cast<int>(page) == controller.mainTab);
    pageActions_[page]->setEnabled(atRest);
  }
  newJob_->setEnabled(mayBegin(Command::NewJob, main_.state));
  openJob_->setEnabled(mayBegin(Command::OpenJob, main_.state));
  saveJob_->setEnabled(mayBegin(Command::SaveJob, main_.state) && main_.job.hasItems() &&
                       controller.mainTab == ActionController::BackupPage);
  deviceName_->setText(toQt(main_.deviceSettings.DeviceName));
  for (Page* page : pages_) page->refresh();
}

void MainWindow::doShowHelp(const std::string&) {}

void MainWindow::doShowAbout() {}

void MainWindow::closeEvent(QCloseEvent* event) {
  event->setAccepted(mayBegin(Command::Close, main_.state));
}

}  // namespace korvenal::ui
