#pragma once

#include <QString>
#include <memory>

#include "Camera.h"
#include "Guide.h"
#include "app/Lifecycle.h"
#include "platform/linux/LinuxPlatform.h"
#include "ui/MainWindow.h"
#include "ui/QtDesktop.h"
#include "ui/TrayIcon.h"

namespace korvenal::tools {

/// Leads through the running program, with real files and image drives, and takes a picture of
/// every page and dialog on the way.
class Tour {
 public:
  /// `work` is an empty folder for files, discs and settings of the tour; both end in '/'.
  Tour(const QString& work, const QString& pictures);

  /// The number of pictures taken.
  int run();

 private:
  void doFirstStart();
  void doComposeJob();
  void doTakeJobDialogs();
  void doBackup();
  void doRestore();
  void doTakeIndexChoice();
  void doErase();
  /// Opens the list of all discs from the prompt, and leaves both.
  void doPickOtherDisc(QWidget& prompt);
  void doTakeTheRest();

  /// Takes the dialog with this name when it comes next, and presses its button.
  void expect(const char* dialog, const QString& picture, const QString& button);
  void show(const QString& picture);
  void press(const char* button);
  void act(const std::function<void()>& wish) { window_->act(wish); }
  std::string sample(const char* name) const;

  QString work_;
  Camera camera_;
  Guide guide_;
  std::unique_ptr<LinuxPlatform> platform_;
  ui::QtDesktop desktop_;
  std::unique_ptr<frmMain> program_;
  ui::TrayIcon tray_;
  std::unique_ptr<Lifecycle> life_;
  std::unique_ptr<ui::MainWindow> window_;
};

}  // namespace korvenal::tools
