#include "console/CommandLineOptions.h"

#include "console/ConsoleDesktop.h"

namespace korvenal::console {

ProgramOptions parseProgramOptions(const std::vector<std::string>& arguments) {
  ProgramOptions options;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::string& word = arguments[i];
    if (word == "--yes") {
      options.agreeToAll = true;
    } else if (word == "--help") {
      options.help = true;
    } else if (word == "--version") {
      options.version = true;
    } else if (word == "--app" || word == "--discs") {
      if (++i == arguments.size() || arguments[i].empty()) {
        options.error = word + " needs a folder.";
        return options;
      }
      (word == "--app" ? options.applicationFolder : options.shelf) = absolutePath(arguments[i]);
    } else if (word.starts_with("-") || !options.commandFile.empty()) {
      options.error = "Unexpected argument: " + word;
      return options;
    } else {
      options.commandFile = word;
    }
  }
  return options;
}

std::string programHelp() {
  return "usage: korvenal-console [--app FOLDER] [--discs FOLDER] [--yes] [COMMANDFILE]\n"
         "\n"
         "Backs files up to optical discs and restores them. Commands are read one a line, with\n"
         "the quoting of a shell, from the file or from standard input.\n"
         "\n"
         "  --app FOLDER    keep settings and records there\n"
         "  --discs FOLDER  the shelf of image discs (default: \"Discs\" in the application "
         "folder)\n"
         "  --yes           agree to every question\n"
         "  --help          show this help\n"
         "  --version       show the version\n"
         "\n"
         "Exit codes: 0 all well, 1 a command failed or a run ended with errors, 2 wrong usage,\n"
         "3 stopped.\n"
         "\n"
         "The command \"help\" lists the commands.\n";
}

}  // namespace korvenal::console
