#include "ui/MainWindow.h"

#include <QActionGroup>
#include <QApplication>
#include <QCloseEvent>
#include <QLabel>
#include <QMenuBar>
#include <QScreen>
#include <QStackedWidget>
#include <QStatusBar>
#include <QToolBar>
#include <QVBoxLayout>
#include <algorithm>

#include "app/WindowPlace.h"
#include "core/Workspace.h"
#include "ui/AboutDialog.h"
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

constexpr int PageIconPixels = 28;

}  // namespace

MainWindow::MainWindow(frmMain& main, Lifecycle& life, QtDesktop& desktop, const Ports& ports)
    : main_(main),
      life_(life),
      desktop_(desktop),
      context_{.main = main,
               .desktop = desktop,
               .files = ports.files,
               .trays = ports.trays,
               .act = [this](const std::function<void()>& wish) { act(wish); },
               .showHelp = [this](const std::string& topic) { main_.doShowHelp(topic); },
               .hasTray = life.hasTray(),
               .setSystemTray = [this](bool on) { life_.doSetSystemTray(on); }} {
  setObjectName(QStringLiteral("frmMain"));
  setWindowTitle(toQt(gProductName));
  setWindowIcon(Theme::ownIcon(QStringLiteral("korvenal")));
  setMinimumSize(MinimumWidth, MinimumHeight);
  life_.frame = this;
  desktop_.mainWindow = this;
  desktop_.onAsk = [this] { life_.doPrepareToAsk(); };
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
  life_.frame = nullptr;
  desktop_.mainWindow = nullptr;
  desktop_.onAsk = nullptr;
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
  bar->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
  bar->setIconSize({PageIconPixels, PageIconPixels});
  addToolBar(Qt::LeftToolBarArea, bar);
  auto* group = new QActionGroup(this);
  struct Entry {
    QString text;
    const char* icon;
    int kind;
  };
  const Entry entries[] = {{tr("Start"), "go-home", StartTask},
                           {tr("Backup"), "tools-media-optical-burn", BackupTask},
                           {tr("Restore"), "document-revert", RestoreTask},
                           {tr("Erase"), "tools-media-optical-erase", EraseTask},
                           {tr("Schedule"), "appointment-new", ScheduleTask}};
  int number = 0;
  int width = 0;
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
    // All as wide as the widest, whatever the words are in another language.
    width = std::max(width, bar->widgetForAction(action)->sizeHint().width());
  }
  for (QAction* action : pageActions_)
    bar->widgetForAction(action)->setMinimumWidth(width + fontMetrics().averageCharWidth() * 2);
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
  openExplorer_ =
      file->addAction(Theme::icon(QStringLiteral("system-file-manager")), tr("Open File &Manager"),
                      this, [this] { act([this] { main_.doOpenExplorer(); }); });
  openExplorer_->setObjectName(QStringLiteral("mnOpenExplorer"));
  file->addSeparator();
  file->addAction(tr("&Close"), QKeySequence::Close, this,
                  [this] { act([this] { life_.doClose(CloseReason::Code); }); })
      ->setObjectName(QStringLiteral("mnClose"));
  file->addAction(Theme::icon(QStringLiteral("application-exit")), tr("E&xit"), QKeySequence::Quit,
                  this, [this] { act([this] { life_.commander.doExitProgram(); }); })
      ->setObjectName(QStringLiteral("mnExitProgram"));

  QMenu* action = menuBar()->addMenu(tr("&Action"));
  for (QAction* page : pageActions_) action->addAction(page);

  QMenu* settings = menuBar()->addMenu(tr("Settin&gs"));
  settings->setObjectName(QStringLiteral("cmdSettings"));
  const auto addSettings = [this, settings](const char* icon, const QString& text,
                                            std::function<void()> open) {
    return settings->addAction(Theme::icon(QLatin1String(icon)), text, this,
                               [this, open = std::move(open)] {
                                 if (mayBegin(Command::ChangeSettings, main_.state)) act(open);
                               });
  };
  settings_ = {
      addSettings("drive-optical", tr("&Device Settings..."), [this] { main_.doDevice(); }),
      addSettings("preferences-system", tr("De&fault Options..."), [this] { main_.doDefault(); })};

  QMenu* help = menuBar()->addMenu(tr("&Help"));
  help->addAction(Theme::icon(QStringLiteral("help-contents")), tr("&This Page"),
                  QKeySequence::HelpContents, this, [this] { main_.doShowPageHelp(); });
  help->addAction(tr("&Contents"), this, [this] { main_.doShowHelp("Contents"); });
  help->addSeparator();
  help->addAction(Theme::icon(QStringLiteral("help-about")), tr("&About"), this,
                  [this] { doShowAbout(); })
      ->setObjectName(QStringLiteral("mnAbout"));
}

void MainWindow::act(const std::function<void()>& wish) {
  const Lifecycle::Deed deed(life_);
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
  openExplorer_->setEnabled(controller.mainTab == ActionController::BackupPage ||
                            controller.mainTab == ActionController::RestorePage);
  for (QAction* settings : settings_)
    settings->setEnabled(mayBegin(Command::ChangeSettings, main_.state));
  deviceName_->setText(toQt(main_.deviceSettings.DeviceName));
  for (Page* page : pages_) page->refresh();
}

void MainWindow::doShowAbout() {
  const FlagScope ignore(main_.state.IgnoreEvents);
  AboutDialog(this).exec();
}

void MainWindow::doPlace(const MainWindowPlace& stored) {
  const QRect usable = screen()->availableGeometry();
  const WindowPlace place =
      usablePlace(stored, {usable.width() * TwipsPerPixel, usable.height() * TwipsPerPixel});
  const auto pixels = [](std::int64_t twips) { return static_cast<int>(twips / TwipsPerPixel); };
  move(usable.topLeft() + QPoint(pixels(place.left), pixels(place.top)));
  resize(pixels(place.width), pixels(place.height));
  if (place.maximized) setWindowState(Qt::WindowMaximized);
}

MainWindowPlace MainWindow::place() const {
  constexpr int Normal = 0, Minimized = 1, Maximized = 2;
  const QPoint corner = screen()->availableGeometry().topLeft();
  const bool changed = isMaximized() || isMinimized();
  const QRect normal = changed ? normalGeometry() : QRect(pos(), size());
  return {.State = isMinimized()   ? Minimized
                   : isMaximized() ? Maximized
                                   : Normal,
          .Left = (normal.x() - corner.x()) * TwipsPerPixel,
          .Top = (normal.y() - corner.y()) * TwipsPerPixel,
          .Width = normal.width() * TwipsPerPixel,
          .Height = normal.height() * TwipsPerPixel};
}

void MainWindow::doShow() {
  refresh();
  setWindowState(windowState() & ~Qt::WindowMinimized);
  show();
  raise();
  activateWindow();
}

void MainWindow::doHide() {
  hide();
}

void MainWindow::doEnd() {
  if (onEnd) onEnd();
}

/// Without the person's hand on it, a close comes from the end of the session.
void MainWindow::closeEvent(QCloseEvent* event) {
  if (QApplication::activeModalWidget() != nullptr) return event->ignore();
  event->setAccepted(
      life_.doClose(event->spontaneous() ? CloseReason::CloseBox : CloseReason::SystemShutdown));
}

}  // namespace korvenal::ui
