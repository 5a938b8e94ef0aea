#include <QApplication>
#include <QIcon>
#include <QMessageBox>
#include <QStandardPaths>

#include "app/Lifecycle.h"
#include "start/ProgramStart.h"
#include "ui/EndRequests.h"
#include "ui/FileTypes.h"
#include "ui/MainWindow.h"
#include "ui/QtDesktop.h"
#include "ui/ShowRequests.h"
#include "ui/Texts.h"
#include "ui/TrayIcon.h"

namespace {

using namespace korvenal;

int run(const ProgramStart& start) {
  ui::QtDesktop desktop;
  const Ports ports = start.platform->ports(desktop);
  frmMain program(ports, start.workspace);
  ui::TrayIcon tray;
  Lifecycle life(program, desktop, tray);
  ui::MainWindow window(program, life, desktop, ports);
  // exit() and not quit(): nothing is asked any more.
  window.onEnd = [] { QCoreApplication::exit(0); };
  tray.commander = &life.commander;
  tray.act = [&window](const std::function<void()>& wish) { window.act(wish); };
  const ui::EndRequests ends(life);
  const ui::ShowRequests shows(ui::toQt(start.workspace.applicationFolder),
                               [&life] { life.doShow(); });
  ui::doRegisterFileTypes(QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation),
                          QCoreApplication::applicationFilePath());

  // From within the event loop: an end that is asked for meanwhile ends that loop.
  QMetaObject::invokeMethod(
      &window, [&] { window.act([&life] { life.doStart(); }); }, Qt::QueuedConnection);
  return QApplication::exec();
}

}  // namespace

int main(int argc, char** argv) {
  StartFailure failure;
  const std::optional<ProgramStart> start = doStartProgram({}, failure);
  // A second start ends in silence, before it so much as looks for a display.
  if (!start && failure.alreadyRunning) return 0;

  QApplication application(argc, argv);
  QApplication::setApplicationName(QStringLiteral("korvenal"));
  QApplication::setApplicationDisplayName(ui::toQt(gProductName));
  QApplication::setDesktopFileName(QStringLiteral("korvenal"));
  QApplication::setQuitOnLastWindowClosed(false);
  if (!start) {
    QMessageBox::critical(nullptr, ui::toQt(gProductName), ui::toQt(failure.text));
    return 1;
  }
  return run(*start);
}
