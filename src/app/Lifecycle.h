#pragma once

#include "app/frmMain.h"
#include "platform/TrayArea.h"
#include "tray/frmCommander.h"

namespace korvenal {

/// Why the main window is to close.
enum class CloseReason {
  CloseBox = 0,        ///< the person, by the window's own frame
  Code = 1,            ///< the program: its menus
  SystemShutdown = 2,  ///< the end of the person's session, or a signal that asks to end
};

/// The frame of the main window, as the program moves it.
class MainFrame {
 public:
  virtual ~MainFrame() = default;

  /// The size and place to come up with; called once, before the first `doShow`.
  virtual void doPlace(const MainWindowPlace& stored) = 0;
  virtual MainWindowPlace place() const = 0;
  /// On the screen, in front of other windows, with the focus.
  virtual void doShow() = 0;
  virtual void doHide() = 0;
  /// The program is unloaded: its event loop is to end.
  virtual void doEnd() = 0;
};

/// How the program comes up, hides in the tray and ends.
class Lifecycle {
 public:
  /// All arguments outlive the object.
  Lifecycle(frmMain& main, Desktop& desktop, TrayArea& tray);
  Lifecycle(const Lifecycle&) = delete;
  Lifecycle& operator=(const Lifecycle&) = delete;

  /// Set before anything else is called.
  MainFrame* frame = nullptr;
  bool MainHidden = true;      ///< not shown yet, or in the tray
  bool ExitRequested = false;  ///< a close that is meant as the end of the program
  frmCommander commander;

  /// What a person asked for, for the time it takes. The program never ends under its feet, not
  /// even while it lets other handlers in.
  class Deed {
   public:
    explicit Deed(Lifecycle& life) : life_(life) { ++life_.deeds_; }
    ~Deed() { --life_.deeds_; }
    Deed(const Deed&) = delete;
    Deed& operator=(const Deed&) = delete;

   private:
    Lifecycle& life_;
  };

  /// The whole start: everything is read, then the main window comes up, then the device settings
  /// when no drive is chosen.
  void doStart();
  void doShow();
  /// Hides the main window in the tray. Its icon is there as long as the window is hidden.
  void doHide();
  /// Before the person is asked anything: a question of a run brings the hidden window up.
  void doPrepareToAsk();
  /// The option `OPChk` 1: keep an icon in the tray and hide there when closed.
  void doSetSystemTray(bool on);

  /// The desktop has a place where the program's icon can be.
  bool hasTray() const { return tray_.isPresent(); }

  /// What a close comes to: the end of the program (true), a hidden window, or nothing.
  bool doClose(CloseReason reason);
  /// Ends the program, from its menus; refused during a run and on Cancel of the question about an
  /// unsaved job.
  void doExit();
  /// Whether the session may end now; when it may, the settings are saved at once, since little
  /// time may be left.
  bool doPrepareSessionEnd();
  /// The end that a signal asks for: waits for the deed at work and for nothing else, since a
  /// signal is the way out when the flags do not let a person close. False: not yet.
  bool doTerminate();
  /// Asks the run at work to stop, so that the program can end behind it.
  void doStopRun();
  bool isUnloaded() const { return unloaded_; }

 private:
  TrayActions trayActions();
  TrayFacts trayFacts() const;
  void doShowPage(int page, int kind);
  void doTellEnd(int action);
  bool mayEnd(CloseReason reason) const;
  bool mayClose(CloseReason reason);
  void doUnload();
  void doSettleIcon();

  frmMain& main_;
  Desktop& desktop_;
  TrayArea& tray_;
  int deeds_ = 0;
  bool activated_ = false;
  bool closing_ = false;
  bool unloaded_ = false;
};

}  // namespace korvenal
