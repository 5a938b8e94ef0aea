#include <QApplication>
#include <iostream>

#include "start/ProgramStart.h"
#include "ui/MainWindow.h"
#include "ui/QtDesktop.h"
#include "ui/Texts.h"

int main(int argc, char** argv) {
  using namespace korvenal;
  QApplication application(argc, argv);
  QApplication::setApplicationName(QStringLiteral("korvenal"));
  QApplication::setApplicationDisplayName(ui::toQt(gProductName));
  QApplication::setDesktopFileName(QStringLiteral("korvenal"));

  StartFailure failure;
  const std::optional<ProgramStart> start = doStartProgram({}, failure);
  if (!start) {
    // A second start ends in silence.
    if (failure.alreadyRunning) return 0;
    std::cerr << failure.text << '\n';
    return 1;
  }
  ui::QtDesktop desktop;
  const Ports ports = start->platform->ports(desktop);
  frmMain program(ports, start->workspace);
  ui::MainWindow window(program, desktop, ports);
  program.doLoad();
  window.refresh();
  window.show();
  program.doFirstActivate();
  window.refresh();
  const int code = QApplication::exec();
  program.doUnload();
  return code;
}
