#include "ui/TrayIcon.h"

#include <QAction>
#include <QMenu>

#include "core/Workspace.h"
#include "ui/Texts.h"
#include "ui/Theme.h"

namespace korvenal::ui {

namespace {

constexpr int WatchMilliseconds = 5000;

}  // namespace

TrayIcon::TrayIcon() {
  connect(&watch_, &QTimer::timeout, this, [this] { doComeUpWithoutTray(); });
}

TrayIcon::~TrayIcon() = default;

bool TrayIcon::isPresent() const {
  return QSystemTrayIcon::isSystemTrayAvailable();
}

void TrayIcon::doAddIcon(const std::string& tip) {
  if (!icon_) {
    doBuildMenu();
    icon_ = std::make_unique<QSystemTrayIcon>(Theme::ownIcon(QStringLiteral("korvenal")));
    icon_->setContextMenu(menu_.get());
    connect(icon_.get(), &QSystemTrayIcon::activated, this,
            [this](QSystemTrayIcon::ActivationReason reason) {
              if (reason == QSystemTrayIcon::Trigger || reason == QSystemTrayIcon::DoubleClick)
                act([this] { commander->doLeftClick(); });
            });
    connect(icon_.get(), &QSystemTrayIcon::messageClicked, this,
            [this] { act([this] { commander->doLeftClick(); }); });
  }
  icon_->setToolTip(toQt(tip));
  icon_->show();
  watch_.start(WatchMilliseconds);
}

void TrayIcon::doRemoveIcon() {
  watch_.stop();
  // An item of its own menu may be at work.
  if (icon_) icon_->hide();
}

void TrayIcon::doNotify(const std::string& text) {
  if (icon_ && icon_->isVisible())
    icon_->showMessage(toQt(gProductName), toQt(text), Theme::ownIcon(QStringLiteral("korvenal")));
}

/// A desktop may lose its tray while the window is hidden there.
void TrayIcon::doComeUpWithoutTray() {
  if (!isPresent() && commander->menu().mnOpen) act([this] { commander->mnOpen(); });
}

void TrayIcon::doItem(Item item) {
  act([works = commander, item] { (works->*item)(); });
}

QAction* TrayIcon::addItem(QMenu& menu, const char* name, const QString& text, const QString& icon,
                           Item item) {
  QAction* action = menu.addAction(Theme::icon(icon), text, this, [this, item] { doItem(item); });
  action->setObjectName(QLatin1String(name));
  return action;
}

void TrayIcon::doBuildMenu() {
  menu_ = std::make_unique<QMenu>();
  menu_->setObjectName(QStringLiteral("mnuShow"));
  mnOpen_ =
      addItem(*menu_, "mnOpen", tr("&Open"), QStringLiteral("window-new"), &frmCommander::mnOpen);
  mnHide_ = addItem(*menu_, "mnHide", tr("&Hide"), QStringLiteral("window-minimize"),
                    &frmCommander::mnHide);
  menu_->addSeparator();
  mnBackup_ = addItem(*menu_, "mnBackup", tr("&Backup to Disc"),
                      QStringLiteral("media-optical-recordable"), &frmCommander::mnBackup);
  mnRestore_ = addItem(*menu_, "mnRestore", tr("&Restore from Disc"),
                       QStringLiteral("document-revert"), &frmCommander::mnRestore);
  mnSchedule_ = addItem(*menu_, "mnSchedule", tr("Backup &Scheduler"),
                        QStringLiteral("appointment-new"), &frmCommander::mnSchedule);
  menu_->addSeparator();
  mnSettings_ = menu_->addMenu(Theme::icon(QStringLiteral("preferences-system")), tr("S&ettings"));
  mnSettings_->menuAction()->setObjectName(QStringLiteral("mnSettings"));
  addItem(*mnSettings_, "mnDevice", tr("&Device Settings..."), QStringLiteral("drive-optical"),
          &frmCommander::mnDevice);
  addItem(*mnSettings_, "mnDefault", tr("De&fault Options..."),
          QStringLiteral("preferences-system"), &frmCommander::mnDefault);
  menu_->addSeparator();
  mnExit_ = addItem(*menu_, "mnExit", tr("E&xit"), QStringLiteral("application-exit"),
                    &frmCommander::mnExit);
  connect(menu_.get(), &QMenu::aboutToShow, this, [this] {
    const std::optional<TrayMenu> states = commander->doRightClick();
    doShowStates(states ? *states : commander->menu());
  });
  connect(menu_.get(), &QMenu::aboutToHide, this, [this] { commander->doMenuClosed(); });
  doShowStates(commander->menu());
}

void TrayIcon::doShowStates(const TrayMenu& states) {
  mnOpen_->setEnabled(states.mnOpen);
  mnHide_->setEnabled(states.mnHide);
  mnHide_->setVisible(states.mnHideVisible);
  mnBackup_->setEnabled(states.mnBackup);
  mnRestore_->setEnabled(states.mnRestore);
  mnSchedule_->setEnabled(states.mnSchedule);
  mnSettings_->setEnabled(states.mnSettings);
  mnExit_->setEnabled(states.mnExit);
}

}  // namespace korvenal::ui
