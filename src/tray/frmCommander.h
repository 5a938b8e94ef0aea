#pragma once

#include <functional>
#include <optional>
#include <string>

#include "core/ActionState.h"
#include "platform/TrayArea.h"

namespace korvenal {

/// What the menu of the tray icon depends on beyond the flags and options.
struct TrayFacts {
  bool MainHidden = false;
  bool backupInView = false, restoreInView = false, scheduleInView = false;
};

/// The items of the menu that can be chosen; `mnDevice` and `mnDefault` stand below `mnSettings`.
struct TrayMenu {
  bool mnOpen = false;
  bool mnHide = false;
  bool mnHideVisible = false;
  bool mnBackup = false, mnRestore = false, mnSchedule = false;
  bool mnSettings = false;
  bool mnExit = false;

  bool operator==(const TrayMenu&) const = default;
};

/// Which items can be chosen when.
TrayMenu trayMenu(const TrayFacts& facts, bool systemTray, bool actionBusy);

/// What the items of the menu do; all are set.
struct TrayActions {
  std::function<TrayFacts()> facts;
  std::function<void()> doYield;
  std::function<void()> doShowMain, doHideMain;
  std::function<void()> doTask01, doTask02, doTask03;  ///< pages: backup, restore, schedule
  std::function<void()> doDevice, doDefault;
  std::function<void()> doExit;  ///< of the main window; it may be refused
};

/// The owner of the tray icon and its menu, which no person ever sees as a window.
class frmCommander {
 public:
  static constexpr std::size_t TipBytes = 64;  ///< of the tip, the zero at its end counted

  /// All arguments outlive the commander.
  frmCommander(const ActionState& state, const bool& systemTray, TrayArea& tray,
               TrayActions actions);

  void doAddTrayIcon();
  void doDeleteTrayIcon();
  void doNotify(const std::string& text);

  /// The left button on the icon: the main window, in front.
  void doLeftClick() { doOpenMain(); }
  /// The right button on the icon: the menu to show, until `doMenuClosed`. Nothing while a dialog
  /// is open or the menu is up already.
  std::optional<TrayMenu> doRightClick();
  /// What can be chosen at the moment. A desktop that shows the menu without asking first gets,
  /// while a dialog is open, only what brings the window up and away.
  TrayMenu menu() const;
  void doMenuClosed() { menuOpen_ = false; }

  // The items. One that cannot be chosen at the moment does nothing: a desktop may show a menu that
  // is older than the state.
  void mnOpen();
  void mnHide();
  void mnBackup();
  void mnRestore();
  void mnSchedule();
  void mnDevice();
  void mnDefault();
  void mnExit();

  void doExitProgram() { actions_.doExit(); }
  /// The end of the hidden window for any reason but its own frame: the icon goes. False while an
  /// action runs.
  bool doUnload();

 private:
  void doOpenMain() { actions_.doShowMain(); }

  const ActionState& state_;
  const bool& systemTray_;  ///< the option `OPChk` 1
  TrayArea& tray_;
  TrayActions actions_;
  bool menuOpen_ = false;
};

}  // namespace korvenal
