#include "console/ConsoleProgram.h"

#include <algorithm>

namespace korvenal::console {

namespace {

bool holds(std::initializer_list<std::string_view> names, const std::string& name) {
  return std::find(names.begin(), names.end(), name) != names.end();
}

/// Commands that look into the drives chosen. Runs see to that themselves.
bool looksIntoDrives(const std::string& command, const Arguments& arguments) {
  return command == "estimate" || (command == "index" && arguments.empty());
}

/// Commands that speak of the drives chosen, or of a job, whose disc type hangs on them.
bool countsOnDrives(const std::string& command) {
  return holds({"new", "open", "save", "show", "add", "create", "import", "set", "drives", "backup",
                "restore", "erase"},
               command);
}

}  // namespace

ConsoleProgram::ConsoleProgram(const Terminal& terminal, const Clock& clock,
                               const PortsFor& portsFor, const Workspace& workspace)
    : screen_(terminal.out, terminal.outIsTerminal),
      answers_(terminal.person, screen_, terminal.agreeToAll),
      desktop_(screen_, answers_, clock, terminal.interrupted),
      forms_(screen_, answers_),
      ports_(portsFor(desktop_)),
      main_(ports_, workspace),
      view_(screen_, main_.grids, main_.state),
      session_{main_,        desktop_,      screen_,        answers_, ports_.files,
               ports_.trays, ports_.engine, ports_.devices, clock},
      jobCommands_(session_),
      itemCommands_(session_),
      settingCommands_(session_),
      discCommands_(session_),
      backupCommands_(session_),
      restoreCommands_(session_),
      eraseCommands_(session_),
      recordCommands_(session_),
      shell_(screen_, allCommands()) {
  desktop_.forms = &forms_;
  desktop_.onNewEvents = [this] { view_.doPrintNewEvents(); };
  desktop_.onProgress = [this] {
    if (!forms_.doPaintProgress()) view_.doPaintProgress();
  };
  desktop_.onInterrupt = [this] { return doStop(); };
  // A press of the interrupt key at the prompt is no wish to stop what comes next.
  shell_.beforeCommand = [&flag = terminal.interrupted] { flag = false; };
  shell_.afterCommand = [this](ExitCode code) { return doFinishCommand(code); };
}

Commands ConsoleProgram::allCommands() {
  Commands all;
  for (Commands group :
       {jobCommands_.commands(), itemCommands_.commands(), settingCommands_.commands(),
        discCommands_.commands(), backupCommands_.commands(), restoreCommands_.commands(),
        eraseCommands_.commands(), recordCommands_.commands()})
    all.insert(all.end(), std::make_move_iterator(group.begin()),
               std::make_move_iterator(group.end()));
  all.push_back({"answer", "TEXT", "prepares the answer to the next question", 1, 1,
                 [this](const Arguments& a) { return doQueueAnswer(a[0]); }});
  all.push_back({"help", "", "lists the commands", 0, 0, [this](const Arguments&) {
                   screen_.raw(shell_.commandList());
                   return ExitCode::Ok;
                 }});
  for (Command& command : all)
    command.run = [this, name = command.name, run = std::move(command.run)](const Arguments& a) {
      doChooseDrive(name, a);
      return run(a);
    };
  return all;
}

/// What needs no drive asks for none: a drive that is unplugged for now stays chosen.
void ConsoleProgram::doChooseDrive(const std::string& command, const Arguments& arguments) {
  if (looksIntoDrives(command, arguments))
    main_.doFirstActivate();
  else if (countsOnDrives(command))
    main_.doSettleFirstDrive();
}

ExitCode ConsoleProgram::doQueueAnswer(const std::string& text) {
  answers_.queue(text);
  return ExitCode::Ok;
}

ExitCode ConsoleProgram::doFinishCommand(ExitCode code) {
  view_.doPrintNewEvents();
  desktop_.doForgetPrepared();
  if (forms_.doBeginCommand() && code == ExitCode::Stopped) return ExitCode::Failed;
  if (answers_.takeMismatch() && code == ExitCode::Ok) return ExitCode::Failed;
  return code;
}

bool ConsoleProgram::doStop() {
  ActionState& state = main_.state;
  // What is about to begin forgets a stop from before, so it is asked again until it is at work.
  if (forms_.doInterrupt()) return false;
  if (!state.ActionRunning || !state.ActionBusy) {
    state.StopAction = true;
    return false;
  }
  if (!main_.runPages[static_cast<std::size_t>(state.ActionPage)].pbStopEnabled) return false;
  main_.controller.pbStop(state.ActionPage);
  return true;
}

ExitCode ConsoleProgram::run(LineSource& commands) {
  main_.doLoad();
  main_.newJob.doNewJob();
  main_.doEditJob();
  view_.doPrintNewEvents();
  const ExitCode code = shell_.run(commands);
  main_.doUnload();
  screen_.flush();
  return code == ExitCode::Ok && main_.ownFileFaults.any() ? ExitCode::Failed : code;
}

}  // namespace korvenal::console
