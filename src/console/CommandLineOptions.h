#pragma once

#include <string>
#include <vector>

namespace korvenal::console {

/// What the program was started with.
struct ProgramOptions {
  std::string applicationFolder;  ///< --app; absolute, empty for the usual one
  std::string shelf;              ///< --discs; absolute, empty for the usual one
  std::string commandFile;        ///< empty: commands come from standard input
  bool agreeToAll = false;        ///< --yes
  bool help = false;
  bool version = false;
  std::string error;  ///< what is wrong with the arguments; empty for nothing
};

ProgramOptions parseProgramOptions(const std::vector<std::string>& arguments);

/// What --help prints.
std::string programHelp();

}  // namespace korvenal::console
