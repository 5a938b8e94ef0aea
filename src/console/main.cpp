#include <unistd.h>

#include <atomic>
#include <csignal>
#include <fstream>
#include <iostream>

#include "console/CommandLineOptions.h"
#include "console/ConsoleProgram.h"
#include "start/ProgramStart.h"

namespace {

using namespace korvenal;
using console::ExitCode;

/// Set by the interrupt key and by what else asks for the end. A signal handler reaches nothing but
/// static storage.
std::atomic<bool>& interrupted() {
  static std::atomic<bool> flag = false;
  return flag;
}

void onInterruptSignal(int) {
  interrupted() = true;
}

void doCatchInterrupt() {
  interrupted() = false;
  struct sigaction action {};
  action.sa_handler = onInterruptSignal;  // without SA_RESTART: a wait for a line ends
  sigaction(SIGINT, &action, nullptr);
  sigaction(SIGTERM, &action, nullptr);
  // A terminal that is closed stops the run in good order, unless it was begun to outlive it.
  struct sigaction before {};
  if (sigaction(SIGHUP, nullptr, &before) == 0 && before.sa_handler != SIG_IGN)
    sigaction(SIGHUP, &action, nullptr);
}

int exitValue(ExitCode code) {
  return static_cast<int>(code);
}

int doRefuse(const std::string& commandFile) {
  std::cerr << "The file " << commandFile << " cannot be read.\n";
  return exitValue(ExitCode::Usage);
}

int run(const console::ProgramOptions& options) {
  std::ifstream file;
  if (!options.commandFile.empty()) {
    file.open(options.commandFile);
    // A folder opens like a file, and fails at the first look into it.
    file.peek();
    if (!file.is_open() || file.bad()) return doRefuse(options.commandFile);
    file.clear();
  }
  StartFailure failure;
  const std::optional<ProgramStart> start =
      doStartProgram({options.applicationFolder, options.shelf}, failure);
  if (!start) {
    std::cerr << failure.text << '\n';
    return exitValue(ExitCode::Failed);
  }

  doCatchInterrupt();
  LinuxPlatform& platform = *start->platform;
  console::StreamLines fileLines(file);
  console::DescriptorLines standardInput(STDIN_FILENO);
  const bool fromFile = !options.commandFile.empty();
  console::LineSource& commands =
      fromFile ? static_cast<console::LineSource&>(fileLines) : standardInput;
  console::ConsoleProgram program(
      {.out = std::cout,
       .outIsTerminal = isatty(STDOUT_FILENO) == 1,
       .person = standardInput,
       .agreeToAll = options.agreeToAll,
       .interrupted = interrupted()},
      platform.clock(), [&platform](Desktop& desktop) { return platform.ports(desktop); },
      start->workspace);
  const ExitCode code = program.run(commands);
  return file.bad() ? doRefuse(options.commandFile) : exitValue(code);
}

}  // namespace

int main(int argc, char** argv) {
  const console::ProgramOptions options =
      console::parseProgramOptions(std::vector<std::string>(argv + 1, argv + argc));
  if (!options.error.empty()) {
    std::cerr << options.error << '\n' << console::programHelp();
    return exitValue(ExitCode::Usage);
  }
  if (options.help || options.version) {
    std::cout << (options.help ? console::programHelp() : gProductName + "\n");
    return exitValue(ExitCode::Ok);
  }
  return run(options);
}
