#include "tray/frmCommander.h"

#include "core/Workspace.h"

namespace korvenal {

TrayMenu trayMenu(const TrayFacts& facts, bool systemTray, bool actionBusy) {
  const auto mayShow = [&](bool inView) { return (!inView || facts.MainHidden) && !actionBusy; };
  return {
      .mnOpen = facts.MainHidden,
      .mnHide = !facts.MainHidden,
      .mnHideVisible = systemTray,
      .mnBackup = mayShow(facts.backupInView),
      .mnRestore = mayShow(facts.restoreInView),
      .mnSchedule = mayShow(facts.scheduleInView),
      .mnSettings = !actionBusy,
      .mnExit = !actionBusy,
  };
}

frmCommander::frmCommander(const ActionState& state, const bool& systemTray, TrayArea& tray,
                           TrayActions actions)
    : state_(state), systemTray_(systemTray), tray_(tray), actions_(std::move(actions)) {}

void frmCommander::doAddTrayIcon() {
  tray_.doAddIcon(gProductName.substr(0, TipBytes - 1));
}

void frmCommander::doDeleteTrayIcon() {
  tray_.doRemoveIcon();
}

void frmCommander::doNotify(const std::string& text) {
  tray_.doNotify(text);
}

TrayMenu frmCommander::menu() const {
  const bool closedToOthers = state_.ActionBusy || state_.IgnoreEvents;
  TrayMenu now = trayMenu(actions_.facts(), systemTray_, closedToOthers);
  // An index is read from drives, too.
  now.mnSettings = now.mnSettings && !state_.ActionRunning;
  return now;
}

std::optional<TrayMenu> frmCommander::doRightClick() {
  if (state_.IgnoreEvents || menuOpen_) return {};
  menuOpen_ = true;
  actions_.doYield();
  return menu();
}

void frmCommander::mnOpen() {
  if (menu().mnOpen) doOpenMain();
}

void frmCommander::mnHide() {
  const TrayMenu now = menu();
  if (now.mnHide && now.mnHideVisible) actions_.doHideMain();
}

void frmCommander::mnBackup() {
  if (menu().mnBackup) actions_.doTask01();
}

void frmCommander::mnRestore() {
  if (menu().mnRestore) actions_.doTask02();
}

void frmCommander::mnSchedule() {
  if (menu().mnSchedule) actions_.doTask03();
}

void frmCommander::mnDevice() {
  if (menu().mnSettings) actions_.doDevice();
}

void frmCommander::mnDefault() {
  if (menu().mnSettings) actions_.doDefault();
}

void frmCommander::mnExit() {
  if (menu().mnExit) doExitProgram();
}

bool frmCommander::doUnload() {
  if (state_.ActionRunning) return false;
  doDeleteTrayIcon();
  return true;
}

}  // namespace korvenal
