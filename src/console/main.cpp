#include <unistd.h>

#include <atomic>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <iostream>

#include "console/CommandLineOptions.h"
#include "console/ConsoleProgram.h"
#include "core/Leftovers.h"
#include "core/Workspace.h"
#include "platform/Profile.h"
#include "platform/linux/InstanceLock.h"
#include "platform/linux/LinuxPlatform.h"
#include "platform/linux/StandardFolders.h"
#include "platform/linux/engine/ImageDriveSettings.h"

namespace {

using namespace korvenal;
using console::ExitCode;

/// Set by the interrupt key. A signal handler reaches nothing but static storage.
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
}

int exitValue(ExitCode code) {
  return static_cast<int>(code);
}

/// The drives that are image files, as the settings offer them.
ImageShelf::Options imageDrives(const Workspace& workspace, const std::string& shelf) {
  LinuxFiles files(nullptr);
  return readImageDrives(Profile(files, workspace.gSettingsFile),
                         shelf.empty() ? workspace.applicationFolder + "Discs/" : shelf + "/");
}

/// What a killed run has left. The lock on the application folder is held.
void doTidy(Workspace& workspace, const std::string& shelf) {
  LinuxFiles files(nullptr);
  const std::string wanted = workspace.TempFolder;
  workspace.doCheckTempFolder(files, wanted);
  doClearLeftovers(files, workspace, shelf);
}

int run(const console::ProgramOptions& options) {
  std::ifstream file;
  if (!options.commandFile.empty()) {
    file.open(options.commandFile);
    if (!file) {
      std::cerr << "The file " << options.commandFile << " cannot be read.\n";
      return exitValue(ExitCode::Failed);
    }
  }
  const StandardFolders folders =
      findStandardFolders({executableFolder(), options.applicationFolder});
  Workspace workspace = Workspace::below(folders.application, folders.bin, folders.home);
  workspace.TempFolder = folders.temporary;
  std::error_code error;
  std::filesystem::create_directories(folders.application, error);
  if (error) {
    std::cerr << folders.application << ": " << error.message() << '\n';
    return exitValue(ExitCode::Failed);
  }

  const InstanceLock lock(folders.application);
  if (!lock.isFirst()) {
    std::cerr << gProductName << " is already running.\n";
    return exitValue(ExitCode::Failed);
  }

  doCatchInterrupt();
  const ImageShelf::Options discs = imageDrives(workspace, options.shelf);
  doTidy(workspace, discs.folder);
  LinuxPlatform platform({folders.application, discs});
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
      workspace);
  return exitValue(program.run(commands));
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
