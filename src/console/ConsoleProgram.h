#pragma once

#include <atomic>
#include <functional>
#include <ostream>

#include "app/frmMain.h"
#include "console/Answers.h"
#include "console/BackupCommandGroup.h"
#include "console/Command.h"
#include "console/ConsoleDesktop.h"
#include "console/DiscCommandGroup.h"
#include "console/EraseCommandGroup.h"
#include "console/FormPresenter.h"
#include "console/ItemCommandGroup.h"
#include "console/JobCommandGroup.h"
#include "console/LineSource.h"
#include "console/RecordCommandGroup.h"
#include "console/RestoreCommandGroup.h"
#include "console/RunView.h"
#include "console/Screen.h"
#include "console/Session.h"
#include "console/SettingCommandGroup.h"
#include "console/Shell.h"

namespace korvenal::console {

/// Where the terminal front end reads and writes. All of it outlives the program.
struct Terminal {
  std::ostream& out;
  bool outIsTerminal = false;  ///< shows progress lines
  LineSource& person;          ///< is asked questions
  bool agreeToAll = false;     ///< "--yes"
  std::atomic<bool>& interrupted;
};

/// The program with its terminal front end.
class ConsoleProgram {
 public:
  /// Gives the ports with this front end; all but the front end outlive the program.
  using PortsFor = std::function<Ports(Desktop&)>;

  ConsoleProgram(const Terminal& terminal, const Clock& clock, const PortsFor& portsFor,
                 const Workspace& workspace);
  ConsoleProgram(const ConsoleProgram&) = delete;
  ConsoleProgram& operator=(const ConsoleProgram&) = delete;

  /// Starts up, runs all commands and shuts down.
  ExitCode run(LineSource& commands);

 private:
  Commands allCommands();
  void doChooseDrive(const std::string& command, const Arguments& arguments);
  ExitCode doQueueAnswer(const std::string& text);
  ExitCode doFinishCommand(ExitCode code);
  bool doStop();

  Screen screen_;
  Answers answers_;
  ConsoleDesktop desktop_;
  FormPresenter forms_;
  Ports ports_;
  frmMain main_;
  RunView view_;
  Session session_;
  JobCommandGroup jobCommands_;
  ItemCommandGroup itemCommands_;
  SettingCommandGroup settingCommands_;
  DiscCommandGroup discCommands_;
  BackupCommandGroup backupCommands_;
  RestoreCommandGroup restoreCommands_;
  EraseCommandGroup eraseCommands_;
  RecordCommandGroup recordCommands_;
  Shell shell_;
};

}  // namespace korvenal::console
